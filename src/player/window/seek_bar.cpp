#include "player/window/seek_bar.h"

#include "player/model/display_thread_check.h"
#include "player/model/song_text.h"
#include "player/widgets/shown_text.h"

#include <QAccessible>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kHeight = 58;
constexpr int kMargin = 3; // room for the position at both ends and the focus frame
constexpr int kMarksHeight = 11;
constexpr int kBarStep = 3;
constexpr int kBarWidth = 2;
constexpr int kGrooveHeight = 6;
constexpr double kMarkReach = 5;
constexpr int kStepMs = 5000;
constexpr int kPageMs = 30000;

QColor faint(QColor color, double part) {
  color.setAlphaF(static_cast<float>(part));
  return color;
}

QString exact_text(int32 timeMs) {
  return QString::fromStdString(clock_text(timeMs)) +
         QStringLiteral(".%1").arg(timeMs % 1000 / 10, 2, 10, QLatin1Char('0'));
}

} // namespace

TSeekBar::TSeekBar() : QSlider(Qt::Horizontal) {
  ShowTexts();
  setFocusPolicy(Qt::TabFocus);
  setMouseTracking(true);
  setTracking(false); // seeks when the mouse button is released
  setSingleStep(kStepMs);
  setPageStep(kPageMs);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void TSeekBar::ShowTexts() {
  setAccessibleName(shown_text("Player_Position"));
  setToolTip(shown_text("Player_Position_Tip"));
}

void TSeekBar::changeEvent(QEvent* event) {
  if (event->type() == QEvent::LanguageChange) ShowTexts();
  QSlider::changeEvent(event);
}

QSize TSeekBar::sizeHint() const {
  return {320, kHeight};
}

QSize TSeekBar::minimumSizeHint() const {
  return {120, kHeight};
}

void TSeekBar::ShowSong(const TPlayerState& state) {
  const QSignalBlocker quiet(this);
  setRange(0, state.durationMs);
  setEnabled(state.current >= 0 || state.otherSong);
  fMarksMs = state.marksMs;
  fRepeatFromMs = state.repeatFromMs;
  fRepeatToMs = state.repeatToMs;
  update();
}

void TSeekBar::ShowPosition(int32 positionMs) {
  check_display_thread();
  if (isSliderDown()) return;
  const bool newSecond = positionMs / 1000 != value() / 1000;
  const QSignalBlocker quiet(this);
  setValue(positionMs);
  if (!newSecond || !QAccessible::isActive()) return;
  setAccessibleDescription(
      shown_text("Player_Time_Of")
          .arg(QString::fromStdString(clock_text(positionMs)), QString::fromStdString(clock_text(maximum()))));
}

void TSeekBar::ShowLoudness(std::vector<unsigned char> loudness) {
  fLoudness = std::move(loudness);
  update();
}

QRect TSeekBar::Wave() const {
  return rect().adjusted(kMargin, 2, -kMargin, -kMarksHeight);
}

double TSeekBar::XOf(int32 timeMs) const {
  const QRect wave = Wave();
  return wave.left() + (maximum() > 0 ? static_cast<double>(wave.width()) * timeMs / maximum() : 0);
}

const int32* TSeekBar::MarkAt(QPointF where) const {
  if (!fMarksMs || fMarksMs->empty() || where.y() <= Wave().bottom()) return nullptr;
  const auto distance = [&](int32 markMs) { return std::abs(XOf(markMs) - where.x()); };
  const auto nearest =
      std::min_element(fMarksMs->begin(), fMarksMs->end(), [&](int32 a, int32 b) { return distance(a) < distance(b); });
  return distance(*nearest) <= kMarkReach ? &*nearest : nullptr;
}

int32 TSeekBar::MomentAt(QPointF where) const {
  if (const int32* const mark = MarkAt(where)) return *mark;
  const QRect wave = Wave();
  const double part = (where.x() - wave.left()) / std::max(wave.width(), 1);
  return static_cast<int32>(std::lround(std::clamp(part, 0.0, 1.0) * maximum()));
}

void TSeekBar::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  setSliderDown(true);
  setSliderPosition(MomentAt(event->position()));
}

void TSeekBar::mouseMoveEvent(QMouseEvent* event) {
  if (isSliderDown()) setSliderPosition(MomentAt(event->position()));
  ShowMoment(event->position(), event->globalPosition().toPoint());
}

void TSeekBar::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) setSliderDown(false);
}

void TSeekBar::ShowMoment(const QPointF& where, const QPoint& onScreen) {
  if (maximum() == 0) return;
  const int32* const mark = MarkAt(where);
  setCursor(mark ? Qt::PointingHandCursor : Qt::ArrowCursor);
  const QString text = mark ? shown_text("Player_Line_At").arg(exact_text(*mark)) : exact_text(MomentAt(where));
  QToolTip::showText(onScreen, text, this);
}

