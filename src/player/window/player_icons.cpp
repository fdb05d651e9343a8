#include "player/window/player_icons.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>

namespace {

/** In a 16 by 16 coordinate system. */
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
  if (name == "menu") {
    for (const qreal y : {3.0, 7.2, 11.4}) path.addRoundedRect(2, y, 12, 1.6, 0.8, 0.8);
  }
  if (name == "note") {
    path.setFillRule(Qt::WindingFill);
    path.addEllipse(2, 10.5, 5, 4);
    path.addEllipse(9.5, 9, 5, 4);
    path.addRect(5.8, 2.8, 1.2, 9.7);
    path.addRect(13.3, 1.3, 1.2, 9.7);
    path.addPolygon(
        QPolygonF({QPointF(5.8, 2.8), QPointF(14.5, 1), QPointF(14.5, 3.5), QPointF(5.8, 5.3), QPointF(5.8, 2.8)}));
  }
  return path;
}

class TIconEngine : public QIconEngine {
public:
  explicit TIconEngine(QString name) : fName(std::move(name)) {}
  QIconEngine* clone() const override { return new TIconEngine(fName); }
  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.topLeft());
    painter->scale(rect.width() / 16.0, rect.height() / 16.0);
    QColor color = QGuiApplication::palette().color(QPalette::WindowText);
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
  const QString fName;
};

} // namespace

QIcon player_icon(const QString& name) {
  return QIcon(new TIconEngine(name));
}
