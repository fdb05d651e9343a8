#pragma once

#include "player/model/playlist.h"

#include <functional>

class BMessage;

/** The playlist as scripts and front ends see it. */
struct TScriptedList {
  const TPlaylist& songs;
  /** Set while another player is the source, which has one entry: the song it plays. */
  const TSong* otherSong;
};

/** Answers a request to count, get or execute entries; refuses what names anything else. False for any other message.
    `execute` gets the index of the entry, unchecked. */
bool handle_script(BMessage* message, const TScriptedList& list, const std::function<void(int32 index)>& execute);
