#include "language/text_escapes.h"

namespace {

/** Length of the run of '#' that ends at `place`, inclusive. */
size_t hash_run_length(std::string_view text, size_t place) {
  const size_t before = text.substr(0, place + 1).find_last_not_of('#');
  return before == std::string_view::npos ? place + 1 : place - before;
}

} // namespace

void decode(std::string* text, std::string_view from, std::string_view to) {
  const bool always = from == "##";
  for (size_t place = text->find(from); place != std::string::npos; place = text->find(from, place)) {
    if (always || hash_run_length(*text, place) % 2 == 1) {
      text->replace(place, from.size(), to);
      place += to.size();
    } else {
      place += from.size();
    }
  }
}

void decode_escapes(std::string* text) {
  decode(text, "#n", "\n");
  decode(text, "#t", "\t");
  decode(text, "#s", " ");
  decode(text, "##", "#");
}

void resolve_references(std::map<std::string, std::string>* texts) {
  for (auto& [key, text] : *texts) {
    const size_t start = text.find('@');
    const size_t end = start == std::string::npos ? start : text.find('@', start + 1);
    if (end == std::string::npos) continue;
    const auto found = texts->find(text.substr(start + 1, end - start - 1));
    if (found == texts->end()) continue;
    const std::string inserted = found->second; // the text may refer to itself
    text.replace(start, end - start + 1, inserted);
  }
}
