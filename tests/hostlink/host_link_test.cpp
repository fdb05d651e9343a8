#include "hostlink/host_link.h"

#include "hostlink/current_song_finder.h"
#include "hostlink/front_end_receiver.h"
#include "tests/hostlink/strange_host.h"
#include "tests/support/hands.h"
#include "tests/support/keeping.h"
#include "tests/support/messages.h"

using namespace std::string_literals;

namespace {

constexpr int64 kHourUs = 3600000000;

struct HostLink : testing::Test {
  HostLink() { StartHost(); }
  void StartHost() {
    fHost.reset(new StrangeHost);
    fHost->Run();
  }
  /** The worker sleeps for an hour unless woken, so that a missing wake-up hangs the test. */
  void Connect(bool polls = false) {
    fLink = std::make_unique<Sonivo_FrontEnd>(polls, kHourUs);
    fLink->Start();
    ASSERT_TRUE(hands::until([this] { return fHost->fHandshakes > 0; }));
    ASSERT_TRUE(fLink->IsReady());
  }
  /** With a song whose record is known. */
  void ConnectAt(int32 positionMs, const std::string& title = "song") {
    fHost->SetRecord(positionMs, title);
    Connect();
    RefreshUntilArrived();
  }
  /** Waits until the player has handled all messages, and the mailbox its answers. */
  void LetArrive() const {
    wait_for(BMessenger(fHost.get()));
    wait_for(BMessenger(fLink->Receiver()));
  }
  bool HasArrived() const {
    LetArrive();
    return fLink->Receiver()->HasArrived();
  }
  /** Requests a record and applies it. */
  void RefreshUntilArrived() {
    fLink->Refresh();
    while (!HasArrived()) fLink->Refresh(); // the connection may not be complete yet
    fLink->Refresh();
  }
  THostInformation TakeInformation() {
    THostInformation taken;
    fLink->Receiver()->TakeInformation(&taken);
    return taken;
  }
  bool GetsTo(int32 positionMs) {
    return hands::until([&] {
      fLink->Refresh();
      return fLink->PositionMs() == positionMs;
    });
  }
  /** The file of the current song; "none" without a song, "nameless" without a file name. */
  std::string CurrentFile() const {
    SonivoSongEntry entry;
    if (!get_current_song_entry(fLink.get(), &entry)) return "none";
    const std::string file = entry.filename ? entry.filename : "nameless";
    free_song_entry(&entry);
    return file;
  }
  /** The code of the finder's next message. */
  uint32 Answer() {
    EXPECT_TRUE(hands::until([&] { return fAsker->DeliverNext(); }));
    return fAsker->fReceived.back().what;
  }
  OwnLooper<StrangeHost> fHost;
  OwnLooper<Keeping<BLooper>> fAsker{new Keeping<BLooper>};
  std::unique_ptr<Sonivo_FrontEnd> fLink;
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
  ConnectAt(1000, "t");
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

TEST_F(HostLink, ReportsWhetherTheSongPlaysIfThePlayerDoes) {
  fHost->SetRecord(1000, "t");
  Connect();
  for (const std::optional<bool> told : {std::optional(true), std::optional<bool>(), std::optional(false)}) {
    LetArrive();
    fHost->SetPlaying(told);
    RefreshUntilArrived();
    fLink->SungPositionMs();
    EXPECT_EQ(fLink->SungPositionMs().has_value(), told.value_or(false)) << "the position stands still";
    fLink->PlayFrom(300);
    LetArrive();
    EXPECT_EQ(fHost->Part(), told == false ? "300..-1" : "") << "one message is enough for a paused song";
  }
}

TEST_F(HostLink, AsksForAnEarlierPositionOnlyWhenToldToAndKnowsItsAnswer) {
  constexpr bigtime_t kWhen = 77;
  ConnectAt(1000);
  EXPECT_EQ(fHost->CountEarlier(), 0);
  for (const bool isKnown : {false, true}) {
    if (isKnown) fHost->SetEarlierMs(400);
    LetArrive();
    fLink->Refresh(kWhen);
    ASSERT_TRUE(HasArrived());
    fLink->Refresh();
    EXPECT_EQ(fLink->PositionMs(), isKnown ? 400 : 1000);
    EXPECT_EQ(fLink->IsPositionOf(kWhen), isKnown);
    EXPECT_FALSE(fLink->IsPositionOf(kWhen + 1));
  }
  EXPECT_EQ(fHost->CountEarlier(), 2);
  EXPECT_TRUE(GetsTo(1000));
  EXPECT_FALSE(fLink->IsPositionOf(kWhen));
}

TEST_F(HostLink, CommandsReachThePlayer) {
  Connect();
  for (const status_t sent : {fLink->SeekTo(61230), fLink->SeekBy(-2000), fLink->PlayPause(), fLink->ChangeSpeed(-5),
                              fLink->ShowMarks("song", {100, 200}, false), fLink->LoopPart(1, 2)})
    EXPECT_EQ(sent, B_OK);
  LetArrive();
  EXPECT_EQ(fHost->Marks(), std::pair("song"s, (std::vector<int32>{100, 200})));
  EXPECT_EQ(fHost->Part(), "1..2 loop");
  EXPECT_EQ(fHost->Commands(),
            (std::vector<StrangeHost::Command>{{'SNsk', 61230}, {'SNsr', -2000}, {'SNpp', -1}, {'SNsp', -5}}));
  fLink->PlayThis(2, true);
  EXPECT_TRUE(hands::until([this] { return fHost->fPlayed == 2; }));
  EXPECT_TRUE(fHost->fFaded);
  fHost.reset();
  EXPECT_EQ(fLink->PlayPause(), -1) << "there is no player";
}

TEST_F(HostLink, HandshakeIsRepeatedWhenThePlayerComesBackEvenInAnotherProcess) {
  ConnectAt(1);
  fHost.reset();
  fLink->Refresh();
  EXPECT_EQ(fLink->PositionMs(), 1) << "the last one known";
  EXPECT_EQ(fLink->CountEntries(), -1);
  StartHost();
  fHost->fIsOutside = true; // only its signature reaches it
  fHost->SetRecord(2, "b");
  EXPECT_TRUE(GetsTo(2));
}

TEST_F(HostLink, AnEntryWithATitleOfMegabytesIsTruncated) {
  Connect();
  fHost->fEntries = {{"/" + std::string(5000000, 'p'), std::string(1023, 't') + "語" + std::string(5000000, 't')}};
  SonivoSongEntry entry;
  ASSERT_TRUE(fLink->GetEntry(&entry, 0));
  EXPECT_EQ(entry.title, std::string(1023, 't'));
  EXPECT_LE(std::strlen(entry.filename), 4096U) << "too long to be opened, as before";
  free_song_entry(&entry);
}

TEST_F(HostLink, ThePlayingSongIsTheFirstOfItsTitle) {
  ConnectAt(1, "two");
  const std::pair<const char*, std::vector<StrangeHost::Entry>> rows[] = {
      {"none", {}},
      {"none", {{"/m/1.mp3", "one"}}},
      {"/m/2.mp3", {{"/m/1.mp3", "one"}, {"/m/2.mp3", "two"}, {"/m/3.mp3", "two"}}},
      {"/m/1.mp3",
       {{"/m/1.mp3", "one"}, {"/m/2.mp3", "other", false}, {"/m/3.mp3", "two"}}}, // the last complete answer
  };
  for (const auto& [file, entries] : rows) {
    fHost->fEntries = entries;
    EXPECT_EQ(CurrentFile(), file) << entries.size() << " songs";
  }
  fHost->fEntries.clear();
  fHost->fCount = -1;
  EXPECT_EQ(CurrentFile(), "nameless") << "how many there are is not told";
}

TEST_F(HostLink, FinderReportsTheLyricsFileOrThatThereIsNone) {
  const ScratchFolder folder;
  const std::string lyrics = folder.Write("song.lrc", "x");
  fHost->fEntries = {{folder.File("song.mp3"), "song"}};
  ConnectAt(1);
  TCurrentSongFinder finder(fLink.get(), BMessenger(fAsker.get()));
  finder.Start();
  EXPECT_EQ(Answer(), kMsgSongFound);
  EXPECT_EQ(field<entry_ref>(fAsker->fReceived.back(), "refs"), ref_of(lyrics));
  fHost->fEntries = {{"", "song"}};
  EXPECT_TRUE(hands::until([&] { return finder.Start(); }));
  EXPECT_EQ(Answer(), kMsgNoSong) << "an entry without a file name";
}

TEST_F(HostLink, APlayerThatAnswersLateIsNotCalledSilent) {
  const ScratchFolder folder;
  for (const char* title : {"a", "b", "c", "d"}) fHost->fEntries.push_back({"/m/other.mp3", title});
  fHost->fEntries.push_back({folder.File("song.mp3"), "song"});
  fHost->fLateUs = 450000; // longer than the finder's time-out in total, not each
  ConnectAt(1);
  TCurrentSongFinder finder(fLink.get(), BMessenger(fAsker.get()));
  finder.Start();
  // The window keeps refreshing while the search compares titles.
  EXPECT_TRUE(hands::until([&] {
    fLink->Refresh();
    return fAsker->DeliverNext();
  }));
  EXPECT_EQ(fAsker->fReceived.back().what, kMsgSongFound);
  EXPECT_EQ(field<entry_ref>(fAsker->fReceived.back(), "refs"), ref_of(folder.File("song.txt")));
}

TEST_F(HostLink, ARequestThatFindsThePlayersQueueFullIsSentWhenThereIsRoom) {
  ConnectAt(1);
  LetArrive();
  TakeInformation();
  EXPECT_TRUE(fHost->Lock());
  while (fHost->PostMessage('none') == B_OK) {
  }
  fLink->Refresh();
  EXPECT_FALSE(fLink->Receiver()->HasArrived());
  fHost->Unlock();
  EXPECT_TRUE(hands::until([this] { return fLink->Receiver()->HasArrived(); }));
}

TEST_F(HostLink, APlayerThatHangsBlocksNothing) {
  ConnectAt(1);
  auto finder = std::make_unique<TCurrentSongFinder>(fLink.get(), BMessenger(fAsker.get()));
  EXPECT_TRUE(fHost->Lock()); // it no longer reads its queue
  for (int i = 0; i < 2 * B_LOOPER_PORT_DEFAULT_CAPACITY; ++i) fLink->Refresh();
  EXPECT_EQ(fHost->CountMessages(), B_LOOPER_PORT_DEFAULT_CAPACITY);
  EXPECT_EQ(fLink->PlayPause(), -1) << "there is no room for a command";
  finder->Start();
  fLink->StopWaiting();
  finder.reset();
  fLink.reset();
  fHost->Unlock();
}

TEST_F(HostLink, ItsEndDoesNotWaitForAPlayerThatHangs) {
  fLink = std::make_unique<Sonivo_FrontEnd>(true, 1); // its worker fills the player's queue, and waits for room
  fLink->Start();
  ASSERT_TRUE(hands::until([this] { return fHost->fHandshakes > 0; }));
  EXPECT_TRUE(fHost->Lock());
  EXPECT_TRUE(hands::until([this] { return fHost->CountMessages() == B_LOOPER_PORT_DEFAULT_CAPACITY; }));
  fLink.reset();
  fHost->Unlock();
}

TEST_F(HostLink, AWorkerThatSleepsUntilItsNextPollIsWokenAtTheEnd) {
  fHost->SetRecord(1000, "song");
  Connect(true);
  // Its first poll may find the connection incomplete; either way it sleeps after an answer.
  EXPECT_TRUE(hands::until([this] { return HasArrived() || (fLink->Refresh(), false); }));
  fLink.reset();
}

TEST_F(HostLink, WithoutPollingNothingIsAskedForBetweenRefreshes) {
  ConnectAt(1000);
  EXPECT_TRUE(HasArrived()) << "the last refresh asked once more";
  TakeInformation();
  fHost->SetRecord(2000, "song");
  EXPECT_FALSE(HasArrived());
  EXPECT_EQ(fHost->CountHeard(), 0);
}
