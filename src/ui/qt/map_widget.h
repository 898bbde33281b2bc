// The picture of the file shown, on Qt: paints what the workbench composes
// (a raster of pixels, then rings, crosses, shapes and texts) and hands
// back its size, the wheel, drags, clicks and the pixel under the pointer.
// Sizes are in Qt's device-independent pixels.
#pragma once

#include <QPoint>
#include <QWidget>

#include "ui/map_plan.h"

class QPainter;

namespace quillon {

class Atelier;

// The primitives of a picture over its raster, painted in `peintre` with
// the picture's pixel (0, 0) at the painter's origin.
void PeindreDessin(QPainter& peintre, const Dessin& dessin);

class CarteQt : public QWidget {
  Q_OBJECT

 public:
  CarteQt(Atelier& atelier, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* evenement) override;
  void resizeEvent(QResizeEvent* evenement) override;
  void wheelEvent(QWheelEvent* evenement) override;
  void mousePressEvent(QMouseEvent* evenement) override;
  void mouseMoveEvent(QMouseEvent* evenement) override;
  void mouseReleaseEvent(QMouseEvent* evenement) override;
  bool event(QEvent* evenement) override;

 private:
  Atelier& atelier_;
  QPointF appui_, dernier_;  // where the button went down, and the last move
  bool enAppui_ = false, glisse_ = false;
};

}  // namespace quillon
