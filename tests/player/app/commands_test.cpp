/** The player without a display: commands of front ends, scripts, and what it reports. */

#include "player/app/kept_list.h"
#include "player/app/single_instance.h"
#include "player/app/song_marks.h"
#include "player/list/m3u.h"
#include "player/list/tag_fields.h"
#include "player/model/info_record.h"
#include "plugin/message_codes.h"
#include "tests/player/app/player_questions.h"
#include "tests/player/sound/still_source.h"
#include "tests/support/output_of.h"
#include "tests/support/songs.h"

using namespace testing;

namespace {

constexpr int32 kDurationMs = StillSource::kDurationMs;
constexpr const char* kOwnTitle = "Title of /music/song.mp3";

struct Commands : testing::Test {
  Commands() { wait_for_songs(1); }

  /** Returns when that is done, and what the sound reports of it has arrived. */
  template <typename... Fields>
  static void Send(uint32 what, const Fields&... fields) {
    tell_player(message_of(what, fields...));
    Settle();
  }
  static void Settle() {
    for (int i = 0; i < 2; ++i) wait_for(BMessenger(TSonivoApp::kSignature));
  }
  static void Drop(const std::string& path) { Send(kMsgAddSongs, "path", path); }
  static BMessage Information() {
    const BMessage handshake = ask_player(BMessage(kMsgHostHandshake));
    EXPECT_EQ(handshake.what, kMsgHostHandshake);
    BMessenger host;
    EXPECT_EQ(handshake.FindMessenger("Msgr", &host), B_OK);
    EXPECT_FALSE(handshake.HasField("Signature")) << "that is for other processes";
    const BMessage information = ask_player(BMessage(kMsgHostInformation), host);
    EXPECT_EQ(information.what, kMsgHostInformation);
    return information;
  }
  static bool IsPlaying() { return field<bool>(Information(), "Playing").value(); }
  static TInfoRecord Record() {
    TInfoRecord record;
    const BMessage information = Information();
    const void* bytes = nullptr;
    ssize_t size = 0;
    EXPECT_EQ(information.FindData("Info", B_STRING_TYPE, &bytes, &size), B_OK);
    if (size == sizeof record) std::memcpy(&record, bytes, sizeof record);
    return record;
  }
  static int32 PositionMs() { return Record().positionMs; }
  static std::string TitleOf(int32 index) {
    return field<std::string>(entry_of_playlist(index), "title").value_or("none");
  }

  template <typename Act>
  static std::string LogOf(const Act& act) {
    testing::internal::CaptureStderr();
    act();
    return testing::internal::GetCapturedStderr();
  }

  StillPlayer fPlayer{{"/music/song.mp3"}, false};
  StillSource::Account& fAccount = fPlayer.fAccount;
};

} // namespace

TEST_F(Commands, ScriptsReadThePlaylist) {
  std::string name = "x";
  for (int i = 0; i < 50; ++i) name += "語";
  Drop("/music/" + name + ".mp3");
  wait_for_songs(2);
  EXPECT_EQ(path_of_entry(1), "/music/" + name + ".mp3");
  EXPECT_EQ(TitleOf(1), name.substr(0, 109)) << "cut as in the record, between characters";
  const BMessage entry = entry_of_playlist(1);
  EXPECT_EQ(field<int32>(entry, "time"), 0);
  EXPECT_EQ(field<int32>(entry, "nr"), 1);
  EXPECT_EQ(field<bool>(entry, "played"), false);
}

