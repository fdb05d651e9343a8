#pragma once

#include "platform/support/types.h"

class QWidget;

namespace display {

/** The desktop's workspaces on which a window is, a bit for each; all of them where the display tells of none. */
uint32 workspaces_of(const QWidget& window);

} // namespace display
