#include "player/window/cover_view.h"

#include "player/widgets/shown_text.h"
#include "player/window/player_icons.h"

#include <QEvent>
#include <QPainter>
#include <QPainterPath>

namespace {
constexpr int kSide = 84;
constexpr int kCorner = 6;
constexpr int kNoteSide = 36;
} // namespace

TCoverView::TCoverView() {
  setFixedSize(kSide, kSide);
  setAccessibleName(shown_text("Player_Cover"));
  setContextMenuPolicy(Qt::CustomContextMenu);
}

QSize TCoverView::sizeHint() const {
  return {kSide, kSide};
}

void TCoverView::Show(const QImage& picture) {
  fPicture = picture;
  update();
}

void TCoverView::changeEvent(QEvent* event) {
  if (event->type() == QEvent::LanguageChange) setAccessibleName(shown_text("Player_Cover"));
  QWidget::changeEvent(event);
}

void TCoverView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  QPainterPath frame;
  frame.addRoundedRect(QRectF(rect()), kCorner, kCorner);
  QColor ground = palette().color(QPalette::WindowText);
  ground.setAlphaF(0.08F);
  painter.fillPath(frame, ground);
  if (fPicture.isNull()) {
    QRect note(0, 0, kNoteSide, kNoteSide);
    note.moveCenter(rect().center());
    return player_icon("note").paint(&painter, note, Qt::AlignCenter, QIcon::Disabled);
  }
  painter.setClipPath(frame);
  QSizeF size = fPicture.size();
  size.scale(kSide, kSide, Qt::KeepAspectRatio);
  QRectF place(QPointF(), size);
  place.moveCenter(QRectF(rect()).center());
  painter.drawImage(place, fPicture);
}
