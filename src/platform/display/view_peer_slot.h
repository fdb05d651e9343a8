#pragma once

#include "platform/display/display_thread.h"
#include "platform/interface/view_peer.h"

#include <QPointer>
#include <QWidget>

namespace display {

/** What a peer and the changes it posted share. */
struct ViewPeer::Slot {
  DisplayThreadOnly<QPointer<QWidget>> widget;
};

} // namespace display
