#include "lyrics/dialect.h"

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace {

/** Length of `[mm:ss:cc]` and `[mm:ss.cc]`, and where they differ. */
constexpr size_t kTagLength = 10;
constexpr size_t kSeparator = 6;

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

/** Reads the parts of a tag, one after the other. */
class TTagReader {
public:
  TTagReader(std::string_view line, size_t at) : fLine(line), fAt(at) {}

  bool Skip(char c) {
    const bool isThere = fAt < fLine.size() && fLine[fAt] == c;
    fAt += isThere ? 1 : 0;
    return isThere;
  }
  void SkipBlanks() {
    for (int i = 0; i < kMostBlanks && Skip(' '); ++i) continue;
  }
  /** At most `most` digits. */
  std::string_view Digits(size_t most) {
    const size_t start = fAt;
    while (fAt < fLine.size() && fAt - start < most && is_digit(fLine[fAt])) ++fAt;
    return fLine.substr(start, fAt - start);
  }
  size_t Position() const { return fAt; }

private:
  static constexpr int kMostBlanks = 2;
  std::string_view fLine;
  size_t fAt;
};

/** A time tag of the common dialect. */
struct TCommonTag {
  size_t length = 0;
  bool isWellFormed = false;
  bool hasThousandths = false;
  std::array<char, kTagLength + 1> shown{}; // `[mm:ss:cc]`
};

void put_two_digits(std::string_view digits, char* to) {
  to[0] = digits.size() > 1 ? digits[0] : '0';
  to[1] = digits.back();
}

bool are_digits(const char* two) {
  return is_digit(two[0]) && is_digit(two[1]);
}

/** True for `[mm:ss` and the separator; nearly every tag of a long file begins like that. */
bool begins_tag(std::string_view line, size_t at, char separator) {
  const char* const tag = line.data() + at;
  return line.size() - at > kSeparator && tag[0] == '[' && are_digits(tag + 1) && tag[3] == ':' &&
         are_digits(tag + 4) && tag[kSeparator] == separator;
}

/** True for the rest of `[mm:ss:cc]` or `[mm:ss.cc]`. */
bool ends_tag(std::string_view line, size_t at) {
  return line.size() - at >= kTagLength && are_digits(line.data() + at + kSeparator + 1) &&
         line[at + kTagLength - 1] == ']';
}

/** True for a well-formed `[mm:ss.ccc]`. */
bool is_thousandths_tag(std::string_view line, size_t at) {
  constexpr size_t kLastDigit = kTagLength - 1;
  return begins_tag(line, at, '.') && line.size() - at > kTagLength && are_digits(line.data() + at + kSeparator + 1) &&
         is_digit(line[at + kLastDigit]) && line[at + kTagLength] == ']';
}

bool is_exact_tag(std::string_view line, size_t at) {
  return begins_tag(line, at, '.') && ends_tag(line, at);
}

/** The family's tag at that position; its length, or 0. */
size_t family_tag_length(std::string_view line, size_t at) {
  if (begins_tag(line, at, ']')) return kSeparator + 1;
  return begins_tag(line, at, ':') && ends_tag(line, at) ? kTagLength : 0;
}

/** Stores `[mm:ss:cc]` for the `[mm:ss.ccc]` at that position. */
void show_thousandths(std::string_view line, size_t at, char* shown) {
  line.copy(shown, kTagLength, at);
  shown[kSeparator] = ':';
  shown[kTagLength - 1] = ']';
}

std::optional<TCommonTag> common_tag_at(std::string_view line, size_t at) {
  TTagReader reader(line, at);
  if (!reader.Skip('[')) return {};
  reader.SkipBlanks();
  const std::string_view minutes = reader.Digits(2);
  if (minutes.empty() || !reader.Skip(':')) return {};
  const std::string_view seconds = reader.Digits(2);
  if (seconds.empty() || !reader.Skip('.')) return {};
  const std::string_view fraction = reader.Digits(3);
  reader.SkipBlanks();
  if (fraction.empty() || !reader.Skip(']')) return {};
  TCommonTag tag{reader.Position() - at, false, false, {"[00:00:00]"}};
  tag.isWellFormed = fraction.size() > 1 && tag.length == kTagLength - 2 + fraction.size();
  tag.hasThousandths = fraction.size() > 2 && fraction[2] != '0';
  put_two_digits(minutes, &tag.shown[1]);
  put_two_digits(seconds, &tag.shown[4]);
  tag.shown[7] = fraction[0];
  if (fraction.size() > 1) tag.shown[8] = fraction[1];
  return tag;
}

/** A set of the times that `[mm:ss:cc]` can hold. */
class TTimes {
public:
  void Add(std::string_view tag) {
    if (fHas.empty()) fHas.resize(kCount);
    fHas[IndexOf(tag)] = true;
  }
  bool IsEmpty() const { return fHas.empty(); }
  bool Has(std::string_view tag) const { return fHas[IndexOf(tag)]; }

private:
  static constexpr size_t kCount = 1000000;
  static size_t IndexOf(std::string_view tag) {
    size_t index = 0;
    for (const size_t at : {1, 2, 4, 5, 7, 8}) index = index * 10 + static_cast<size_t>(tag[at] - '0');
    return index;
  }
  std::vector<bool> fHas;
};

/** Calls `visit(position)` for each `[mm:ss:cc]` until it returns false. */
template <typename Visit>
void for_each_extended_tag(std::string_view line, Visit visit) {
  for (size_t at = line.find('['); at != std::string_view::npos; at = line.find('[', at)) {
    const size_t length = family_tag_length(line, at);
    if (length == kTagLength && !visit(at)) return;
    at += std::max(length, size_t{1});
  }
}

bool has_one_of(std::string_view line, const TTimes& times) {
  bool hasOne = false;
  for_each_extended_tag(line, [&](size_t at) { return !(hasOne = times.Has(line.substr(at, kTagLength))); });
  return hasOne;
}

/** Writes the tags of a line. `tag_at(position)` returns the text for a `[mm:ss:cc]`, or an empty one for the usual
    form. */
template <typename TagAt>
void write_line(std::string* line, TagAt tag_at) {
  for (size_t at = line->find('['); at != std::string::npos; at = line->find('[', at)) {
    const size_t length = family_tag_length(*line, at);
    const std::string_view text = length == kTagLength ? tag_at(at) : std::string_view();
    if (!text.empty()) {
      line->replace(at, length, text);
    } else if (length == kTagLength) {
      (*line)[at + kSeparator] = '.';
    } else if (length > 0) {
      line->insert(at + kSeparator, ".00");
    }
    at += text.empty() ? (length > 0 ? kTagLength : 1) : text.size();
  }
}

void write_line(std::string* line) {
  write_line(line, [](size_t) { return std::string_view(); });
}

std::string written(std::string line) {
  write_line(&line);
  return line;
}

/** Calls `odd(position, shown tag)` for each tag that is not written as a save writes it, before it is replaced. */
template <typename Odd>
void show_line(std::string* line, Odd odd) {
  for (size_t at = line->find('['); at != std::string::npos; at = line->find('[', at)) {
    if (is_exact_tag(*line, at)) {
      (*line)[at + kSeparator] = ':';
      at += kTagLength;
    } else if (is_thousandths_tag(*line, at)) {
      char tag[kTagLength];
      show_thousandths(*line, at, tag);
      odd(at, std::string_view(tag, kTagLength));
      std::copy_n(tag, kTagLength, line->begin() + static_cast<std::ptrdiff_t>(at));
      line->erase(at + kTagLength, 1);
      at += kTagLength;
    } else if (const std::optional<TCommonTag> tag = common_tag_at(*line, at)) {
      odd(at, std::string_view(tag->shown.data(), kTagLength));
      line->replace(at, tag->length, tag->shown.data());
      at += kTagLength;
    } else {
      ++at;
    }
  }
}

std::string shown(std::string line) {
  show_line(&line, [](size_t, std::string_view) {});
  return line;
}

/** Writes a changed line with those tags of its original that are the same; nothing without any. */
std::optional<std::string> written_like(std::string line, std::string_view original) {
  std::vector<std::pair<std::string, std::string>> tags; // as shown, as in the file
  for (size_t at = original.find('['); at != std::string_view::npos; at = original.find('[', at + 1)) {
    if (const auto tag = common_tag_at(original, at))
      tags.emplace_back(tag->shown.data(), original.substr(at, tag->length));
  }
  std::vector<bool> isUsed(tags.size());
  write_line(&line, [&](size_t at) {
    const std::string_view text = std::string_view(line).substr(at, kTagLength);
    for (size_t i = 0; i < tags.size(); ++i) {
      if (!isUsed[i] && tags[i].first == text) {
        isUsed[i] = true;
        return std::string_view(tags[i].second);
      }
    }
    return std::string_view();
  });
  if (std::ranges::none_of(isUsed, std::identity())) return {};
  return line;
}

/** Finds for each line of a document the line of the source that it was. First those that were not changed, in the
    order of the file; then, for those with another text, the line in the same place. */
class TSourceLines {
public:
  TSourceLines(const TCommonSource& source, size_t lineCount) : fSource(source), fLineCount(lineCount) {
    const size_t count = source.CountLines();
    fShown.reserve(count);
    fFirstEqual.reserve(count);
    for (size_t i = 0; i < count; ++i) {
      fShown.push_back(shown(std::string(source.TextOf(i))));
      for_each_extended_tag(fShown.back(), [this](size_t at) {
        fTimes.Add(std::string_view(fShown.back()).substr(at, kTagLength));
        return true;
      });
    }
    fNextEqual.resize(count, kNone);
    fUsed.resize(count);
    for (size_t i = count; i-- > 0;) {
      size_t& first = fFirstEqual.try_emplace(fShown[i], kNone).first->second;
      fNextEqual[i] = std::exchange(first, i);
    }
  }

  /** Without a time of the source a line has no original. */
  bool MayHave(std::string_view line) const { return !fTimes.IsEmpty() && has_one_of(line, fTimes); }

  /** The original of a line that was not changed; each is returned once. */
  std::optional<size_t> TakeEqual(const std::string& line) {
    const auto found = fFirstEqual.find(line);
    if (found == fFirstEqual.end() || found->second == kNone) return {};
    const size_t original = found->second;
    found->second = fNextEqual[original];
    fUsed[original] = true;
    return original;
  }

  /** Writes a line with another text like the line of that number in the file. Nothing if that has none of its tags, or
      is another line's original. */
  std::optional<std::string> WrittenLike(const std::string& line, int64 index) {
    const std::optional<size_t> original = fSource.Find(index);
    if (!original || fUsed[*original]) return {};
    std::optional<std::string> written = written_like(line, fSource.TextOf(*original));
    fUsed[*original] = written.has_value();
    return written;
  }

  /** By how much the lines at the end have moved. */
  int64 EndShift() const { return int64{fSource.lineCount} - static_cast<int64>(fLineCount); }
  int64 ShiftOf(size_t original, size_t line) const {
    return int64{fSource.IndexOf(original)} - static_cast<int64>(line);
  }
  std::string_view Text(size_t original) const { return fSource.TextOf(original); }

private:
  static constexpr size_t kNone = static_cast<size_t>(-1);

  const TCommonSource& fSource;
  const size_t fLineCount; // of the document
  std::vector<std::string> fShown;
  std::unordered_map<std::string_view, size_t> fFirstEqual; // that was not taken
  std::vector<size_t> fNextEqual;
  std::vector<bool> fUsed;
  TTimes fTimes;
};

/** For each line without an original: by how much the next line that has one has moved. */
std::vector<int64> shifts_of_next(const std::vector<std::optional<size_t>>& originals, const TSourceLines& source) {
  std::vector<int64> shifts(originals.size());
  int64 shift = source.EndShift();
  for (size_t i = originals.size(); i-- > 0;) {
    if (originals[i]) shift = source.ShiftOf(*originals[i], i);
    shifts[i] = shift;
  }
  return shifts;
}

void reserve_for(const std::list<std::string>& lines, TCommonSource* source) {
  size_t size = 0;
  for (const std::string& line : lines) size += line.size();
  source->Reserve(lines.size(), size);
}

/** Adds a line with an odd tag at `at`; what follows is as in the file, the tags before it are converted already. */
void add_odd_line(TCommonSource* source, const std::string& line, size_t at) {
  const bool isOnlyTag = at == 0 && line.find('[', 1) == std::string::npos;
  source->AddLine(source->lineCount, isOnlyTag ? std::string_view(line) : written(line));
}

/** A line without an odd tag. */
struct TPlainLine {
  int32 index;
  const std::string* text;
};

/** Adds the lines whose tags are as a save writes them, but equal to one that is not. */
void add_equal_lines(TCommonSource* source, const std::vector<TPlainLine>& plainLines, const TTimes& oddTimes) {
  TCommonSource all;
  size_t odd = 0;
  const auto add_odd_before = [&](int32 index) {
    for (; odd < source->CountLines() && source->IndexOf(odd) < index; ++odd)
      all.AddLine(source->IndexOf(odd), source->TextOf(odd));
  };
  for (const TPlainLine& line : plainLines) {
    if (!has_one_of(*line.text, oddTimes)) continue;
    add_odd_before(line.index);
    all.AddLine(line.index, written(*line.text));
  }
  if (all.CountLines() == 0) return;
  add_odd_before(source->lineCount);
  all.lineCount = source->lineCount;
  *source = std::move(all);
}

} // namespace

