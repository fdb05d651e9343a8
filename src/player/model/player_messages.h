#pragma once

/** What the player's window asks of the application's looper. */
enum : unsigned int {
  kMsgPlayPause = 'plpp',
  kMsgNext = 'plnx',
  kMsgPrevious = 'plpv',
  kMsgPlaySong = 'plgo',   // int32 "index"
  kMsgSeek = 'plsk',       // int32 "positionMs"
  kMsgVolume = 'plvo',     // int32 "percent"
  kMsgSpeed = 'plsp',      // int32 "percent"
  kMsgRepeatFrom = 'plra', // from here
  kMsgRepeatTo = 'plrb',   // to here
  kMsgRepeatOff = 'plrx',
  // The list. Songs are named by int64 "id", one or more.
  kMsgAddSongs = 'plad', // string "path", one or more; int32 "before" (absent: at the end)
  kMsgSongsFound = 'plfd',
  kMsgRemoveSongs = 'plrm', // "id"
  kMsgMoveSongs = 'plmv',   // "id"; int32 "before"
  kMsgClearSongs = 'plcl',
  kMsgSaveList = 'plsv',  // string "path"
  kMsgTagsFound = 'pltg', // of songs "id": strings "title", "artist", int32 "durationMs"
  kMsgCover = 'plcv',     // of the song string "path": string "file"
  kMsgKeep = 'plkp',
  kMsgHandedOver = 'plho', // from another start of the program: string "path", "lyrics", bool "paused"; answered
  // Plug-ins: int32 "index".
  kMsgShowPlugin = 'pgop',
  kMsgPluginPrefs = 'pgpr',
  kMsgAboutPlugin = 'pgab',
  kMsgLookAtPlugins = 'pgla',
  kMsgWindowCloses = 'plwc',
  kMsgLookAtWindows = 'pllw',
  // From the sound; of a song: int64 "load".
  kMsgSongLoaded = 'psld', // string "title", "artist", int32 "durationMs"
  kMsgSongEnded = 'psen',
  kMsgSongFailed = 'psfl',    // string "reason"
  kMsgOutputChanged = 'psou', // bool "silent"
  kMsgTick = 'tick',
  kMsgStart = 'plst',
  kMsgFirstSong = 'plfs',
  kMsgOtherPlugins = 'plop',
};
