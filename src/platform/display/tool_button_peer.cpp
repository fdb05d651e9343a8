#include "platform/interface/tool_button_peer.h"

#include "platform/app/message.h"
#include "platform/display/convert.h"
#include "platform/display/image_icon.h"
#include "platform/display/known_value.h"

#include <QKeyEvent>
#include <QStyleOption>
#include <QStylePainter>
#include <QToolButton>

namespace display {

namespace {

/** The grid that the images are drawn on. */
constexpr int kImageSize = 24;

constexpr int kOnMark = 2;

/** Return works it too, and clicking never changes whether it is on: the program does. On is marked by a line as well,
    since some palettes hardly show that a button is pressed in. */
class ToolButton : public QToolButton {
public:
  explicit ToolButton(const BMessenger& view) {
    setIconSize({kImageSize, kImageSize});
    setAutoRaise(true);
    connect(this, &QToolButton::clicked, this, [view] { view.SendMessage(DISPLAY_CONTROL_WORKED); });
  }

protected:
  void nextCheckState() override {}
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return click();
    QToolButton::keyPressEvent(event);
  }
  void paintEvent(QPaintEvent* event) override {
    QToolButton::paintEvent(event);
    if (!isChecked()) return;
    const QRect inside = rect().adjusted(kOnMark, 0, -kOnMark, 0);
    QPainter(this).fillRect(inside.left(), inside.bottom() + 1 - kOnMark, inside.width(), kOnMark,
                            palette().highlight());
  }
};

class Separator : public QWidget {
protected:
  void paintEvent(QPaintEvent*) override {
    QStylePainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    option.state |= QStyle::State_Horizontal;
    painter.drawPrimitive(QStyle::PE_IndicatorToolBarSeparator, option);
  }
};

ToolButton& button(QWidget* widget) {
  return *static_cast<ToolButton*>(widget);
}

} // namespace

ToolButtonPeer::ToolButtonPeer(const BMessenger& view, const BBitmap& image)
    : ViewPeer(view, Keys::to_control, [view, bytes = image.Bytes()]() -> QWidget* {
        auto* made = new ToolButton(view);
        made->setIcon(image_icon(bytes));
        return made;
      }) {}

void ToolButtonPeer::SetPressed(bool pressed) {
  Change([pressed](QWidget* widget) {
    button(widget).setCheckable(true);
    button(widget).setChecked(pressed);
  });
}

void ToolButtonPeer::SetFlat(bool flat) {
  Change([flat](QWidget* widget) { button(widget).setAutoRaise(flat); });
}

std::shared_ptr<ViewPeer> make_separator_peer(const BMessenger& view) {
  return std::make_shared<ViewPeer>(view, Keys::to_control, []() -> QWidget* { return new Separator; });
}

namespace {

KnownValue<ToolMetrics>& known_metrics() {
  static auto* const metrics = new KnownValue<ToolMetrics>; // outlives every thread that may still ask
  return *metrics;
}

} // namespace

ToolMetrics tool_metrics() {
  return known_metrics().Get();
}

void learn_tool_metrics() {
  QToolButton sample;
  sample.setIconSize({kImageSize, kImageSize});
  sample.setAutoRaise(true);
  sample.setIcon(QIcon(QPixmap(kImageSize, kImageSize)));
  const int separator = sample.style()->pixelMetric(QStyle::PM_ToolBarSeparatorExtent, nullptr, &sample);
  known_metrics().Learn({size_of(sample.sizeHint()), static_cast<float>(separator)});
}

} // namespace display
