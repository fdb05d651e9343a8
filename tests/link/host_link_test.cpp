#include "plugin/host_link.h"

#include "platform/app/looper.h"
#include "plugin/current_song_finder.h"
#include "plugin/front_end_receiver.h"
#include "tests/display/hands.h"
#include "tests/link/strange_host.h"
#include "tests/scratch_folder.h"

#include <gtest/gtest.h>

namespace {

class HostLink : public testing::Test {
protected:
  HostLink() { StartHost(); }
  ~HostLink() override {
    fLink.reset();
    StopHost();
  }
  void StartHost() {
    fHost = new StrangeHost;
    fHost->Run();
  }
  void StopHost() {
    if (fHost == nullptr) return;
    fHost->Lock();
    fHost->Quit();
    fHost = nullptr;
  }
  void Connect() {
    fLink = std::make_unique<Sonivo_FrontEnd>(false, 100000);
    fLink->Start();
    ASSERT_TRUE(hands::until([this] { return fHost->fHandshakes > 0; }));
    ASSERT_TRUE(fLink->IsReady());
  }
  /** Until the player has handled all that it was sent, and the mailbox its answers. */
  void LetArrive() const {
    const BMessage nothing('none');
    BMessage answer;
    BMessenger(fHost).SendMessage(&nothing, &answer);
    BMessenger(fLink->Receiver()).SendMessage(&nothing, &answer);
  }
  bool HasArrived() const {
    LetArrive();
    return fLink->Receiver()->HasArrived();
  }
  /** Asks, and takes what has come. */
  void RefreshUntilArrived() {
    fLink->Refresh();
    while (!HasArrived()) fLink->Refresh(); // the connection may still be in the making
    fLink->Refresh();
  }
  SonivoSongEntry Current(bool expected) {
    SonivoSongEntry entry;
    EXPECT_EQ(get_current_song_entry(fLink.get(), &entry), expected);
    return entry;
  }
  StrangeHost* fHost = nullptr;
  std::unique_ptr<Sonivo_FrontEnd> fLink;
};

struct Asker : BLooper {
  void MessageReceived(BMessage* message) override {
    message->FindRef("refs", &fRef);
    fWhat = message->what;
  }
  entry_ref fRef;
  uint32 fWhat = 0;
};

} // namespace

TEST_F(HostLink, OneRefreshTakesTheAnswerToTheOneBefore) {
  fHost->SetRecord(1000, "first");
  Connect();
  EXPECT_EQ(fLink->PositionMs(), 0);
  RefreshUntilArrived();
  EXPECT_EQ(fLink->PositionMs(), 1000);
  EXPECT_EQ(fLink->Title(), "first");
  ASSERT_TRUE(HasArrived());
  fHost->SetRecord(2000, "second");
  fLink->Refresh();
  EXPECT_EQ(fLink->PositionMs(), 1000) << "asked for before the song went on";
}

TEST_F(HostLink, ShortAnswersAreIgnoredAndLongOnesCut) {
  fHost->SetRecord(1000, "t");
  Connect();
  RefreshUntilArrived();
  EXPECT_EQ(fLink->PositionMs(), 1000);
  for (const size_t size : {size_t{123}, size_t{1}, size_t{0}}) {
    LetArrive();
    fHost->SetRecord(5555, "wrong", size);
    fLink->Refresh();
    EXPECT_FALSE(HasArrived()) << size;
    EXPECT_EQ(fLink->PositionMs(), 1000) << size;
  }
  fHost->SetRecord(7000, std::string(200, 'x'), 500);
  RefreshUntilArrived();
  EXPECT_EQ(fLink->PositionMs(), 7000);
  EXPECT_EQ(fLink->Title(), std::string(112, 'x')) << "ends with the record";
}

TEST_F(HostLink, TellsWhetherTheSongPlaysAsFarAsThePlayerDoes) {
  fHost->SetRecord(1000, "t");
  Connect();
  for (const std::optional<bool> told : {std::optional(true), std::optional(false), std::optional<bool>()}) {
    LetArrive();
    fHost->SetPlaying(told);
    RefreshUntilArrived();
    fLink->SungPositionMs();
    EXPECT_EQ(fLink->SungPositionMs().has_value(), told.value_or(false)) << "the position stands still";
  }
}

TEST_F(HostLink, WishesReachThePlayer) {
  Connect();
  EXPECT_EQ(fLink->SeekTo(61230), B_OK);
  EXPECT_EQ(fLink->SeekBy(-2000), B_OK);
  EXPECT_EQ(fLink->PlayPause(), B_OK);
  EXPECT_EQ(fLink->ChangeSpeed(-5), B_OK);
  LetArrive();
  EXPECT_EQ(fHost->Wishes(),
            (std::vector<StrangeHost::Wish>{{'SNsk', 61230}, {'SNsr', -2000}, {'SNpp', -1}, {'SNsp', -5}}));
  StopHost();
  EXPECT_EQ(fLink->PlayPause(), -1) << "there is no player";
}

TEST_F(HostLink, HandshakeIsRepeatedWhenThePlayerComesBack) {
  fHost->SetRecord(1, "a");
  Connect();
  RefreshUntilArrived();
  StopHost();
  fLink->Refresh();
  EXPECT_EQ(fLink->PositionMs(), 1) << "the last one known";
  EXPECT_EQ(fLink->CountEntries(), -1);
  StartHost();
  fHost->SetRecord(2, "b");
  EXPECT_TRUE(hands::until([this] {
    fLink->Refresh();
    return fLink->PositionMs() == 2;
  }));
}

