#pragma once

/** What the player's window asks of the application's looper. */
enum : unsigned int {
  kMsgPlayPause = 'plpp',
  kMsgNext = 'plnx',
  kMsgPrevious = 'plpv',
  kMsgPlaySong = 'plgo', // int32 "index"
  kMsgSeek = 'plsk',     // int32 "positionMs"
  kMsgVolume = 'plvo',   // int32 "percent"
  kMsgSpeed = 'plsp',    // int32 "percent"
  kMsgAddSongs = 'plad', // string "path", one or more
  kMsgWindowCloses = 'plwc',
  // From the sound; int64 "load" throughout.
  kMsgSongLoaded = 'psld', // string "title", "artist", int32 "durationMs"
  kMsgSongEnded = 'psen',
  kMsgSongFailed = 'psfl', // string "reason"
  kMsgTick = 'tick',
  kMsgStart = 'plst',
  kMsgFirstSong = 'plfs',
};
