#pragma once

#include "platform/interface/view.h"

#include <functional>

class QWidget;

namespace display {

/** A view whose widget the program makes itself: `make` runs on the display thread each time the view is attached. The
    view owns the widget, which handles keys and mouse itself. */
class NativeView : public BView {
public:
  NativeView(BRect frame, const char* name, uint32 resizingMode, std::function<QWidget*()> make);

protected:
  std::shared_ptr<ViewPeer> MakePeer() override;

private:
  std::function<QWidget*()> fMake;
};

} // namespace display
