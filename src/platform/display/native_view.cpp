#include "platform/display/native_view.h"

#include "platform/interface/view_peer.h"

namespace display {

NativeView::NativeView(BRect frame, const char* name, uint32 resizingMode, std::function<QWidget*()> make)
    : BView(frame, name, resizingMode), fMake(std::move(make)) {}

std::shared_ptr<ViewPeer> NativeView::MakePeer() {
  return std::make_shared<ViewPeer>(BMessenger(this), Keys::to_control, fMake);
}

} // namespace display
