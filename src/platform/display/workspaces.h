#pragma once

#include "platform/support/types.h"

class QWidget;

namespace display {

/** The workspaces that a window is on, one bit each; all bits where the platform has no such information. */
uint32 workspaces_of(const QWidget& window);

} // namespace display
