#include "player/pictures/tag_talk.h"

#include "platform/support/cut_text.h"

#include <array>
#include <charconv>
#include <optional>

namespace {

constexpr size_t kLongestState = 80;
constexpr size_t kLongestNumber = 10;
constexpr size_t kFields = 6;
constexpr size_t kLongestAnswer = kLongestState + 2 * kLongestNumber + 3 * kLongestText + kFields;

std::string field(std::string_view text) {
  return std::string(text) + '\0';
}

std::optional<int32> number_of(std::string_view digits) {
  int32 number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc() || end != digits.data() + digits.size() || number < 0) return std::nullopt;
  return number;
}

} // namespace

std::string question_bytes(const TTagQuestion& question) {
  return field(question.knownState) + field(question.path);
}

std::string answer_bytes(const TTagAnswer& answer) {
  return field(answer.state) + field(std::to_string(answer.tags.durationMs)) + field(cut_text(answer.tags.title)) +
         field(cut_text(answer.tags.artist)) + field(cut_text(answer.tags.album)) +
         field(std::to_string(answer.tags.track));
}

TAnswerForm read_answer(std::string_view bytes, TTagAnswer* answer) {
  if (bytes.size() > kLongestAnswer) return TAnswerForm::kBroken;
  std::array<std::string_view, kFields> fields;
  for (std::string_view& one : fields) {
    const size_t end = bytes.find('\0');
    if (end == std::string_view::npos) return TAnswerForm::kIncomplete;
    one = bytes.substr(0, end);
    bytes.remove_prefix(end + 1);
  }
  const std::optional<int32> durationMs = number_of(fields[1]);
  const std::optional<int32> track = number_of(fields[5]);
  if (!bytes.empty() || !durationMs || !track) return TAnswerForm::kBroken;
  *answer = {std::string(fields[0]),
             {std::string(fields[2]), std::string(fields[3]), *durationMs, std::string(fields[4]), *track}};
  return TAnswerForm::kWhole;
}
