#include "plugin/app_privacy.h"

#include "platform/storage/entry.h"
#include "plugin/pref.h"

TAppPrivacy* gAppPrivacy = nullptr;

namespace {

int32 modification_time(const std::string& path) {
  int64 seconds = 0;
  if (!path.empty()) BEntry(path.c_str(), true).GetModificationTime(&seconds);
  return static_cast<int32>(seconds);
}

} // namespace

bool TAppPrivacy::ShouldBeLanguageChanged() const {
  const std::string path = gPref->Values()->languageFile;
  const std::lock_guard lock(fMutex);
  return path != fPath || modification_time(path) != fModificationTime;
}

void TAppPrivacy::UpdateLanguageInfos() {
  const std::string path = gPref->Values()->languageFile;
  const int32 seconds = modification_time(path);
  const std::lock_guard lock(fMutex);
  fPath = path;
  fModificationTime = seconds;
}
