#pragma once

#include "platform/support/types.h"

#include <list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** The two dialects of lyrics files, which differ in their time tags: the family's `[mm:ss]` and `[mm:ss:cc]`, and the
    common one of most other programs, `[mm:ss.cc]` and `[mm:ss.ccc]`. The lines of a document always have the family's
    tags; those of a common file are converted when it is read and written. Pure: any thread. */

/** Which tags occur, in square brackets. */
struct TTagUse {
  bool hasFamily = false;
  bool hasCommon = false;
  bool hasOddCommon = false; // at the start of a line, not well-formed, as `[0:01.5]`
  bool IsCommon() const { return (hasCommon || hasOddCommon) && !hasFamily; }
  bool IsMixed() const { return hasCommon && hasFamily; }
};
TTagUse tags_used_in(const std::list<std::string>& lines);

/** What the converted lines do not hold of a common file, so that lines and tags that were not changed can be written
    back byte for byte. */
class TCommonSource {
public:
  bool hasByteOrderMark = false; // of UTF-8
  bool lacksLastLineEnd = false;
  int32 lineCount = 0;

  /** Only those lines with a tag that was written in another way than a save would write it, as `[00:01.234]` or
      `[0:01.2]`, and those with an equal tag. In the order of the file. */
  size_t CountLines() const { return fPlaces.size(); }
  /** In the file. */
  int32 IndexOf(size_t line) const { return fPlaces[line].index; }
  std::string_view TextOf(size_t line) const;
  /** The line with that index in the file. */
  std::optional<size_t> Find(int64 index) const;
  /** `index` is greater than that of the line before. */
  void AddLine(int32 index, std::string_view text);
  /** Room for so many lines and bytes, which saves copying while they are added. */
  void Reserve(size_t lineCount, size_t textSize);

  bool IsEmpty() const { return !hasByteOrderMark && !lacksLastLineEnd && fPlaces.empty(); }
  friend bool operator==(const TCommonSource&, const TCommonSource&) = default;

private:
  struct TPlace {
    int32 index;
    uint32 end; // in fTexts
    friend bool operator==(const TPlace&, const TPlace&) = default;
  };
  std::vector<TPlace> fPlaces;
  std::string fTexts; // one after the other: a string for each would double the time of opening a long file
};

/** True when one of the common tags has thousandths, other than 0, which the family's tags cannot hold. */
bool has_thousandths(const std::list<std::string>& lines);

/** Converts common tags, including some that are not well-formed (one digit instead of two, blanks inside the
    brackets), to `[mm:ss:cc]`; thousandths are cut. */
TCommonSource show_as_family(std::list<std::string>* lines);

/** The lines with common tags. A tag that is the same as in the source is written as it was there. */
std::vector<std::string> written_as_common(const std::vector<std::string>& lines, const TCommonSource& source);