TEST_F(Commands, SortingOnceMoreReversesAndThenRestoresTheOrder) {
  for (const char* const path : {"/b.mp3", "/a.mp3", "/c.mp3"}) Drop(path);
  wait_for_songs(4);
  const auto order = [] {
    std::string all;
    for (int32 i = 0; i < 4; ++i) all += path_of_entry(i).substr(path_of_entry(i).size() - 5, 1);
    return all;
  };
  const auto title = static_cast<int32>(TSortKey::kTitle);
  const std::string before = order();
  Send(kMsgSortSongs, "by", title);
  EXPECT_EQ(order(), "abcg");
  Send(kMsgSortSongs, "by", title, "descending", true);
  EXPECT_EQ(order(), "gcba");
  Send(kMsgSortSongs, "by", kSortAsBefore);
  EXPECT_EQ(order(), before);
  for (const int32 bad : {-2, 6}) Send(kMsgSortSongs, "by", bad);
  Send(kMsgSortSongs);
  EXPECT_EQ(order(), before);
  Send(kMsgSortSongs, "by", title);
  Send(kMsgMoveSongs, "id", int64{1}, "before", 0);
  Send(kMsgSortSongs, "by", kSortAsBefore);
  EXPECT_EQ(order(), "gabc") << "the user's own order now";
  const ScratchFolder folder;
  Send(kMsgSaveList, "path", folder.File("list.m3u8"));
  EXPECT_EQ(paths_of(parse_m3u(folder.Read("list.m3u8"), "/")),
            (std::vector<std::string>{"/music/song.mp3", "/a.mp3", "/b.mp3", "/c.mp3"}));
  EXPECT_THAT(LogOf([&] { Send(kMsgSaveList, "path", folder.File("none/list.m3u8")); }), HasSubstr("none/list.m3u8"));
}

TEST_F(Commands, UnknownScriptsAreAnsweredByAnError) {
  BMessage wrongName(B_COUNT_PROPERTIES);
  wrongName.AddSpecifier("Entry");
  wrongName.AddSpecifier("Library");
  BMessage wrongForm(B_GET_PROPERTY);
  wrongForm.AddSpecifier("Entry");
  wrongForm.AddSpecifier("Playlist");
  for (const BMessage& answer : {ask_player(wrongName), ask_player(wrongForm), ask_player(BMessage(B_GET_PROPERTY)),
                                 entry_of_playlist(1), entry_of_playlist(-1)}) {
    EXPECT_EQ(answer.what, B_MESSAGE_NOT_UNDERSTOOD);
    EXPECT_NE(field<int32>(answer, "error").value_or(B_OK), B_OK);
  }
}

TEST_F(Commands, AFrontEndInAnotherProcessGetsTheRecord) {
  Send(kMsgHostPlayPause);
  Send(kMsgHostSeek, "Time", 5000);
  EXPECT_EQ(PositionMs(), 5000);
  EXPECT_EQ(output_of(FRONT_END_PROGRAM),
            std::string("124 bytes\n5000 ms\n") + kOwnTitle + "\nplaying\nnothing else is offered");
}

TEST_F(Commands, SeeksStayWithinTheSong) {
  Send(kMsgHostSeek, "Time", 5000);
  EXPECT_EQ(PositionMs(), 0) << "nothing is loaded";
  EXPECT_EQ(fAccount.seeks, 0);
  Send(kMsgHostPlayPause);
  const std::tuple<uint32, int32, int32> kSeeks[] = {
      {kMsgHostSeek, 5000, 5000},
      {kMsgHostSeekBy, 2000, 7000},
      {kMsgHostSeekBy, -3000, 4000},
      {kMsgHostSeekBy, -5000, 0},
      {kMsgHostSeek, kDurationMs + 1, kDurationMs},
      {kMsgHostSeek, -1, 0},
      {kMsgHostSeekBy, INT32_MAX, kDurationMs},
      {kMsgHostSeekBy, INT32_MAX, kDurationMs},
      {kMsgHostSeekBy, INT32_MIN, 0},
  };
  for (const auto& [command, timeMs, positionMs] : kSeeks) {
    Send(command, "Time", timeMs);
    EXPECT_EQ(PositionMs(), positionMs) << timeMs;
  }
  const int seeks = fAccount.seeks;
  Send(kMsgHostSeek);
  Send(kMsgHostSeekBy, "time", 1000);
  EXPECT_EQ(fAccount.seeks, seeks) << "ignored without its field";
}

