#include "lyrics/stamp.h"

namespace {

constexpr long kStandardStepMs = 1000;
constexpr long kExtendedStepMs = 10;

std::string with_tag(std::string line, long timeMs, bool isExtended) {
  remove_time_tag(&line);
  std::string tag;
  time_to_time_tag(timeMs, &tag, isExtended);
  return tag + line;
}

} // namespace

TStampedLine stamp(const std::string& line, long timeMs, TTagForm form) {
  const bool toExtended = form == TTagForm::kExtended;
  long oldTimeMs = 0;
  bool wasExtended = false;
  const bool hadTag = time_tag_to_time(line, &oldTimeMs, &wasExtended);
  if (hadTag) return {with_tag(line, timeMs, toExtended), timeMs - oldTimeMs};
  std::string tag;
  time_to_time_tag(timeMs, &tag, toExtended);
  return {tag + line, {}};
}

std::optional<TNudgedLine> nudge(const std::string& line, bool isLater) {
  long timeMs = 0;
  bool isExtended = false;
  if (!time_tag_to_time(line, &timeMs, &isExtended)) return {};
  const long sizeMs = isExtended ? kExtendedStepMs : kStandardStepMs;
  return nudge_by(line, isLater ? sizeMs : -sizeMs);
}

std::optional<TNudgedLine> nudge_by(const std::string& line, long stepMs) {
  long timeMs = 0;
  bool isExtended = false;
  if (!time_tag_to_time(line, &timeMs, &isExtended)) return {};
  return TNudgedLine{with_tag(line, timeMs + stepMs, isExtended), timeMs + stepMs, stepMs,
                     isExtended ? TTagForm::kExtended : TTagForm::kStandard};
}
