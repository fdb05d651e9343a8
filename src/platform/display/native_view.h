#pragma once

#include "platform/interface/view.h"

#include <functional>

class QWidget;

namespace display {

/** A view whose control is a Qt widget of the program's own. `make` runs on the display thread each time the view is
    attached; the widget belongs to the view. Keys and mouse stay with the widget. */
class NativeView : public BView {
public:
  NativeView(BRect frame, const char* name, uint32 resizingMode, std::function<QWidget*()> make);

protected:
  std::shared_ptr<ViewPeer> MakePeer() override;

private:
  std::function<QWidget*()> fMake;
};

} // namespace display
