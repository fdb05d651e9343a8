#pragma once

#include "player/app/sonivo_app.h"
#include "player/model/player_messages.h"
#include "tests/support/messages.h"
#include "tests/support/testing.h"

/** Any question to the player, by its signature or to another address, and its answer. */
inline BMessage ask_player(const BMessage& question, const BMessenger& whom = BMessenger(TSonivoApp::kSignature)) {
  return ask(whom, question);
}
inline void tell_player(const BMessage& message) {
  BMessenger(TSonivoApp::kSignature).SendMessage(&message);
}

inline BMessage entry_of_playlist(int32 index) {
  BMessage question(B_GET_PROPERTY);
  question.AddSpecifier("Entry", index);
  question.AddSpecifier("Playlist");
  return ask_player(question);
}

inline std::string path_of_entry(int32 index) {
  return field<std::string>(entry_of_playlist(index), "filename").value_or("none");
}

inline int32 count_of_playlist() {
  BMessage question(B_COUNT_PROPERTIES);
  question.AddSpecifier("Entry");
  question.AddSpecifier("Playlist");
  return field<int32>(ask_player(question), "result").value_or(-1);
}

/** Songs are looked for on another thread than the one that answers. */
inline void wait_for_songs(int32 count) {
  ASSERT_TRUE(eventually([count] { return count_of_playlist() == count; })) << count_of_playlist();
}
