#include "platform/interface/tab_peer.h"

#include "platform/display/accelerators.h"
#include "platform/display/display_thread.h"
#include "platform/display/scrolled_page.h"
#include "platform/display/view_peer_slot.h"

#include <QScrollBar>
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

void TabPeer::AddPage(const ViewPeer& page, const std::string& label, bool isScrolled) {
  Change([slot = SlotOf(page), label, isScrolled](QWidget* widget) {
    QWidget* const content = *slot->widget;
    if (content == nullptr) return;
    tabs(widget).addTab(isScrolled ? new ScrolledPage(content) : content, accelerated_label(label));
  });
}

void TabPeer::SetNeeded(int32 index, BPoint size) {
  Change([index, size](QWidget* widget) {
    const QSize needed(static_cast<int>(size.x) + 1, static_cast<int>(size.y) + 1);
    if (auto* const page = dynamic_cast<ScrolledPage*>(tabs(widget).widget(index))) page->SetNeeded(needed);
  });
}

void TabPeer::SetLabel(int32 index, const std::string& label) {
  Change([index, label](QWidget* widget) { tabs(widget).setTabText(index, accelerated_label(label)); });
}

PageRoom room_around_pages() {
  return call([] {
    QTabWidget sample;
    sample.addTab(new SamplePage, QStringLiteral("Xg"));
    const QSize around = sample.sizeHint() - SamplePage::kSize;
    return PageRoom{{static_cast<float>(around.width()), static_cast<float>(around.height())},
                    static_cast<float>(QScrollBar(Qt::Vertical).sizeHint().width())};
  });
}

} // namespace display
