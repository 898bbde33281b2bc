#include "ui/qt/app_icon.h"

#include <QImage>
#include <QPainter>
#include <QPolygon>

namespace quillon {
namespace {

// Colours of the classic 16-colour palette.
constexpr QRgb kNoir = 0xFF000000;
constexpr QRgb kGris = 0xFF808080;
constexpr QRgb kArgent = 0xFFC0C0C0;
constexpr QRgb kBlanc = 0xFFFFFFFF;
constexpr QRgb kMarine = 0xFF000080;
constexpr QRgb kRouge = 0xFFFF0000;
constexpr QRgb kBordeaux = 0xFF800000;
constexpr QRgb kVert = 0xFF008000;

void Borne(QPainter& p, QPoint centre) {
  p.setPen(kBordeaux);
  p.setBrush(QColor(kRouge));
  p.drawRect(centre.x() - 1, centre.y() - 1, 2, 2);
}

}  // namespace

QPixmap IconeApplication() {
  QImage image(32, 32, QImage::Format_ARGB32);
  image.fill(Qt::transparent);
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing, false);

  // The sheet, its shadow and its folded corner.
  const QPolygon feuille({{5, 1}, {21, 1}, {27, 7}, {27, 29}, {5, 29}});
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(kGris));
  p.drawPolygon(feuille.translated(2, 2));
  p.setPen(kNoir);
  p.setBrush(QColor(kBlanc));
  p.drawPolygon(feuille);
  p.setBrush(QColor(kArgent));
  p.drawPolygon(QPolygon({{21, 1}, {21, 7}, {27, 7}}));

  // Columns of figures along the top of the sheet.
  p.setPen(kGris);
  for (int y = 4; y <= 8; y += 2) p.drawLine(8, y, y == 4 ? 18 : 17, y);

  // A plot with a boundary point at each corner, and a fixed point.
  const QPolygon parcelle({{9, 25}, {11, 13}, {22, 12}, {24, 25}});
  p.setPen(kMarine);
  p.setBrush(Qt::NoBrush);
  p.drawPolygon(parcelle);
  for (const QPoint& sommet : parcelle) Borne(p, sommet);
  p.setPen(kVert);
  p.drawLine(16, 16, 16, 22);
  p.drawLine(13, 19, 19, 19);
  p.end();
  return QPixmap::fromImage(image);
}

}  // namespace quillon
