#pragma once

#include "player/model/playing_order.h"
#include "player/model/song_columns.h"
#include "player/model/watched_folders.h"

#include <array>
#include <string>

class BMessage;

enum class TReplayGain : int32 { kOff, kTrack, kAlbum };

/** The centre frequencies of the equalizer. */
inline constexpr std::array<int32, 10> kBandsHz{31, 62, 125, 250, 500, 1000, 2000, 4000, 8000, 16000};
inline constexpr int32 kMostBandDb = 12;
inline constexpr size_t kLongestDevice = 512;

struct TSoundDevice {
  std::string name; // the audio library's
  std::string description;
  bool operator==(const TSoundDevice&) const = default;
};

/** How this player's own sound is put out. By default the sound is not changed. */
struct TSoundChoices {
  TReplayGain replayGain = TReplayGain::kOff;
  int32 balancePercent = 0; // -100: left only, 100: right only
  bool isEqualized = false;
  std::array<int32, kBandsHz.size()> bandsDb{};
  bool isGapless = true; // between songs of an album
  std::string device{};  // the audio library's name for it; empty for its own choice
  bool operator==(const TSoundChoices&) const = default;
};

/** The user's choices in the player's menu. */
struct TPlayerChoices {
  TPlayingModes modes{};
  TSoundChoices sound{};
  bool closesToTray = false; // the window is hidden instead of the player ending, where the desktop has a tray
  bool keepsAwake = false;   // the computer does not suspend itself while a song plays
  TColumnChoices columns{};
  TWatchedFolders watchedFolders{};
  bool operator==(const TPlayerChoices&) const = default;
};

/** Fields of kMsgChoose, each of which may be absent, and of the stored record. */
namespace choice {
inline constexpr const char* kShuffle = "Shfl";    // bool
inline constexpr const char* kRepeat = "Rept";     // int32, TRepeat
inline constexpr const char* kStopAfter = "StpA";  // bool; not stored
inline constexpr const char* kReplayGain = "RpGn"; // int32, TReplayGain
inline constexpr const char* kBalance = "Blnc";    // int32, percent
inline constexpr const char* kEqualizer = "Eqlz";  // bool
inline constexpr const char* kBand = "Band";       // int32, dB, one for each band
inline constexpr const char* kGapless = "Gpls";    // bool
inline constexpr const char* kDevice = "Dvic";     // string
inline constexpr const char* kTray = "Tray";       // bool
inline constexpr const char* kKeepsAwake = "Awak"; // bool
inline constexpr const char* kColumn = "Clmn";     // bool, whether it is shown, one for each column
inline constexpr const char* kWidth = "ClmW";      // int32, pixels, one for each column
inline constexpr const char* kWatched = "Wtch";    // string, one for each watched folder; one empty string for none
} // namespace choice

bool archive_folders(const TWatchedFolders& folders, BMessage* archive);
bool archive_columns(const TColumnChoices& columns, BMessage* archive);
bool archive_choices(const TPlayerChoices& choices, BMessage* archive);
/** Absent fields keep their value. False if one has the wrong type or is out of range; the others are still read. */
bool take_choices(const BMessage& archive, TPlayerChoices* choices);