std::string_view TCommonSource::TextOf(size_t line) const {
  const size_t start = line == 0 ? 0 : fPlaces[line - 1].end;
  return std::string_view(fTexts).substr(start, fPlaces[line].end - start);
}

std::optional<size_t> TCommonSource::Find(int64 index) const {
  const auto found = std::ranges::lower_bound(fPlaces, index, {}, &TPlace::index);
  if (found == fPlaces.end() || found->index != index) return {};
  return static_cast<size_t>(found - fPlaces.begin());
}

void TCommonSource::AddLine(int32 index, std::string_view text) {
  fTexts += text;
  fPlaces.push_back({index, static_cast<uint32>(fTexts.size())});
}

void TCommonSource::Reserve(size_t count, size_t textSize) {
  fPlaces.reserve(count);
  fTexts.reserve(textSize);
}

TTagUse tags_used_in(const std::list<std::string>& lines) {
  TTagUse use;
  for (const std::string& line : lines) {
    for (size_t at = line.find('['); at != std::string::npos; at = line.find('[', at + 1)) {
      if (is_exact_tag(line, at) || is_thousandths_tag(line, at))
        use.hasCommon = true;
      else if (family_tag_length(line, at) > 0)
        use.hasFamily = true;
      else if (const auto tag = common_tag_at(line, at))
        (tag->isWellFormed ? use.hasCommon : use.hasOddCommon) |= tag->isWellFormed || at == 0;
    }
    if (use.IsMixed()) break;
  }
  return use;
}