TEST_F(Commands, APartIsPlayedWithinTheSongAlsoIfNoneIsLoaded) {
  const auto part = [this] { return std::exchange(fAccount.part, {}); };
  Send(kMsgHostPlayPart, "FromMs", 2000, "ToMs", 3000);
  EXPECT_EQ(part(), (TSongPart{2000, 3000, false})) << "once the song is loaded";
  EXPECT_TRUE(IsPlaying());
  const auto end = [this](int64 number) { fAccount.events->PartEnded(number), Settle(); };
  end(2);
  EXPECT_TRUE(IsPlaying()) << "another part";
  end(1);
  EXPECT_FALSE(IsPlaying());
  Send(kMsgHostPlayPart, "FromMs", 5000, "Loop", true);
  EXPECT_EQ(part(), (TSongPart{5000, kDurationMs, true}));
  Send(kMsgHostSeek, "Time", 7000);
  end(2);
  Send(kMsgHostPlayPart);
  EXPECT_TRUE(IsPlaying()) << "the seek has ended the part";
  Send(kMsgHostPlayPart, "FromMs", 5000, "ToMs", 4000);
  Send(kMsgHostPlayPart, "FromMs", kDurationMs);
  EXPECT_EQ(part(), std::nullopt) << "refused";
  Send(kMsgHostPlayPart, "FromMs", 5000, "ToMs", 6000);
  Send(kMsgHostPlayPart);
  EXPECT_FALSE(IsPlaying());
  EXPECT_EQ(PositionMs(), 5000);
  Send(kMsgHostPlayPart, "FromMs", 5000, "ToMs", 6000);
  for (const uint32 command : {kMsgHostPlayPause, kMsgHostPlayPause, kMsgHostPlayPart}) Send(command);
  EXPECT_TRUE(IsPlaying()) << "the user has paused and played on: it is no part any more";
}

TEST_F(Commands, ClicksAreThoseOfTheSongAndACountInLastsUntilTheNextSeek) {
  const auto clicks = [this] { return fAccount.clicksMs; };
  using TTimes = std::vector<int32>;
  Send(kMsgHostPlayPause);
  Send(kMsgHostMarks, "Title", kOwnTitle, "TimeMs", 3000);
  EXPECT_EQ(clicks(), TTimes()) << "marks are silent";
  Send(kMsgHostMarks, "Title", kOwnTitle, "TimeMs", 3000, "Clicks", true);
  EXPECT_EQ(clicks(), TTimes{3000});
  Send(kMsgHostMarks, "Title", kOwnTitle, "TimeMs", 3000);
  EXPECT_EQ(clicks(), TTimes()) << "switched off";
  Send(kMsgHostMarks, "Title", kOwnTitle, "TimeMs", 3000, "Clicks", true);
  Send(kMsgHostCountIn, "TimeMs", 2500);
  EXPECT_EQ(clicks(), (TTimes{2500, 3000}));
  Send(kMsgHostSeek, "Time", 7000);
  EXPECT_EQ(clicks(), TTimes{3000});
  Send(kMsgHostMarks, "Title", "Another", "TimeMs", 3000, "Clicks", true);
  EXPECT_EQ(clicks(), TTimes());
}

TEST_F(Commands, AFileThatVanishesWhileItPlaysIsReported) {
  Send(kMsgHostPlayPause); // of /music/song.mp3, which is not there
  const std::string log = LogOf([] {
    for (int tick = 0; tick < 25; ++tick) Send(kMsgTick);
  });
  EXPECT_THAT(log, HasSubstr("was moved or deleted: /music/song.mp3"));
  EXPECT_EQ(log.find("was moved or deleted"), log.rfind("was moved or deleted")) << "once";
}

TEST_F(Commands, WhatTheSoundReportsConcernsTheSongThatItIsAbout) {
  for (const char* const path : {"http://host/b", "/c.mp3", "/d.mp3"}) Drop(path);
  wait_for_songs(4);
  TSongEvents& sound = *fAccount.events;
  const auto title = [](const std::string& log) {
    Settle();
    return Record().title + (" " + log);
  };
  Send(kMsgHostPlayPause);
  sound.SongEnded(1);
  EXPECT_EQ(title(""), "Title of http://host/b ");
  sound.SongEnded(1);
  EXPECT_EQ(title(""), "Title of http://host/b ") << "it was replaced";
  EXPECT_THAT(title(LogOf([&] { sound.SongFailed(2, "odd format"), Settle(); })),
              AllOf(StartsWith("Title of /c.mp3"), HasSubstr("odd format")));
  sound.SongJoined(3, 4, StillSource::kDurationMs);
  EXPECT_EQ(title(""), "Title of /d.mp3 ");
  Send(kMsgPrevious);
  EXPECT_EQ(title(""), "Title of /c.mp3 ");
  EXPECT_THAT(LogOf([&] { sound.DeviceLost("Headphones"), Settle(); }), HasSubstr("Headphones"));
  Send(kMsgChoose, choice::kBalance, -40);
  EXPECT_EQ(fAccount.sound.balancePercent, -40);
}

