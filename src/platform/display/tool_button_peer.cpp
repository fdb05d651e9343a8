#include "platform/interface/tool_button_peer.h"

#include "platform/display/control_widget.h"
#include "platform/display/convert.h"
#include "platform/display/image_icon.h"
#include "platform/display/known_value.h"

#include <QStyleOption>
#include <QStylePainter>
#include <QToolButton>

namespace display {

namespace {

/** The grid for which the images are designed. */
constexpr int kImageSize = 24;

constexpr int kOnMark = 2;
constexpr qreal kBadgeRadius = 4;
/** Seen on light and dark palettes. */
constexpr QColor kBadgeColor(0xe0, 0x6c, 0x1f);

/** Only the program changes whether it is on. On is also marked by a line, since some palettes hardly show a pressed
    button. */
class ToolButton : public ReturnClicks<QToolButton>, public ControlWidget {
public:
  explicit ToolButton(const BMessenger& view) {
    setIconSize({kImageSize, kImageSize});
    setAutoRaise(true);
    connect(this, &QToolButton::clicked, this, [view] { view.SendMessage(DISPLAY_CONTROL_WORKED); });
  }
  void ShowValue(int32 value) override {
    setCheckable(true);
    setChecked(value != 0);
  }
  void SetBadge(bool shown) {
    fHasBadge = shown;
    update();
  }

protected:
  void nextCheckState() override {}
  void paintEvent(QPaintEvent* event) override {
    QToolButton::paintEvent(event);
    if (fHasBadge) PaintBadge();
    if (!isChecked()) return;
    const QRect inside = rect().adjusted(kOnMark, 0, -kOnMark, 0);
    QPainter(this).fillRect(inside.left(), inside.bottom() + 1 - kOnMark, inside.width(), kOnMark,
                            palette().highlight());
  }

private:
  void PaintBadge() {
    QRect image(QPoint(), iconSize());
    image.moveCenter(rect().center());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::Window));
    painter.setBrush(kBadgeColor);
    painter.drawEllipse(QPointF(image.topRight()), kBadgeRadius, kBadgeRadius);
  }

  bool fHasBadge = false;
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

} // namespace

ToolButtonPeer::ToolButtonPeer(const BMessenger& view, const BBitmap& image)
    : ControlPeer(view, Keys::to_control, [view, bytes = image.Bytes()]() -> QWidget* {
        auto* made = new ToolButton(view);
        made->setIcon(image_icon(bytes));
        return made;
      }) {}

void ToolButtonPeer::SetFlat(bool flat) {
  Change([flat](QWidget* widget) { static_cast<ToolButton*>(widget)->setAutoRaise(flat); });
}

void ToolButtonPeer::SetBadge(bool shown) {
  Change([shown](QWidget* widget) { static_cast<ToolButton*>(widget)->SetBadge(shown); });
}

std::shared_ptr<ViewPeer> make_separator_peer(const BMessenger& view) {
  return std::make_shared<ViewPeer>(view, Keys::to_control, []() -> QWidget* { return new Separator; });
}

namespace {

KnownValue<ToolMetrics>& known_metrics() {
  static auto* const metrics = new KnownValue<ToolMetrics>; // never destroyed: threads may outlive main
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
