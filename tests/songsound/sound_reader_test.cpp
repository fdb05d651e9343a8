/** The reader with the real helper program. */

#include "songsound/sound_reader.h"

#include "platform/app/message.h"
#include "plugin/message_codes.h"
#include "tests/support/own_looper.h"
#include "tests/support/testing.h"
#include "tests/support/wav.h"

namespace {

struct NoticeCounter : BLooper {
  NoticeCounter() : BLooper("counter") {}
  void MessageReceived(BMessage* message) override { fNotices += message->what == kMsgSongSound ? 1 : 0; }
  int32 fNotices = 0;
};

struct SoundReader : testing::Test {
  SoundReader() { setenv("XDG_CACHE_HOME", fFolder.Path().c_str(), 1); }
  bool IsComplete() {
    return eventually([this] { return fReader.HasFailed() || (fReader.Sound() && fReader.Sound()->IsComplete()); }) &&
           !fReader.HasFailed();
  }
  const ScratchFolder fFolder;
  const OwnLooper<NoticeCounter> fLooper{new NoticeCounter};
  TSoundReader fReader{BMessenger(fLooper.get())};
};

} // namespace

TEST_F(SoundReader, ReadsTheWholeSongAndSendsANotice) {
  fReader.Read(fFolder.Write("a.wav", beeping_wav(4)), 1000, 2000);
  ASSERT_TRUE(IsComplete());
  fLooper->DeliverAll();
  EXPECT_GT(fLooper->fNotices, 0);
  const auto sound = fReader.Sound();
  EXPECT_EQ(sound->DurationMs(), 4000);
  EXPECT_TRUE(sound->HasPart(0, 4000));
  EXPECT_NEAR(*sound->Peak(950), 128, 2);
  EXPECT_EQ(sound->Peak(850), 0);
}

TEST_F(SoundReader, TheSecondTimeTheSongComesFromTheCache) {
  const std::string song = fFolder.Write("a.wav", beeping_wav(2));
  fReader.Read(song, 0, 0);
  ASSERT_TRUE(IsComplete());
  const auto isKept = [&] { return std::filesystem::exists(fFolder.File("KOREVA/Sonivo/Sound")); };
  ASSERT_TRUE(eventually(isKept));
  fReader.Cancel(); // waits until it is written
  EXPECT_EQ(fReader.Sound(), nullptr);
  const auto modified = std::filesystem::last_write_time(song);
  fFolder.Write("a.wav", std::string(std::filesystem::file_size(song), 'x'));
  std::filesystem::last_write_time(song, modified);
  fReader.Read(song, 0, 0);
  ASSERT_TRUE(IsComplete()) << "the song itself cannot be read any more";
  EXPECT_EQ(fReader.Sound()->DurationMs(), 2000);
}

TEST_F(SoundReader, WhatIsNoSongFailsWithANoticeAndTheNextOneIsRead) {
  fReader.Read(fFolder.Write("a.wav", "no sound in here"), 0, 1000);
  ASSERT_TRUE(eventually([this] { return fReader.HasFailed(); }));
  EXPECT_TRUE(eventually([this] {
    fLooper->DeliverAll();
    return fLooper->fNotices > 0;
  }));
  EXPECT_EQ(fReader.Sound(), nullptr);
  fReader.Read("http://localhost/a.mp3", 0, 1000);
  fReader.Read(fFolder.Write("b.wav", beeping_wav(2)), 0, 1000);
  EXPECT_TRUE(IsComplete());
}
