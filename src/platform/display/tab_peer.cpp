#include "platform/interface/tab_peer.h"

#include "platform/display/accelerators.h"
#include "platform/display/display_thread.h"
#include "platform/display/view_peer_slot.h"

#include <QTabBar>
#include <QTabWidget>

namespace display {

namespace {

struct SamplePage : QWidget {
  static constexpr QSize kSize{300, 200};
  QSize sizeHint() const override { return kSize; }
};

QTabWidget& tabs(QWidget* widget) {
  return *static_cast<QTabWidget*>(widget);
}

} // namespace

TabPeer::TabPeer(const BMessenger& view)
    : ViewPeer(view, Keys::to_control, []() -> QWidget* {
        auto* made = new QTabWidget;
        made->setFocusProxy(made->tabBar());
        return made;
      }) {}

void TabPeer::AddPage(const ViewPeer& page, const std::string& label) {
  Change([slot = SlotOf(page), label](QWidget* widget) {
    if (*slot->widget) tabs(widget).addTab(*slot->widget, accelerated_label(label));
  });
}

void TabPeer::SetLabel(int32 index, const std::string& label) {
  Change([index, label](QWidget* widget) { tabs(widget).setTabText(index, accelerated_label(label)); });
}

BPoint room_around_pages() {
  return call([] {
    QTabWidget sample;
    sample.addTab(new SamplePage, QStringLiteral("Xg"));
    const QSize around = sample.sizeHint() - SamplePage::kSize;
    return BPoint{static_cast<float>(around.width()), static_cast<float>(around.height())};
  });
}

} // namespace display
