#pragma once

#include "platform/support/types.h"

/** Subscription to an open document. A subscriber sends kMsgFollowDocument once, and again after it missed a notice;
    the document's window then sends it every change. Notices are numbered, so that a gap is noticed. */
enum : uint32 {
  /** To the document, by way of the managers: messenger "Follower"; without it the subscription ends. */
  kMsgFollowDocument = 'Sdfl',
  /** To the partner's manager: a document was opened and can be followed. */
  kMsgDocumentOpened = 'Sdop',
  /** To the subscriber, the whole document: strings "Line", string "Title" (of its song, if known), "Path" (empty if
      never saved), int32 "Number". */
  kMsgDocumentWhole = 'Sdwh',
  /** From line int32 "First", int32 "Removed" lines are replaced by strings "Line"; int32 "Number". */
  kMsgDocumentLines = 'Sdln',
  kMsgDocumentClosed = 'Sdcl',
};
