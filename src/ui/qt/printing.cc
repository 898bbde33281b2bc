#include "ui/qt/printing.h"

#include <QPainter>
#include <QPrinter>

#include "ui/qt/map_widget.h"

namespace quillon {

QSizeF ZoneImprimable(const QPrinter& imprimante) {
  return imprimante.pageLayout().paintRect(QPageLayout::Millimeter).size();
}

void PeindrePages(QPrinter& imprimante, const std::vector<Page>& pages) {
  QPainter peintre(&imprimante);
  const double points = imprimante.resolution() / 25.4;  // dots a millimetre
  QFont police = peintre.font();
  for (std::size_t k = 0; k < pages.size(); ++k) {
    if (k > 0) imprimante.newPage();
    const Page& page = pages[k];
    for (const CartePage& c : page.cartes) {
      if (c.dessin.largeur <= 0 || c.dessin.hauteur <= 0) continue;
      const QRectF place(c.x * points, c.y * points, c.largeur * points, c.hauteur * points);
      peintre.save();
      peintre.setClipRect(place);
      peintre.translate(place.topLeft());
      peintre.scale(place.width() / c.dessin.largeur, place.height() / c.dessin.hauteur);
      PeindreDessin(peintre, c.dessin);
      peintre.restore();
      peintre.setPen(QPen(Qt::gray, 0.2 * points));
      peintre.setBrush(Qt::NoBrush);
      peintre.drawRect(place);
    }
    for (const TraitPage& t : page.traits) {
      peintre.setPen(QPen(QColor(t.couleur.r, t.couleur.g, t.couleur.b), t.epaisseur * points));
      peintre.drawLine(QPointF(t.x1 * points, t.y1 * points), QPointF(t.x2 * points, t.y2 * points));
    }
    for (const TextePage& t : page.textes) {
      police.setPointSizeF(t.taille);
      police.setBold(t.gras);
      peintre.setFont(police);
      peintre.setPen(QColor(t.couleur.r, t.couleur.g, t.couleur.b));
      peintre.drawText(QPointF(t.x * points, t.y * points), QString::fromStdString(t.texte));
    }
  }
}

}  // namespace quillon
