#pragma once

#include "platform/support/types.h"

#include <optional>

/** The player's front-end protocol, as this side sees it. */

inline constexpr const char* kHostSignature = "application/x-vnd.Marvik-Sonivo";

/** To the player: no fields. Back: messenger "Msgr", the private way to it; from a player in another process, string
    "Signature", by which that is reached. */
inline constexpr uint32 kMsgHostHandshake = 'SNVm';
/** To either: no fields. Back: data "Info" of type 'CSTR', the information record; Sonivo adds bool "Playing",
    which other players leave out. */
inline constexpr uint32 kMsgHostInformation = 'SNVi';

/** Wishes, to the player, which does not answer them; one that does not know them leaves them alone. */
inline constexpr uint32 kMsgHostSeek = 'SNsk';      // int32 "Time": ms, bounded to the song
inline constexpr uint32 kMsgHostSeekBy = 'SNsr';    // int32 "Time": ms, negative is back
inline constexpr uint32 kMsgHostPlayPause = 'SNpp'; // no fields
inline constexpr uint32 kMsgHostSpeedBy = 'SNsp';   // int32 "Percent": points, bounded to 25 to 200 percent
/** String "Title" and int32 "TimeMs", one for each line with a tag, ascending: what the seek bar marks for that song.
 */
inline constexpr uint32 kMsgHostMarks = 'SNmk';

/** What the player tells of itself, in the machine's own byte order. */
struct THostInformation {
  static constexpr size_t kSize = 124;
  static constexpr size_t kPositionAt = 4; // int32, ms
  static constexpr size_t kTitleAt = 12;   // to its NUL or the end
  char bytes[kSize] = {};
  /** Stands beside the bytes; empty when the player does not tell. */
  std::optional<bool> isPlaying;
};
