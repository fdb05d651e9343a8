#include "player/model/player_choices.h"

#include "platform/app/message.h"

#include <algorithm>
#include <utility>

namespace {

constexpr bool is_allowed(status_t status) {
  return status == B_OK || status == B_NAME_NOT_FOUND;
}

bool take(const BMessage& archive, const char* name, bool* value, int32 index = 0) {
  return is_allowed(archive.FindBool(name, index, value));
}

bool take(const BMessage& archive, const char* name, int32 lowest, int32 highest, int32* value, int32 index = 0) {
  int32 found = *value;
  if (!is_allowed(archive.FindInt32(name, index, &found)) || found < lowest || found > highest) return false;
  *value = found;
  return true;
}

template <typename Enum>
bool take(const BMessage& archive, const char* name, Enum highest, Enum* value) {
  auto number = static_cast<int32>(*value);
  if (!take(archive, name, 0, static_cast<int32>(highest), &number)) return false;
  *value = static_cast<Enum>(number);
  return true;
}

bool take_device(const BMessage& archive, std::string* device) {
  std::string found = *device;
  if (!is_allowed(archive.FindString(choice::kDevice, &found)) || found.size() > kLongestDevice) return false;
  *device = found;
  return true;
}

bool take_columns(const BMessage& archive, TColumnChoices* columns) {
  bool all = true;
  for (size_t i = 0; i < kColumnCount; ++i) {
    const auto index = static_cast<int32>(i);
    if (is_optional(static_cast<TColumn>(i))) all &= take(archive, choice::kColumn, &columns->shown[i], index);
    all &= take(archive, choice::kWidth, 0, kWidestColumn, &columns->widths[i], index);
  }
  return all;
}

/** All or none. */
bool take_folders(const BMessage& archive, TWatchedFolders* folders) {
  TWatchedFolders taken;
  std::string folder;
  const status_t status = archive.FindString(choice::kWatched, &folder);
  if (status != B_OK) return is_allowed(status);
  for (int32 i = 0; archive.FindString(choice::kWatched, i, &folder) == B_OK; ++i) {
    if (folder.empty()) continue;
    TWatchedFolders more = with_folder(taken, folder);
    if (more == taken) return false;
    taken = std::move(more);
  }
  *folders = std::move(taken);
  return true;
}

} // namespace

bool archive_folders(const TWatchedFolders& folders, BMessage* archive) {
  if (folders.empty()) return archive->AddString(choice::kWatched, "") == B_OK;
  return std::ranges::all_of(
      folders, [archive](const std::string& folder) { return archive->AddString(choice::kWatched, folder) == B_OK; });
}

bool archive_columns(const TColumnChoices& columns, BMessage* archive) {
  bool all = true;
  for (const bool isShown : columns.shown) all &= archive->AddBool(choice::kColumn, isShown) == B_OK;
  for (const int32 width : columns.widths) all &= archive->AddInt32(choice::kWidth, width) == B_OK;
  return all;
}

bool archive_choices(const TPlayerChoices& choices, BMessage* archive) {
  const TSoundChoices& sound = choices.sound;
  bool all = archive->AddBool(choice::kShuffle, choices.modes.shuffles) == B_OK;
  all &= archive->AddInt32(choice::kRepeat, static_cast<int32>(choices.modes.repeat)) == B_OK;
  all &= archive->AddInt32(choice::kReplayGain, static_cast<int32>(sound.replayGain)) == B_OK;
  all &= archive->AddInt32(choice::kBalance, sound.balancePercent) == B_OK;
  all &= archive->AddBool(choice::kEqualizer, sound.isEqualized) == B_OK;
  for (const int32 db : sound.bandsDb) all &= archive->AddInt32(choice::kBand, db) == B_OK;
  all &= archive->AddBool(choice::kGapless, sound.isGapless) == B_OK;
  all &= archive->AddString(choice::kDevice, sound.device) == B_OK;
  all &= archive->AddBool(choice::kTray, choices.closesToTray) == B_OK;
  all &= archive_columns(choices.columns, archive);
  if (!choices.watchedFolders.empty()) all &= archive_folders(choices.watchedFolders, archive);
  return all && archive->AddBool(choice::kKeepsAwake, choices.keepsAwake) == B_OK;
}

bool take_choices(const BMessage& archive, TPlayerChoices* choices) {
  TSoundChoices& sound = choices->sound;
  bool all = take(archive, choice::kShuffle, &choices->modes.shuffles);
  all &= take(archive, choice::kRepeat, TRepeat::kList, &choices->modes.repeat);
  all &= take(archive, choice::kStopAfter, &choices->modes.stopsAfterSong);
  all &= take(archive, choice::kReplayGain, TReplayGain::kAlbum, &sound.replayGain);
  all &= take(archive, choice::kBalance, -100, 100, &sound.balancePercent);
  all &= take(archive, choice::kEqualizer, &sound.isEqualized);
  for (size_t i = 0; i < kBandsHz.size(); ++i)
    all &= take(archive, choice::kBand, -kMostBandDb, kMostBandDb, &sound.bandsDb[i], static_cast<int32>(i));
  all &= take(archive, choice::kGapless, &sound.isGapless);
  all &= take_device(archive, &sound.device);
  all &= take(archive, choice::kTray, &choices->closesToTray);
  all &= take_columns(archive, &choices->columns);
  all &= take_folders(archive, &choices->watchedFolders);
  return all & take(archive, choice::kKeepsAwake, &choices->keepsAwake);
}
