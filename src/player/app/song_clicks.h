#pragma once

#include "platform/support/types.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

class BMessage;

/** When clicks are to be heard in the current song: at the tagged moments, by choice, and before a line that is about
   to be stamped again. */
class TSongClicks {
public:
  using TTimes = std::shared_ptr<const std::vector<int32>>;

  /** In ms, ascending; null for none. */
  void SetMarks(TTimes marksMs) { fMarksMs = std::move(marksMs); }
  /** kMsgHostCountIn. */
  void CountIn(const BMessage& message);
  /** The song was sought, or another one begins. */
  void EndCountIn() { fCountInMs.clear(); }
  /** All of them, ascending, if they have changed since the last call; else nothing. */
  std::optional<std::vector<int32>> Changed();

private:
  TTimes fMarksMs;
  std::vector<int32> fCountInMs;
  TTimes fSentMarksMs;
  std::vector<int32> fSentCountInMs;
};
