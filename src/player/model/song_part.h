#pragma once

#include "platform/support/types.h"

#include <optional>

class BMessage;

/** A part of the song that is played by itself: once, after which the song pauses at its beginning, or in a loop until
    the user seeks, pauses, or chooses another part or song. */
struct TSongPart {
  int32 fromMs = 0;
  std::optional<int32> toMs; // nothing: the song plays on from there, as after a seek
  bool isLooped = false;
  bool operator==(const TSongPart&) const = default;
};

/** Less than a key press; a loop of it would only seek. */
inline constexpr int32 kShortestPartMs = 50;

/** The fields of kMsgHostPlayPart, of which only FromMs is required; nothing if one has the wrong type. */
std::optional<TSongPart> song_part_in(const BMessage& message);
/** The same part within a song of that length; nothing if less than kShortestPartMs of it remain, which includes a part
    that ends before it begins. A loop without an end gets the song's. Pure. */
std::optional<TSongPart> bounded_part(const TSongPart& part, int32 durationMs);

/** What to do about a part of a song that another player plays, which knows seeks and pauses only. */
struct TPartStep {
  enum class TAction {
    kWait,   // look again after `waitUs`
    kRepeat, // back to the beginning
    kFinish, // pause at the beginning
    kAbandon // the user has sought in that player: its song plays on
  };
  TAction action;
  bigtime_t waitUs = 0;
  bool operator==(const TPartStep&) const = default;
};
/** `part` has an end. Pure. */
TPartStep next_part_step(const TSongPart& part, int32 positionMs, int32 speedPercent);
