/** The player as front ends and scripts meet it: asked over messages, without a screen. */

#include "platform/app/message.h"
#include "platform/app/messenger.h"
#include "platform/kernel/threads.h"
#include "player/front_end_host.h"
#include "player/sonivo_app.h"
#include "tests/player/playlist_questions.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

constexpr const char* kSignature = "application/x-vnd.Marvik-Sonivo";

std::string long_name() {
  std::string name = "x";
  for (int i = 0; i < 50; ++i) name += "語";
  return name;
}

class Protocol : public testing::Test {
protected:
  Protocol() : fThread(fApp->Run()) { wait_for_songs(2); }
  ~Protocol() override {
    fApp->PostMessage(B_QUIT_REQUESTED);
    wait_for_thread(fThread, nullptr);
  }

  static BMessage Ask(const BMessage& question, const BMessenger& whom = BMessenger(kSignature)) {
    BMessage answer;
    EXPECT_EQ(whom.SendMessage(&question, &answer), B_OK);
    return answer;
  }

  static TCommandLine Songs() {
    TCommandLine line;
    line.songs = {"/music/first.mp3", "/music/" + long_name() + ".mp3"};
    return line;
  }

  TSonivoApp* fApp = new TSonivoApp(Songs());
  thread_id fThread;
};

} // namespace

TEST_F(Protocol, TheHandshakeGivesAMessengerThatAnswersWithTheRecord) {
  const BMessage handshake = Ask(BMessage(kMsgHandshake));
  EXPECT_EQ(handshake.what, kMsgHandshake);
  BMessenger host;
  ASSERT_EQ(handshake.FindMessenger("Msgr", &host), B_OK);
  const BMessage information = Ask(BMessage(kMsgInformation), host);
  EXPECT_EQ(information.what, kMsgInformation);
  const void* record = nullptr;
  ssize_t size = 0;
  ASSERT_EQ(information.FindData("Info", B_STRING_TYPE, &record, &size), B_OK);
  EXPECT_EQ(size, 124);
  int32 positionMs = -1;
  std::memcpy(&positionMs, static_cast<const char*>(record) + 4, sizeof positionMs);
  EXPECT_EQ(positionMs, 0) << "nothing plays";
}

TEST_F(Protocol, ScriptsReadThePlaylist) {
  int32 number = 0;
  const BMessage entry = entry_of_playlist(1);
  std::string text;
  bool played = true;
  EXPECT_EQ(entry.FindString("filename", &text), B_OK);
  EXPECT_EQ(text, "/music/" + long_name() + ".mp3");
  EXPECT_EQ(entry.FindString("title", &text), B_OK);
  EXPECT_EQ(text, long_name().substr(0, 109)) << "cut as in the record, between characters";
  EXPECT_EQ(entry.FindInt32("time", &number), B_OK);
  EXPECT_EQ(entry.FindInt32("nr", &number), B_OK);
  EXPECT_EQ(number, 1);
  EXPECT_EQ(entry.FindBool("played", &played), B_OK);
  EXPECT_FALSE(played);
}

TEST_F(Protocol, WhatIsNotUnderstoodIsAnsweredToo) {
  BMessage wrongName(B_COUNT_PROPERTIES);
  wrongName.AddSpecifier("Entry");
  wrongName.AddSpecifier("Library");
  BMessage wrongForm(B_GET_PROPERTY);
  wrongForm.AddSpecifier("Entry");
  wrongForm.AddSpecifier("Playlist");
  const BMessage answers[] = {Ask(wrongName), Ask(wrongForm), Ask(BMessage(B_GET_PROPERTY)), entry_of_playlist(2),
                              entry_of_playlist(-1)};
  for (const BMessage& answer : answers) {
    EXPECT_EQ(answer.what, B_MESSAGE_NOT_UNDERSTOOD);
    int32 error = B_OK;
    EXPECT_EQ(answer.FindInt32("error", &error), B_OK);
    EXPECT_NE(error, B_OK);
  }
}
