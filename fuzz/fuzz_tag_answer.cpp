#include "fuzz/fuzz.h"
#include "player/pictures/tag_talk.h"

/** The helper's answers about tags, read from a pipe in pieces of any length. */
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  const std::string given = text_of(bytes, size);
  TTagAnswer answer;
  const TAnswerForm form = read_answer(given, &answer);
  for (size_t length = 0; length < size; ++length) {
    TTagAnswer early;
    const TAnswerForm earlier = read_answer(given.substr(0, length), &early);
    // An invalid answer stays invalid, and a complete one cannot be continued.
    require(earlier == TAnswerForm::kIncomplete || form == TAnswerForm::kBroken);
  }
  if (form != TAnswerForm::kWhole) return 0;
  TTagAnswer again;
  require(read_answer(answer_bytes(answer), &again) == TAnswerForm::kWhole);
  require(again.tags.durationMs == answer.tags.durationMs && again.state == answer.state);
  return 0;
}