TEST_F(Commands, DroppedFilesAreSongsOrRefusedInOneLine) {
  EXPECT_EQ(LogOf([] { Send(kMsgDropFiles, "path", "/a.mp3", "path", "/b.mp3", "before", 0); }), "");
  wait_for_songs(3);
  EXPECT_EQ(path_of_entry(2), "/music/song.mp3");
  EXPECT_THAT(LogOf([] { Send(kMsgDropFiles, "path", "/cover.jpg"); }), HasSubstr("/cover.jpg"));
  EXPECT_THAT(LogOf([] { Send(kMsgDropFiles, "path", "/cover.jpg", "path", "/x.png"); }),
              AllOf(HasSubstr("2 "), HasSubstr("/cover.jpg"), Not(HasSubstr("x.png"))));
  EXPECT_EQ(count_of_playlist(), 3);
}

TEST_F(Commands, SpeedGoesByPointsWithinItsBounds) {
  for (const auto& [points, speed] :
       {std::pair{5, 1.05}, {-15, 0.9}, {-100, 0.25}, {-5, 0.25}, {5, 0.3}, {INT32_MAX, 2.0}}) {
    Send(kMsgHostSpeedBy, "Percent", points);
    EXPECT_DOUBLE_EQ(fAccount.speed, speed) << points;
  }
}

TEST_F(Commands, APartIsRepeatedWhicheverEndIsSetFirst) {
  Send(kMsgHostPlayPause);
  const std::tuple<int32, uint32, int32, int32> kSteps[] = {
      {5000, kMsgRepeatFrom, 5000, -1}, {9000, kMsgRepeatTo, 5000, 9000},   {3000, kMsgRepeatTo, 3000, 5000},
      {7000, kMsgRepeatFrom, 7000, -1}, {7010, kMsgRepeatTo, 7000, -1},     {4000, kMsgRepeatOff, -1, -1},
      {6000, kMsgRepeatTo, 0, 6000},    {2000, kMsgRepeatFrom, 2000, 6000},
  };
  for (const auto& [positionMs, command, fromMs, toMs] : kSteps) {
    Send(kMsgHostSeek, "Time", positionMs);
    Send(command);
    EXPECT_EQ(std::pair(fAccount.fromMs.load(), fAccount.toMs.load()), std::pair(fromMs, toMs)) << positionMs;
  }
  Send(kMsgPlaySong, "index", 0);
  EXPECT_EQ(fAccount.toMs, -1) << "another song begins without it";
}

TEST_F(Commands, SongsThatAreFoundComeBeforeTheSongTheyWereDroppedAt) {
  const ScratchFolder folder;
  folder.Write("a.mp3", "");
  const std::string b = folder.Write("b.mp3", "");
  const BMessage drop = message_of(kMsgAddSongs, "path", folder.Path(), "before", 0);
  tell_player(drop);
  wait_for_songs(3);
  EXPECT_EQ(path_of_entry(0), folder.File("a.mp3"));
  EXPECT_EQ(path_of_entry(2), "/music/song.mp3");
  EXPECT_FALSE(IsPlaying()) << "the list was not empty";

  Send(kMsgHandedOver, "path", b, "path", folder.File("c.mp3"));
  wait_for_songs(4);
  EXPECT_TRUE(IsPlaying());
  EXPECT_EQ(path_of_entry(3), folder.File("c.mp3"));
  EXPECT_EQ(TitleOf(1), "Title of " + b) << "the song that was there already is the one that was begun";

  tell_player(drop);
  Send(kMsgClearSongs);
  Send(kMsgHandedOver, "path", folder.File("d.mp3"));
  wait_for_songs(1);
  EXPECT_EQ(path_of_entry(0), folder.File("d.mp3"))
      << "what was still looked for when the list was cleared does not come";
}

