#include "document/song_opener.h"

namespace {
/** A file that the program was started with has been opened by then; and who skips songs opens only the last one's. */
constexpr bigtime_t kMomentUs = 500000;
} // namespace

bool TSongOpener::IsDue(const std::string& title, bool isPlaying, int32 document, bigtime_t nowUs) {
  if (title != fTitle) {
    fTitle = title;
    fDocument = document;
    fDueUs = title.empty() ? std::nullopt : std::optional(nowUs + kMomentUs);
    return false;
  }
  if (!fDueUs || !isPlaying || nowUs < *fDueUs) return false;
  fDueUs.reset();
  return document == fDocument;
}
