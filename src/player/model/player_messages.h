#pragma once

/** To the application's looper: requests of the player's window, news of its parts, timers. */
enum : unsigned int {
  kMsgPlayPause = 'plpp',
  kMsgNext = 'plnx',
  kMsgPrevious = 'plpv',
  kMsgPlaySong = 'plgo',   // int32 "index"
  kMsgSeek = 'plsk',       // int32 "positionMs"
  kMsgVolume = 'plvo',     // int32 "percent"
  kMsgSpeed = 'plsp',      // int32 "percent"
  kMsgRepeatFrom = 'plra', // from the current position
  kMsgRepeatTo = 'plrb',   // up to the current position
  kMsgRepeatOff = 'plrx',
  // The list. Songs are identified by int64 "id", one or more.
  kMsgAddSongs = 'plad',    // string "path", one or more; int32 "before" (absent: at the end)
  kMsgDropFiles = 'pldf',   // the same fields: songs are added, lyrics opened in the editor, other files refused
  kMsgSongsFound = 'plfd',  // the search has results
  kMsgRemoveSongs = 'plrm', // "id"
  kMsgMoveSongs = 'plmv',   // "id"; int32 "before"
  kMsgClearSongs = 'plcl',
  kMsgSaveList = 'plsv',  // string "path"
  kMsgTagsFound = 'pltg', // of the songs "id": strings "title", "artist", int32 "durationMs"
  kMsgCover = 'plcv',     // strings "path" of the song and "file" of its cover
  kMsgKeep = 'plkp',      // timer: save the list for the next run
  kMsgHandedOver =
      'plho', // from another start of the program: strings "path", string "lyrics", bool "paused"; answered
  // Plug-ins: int32 "index".
  kMsgShowPlugin = 'pgop',
  kMsgPluginPrefs = 'pgpr',
  kMsgAboutPlugin = 'pgab',
  kMsgLookAtPlugins = 'pgla', // a plug-in has answered, or timer
  kMsgWindowCloses = 'plwc',  // the player is to end
  kMsgLookAtWindows = 'pllw', // timer: have the asked windows gone?
  // From the sound; concerning a song: int64 "load".
  kMsgSongLoaded = 'psld', // string "title", "artist", int32 "durationMs"
  kMsgSongEnded = 'psen',
  kMsgSongFailed = 'psfl',    // string "reason"
  kMsgOutputChanged = 'psou', // bool "silent": there is no sound device
  kMsgTick = 'tick',          // timer: show the position
  kMsgStart = 'plst',
  kMsgFirstSong = 'plfs',    // timer: begin the first song
  kMsgOtherPlugins = 'plop', // timer: load the plug-ins other than the editor
};
