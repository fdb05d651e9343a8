#include "platform/display/plain_widget.h"

#include "platform/display/picture_painter.h"

#include <QPainter>

#include <utility>

namespace display {

void PlainWidget::SetPicture(BPicture picture) {
  fPicture = std::move(picture);
  update();
}

void PlainWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paint_picture(painter, fPicture);
}

} // namespace display
