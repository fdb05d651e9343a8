#pragma once

#include "platform/app/message.h"
#include "platform/app/messenger.h"
#include "player/model/player_choices.h"
#include "player/model/player_messages.h"

/** Sends the watched folders, likewise. */
inline void choose_folders(const BMessenger& player, const TWatchedFolders& folders) {
  BMessage message(kMsgChoose);
  archive_folders(folders, &message);
  player.SendMessage(&message, BMessenger(), 0);
}

/** Sends one changed choice (player/model/player_choices.h) to the player. Never blocks. */
inline void choose(const BMessenger& player, const char* field, bool isOn) {
  BMessage message(kMsgChoose);
  message.AddBool(field, isOn);
  player.SendMessage(&message, BMessenger(), 0);
}

inline void choose(const BMessenger& player, const char* field, int32 value) {
  BMessage message(kMsgChoose);
  message.AddInt32(field, value);
  player.SendMessage(&message, BMessenger(), 0);
}
