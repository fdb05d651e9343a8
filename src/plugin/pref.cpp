#include "plugin/pref.h"

#include "platform/app/message.h"
#include "platform/support/cut_text.h"

#include <algorithm>

TPref* gPref = nullptr;

namespace {

constexpr size_t kMaxFamilyBytes = 64;

bool add(BMessage* archive, const char* name, bool value) {
  return archive->AddBool(name, value) == B_OK;
}
bool add(BMessage* archive, const char* name, int32 value) {
  return archive->AddInt32(name, value) == B_OK;
}
bool add(BMessage* archive, const char* name, int64 value) {
  return archive->AddInt64(name, value) == B_OK;
}
bool add(BMessage* archive, const char* name, float value) {
  return archive->AddFloat(name, value) == B_OK;
}
bool add(BMessage* archive, const char* name, const std::string& value) {
  return archive->AddString(name, value) == B_OK;
}
bool add(BMessage* archive, const char* name, rgb_color value) {
  return archive->AddData(name, B_RAW_TYPE, &value, sizeof value, true) == B_OK;
}

void cut_family(std::string* family) {
  family->resize(cut_text(*family, kMaxFamilyBytes).size());
}

/** Calls visit(key, field) for all settings of a group, even after one returned false. True if all returned true. */
template <typename Values, typename Visit>
bool for_each_general(Values* v, Visit visit) {
  bool all = visit("SoTp", &v->stayOnTop);
  all &= visit("FntL", &v->fontLevel);
  all &= visit("REnc", &v->readEncoding);
  all &= visit("MTmI", &v->pollIntervalUs);
  all &= visit("LLTF", &v->languageFile);
  all &= visit("DbBf", &v->doubleBuffer);
  all &= visit("STlB", &v->showToolBar);
  all &= visit("WCRT", &v->writeCRType);
  all &= visit("WEnc", &v->writeEncoding);
  all &= visit("TmDf", &v->timeOffsetMs);
  return all;
}

template <typename Values, typename Visit>
bool for_each_appearance(Values* v, Visit visit) {
  bool all = visit("AAli", &v->antiAlias);
  all &= visit("UAFr", &v->useActiveFrame);
  all &= visit("UBGI", &v->useBackgroundImage);
  all &= visit("FntF", &v->fontFamily);
  all &= visit("ImgA", &v->imageAlignment);
  all &= visit("FntS", &v->fontSize);
  all &= visit("ABCl", &v->activeBackground);
  all &= visit("AFCl", &v->activeFrame);
  all &= visit("ALCl", &v->activeLyrics);
  all &= visit("BGCl", &v->background);
  all &= visit("LyCl", &v->lyrics);
  all &= visit("BGIF", &v->backgroundImage);
  return all;
}

template <typename Values, typename Visit>
bool for_each_option(Values* v, Visit visit) {
  bool all = visit("LdIn", &v->leadInMs);
  all &= visit("RpNd", &v->replaysNudges);
  all &= visit("OpSg", &v->songOpening);
  all &= visit("NDlc", &v->newDialect);
  all &= visit("RCmn", &v->recognisesCommon);
  all &= visit("FUt8", &v->savesForeignAsUtf8);
  all &= visit("RnwC", &v->renewsCopies);
  return all;
}

} // namespace

TPref::TPref() : fValues(std::make_shared<TPrefValues>()) {}

std::shared_ptr<const TPrefValues> TPref::Values() const {
  const std::lock_guard lock(fMutex);
  return fValues;
}

void TPref::SetValues(const TPrefValues& values) {
  const std::lock_guard lock(fMutex);
  Replace(values);
}

/** With the mutex held. */
void TPref::Replace(const TPrefValues& values) {
  auto replaced = std::make_shared<TPrefValues>(values);
  cut_family(&replaced->fontFamily);
  const bool isKnown = replaced->songOpening >= kNeverOpen && replaced->songOpening <= kOpenWithEverySong;
  if (!isKnown) replaced->songOpening = kOpenInNewDocument;
  replaced->leadInMs = std::clamp(replaced->leadInMs, int32{0}, kLongestLeadInMs);
  fValues = std::move(replaced);
}

/** `change(values)` must not call back. */
template <typename Change>
bool TPref::Update(Change change) {
  const std::lock_guard lock(fMutex);
  TPrefValues values = *fValues;
  const bool result = change(&values);
  Replace(values);
  return result;
}

bool TPref::Archive(BMessage* archive) {
  const auto values = Values();
  const bool general =
      for_each_general(values.get(), [&](const char* key, const auto* field) { return add(archive, key, *field); });
  return ArchiveAppearance(archive) && general;
}

bool TPref::ArchiveAppearance(BMessage* archive) const {
  const auto values = Values();
  return for_each_appearance(values.get(),
                             [&](const char* key, const auto* field) { return add(archive, key, *field); });
}

bool TPref::ArchiveOptions(BMessage* archive) const {
  const auto values = Values();
  return for_each_option(values.get(), [&](const char* key, const auto* field) { return add(archive, key, *field); });
}

bool TPref::UnarchiveOptions(const BMessage& archive) {
  return Update([&](TPrefValues* values) {
    return for_each_option(values, [&](const char* key, auto* field) { return Read(archive, key, field); });
  });
}

bool TPref::Unarchive(const BMessage& archive) {
  const bool general = Update([&](TPrefValues* values) {
    return for_each_general(values, [&](const char* key, auto* field) { return Read(archive, key, field); });
  });
  return UnarchiveAppearance(archive) && general;
}

bool TPref::UnarchiveAppearance(const BMessage& archive) {
  return Update([&](TPrefValues* values) {
    return for_each_appearance(values, [&](const char* key, auto* field) { return Read(archive, key, field); });
  });
}
