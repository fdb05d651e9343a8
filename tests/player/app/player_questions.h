#pragma once

#include "platform/app/message.h"
#include "platform/app/messenger.h"
#include "platform/kernel/threads.h"
#include "player/app/sonivo_app.h"

#include <gtest/gtest.h>

/** Any question to the player, by its signature or to another address, and its answer. */
inline BMessage ask_player(const BMessage& question, const BMessenger& whom = BMessenger(TSonivoApp::kSignature)) {
  BMessage answer;
  EXPECT_EQ(whom.SendMessage(&question, &answer), B_OK);
  return answer;
}

inline BMessage entry_of_playlist(int32 index) {
  BMessage question(B_GET_PROPERTY);
  question.AddSpecifier("Entry", index);
  question.AddSpecifier("Playlist");
  return ask_player(question);
}

inline std::string path_of_entry(int32 index) {
  std::string path;
  EXPECT_EQ(entry_of_playlist(index).FindString("filename", &path), B_OK);
  return path;
}

inline int32 count_of_playlist() {
  BMessage question(B_COUNT_PROPERTIES);
  question.AddSpecifier("Entry");
  question.AddSpecifier("Playlist");
  int32 count = -1;
  EXPECT_EQ(ask_player(question).FindInt32("result", &count), B_OK);
  return count;
}

/** Songs are looked for on another thread than the one that answers. */
inline void wait_for_songs(int32 count) {
  for (int i = 0; i < 3000 && count_of_playlist() != count; ++i) snooze(10000);
  ASSERT_EQ(count_of_playlist(), count);
}