TEST_F(HostLink, FindsThePlayingSongByItsTitle) {
  fHost->SetRecord(1, "two");
  fHost->fEntries = {{"/m/1.mp3", "one"}, {"/m/2.mp3", "two"}, {"/m/3.mp3", "two"}};
  Connect();
  RefreshUntilArrived();
  SonivoSongEntry entry = Current(true);
  EXPECT_STREQ(entry.filename, "/m/2.mp3") << "of two with one title the first";
  free_song_entry(&entry);
  fLink->PlayThis(2, true);
  EXPECT_TRUE(hands::until([this] { return fHost->fPlayed == 2; }));
  EXPECT_TRUE(fHost->fFaded);
}

TEST_F(HostLink, NoSongIsFoundInAnEmptyListOrWithoutItsTitle) {
  fHost->SetRecord(1, "three");
  Connect();
  RefreshUntilArrived();
  Current(false);
  fHost->fEntries = {{"/m/1.mp3", "one"}};
  Current(false);
}

TEST_F(HostLink, AnEntryThatFailsGivesTheOneBeforeIt) {
  fHost->SetRecord(1, "three");
  fHost->fEntries = {{"/m/1.mp3", "one"}, {"/m/2.mp3", "two", false}, {"/m/3.mp3", "three"}};
  Connect();
  RefreshUntilArrived();
  SonivoSongEntry entry = Current(true);
  EXPECT_STREQ(entry.filename, "/m/1.mp3");
  free_song_entry(&entry);
  fHost->fEntries.clear();
  fHost->fCount = -1;
  entry = Current(true);
  EXPECT_EQ(entry.filename, nullptr);
}

TEST_F(HostLink, APlayerThatNeverAnswersHoldsUpNothing) {
  Connect();
  fHost->fAnswers = false;
  auto* const asker = new Asker;
  auto finder = std::make_unique<TCurrentSongFinder>(fLink.get(), BMessenger(asker));
  EXPECT_TRUE(finder->Start());
  EXPECT_FALSE(finder->Start()) << "one search at a time";
  EXPECT_TRUE(hands::until([&] { return asker->DeliverNext(); }));
  EXPECT_EQ(asker->fWhat, kMsgPlayerSilent);
  fLink->StopWaiting();
  finder.reset();
  asker->Lock();
  asker->Quit();
}

TEST_F(HostLink, FinderTellsTheLyricsFileOrThatThereIsNone) {
  const ScratchFolder folder;
  const std::string lyrics = folder.Write("song.lrc", "x");
  fHost->SetRecord(1, "song");
  fHost->fEntries = {{folder.File("song.mp3"), "song"}};
  Connect();
  RefreshUntilArrived();
  auto* const asker = new Asker;
  TCurrentSongFinder finder(fLink.get(), BMessenger(asker));
  finder.Start();
  EXPECT_TRUE(hands::until([&] { return asker->DeliverNext(); }));
  EXPECT_EQ(asker->fWhat, kMsgSongFound);
  EXPECT_EQ(asker->fRef.FullPath(), lyrics);
  fHost->fEntries = {{"", "song"}};
  EXPECT_TRUE(hands::until([&] { return finder.Start(); }));
  EXPECT_TRUE(hands::until([&] { return asker->DeliverNext(); }));
  EXPECT_EQ(asker->fWhat, kMsgNoSong) << "an entry without a file name";
  asker->Lock();
  asker->Quit();
}

TEST_F(HostLink, APlayerThatAnswersLateIsNotCalledSilent) {
  const ScratchFolder folder;
  fHost->SetRecord(1, "song");
  for (const char* title : {"a", "b", "c", "d"}) fHost->fEntries.push_back({"/m/other.mp3", title});
  fHost->fEntries.push_back({folder.File("song.mp3"), "song"});
  fHost->fLateUs = 450000; // longer than the finder's patience in all, not each
  Connect();
  RefreshUntilArrived();
  auto* const asker = new Asker;
  TCurrentSongFinder finder(fLink.get(), BMessenger(asker));
  finder.Start();
  // The window goes on taking positions while the search compares titles.
  EXPECT_TRUE(hands::until([&] {
    fLink->Refresh();
    return asker->DeliverNext();
  }));
  EXPECT_EQ(asker->fWhat, kMsgSongFound);
  EXPECT_EQ(asker->fRef.name, "song.txt");
  asker->Lock();
  asker->Quit();
}

TEST_F(HostLink, APlayerThatHangsFreezesNobody) {
  fHost->SetRecord(1, "song");
  Connect();
  RefreshUntilArrived();
  auto* const asker = new Asker;
  auto finder = std::make_unique<TCurrentSongFinder>(fLink.get(), BMessenger(asker));
  fHost->Lock(); // it takes nothing from its queue any more
  for (int i = 0; i < 2 * B_LOOPER_PORT_DEFAULT_CAPACITY; ++i) fLink->Refresh();
  EXPECT_EQ(fHost->CountMessages(), B_LOOPER_PORT_DEFAULT_CAPACITY);
  EXPECT_EQ(fLink->PlayPause(), -1) << "there is no room for a wish";
  finder->Start();
  fLink->StopWaiting();
  finder.reset();
  fLink.reset();
  fHost->Unlock();
  asker->Lock();
  asker->Quit();
}
