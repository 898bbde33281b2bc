#include "ui/qt/map_widget.h"

#include <cmath>

#include <QHelpEvent>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>
#include <QWheelEvent>

#include "ui/qt/main_window.h"
#include "ui/workbench.h"

namespace quillon {
namespace {

// A press that moves less than this is a click.
constexpr double kSeuilGlisser = 3;

QColor Couleur(Rgb c) { return QColor(c.r, c.g, c.b); }

}  // namespace

void PeindreDessin(QPainter& peintre, const Dessin& d) {
  if (d.largeur > 0 && d.hauteur > 0 &&
      d.pixels.size() >= std::size_t(d.largeur) * std::size_t(d.hauteur)) {
    // 0xFFRRGGBB words are QImage's ARGB32 pixels: wrapped, not copied.
    const QImage image(reinterpret_cast<const uchar*>(d.pixels.data()), d.largeur, d.hauteur,
                       qsizetype(d.largeur) * 4, QImage::Format_ARGB32);
    peintre.drawImage(QPointF(0, 0), image);
  }
  peintre.setRenderHint(QPainter::Antialiasing);
  peintre.setBrush(Qt::NoBrush);
  for (const Anneau& a : d.anneaux) {
    peintre.setPen(QPen(Couleur(a.couleur), a.epaisseur));
    peintre.drawEllipse(QPointF(a.x, a.y), a.rayon, a.rayon);
  }
  for (const Croix& c : d.croix) {
    peintre.setPen(QPen(Couleur(c.couleur), 2));
    peintre.drawLine(QPointF(c.x - c.demi, c.y - c.demi), QPointF(c.x + c.demi, c.y + c.demi));
    peintre.drawLine(QPointF(c.x - c.demi, c.y + c.demi), QPointF(c.x + c.demi, c.y - c.demi));
  }
  peintre.setPen(Qt::NoPen);
  for (const Forme& f : d.formes) {
    if (f.sommets.empty()) continue;
    QPainterPath chemin(QPointF(f.sommets[0][0], f.sommets[0][1]));
    for (std::size_t k = 1; k < f.sommets.size(); ++k) chemin.lineTo(f.sommets[k][0], f.sommets[k][1]);
    chemin.closeSubpath();
    peintre.fillPath(chemin, Couleur(f.couleur));
  }
  QFont police = peintre.font();
  for (const TexteCarte& t : d.textes) {
    police.setPixelSize(std::max(1, t.taille));
    peintre.setFont(police);
    peintre.setPen(Couleur(t.couleur));
    peintre.drawText(QPointF(t.x, t.y), QString::fromStdString(t.texte));
  }
}

CarteQt::CarteQt(Atelier& atelier, QWidget* parent) : QWidget(parent), atelier_(atelier) {
  setObjectName(QStringLiteral("picCarte"));
  setMouseTracking(false);
  setMinimumSize(120, 90);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setCursor(Qt::OpenHandCursor);
}

void CarteQt::paintEvent(QPaintEvent*) {
  QPainter peintre(this);
  peintre.fillRect(rect(), Qt::white);
  if (atelier_.Montre() == nullptr) {
    peintre.setPen(palette().color(QPalette::WindowText));
    peintre.drawText(rect().adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap,
                     QString::fromStdString(atelier_.MessageFichier()));
    return;
  }
  PeindreDessin(peintre, atelier_.Dessiner());
}

void CarteQt::resizeEvent(QResizeEvent*) { atelier_.Carte_Taille(width(), height()); }

void CarteQt::wheelEvent(QWheelEvent* evenement) {
  const int delta = evenement->angleDelta().y();
  if (delta != 0) atelier_.Carte_Molette(delta, evenement->position().x(), evenement->position().y());
  evenement->accept();
}

void CarteQt::mousePressEvent(QMouseEvent* evenement) {
  if (evenement->button() != Qt::LeftButton) return;
  appui_ = dernier_ = evenement->position();
  enAppui_ = true;
  glisse_ = false;
}

void CarteQt::mouseMoveEvent(QMouseEvent* evenement) {
  if (!enAppui_) return;
  const QPointF p = evenement->position();
  if (!glisse_ && std::hypot(p.x() - appui_.x(), p.y() - appui_.y()) < kSeuilGlisser) return;
  if (!glisse_) setCursor(Qt::ClosedHandCursor);
  glisse_ = true;
  atelier_.Carte_Glisser(p.x() - dernier_.x(), p.y() - dernier_.y());
  dernier_ = p;
}

void CarteQt::mouseReleaseEvent(QMouseEvent* evenement) {
  if (evenement->button() != Qt::LeftButton || !enAppui_) return;
  enAppui_ = false;
  if (glisse_) {
    setCursor(Qt::OpenHandCursor);
  } else {
    atelier_.Carte_Clic(evenement->position().x(), evenement->position().y());
  }
}

bool CarteQt::event(QEvent* evenement) {
  if (evenement->type() != QEvent::ToolTip) return QWidget::event(evenement);
  auto* aide = static_cast<QHelpEvent*>(evenement);
  const std::string texte = atelier_.Carte_Survol(aide->pos().x(), aide->pos().y());
  if (texte.empty()) {
    QToolTip::hideText();
    evenement->ignore();
  } else {
    QToolTip::showText(aide->globalPos(), QString::fromStdString(texte), this);
  }
  return true;
}

}  // namespace quillon
