#include "platform/interface/pixel_peer.h"

#include "platform/app/message.h"
#include "platform/display/convert.h"
#include "platform/display/picture_painter.h"
#include "platform/interface/interface_defs.h"
#include "platform/kernel/modifiers.h"

#include <QMouseEvent>
#include <QPainter>
#include <QShortcut>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace display {

namespace {

constexpr qreal kHandleReach = 5;
constexpr float kWheelStep = 120;
constexpr int kLineWidth = 2;

/** Image and picture are painted once into a pixmap, of which a moved line repaints two narrow stripes. */
class PixelWidget : public QWidget {
public:
  explicit PixelWidget(BMessenger view) : fView(std::move(view)) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    for (const auto key : {Qt::Key_Plus, Qt::Key_Equal}) AddZoomKey(Qt::CTRL | key, '+', key);
    AddZoomKey(Qt::CTRL | Qt::Key_Minus, '-', Qt::Key_Minus);
    AddZoomKey(Qt::CTRL | Qt::Key_0, '0', Qt::Key_0);
  }

  void SetPixels(pixel_image image) {
    fPixels = std::move(image);
    Repaint();
  }

  void SetPicture(BPicture picture) {
    fPicture = std::move(picture);
    Repaint();
  }

  void SetLine(std::optional<float> x, const QColor& color) {
    if (x == fLine && color == fLineColor) return;
    update(LineRect());
    fLine = x;
    fLineColor = color;
    update(LineRect());
  }

  void SetHandles(std::vector<float> xs) { fHandles = std::move(xs); }

protected:
  void paintEvent(QPaintEvent* event) override {
    if (devicePixelRatioF() != fScale) SendScale();
    if (fBackground.isNull() || fBackground.size() != (QSizeF(size()) * fScale).toSize()) PaintBackground();
    QPainter painter(this);
    painter.setClipRect(event->rect());
    painter.drawPixmap(0, 0, fBackground);
    if (fLine) painter.fillRect(LineRect(), fLineColor);
    if (hasFocus()) {
      painter.setPen(palette().color(QPalette::Highlight));
      painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
  }

  void mousePressEvent(QMouseEvent* event) override {
    if (event->button() != Qt::LeftButton) return QWidget::mousePressEvent(event);
    setFocus(Qt::MouseFocusReason);
    SendMouse(MouseAction::kDown, *event, event->position());
  }
  void mouseDoubleClickEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton) SendMouse(MouseAction::kDoubled, *event, event->position());
  }
  void mouseMoveEvent(QMouseEvent* event) override {
    if (event->buttons() & Qt::LeftButton) return SendMouse(MouseAction::kDragged, *event, event->position());
    const qreal x = event->position().x();
    const auto isNear = [x](float handle) { return std::abs(x - static_cast<qreal>(handle)) <= kHandleReach; };
    setCursor(std::ranges::any_of(fHandles, isNear) ? Qt::SizeHorCursor : Qt::ArrowCursor);
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton) SendMouse(MouseAction::kUp, *event, event->position());
  }
  void wheelEvent(QWheelEvent* event) override {
    const QPoint turned = event->angleDelta();
    const int steps = turned.y() != 0 ? turned.y() : turned.x();
    SendMouse(MouseAction::kWheel, *event, event->position(), static_cast<float>(steps) / kWheelStep);
  }

private:
  QRect LineRect() const {
    return fLine ? QRect(static_cast<int>(std::lround(*fLine)) - kLineWidth / 2, 0, kLineWidth, height()) : QRect();
  }

  void Repaint() {
    fBackground = QPixmap();
    update();
  }

  void PaintBackground() {
    fBackground = QPixmap((QSizeF(size()) * fScale).toSize());
    fBackground.setDevicePixelRatio(fScale);
    fBackground.fill(palette().color(QPalette::Window));
    QPainter painter(&fBackground);
    if (!fPixels.pixels.empty()) {
      const auto* bytes = reinterpret_cast<const uchar*>(fPixels.pixels.data());
      painter.drawImage(rect(), QImage(bytes, fPixels.width, fPixels.height, QImage::Format_RGB32));
    }
    paint_picture(painter, fPicture);
  }

  void AddZoomKey(const QKeySequence& keys, char byte, int key) {
    auto* const shortcut = new QShortcut(keys, this);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, [this, byte, key] {
      BMessage press(B_KEY_DOWN);
      press.AddString("bytes", std::string(1, byte));
      press.AddInt32("modifiers", static_cast<int32>(B_COMMAND_KEY));
      press.AddInt32("key_repeat", 0);
      press.AddInt32("key_code", key);
      Send(press);
    });
  }

  void SendMouse(MouseAction action, const QInputEvent& event, const QPointF& where, float steps = 0) {
    const Qt::KeyboardModifiers down = event.modifiers();
    uint32 held = 0;
    if (down & Qt::ShiftModifier) held |= B_SHIFT_KEY;
    if (down & Qt::ControlModifier) held |= B_COMMAND_KEY;
    if (down & Qt::AltModifier) held |= B_CONTROL_KEY;
    BMessage used(DISPLAY_MOUSE);
    used.AddInt32("action", static_cast<int32>(action));
    used.AddFloat("x", static_cast<float>(where.x()));
    used.AddFloat("y", static_cast<float>(where.y()));
    used.AddInt32("modifiers", static_cast<int32>(held));
    if (action == MouseAction::kWheel) used.AddFloat("steps", steps);
    Send(used);
  }

  void SendScale() {
    fScale = devicePixelRatioF();
    BMessage changed(DISPLAY_SCALE_CHANGED);
    changed.AddFloat("scale", static_cast<float>(fScale));
    Send(changed);
  }

  void Send(const BMessage& message) const { fView.SendMessage(&message, BMessenger(), 0); }

  const BMessenger fView;
  pixel_image fPixels;
  BPicture fPicture;
  QPixmap fBackground;
  std::optional<float> fLine;
  QColor fLineColor;
  std::vector<float> fHandles;
  qreal fScale = 1;
};

PixelWidget& pixels(QWidget* widget) {
  return *static_cast<PixelWidget*>(widget);
}

} // namespace

PixelPeer::PixelPeer(const BMessenger& view)
    : ViewPeer(view, Keys::to_program_with_commands, [view]() -> QWidget* { return new PixelWidget(view); }) {}

void PixelPeer::SetPixels(pixel_image image) {
  Change([image = std::move(image)](QWidget* widget) { pixels(widget).SetPixels(image); });
}

void PixelPeer::SetPicture(BPicture picture) {
  Change([picture = std::move(picture)](QWidget* widget) { pixels(widget).SetPicture(picture); });
}

void PixelPeer::SetLine(std::optional<float> x, rgb_color color) {
  Change([=](QWidget* widget) { pixels(widget).SetLine(x, to_qcolor(color)); });
}

void PixelPeer::SetHandles(std::vector<float> xs) {
  Change([xs = std::move(xs)](QWidget* widget) { pixels(widget).SetHandles(xs); });
}

} // namespace display
