#pragma once

#include "platform/support/types.h"

/** How an open document is followed from outside. Whoever wants to asks once, and again when something was missed; the
    document's window then tells it what changes. Every notice of lines is numbered, so that a gap is seen. */
enum : uint32 {
  /** To the document, by way of the managers: messenger "Follower"; without it nobody follows any more. */
  kMsgFollowDocument = 'Sdfl',
  /** To the partner's manager: there is a document now that can be followed. */
  kMsgDocumentOpened = 'Sdop',
  /** To the follower. The whole: strings "Line", string "Title" (of its song, as far as known), "Path" (empty when it
      was never saved), int32 "Number". */
  kMsgDocumentWhole = 'Sdwh',
  /** From line int32 "First" on, int32 "Removed" lines give way to strings "Line"; int32 "Number". */
  kMsgDocumentLines = 'Sdln',
  kMsgDocumentClosed = 'Sdcl',
};
