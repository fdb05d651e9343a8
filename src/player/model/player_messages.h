#pragma once

/** To the application's looper: requests of the player's window, news of its parts, timers. */
enum : unsigned int {
  kMsgPlayPause = 'plpp',
  kMsgNext = 'plnx',
  kMsgPrevious = 'plpv',
  kMsgPlaySong = 'plgo', // int32 "index"
  kMsgSeek = 'plsk',     // int32 "positionMs"
  kMsgVolume = 'plvo',   // int32 "percent"
  kMsgSpeed = 'plsp',    // int32 "percent"
  // The position at which the user pressed the key, int32 "agoMs" ago (absent: 0).
  kMsgRepeatFrom = 'plra', // from there
  kMsgRepeatTo = 'plrb',   // up to there
  kMsgRepeatOff = 'plrx',
  kMsgChoose = 'plch',      // the changed fields of player/model/player_choices.h
  kMsgFindDevices = 'plfo', // look for output devices
  // The list. Songs are identified by int64 "id", one or more.
  kMsgAddSongs = 'plad',    // string "path", one or more; int32 "before" (absent: at the end)
  kMsgDropFiles = 'pldf',   // the same fields: songs are added, lyrics opened in the editor, other files refused
  kMsgSongsFound = 'plfd',  // the search has results
  kMsgWatchNews = 'plwn',   // songs of watched folders have appeared or disappeared
  kMsgRemoveSongs = 'plrm', // "id"
  kMsgMoveSongs = 'plmv',   // "id"; int32 "before"
  kMsgSortSongs = 'plso',   // int32 "by", a TSortKey or kSortAsBefore; bool "descending" (absent: false)
  kMsgClearSongs = 'plcl',
  kMsgSaveList = 'plsv',     // string "path"
  kMsgTagsFound = 'pltg',    // of the songs "id": the fields of player/list/tag_fields.h
  kMsgSongLyrics = 'plsl',   // string "path": the editor opens that song's lyrics
  kMsgShowInFolder = 'plsf', // string "path": in the desktop's file manager
  kMsgFolderClosed = 'plfc', // string "path": its folder could not be opened either
  kMsgCover = 'plcv',        // strings "path" of the song and "file" of its cover
  kMsgKeep = 'plkp',         // timer: save the list for the next run
  kMsgKeepChoices = 'plkc',  // timer: save the choices of the menu
  kMsgHandedOver =
      'plho', // from another start of the program: strings "path", string "lyrics", bool "paused"; answered
  // Plug-ins: int32 "index".
  kMsgShowPlugin = 'pgop',
  kMsgPluginPrefs = 'pgpr',
  kMsgAboutPlugin = 'pgab',
  kMsgLookAtPlugins = 'pgla', // a plug-in has answered, or timer
  kMsgWindowCloses = 'plwc',  // the player is to end
  kMsgWindowPlaced = 'plwp',  // rect "frame", without its decoration and while not maximized; bool "maximized"
  kMsgKeepWindow = 'plkw',    // timer: save the window's place
  kMsgCloseButton = 'plcb',   // of the player's window: hides it in the tray or ends the player
  kMsgLookAtWindows = 'pllw', // timer: have the asked windows gone?
  // From the sound; concerning a song: int64 "load".
  kMsgSongLoaded = 'psld', // the fields of player/list/tag_fields.h
  kMsgSongEnded = 'psen',
  kMsgPartEnded = 'pspe',      // int64 "part"
  kMsgSongJoined = 'psjn',     // the song ended at int32 "endedMs", and the queued one, int64 "next", has begun
  kMsgSongFailed = 'psfl',     // string "reason"
  kMsgOutputChanged = 'psou',  // bool "silent": there is no sound device
  kMsgDevices = 'psdv',        // output devices: strings "name" and "description"
  kMsgDeviceLost = 'psdl',     // string "device"
  kMsgDeviceReturned = 'psdr', // string "device"
  kMsgPartBeat = 'plpb',       // timer: is a part of another player's song over?
  kMsgTick = 'tick',           // timer: show the position
  kMsgPrepare = 'plpr',        // before kMsgStart: loads what the windows need
  kMsgStart = 'plst',
  kMsgFirstSong = 'plfs',    // timer: begin the first song
  kMsgOtherPlugins = 'plop', // timer: load the plug-ins other than the editor
};