bool has_thousandths(const std::list<std::string>& lines) {
  return std::ranges::any_of(lines, [](const std::string& line) {
    for (size_t at = line.find('['); at != std::string::npos; at = line.find('[', at + 1))
      if (const auto tag = common_tag_at(line, at); tag && tag->hasThousandths) return true;
    return false;
  });
}

TCommonSource show_as_family(std::list<std::string>* lines) {
  TCommonSource source;
  TTimes oddTimes;
  std::vector<TPlainLine> plainLines;
  for (std::string& line : *lines) {
    bool isOdd = false;
    show_line(&line, [&](size_t at, std::string_view tag) {
      if (oddTimes.IsEmpty()) reserve_for(*lines, &source);
      oddTimes.Add(tag);
      if (!std::exchange(isOdd, true)) add_odd_line(&source, line, at);
    });
    if (!isOdd && !oddTimes.IsEmpty()) plainLines.push_back({source.lineCount, &line});
    ++source.lineCount;
  }
  if (source.CountLines() == 0) return source;
  std::vector<TPlainLine> firstLines;
  for (auto line = lines->begin(); std::cmp_less(firstLines.size(), source.IndexOf(0)); ++line)
    firstLines.push_back({static_cast<int32>(firstLines.size()), &*line});
  plainLines.insert(plainLines.begin(), firstLines.begin(), firstLines.end());
  add_equal_lines(&source, plainLines, oddTimes);
  return source;
}

std::vector<std::string> written_as_common(const std::vector<std::string>& lines, const TCommonSource& source) {
  std::vector<std::string> result = lines;
  if (source.CountLines() == 0) {
    for (std::string& line : result) write_line(&line);
    return result;
  }
  TSourceLines sourceLines(source, lines.size());
  std::vector<std::optional<size_t>> originals(lines.size());
  for (size_t i = 0; i < lines.size(); ++i) originals[i] = sourceLines.TakeEqual(lines[i]);
  const std::vector<int64> nextShifts = shifts_of_next(originals, sourceLines);
  int64 lastShift = 0;
  for (size_t i = 0; i < lines.size(); ++i) {
    const auto number = static_cast<int64>(i);
    if (originals[i]) {
      lastShift = sourceLines.ShiftOf(*originals[i], i);
      result[i] = sourceLines.Text(*originals[i]);
      continue;
    }
    std::optional<std::string> written;
    if (sourceLines.MayHave(lines[i])) {
      written = sourceLines.WrittenLike(lines[i], number + lastShift);
      if (!written) written = sourceLines.WrittenLike(lines[i], number + nextShifts[i]);
    }
    if (written)
      result[i] = std::move(*written);
    else
      write_line(&result[i]);
  }
  return result;
}
