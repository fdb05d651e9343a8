#include "lyrics/word_lines.h"

#include "lyrics/bulk_tags.h"
#include "lyrics/tagged_text.h"
#include "lyrics/time_tags.h"
#include "lyrics/word_units.h"

#include <optional>

namespace {

/** The time of the line's own tag, as bulk_tags.h reads it. */
std::optional<long> own_time(const std::string& line) {
  long timeMs = 0;
  bool isExtended = false;
  return time_tag_to_time(line, &timeMs, &isExtended) ? std::optional(timeMs) : std::nullopt;
}

/** `change` gets each line with times within it, as it was and with its own tag changed already. */
template <typename Change>
void change_word_lines(const std::vector<std::string>& before, std::list<std::string>* lines, Change change) {
  auto old = before.begin();
  for (std::string& line : *lines) {
    if (has_word_times(*old)) change(*old, &line);
    ++old;
  }
}

} // namespace

bool has_word_times(const std::string& line) {
  return line.find_first_of("[<", 1) != std::string::npos && !TTaggedText(line).tags.empty();
}

/** Words move with their line, in the steps of its own tag. */
void shift_tags_and_words(std::list<std::string>* lines, long offsetMs) {
  const std::vector<std::string> before(lines->begin(), lines->end());
  shift_time_tags(lines, offsetMs);
  const long standardMs = shift_step(offsetMs, false);
  const long extendedMs = shift_step(offsetMs, true);
  change_word_lines(before, lines, [=](const std::string& old, std::string* line) {
    long timeMs = 0;
    bool isExtended = true;
    time_tag_to_time(old, &timeMs, &isExtended);
    TTaggedText timed(*line);
    timed.Shift(isExtended ? extendedMs : standardMs);
    *line = timed.Line();
  });
}

void convert_tags_and_words(std::list<std::string>* lines, bool toExtended) {
  const std::vector<std::string> before(lines->begin(), lines->end());
  convert_time_tags(lines, toExtended);
  change_word_lines(before, lines, [=](const std::string&, std::string* line) {
    TTaggedText timed(*line);
    timed.Convert(toExtended);
    timed.Shift(0); // the line's own tag may have been rounded up
    *line = timed.Line();
  });
}

void delete_tags_and_words(std::list<std::string>* lines) {
  for (std::string& line : *lines)
    if (has_word_times(line)) line = without_word_times(line);
  delete_time_tags(lines);
}

std::string with_words_moved(const std::string& before, const std::string& after) {
  TTaggedText timed(after);
  timed.Shift(own_time(after).value_or(0) - own_time(before).value_or(0));
  return timed.Line();
}

std::string without_word_times(const std::string& line) {
  TTaggedText timed(line);
  timed.tags.clear();
  return timed.Line();
}

std::string without_times(const std::string& line) {
  TTaggedText timed(line);
  timed.lead.clear();
  timed.tags.clear();
  return timed.Line();
}

std::string with_word_times_of(const std::string& from, const std::string& to) {
  const TTaggedText source(from);
  const TTaggedText target(to);
  const bool isEqual = without_unit_marks(source.text) == without_unit_marks(target.text);
  if (!isEqual || source.tags.empty() || source.lead.empty() || target.lead.empty()) return to;
  TTaggedText copy(target.lead + from.substr(source.lead.size()));
  copy.Shift(own_time(target.lead).value_or(0) - own_time(source.lead).value_or(0));
  return copy.Line();
}

bool write_words_as(TWordForm form, std::list<std::string>* lines) {
  bool isCut = false;
  for (std::string& line : *lines) {
    if (!has_word_times(line)) continue;
    TTaggedText timed(line);
    isCut |= timed.WriteAs(form);
    line = timed.Line();
  }
  return isCut;
}