TEST_F(Commands, SongsThatAreFoundWhileTheFirstPlaysDoNotBeginAnew) {
  const ScratchFolder folder;
  for (int i = 0; i < 300; ++i) folder.Write(std::to_string(i) + ".mp3", "");
  Send(kMsgHandedOver, "path", "/music/first.mp3", "path", folder.Path());
  wait_for_songs(302);
  int played = 0;
  for (int32 i = 0; i < 302; ++i) played += field<bool>(entry_of_playlist(i), "played").value_or(false) ? 1 : 0;
  EXPECT_EQ(played, 1);
}

TEST_F(Commands, TagsOfFilesAreReportedExceptTheTitleOfTheSongThatPlays) {
  const ScratchFolder folder;
  for (const char* name : {"b.mp3", "c.mp3"}) Drop(folder.Write(name, ""));
  wait_for_songs(3);
  Send(kMsgHostPlayPause);
  BMessage found(kMsgTagsFound);
  int64 id = 0;
  for (const char* title : {"late", kOwnTitle, "other", "gone"}) {
    found.AddInt64("id", ++id);
    add_tags(&found, {title, "", 5000});
  }
  tell_player(found);
  EXPECT_EQ(TitleOf(0), kOwnTitle) << "the sound's own tags take precedence";
  EXPECT_EQ(TitleOf(1), folder.File("b.mp3")) << "front ends find the song that plays by its title";
  EXPECT_EQ(TitleOf(2), "other");
  EXPECT_EQ(field<int32>(entry_of_playlist(2), "time"), 5000);
}

TEST_F(Commands, TheListOfTheLastRunIsRestoredAndChangesAreKept) {
  const ScratchFolder settings;
  setenv("XDG_CONFIG_HOME", settings.Path().c_str(), 1);
  ASSERT_TRUE(save_kept_list({songs_of({"/kept/a.mp3", "/kept/b.mp3"}), 1, 7000, 30}, kept_list_path()));
  Send(kMsgRemoveSongs, "id", int64{1});
  Send(kMsgFirstSong);
  wait_for_songs(2);
  EXPECT_TRUE(eventually([] { return PositionMs() == 7000; })) << PositionMs();
  EXPECT_FALSE(IsPlaying());
  Send(kMsgPlaySong, "index", 0);
  Send(kMsgHostSeek, "Time", 2000);
  Send(kMsgKeep);
  const TKeptList kept = load_kept_list(kept_list_path());
  EXPECT_EQ(paths_of(kept.songs), (std::vector<std::string>{"/kept/a.mp3", "/kept/b.mp3"}));
  EXPECT_EQ(kept.current, 0);
  EXPECT_EQ(kept.positionMs, 2000);
  EXPECT_EQ(kept.volumePercent, 30);
}

TEST_F(Commands, AnotherStartHandsItsSongsToThisPlayer) {
  const ScratchFolder folder;
  folder.Write("b.mp3", "");
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder.Path());
  TCommandLine line;
  line.songs = {"b.mp3"};
  line.startsPaused = true;
  EXPECT_TRUE(hand_over(line));
  std::filesystem::current_path(before);
  wait_for_songs(2);
  EXPECT_EQ(path_of_entry(1), folder.File("b.mp3")) << "relative to the folder of the other start";
  EXPECT_EQ(TitleOf(1), "Title of " + folder.File("b.mp3")) << "it is loaded";
  EXPECT_FALSE(IsPlaying()) << "paused, as it asked";
}

TEST(SingleInstance, WithoutAPlayerTheSongsAreNotHandedOver) {
  EXPECT_FALSE(hand_over({}));
}

TEST(SongMarks, BelongToTheSongThatTheyWereSentFor) {
  TSongMarks marks;
  BMessage message(kMsgHostMarks);
  for (const int32 timeMs : {3000, 1000, 2000}) message.AddInt32("TimeMs", timeMs);
  EXPECT_FALSE(marks.Take(message)) << "for which song?";
  message.AddString("Title", "Title");
  EXPECT_TRUE(marks.Take(message));
  TSong song;
  song.title = "Title";
  EXPECT_EQ(marks.Of(&song), nullptr) << "its title is only its file's name";
  song.played = true;
  EXPECT_EQ(*marks.Of(&song), (std::vector<int32>{1000, 2000, 3000}));
  song.title = "Another";
  EXPECT_EQ(marks.Of(&song), nullptr);
  EXPECT_EQ(marks.Of(nullptr), nullptr);
}
