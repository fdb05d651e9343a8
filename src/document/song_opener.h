#pragma once

#include "platform/support/types.h"

#include <optional>
#include <string>

/** Decides when to search for the lyrics of the playing song: once for each song, a moment after it has become the
    current one and when it plays, unless the user has started or opened another document since. Pure; owned by the
    document's view. */
class TSongOpener {
public:
  /** To be called at every poll, with the title of the current song (empty for none) and the document's number. */
  bool IsDue(const std::string& title, bool isPlaying, int32 document, bigtime_t nowUs);

private:
  std::string fTitle;
  int32 fDocument = 0; // when the song became the current one
  std::optional<bigtime_t> fDueUs;
};
