#include "player/player_icons.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace {

/** The outline on a square of 16. */
QPainterPath outline(const QString& name) {
  QPainterPath path;
  const auto triangle = [&](qreal left, qreal right) {
    path.addPolygon(QPolygonF({QPointF(left, 2), QPointF(right, 8), QPointF(left, 14), QPointF(left, 2)}));
  };
  if (name == "play") triangle(4, 14);
  if (name == "pause") {
    path.addRect(3.5, 2, 3.5, 12);
    path.addRect(9, 2, 3.5, 12);
  }
  if (name == "next") {
    triangle(2.5, 11);
    path.addRect(11, 2, 2.5, 12);
  }
  if (name == "previous") {
    triangle(13.5, 5);
    path.addRect(2.5, 2, 2.5, 12);
  }
  if (name == "volume") {
    path.addPolygon(QPolygonF({QPointF(1, 6), QPointF(4, 6), QPointF(8, 2.5), QPointF(8, 13.5), QPointF(4, 10),
                               QPointF(1, 10), QPointF(1, 6)}));
    path.addRoundedRect(10, 6, 1.5, 4, 0.7, 0.7);
    path.addRoundedRect(12.8, 4, 1.5, 8, 0.7, 0.7);
  }
  return path;
}

class TSignEngine : public QIconEngine {
public:
  TSignEngine(QString name, const QColor& color) : fName(std::move(name)), fColor(color) {}
  QIconEngine* clone() const override { return new TSignEngine(fName, fColor); }
  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.topLeft());
    painter->scale(rect.width() / 16.0, rect.height() / 16.0);
    QColor color = fColor;
    if (mode == QIcon::Disabled) color.setAlphaF(0.35F);
    painter->fillPath(outline(fName), color);
    painter->restore();
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paint(&painter, picture.rect(), mode, state);
    return picture;
  }

private:
  QString fName;
  QColor fColor;
};

} // namespace

QIcon player_icon(const QString& name, const QColor& color) {
  return QIcon(new TSignEngine(name, color));
}
