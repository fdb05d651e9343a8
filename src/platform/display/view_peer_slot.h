#pragma once

#include "platform/interface/view_peer.h"

#include <QPointer>
#include <QWidget>

namespace display {

/** What a peer and the changes it posted share. Touched on the display thread only. */
struct ViewPeer::Slot {
  QPointer<QWidget> widget;
};

} // namespace display
