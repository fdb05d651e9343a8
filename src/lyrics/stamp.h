#pragma once

#include "lyrics/time_tags.h"

#include <optional>
#include <string>

/** What the keys of the tag input view do to a line. Times are in ms. Pure: any thread. */

enum class TTagForm { kStandard, kExtended };

struct TStampedLine {
  std::string line;
  std::optional<long> movedByMs; // from the tag that was replaced; none when the line had no tag
};

/** Puts a tag of that time in front of the line, in place of the one it begins with. */
TStampedLine stamp(const std::string& line, long timeMs, TTagForm form);

struct TNudgedLine {
  std::string line;
  long timeMs; // may lie outside what a tag can print
  long stepMs;
  TTagForm form;
};

/** Moves the line's tag by one unit of its own form. Nothing for a line without a tag. */
std::optional<TNudgedLine> nudge(const std::string& line, bool isLater);
/** Moves it by that many ms, which a tag without hundredths may not be able to show. */
std::optional<TNudgedLine> nudge_by(const std::string& line, long stepMs);
