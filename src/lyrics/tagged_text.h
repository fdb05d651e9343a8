#pragma once

#include "lyrics/stamp.h"

#include <optional>
#include <string>
#include <vector>

/** How a time within a line is written: `[mm:ss:cc]`, or `<mm:ss.cc>` in the common dialect. */
enum class TWordForm { kFamily, kCommon };

/** A time tag of that form. */
std::string word_tag(long timeMs, TWordForm form);

/** A time tag within a line. */
struct TInnerTag {
  size_t at; // in bytes of the text without tags
  long timeMs;
  std::string text; // as written

  /** Another time, in the form in which the tag is written. */
  void SetTime(long newMs);
};

/** A line taken apart: the tags that it begins with, its text, and the tags within it by position. What is not changed
    keeps its bytes. Pure: one thread at a time. */
struct TTaggedText {
  TTaggedText() = default;
  explicit TTaggedText(const std::string& line);

  std::string Line() const;
  /** Of the first tag that the line begins with. */
  std::optional<long> LineMs() const;
  /** The form of the tags that it has already, else that one. */
  TWordForm FormOr(TWordForm form) const;

  /** Moves the times within the line, none of them to before the line. */
  void Shift(long stepMs);
  /** Gives the tags in square brackets hundredths, or rounds them to seconds. */
  void Convert(bool toExtended);
  /** Writes them in that form. Returns true if thousandths were cut. */
  bool WriteAs(TWordForm form);
  /** Removes tags from that one on that are earlier than the time. */
  void RemoveEarlier(size_t firstTag, long timeMs);

  std::string lead;
  std::string text;
  std::vector<TInnerTag> tags;
};
