#pragma once

#include "platform/support/types.h"

class BHandler;

/** What to be told of a file or folder. */
enum : uint32 {
  B_WATCH_NAME = 0x1,
  B_WATCH_STAT = 0x2,
  B_WATCH_ATTR = 0x4,
  B_WATCH_DIRECTORY = 0x8,
};
/** The notices' "opcode": what happened to the node, or to an entry of a watched folder. */
enum : int32 {
  B_ENTRY_CREATED = 1,
  B_ENTRY_REMOVED = 2,
  B_ENTRY_MOVED = 3,
  B_STAT_CHANGED = 4,
  B_ATTR_CHANGED = 5,
};

/** From now on the handler gets B_NODE_MONITOR messages (int32 "opcode"; string "name" for an entry of a folder) about
    the node that has the path at this moment; adds to its other watches. B_ENTRY_NOT_FOUND when there is none. When
    notices were lost, since too much changed at once, each watch gets one without a name: B_STAT_CHANGED where the
   flags ask for that, else B_ENTRY_MOVED. The handler must be attached to a looper; a notice for one that is gone is
   dropped. Any thread. */
status_t watch_node(const char* path, uint32 flags, const BHandler* handler);
/** Ends every watch of the handler. A notice that is on its way may still come. Any thread. */
status_t stop_watching(const BHandler* handler);
