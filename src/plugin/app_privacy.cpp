#include "plugin/app_privacy.h"

#include "platform/storage/entry.h"
#include "plugin/pref.h"

TAppPrivacy* gAppPrivacy = nullptr;

namespace {

struct Time {
  int32 seconds = 0;
  int32 nanoseconds = 0;
};

Time modification_time(const std::string& path) {
  Time time;
  int64 seconds = 0;
  if (!path.empty() && BEntry(path.c_str(), true).GetModificationTime(&seconds, &time.nanoseconds) == B_OK)
    time.seconds = static_cast<int32>(seconds);
  return time;
}

} // namespace

bool TAppPrivacy::ShouldBeLanguageChanged() const {
  const std::string path = gPref->Values()->languageFile;
  const Time time = modification_time(path);
  const std::lock_guard lock(fMutex);
  return path != fPath || time.seconds != fModificationTime || time.nanoseconds != fNanoseconds;
}

void TAppPrivacy::UpdateLanguageInfos() {
  const std::string path = gPref->Values()->languageFile;
  const Time time = modification_time(path);
  const std::lock_guard lock(fMutex);
  fPath = path;
  fModificationTime = time.seconds;
  fNanoseconds = time.nanoseconds;
}
