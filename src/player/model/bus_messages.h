#pragma once

/** From the bus to the application's looper, besides the requests that the player's window sends. */
enum : unsigned int {
  // Requests of the desktop.
  kMsgBusPlay = 'bplY',
  kMsgBusPause = 'bpaU',
  kMsgBusStop = 'bstP',
  // A paused song's neighbour is paused, too, unlike that of kMsgNext and kMsgPrevious.
  kMsgBusNext = 'bneX',
  kMsgBusPrevious = 'bpvS',
  kMsgBusSeekBy = 'bskB', // int32 "byMs"
  kMsgBusRaise = 'braI',
  kMsgBusTray = 'btrY',          // bool "shown": the desktop's tray shows the player's icon
  kMsgBusNoFileManager = 'bnfM', // string "path": no file manager could show it
  // The other players.
  kMsgBusPlayers = 'blsT',   // bool "reachable", string "id" and "name", one pair a player
  kMsgBusOtherIs = 'botH',   // string "id", "title", "artist", "path", int32 "durationMs", "state", "volumePercent",
                             // "speedPercent", bool "silent"
  kMsgChooseSource = 'bsrC', // from the window: string "id", empty for the player's own sound
};
