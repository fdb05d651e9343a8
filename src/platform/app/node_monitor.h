#pragma once

#include "platform/support/types.h"

class BHandler;

/** The events to be notified of. */
enum : uint32 {
  B_WATCH_NAME = 0x1,
  B_WATCH_STAT = 0x2,
  B_WATCH_ATTR = 0x4,
  B_WATCH_DIRECTORY = 0x8,
};
/** The "opcode" of a notice: what happened to the node, or to an entry of a watched folder. */
enum : int32 {
  B_ENTRY_CREATED = 1,
  B_ENTRY_REMOVED = 2,
  B_ENTRY_MOVED = 3,
  B_STAT_CHANGED = 4,
  B_ATTR_CHANGED = 5,
};

/** Sends the handler B_NODE_MONITOR messages (int32 "opcode"; string "name" for an entry of a folder) about the node
   that now has the path; adds to the handler's other watches. B_ENTRY_NOT_FOUND when there is none; other errors are
    logged. When notices were
   lost because too much changed at once, each watch gets one without a name: B_STAT_CHANGED if the flags include it,
   else B_ENTRY_MOVED. The handler must be attached to a looper; notices for one that is gone are dropped. Thread-safe.
 */
status_t watch_node(const char* path, uint32 flags, const BHandler* handler);
/** Ends every watch of the handler. A notice that was already sent may still arrive. Thread-safe. */
status_t stop_watching(const BHandler* handler);