void TSeekBar::leaveEvent(QEvent* event) {
  QToolTip::hideText();
  QSlider::leaveEvent(event);
}

/** Scrolling must not seek by accident. */
void TSeekBar::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

/** Repaints only the area between the old and the new position, if that is at least one device pixel. */
void TSeekBar::sliderChange(SliderChange change) {
  if (change != SliderValueChange) return QSlider::sliderChange(change);
  const int x = static_cast<int>(XOf(sliderPosition()) * devicePixelRatioF());
  if (x == fShownX) return;
  const double left = std::min(x, fShownX) / devicePixelRatioF();
  const double right = std::max(x, fShownX) / devicePixelRatioF();
  fShownX = x;
  update(QRectF(left - kBarStep, 0, right - left + 2 * kBarStep, height()).toAlignedRect());
}

void TSeekBar::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  DrawRepeat(&painter);
  DrawLoudness(&painter, event->rect());
  DrawMarks(&painter);
  if (maximum() > 0) DrawPlace(&painter);
  if (!hasFocus()) return;
  QStyleOptionFocusRect frame;
  frame.initFrom(this);
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, &painter, this);
}

void TSeekBar::DrawLoudness(QPainter* painter, const QRect& dirty) const {
  const QRect wave = Wave();
  const double place = XOf(sliderPosition());
  const QColor played = palette().color(QPalette::Highlight);
  const QColor coming = faint(palette().color(QPalette::WindowText), 0.3);
  painter->setPen(Qt::NoPen);
  if (fLoudness.empty()) {
    const QRectF groove(wave.left(), wave.center().y() - kGrooveHeight / 2.0, wave.width(), kGrooveHeight);
    painter->setBrush(coming);
    painter->drawRoundedRect(groove, kGrooveHeight / 2.0, kGrooveHeight / 2.0);
    painter->setBrush(played);
    QRectF done = groove;
    done.setRight(place);
    if (place > groove.left()) painter->drawRoundedRect(done, kGrooveHeight / 2.0, kGrooveHeight / 2.0);
    return;
  }
  const int count = std::max(wave.width() / kBarStep, 1);
  const auto parts = static_cast<int>(fLoudness.size());
  for (int i = 0; i < count; ++i) {
    const double x = wave.left() + i * kBarStep;
    if (x + kBarStep < dirty.left() || x - kBarStep > dirty.right()) continue;
    const auto first = fLoudness.begin() + static_cast<long>(i) * parts / count;
    const auto last =
        fLoudness.begin() + std::max((static_cast<long>(i) + 1) * parts / count, first - fLoudness.begin() + 1);
    const double height = std::max(2.0, *std::max_element(first, last) / 255.0 * wave.height());
    painter->setBrush(x < place ? played : coming);
    painter->drawRoundedRect(QRectF(x, wave.center().y() + 0.5 - height / 2, kBarWidth, height), 1, 1);
  }
}

void TSeekBar::DrawRepeat(QPainter* painter) const {
  if (fRepeatFromMs < 0) return;
  const QColor color = palette().color(QPalette::Highlight);
  const double left = XOf(fRepeatFromMs);
  const double right = fRepeatToMs < 0 ? left : XOf(fRepeatToMs);
  painter->fillRect(QRectF(left, 0, right - left, Wave().bottom() + 2), faint(color, 0.2));
  painter->fillRect(QRectF(left - 1, 0, 2, Wave().bottom() + 2), faint(color, 0.8));
  if (fRepeatToMs >= 0) painter->fillRect(QRectF(right - 1, 0, 2, Wave().bottom() + 2), faint(color, 0.8));
}

void TSeekBar::DrawMarks(QPainter* painter) const {
  if (!fMarksMs || maximum() == 0) return;
  const double top = height() - kMarksHeight + 2;
  painter->setPen(Qt::NoPen);
  painter->setBrush(palette().color(QPalette::WindowText));
  for (const int32 markMs : *fMarksMs) {
    if (markMs < 0 || markMs > maximum()) continue;
    const double x = XOf(markMs);
    painter->drawPolygon(QPolygonF({QPointF(x, top), QPointF(x + 2.5, top + 7), QPointF(x - 2.5, top + 7)}));
  }
}

void TSeekBar::DrawPlace(QPainter* painter) const {
  painter->fillRect(QRectF(XOf(sliderPosition()) - 1, 0, 2, Wave().bottom() + 2),
                    palette().color(QPalette::WindowText));
}
