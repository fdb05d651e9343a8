#include "tests/support/editor_fixture.h"

#include "hostlink/current_song_finder.h"
#include "lyrics/line_limit.h"

using namespace testing;

using Opening = EditorByHand;

TEST_F(Opening, WhatCannotBeOpenedIsNamedAndLeavesTheDocumentAlone) {
  Open(fFolder.Write("song.lrc", "kept\n"));
  fFolder.Write("gigantic.lrc", "");
  std::filesystem::resize_file(fFolder.File("gigantic.lrc"), (uint64_t{1} << 30) + 1);
  std::filesystem::create_directory(fFolder.File("folder"));
  ASSERT_EQ(mkfifo(fFolder.File("pipe").c_str(), 0600), 0);
  for (const std::string& path : {fFolder.File("gigantic.lrc"), fFolder.File("folder"), fFolder.File("pipe"),
                                  std::string("/dev/null"), std::string("/dev/zero")}) {
    const hands::Question told = Answer("Escape", [&] { Open(path); });
    EXPECT_EQ(told.text, "This lyrics file cannot be opened:\n" + path);
    EXPECT_THAT(told.buttons, ElementsAre("U - Understood"));
    EXPECT_THAT(Lines(), ElementsAre("kept"));
    EXPECT_EQ(Title(), "song.lrc - Vesmo Editor");
  }
}

TEST_F(Opening, FileThatIsNotReadWholeIsNamedAndKeptBeforeItIsSavedOver) {
  const struct {
    const char* name;
    std::string bytes;
    std::list<std::string> lines;
    const char* loss;
  } rows[] = {{"nul.lrc", std::string("one\ntwo\0three\n", 14), {"one", "two"}, "after a NUL, which are not shown: 6"},
              {"broken.lrc", "\x93\xFA\x81\n", {"日\x1A"}, "shown as substitutes"},
              {"long.lrc", std::string(6, '\xB1'), {"ｱｱｱｱ"}, "too long to be converted"}}; // fills more than its room
  for (const auto& row : rows) {
    const std::string path = fFolder.Write(row.name, row.bytes);
    EXPECT_THAT(Answer("Escape", [&] { Open(path); }).text,
                StartsWith("Part of this file cannot be read as text:\n" + path));
    EXPECT_EQ(Lines(), row.lines);
    EXPECT_THAT(Answer("Escape", [&] { Send(BMessage(kMsgSave)); }).text, HasSubstr(row.loss));
    EXPECT_EQ(fFolder.Read(row.name), row.bytes) << "cancelled";
    Answer("A", [&] { Send(BMessage(kMsgSave)); });
    const std::string kept = Status().substr(Status().find("previous file: ") + 15);
    EXPECT_EQ(fFolder.Read(std::filesystem::relative(kept, fFolder.Path())), row.bytes);
    Send(BMessage(kMsgSave)); // now the file is as it is shown
    EXPECT_THAT(Status(), EndsWith("Saved"));
  }
}

TEST_F(Opening, FileOfTooManyLinesIsRefusedWithTheNumberAndTheMemory) {
  Open(fFolder.Write("song.lrc", "kept\n"));
  const std::string path = fFolder.Write("long.lrc", std::string(kMostLines + 1, '\n'));
  const std::string told = Answer("Escape", [&] { Open(path); }).text;
  EXPECT_THAT(told, StartsWith("This file has too many lines to open:\n" + path + "\n\n"));
  EXPECT_THAT(told, HasSubstr(std::to_string(kMostLines) + " lines"));
  EXPECT_THAT(told, HasSubstr(std::to_string(kMostLinesMB) + " MB"));
  EXPECT_THAT(Lines(), ElementsAre("kept"));
}

TEST_F(Opening, CopyFromBeforeAnInterruptedSaveIsOffered) {
  const std::string path = fFolder.Write("a.lrc", "");
  const std::string copy = fFolder.Write("a.lrc.before-save", "[00:01]one\n[00:02]two\n");
  EXPECT_THAT(Answer("N", [&] { Open(path); }).text, HasSubstr(copy));
  EXPECT_THAT(Lines(), ElementsAre(""));
  EXPECT_FALSE(IsModified());
  Answer("Y", [&] { Open(path); });
  EXPECT_THAT(Lines(), ElementsAre("[00:01]one", "[00:02]two"));
  EXPECT_TRUE(IsModified());
  EXPECT_EQ(fFolder.Read("a.lrc"), "") << "nothing is written before the user saves";
  Send(BMessage(kMsgSave));
  EXPECT_THAT(fFolder.Read("a.lrc"), StartsWith("[00:01]one\n[00:02]two\n"));
  EXPECT_THAT(fFolder.Read("a.lrc.before-save"), StartsWith("[00:01]one"));
  Open(path); // the file is as long now: no question
  EXPECT_FALSE(IsModified());
}

TEST_F(Opening, FileThatCannotBeMadeIsNamed) {
  const std::string path = fFolder.File("no folder/new.lrc");
  const auto asked = Answer({"Y", "U"}, [&] { Open(path); });
  EXPECT_EQ(asked.back().text, "This lyrics file cannot be opened:\n" + path);
  EXPECT_EQ(Title(), "Untitled - Vesmo Editor");
}

TEST_F(Opening, AFileThatIsGoneLeavesTheRecentFilesUnlessItIsMadeAgain) {
  const auto isRecent = [this] {
    const auto lines = hands::menu_lines(*fWindow, {"F - File", "O - Open…"});
    return std::ranges::any_of(lines, [](const auto& line) { return line.label.ends_with("gone.lrc"); });
  };
  const std::string path = fFolder.Write("gone.lrc", "a\n");
  Open(path);
  Open(fFolder.Write("other.lrc", "b\n"));
  EXPECT_TRUE(isRecent());
  std::filesystem::remove(path);
  Answer("N", [&] { Open(path); });
  EXPECT_FALSE(isRecent());
}

TEST_F(Opening, EmptyFileIsANewDocumentThatHasItsFile) {
  SetPref([](TPrefValues* values) { values->writeCRType = values->writeEncoding = 1; });
  Open(fFolder.Write("empty.lrc", ""));
  EXPECT_THAT(Lines(), ElementsAre(""));
  EXPECT_EQ(Title(), "empty.lrc - Vesmo Editor");
  EXPECT_THAT(Status(), HasSubstr("Shift-JIS <CR LF>"));
}

TEST_F(Opening, DroppedFileIsOpenedAndTheOthersAreNot) {
  const std::string path = fFolder.Write("詩 1.lrc", "dropped\n");
  const std::string other = fFolder.Write("b.lrc", "other\n");
  hands::drop_files(*fWindow, {200, 200}, {path, other});
  Settle();
  EXPECT_THAT(Lines(), ElementsAre("dropped"));
  Press("Ctrl+E"); // the free text takes dropped texts itself
  hands::drop_files(*fWindow, {200, 200}, {other});
  Settle();
  EXPECT_THAT(Lines(), ElementsAre("other"));
}

TEST_F(Opening, PlayerThatNeverAnswersLeavesTheWindowAlive) {
  Open(fFolder.Write("a.lrc", "[00:01]a\n"));
  fHost->fAnswers = false;
  Press("Ctrl+L");
  Change();
  EXPECT_THAT(Lines(), ElementsAre("a"));
  EXPECT_TRUE(Until([&] { return Status().ends_with("The player does not answer."); }));
}

TEST_F(Opening, TheSongIsFollowedAgainAfterwards) {
  SetPref([](TPrefValues* values) { values->pollIntervalUs = 50000; });
  SendToView(BMessage(kMsgPollInterval));
  Open(fFolder.Write("a.lrc", "[00:01]a\n"));
  fHost->SetRecord(2000, "song");
  EXPECT_TRUE(Until([this] { return fHost->CountHeard() > 2; }));
}

TEST_F(Opening, PlayerWithoutASongIsReported) {
  EXPECT_EQ(Answer("Escape", [this] { SendToView(BMessage(kMsgNoSong)); }).text,
            "The player has no song file whose lyrics could be opened.");
}

TEST_F(Opening, UnknownEncodingInTheSettingsIsIgnored) {
  SetPref([](TPrefValues* values) { values->readEncoding = 3; });
  Open(fFolder.Write("a.lrc", "[00:01]\x93\xFA\n"));
  EXPECT_THAT(Status(), HasSubstr("UTF-8 <LF>"));
  Change();
  Press("Ctrl+S");
  EXPECT_EQ(fFolder.Read("a.lrc"), std::string("\x93\xFA\n\0", 4));
}

TEST_F(Opening, SongsAndOtherFilesThatAreNoTextAreRefusedUnlessTheUserInsists) {
  Open(fFolder.Write("song.lrc", "kept\n"));
  const std::string song = fFolder.Write("song.mp3", std::string("ID3\4\0\0", 6) + std::string(9000, '\7'));
  const std::string picture = fFolder.Write("cover.png", "\x89PNG\r\n");
  hands::Question asked = Answer("Escape", [&] { Open(song); });
  EXPECT_EQ(asked.text, "This seems to be a song, not a lyrics file:\n" + song +
                            "\n\nOpened as lyrics and saved, it would lose its content.");
  EXPECT_THAT(asked.buttons, ElementsAre("C - Cancel", "O - Open anyway", "P - Play"));
  EXPECT_THAT(Lines(), ElementsAre("kept"));
  Answer("P", [&] { Open(song); });
  EXPECT_TRUE(Until([&] { return fHost->PlayedFile() == song; }));
  EXPECT_THAT(Lines(), ElementsAre("kept"));
  asked = Answer("Return", [&] { Open(picture); }); // the harmless answer
  EXPECT_THAT(asked.text, StartsWith("This does not seem to be a text file:\n" + picture));
  EXPECT_THAT(Lines(), ElementsAre("kept"));
  Answer("O", [&] { Open(picture); });
  EXPECT_EQ(Title(), "cover.png - Vesmo Editor");
}

TEST_F(Opening, CurrentSongsLyricsCanBeMadeAsLrcAndASpaceBarMeantForAStampMakesNothing) {
  const BMessage found = message_of(kMsgSongFound, "refs", ref_of(fFolder.File("song.txt")));
  auto asked = std::async(std::launch::async, [] {
    const hands::Question question = hands::wait_for_question();
    hands::answer_with_key("Space");
    hands::answer_with_key("L");
    return question;
  });
  SendToView(found);
  EXPECT_THAT(asked.get().buttons, ElementsAre("N - No", "Y - Yes", "L - Create .lrc instead"));
  EXPECT_EQ(Title(), "song.lrc - Vesmo Editor");
  EXPECT_TRUE(std::filesystem::exists(fFolder.File("song.lrc")));
  EXPECT_FALSE(std::filesystem::exists(fFolder.File("song.txt")));
  Answer("Return", [&] { SendToView(found); });
  EXPECT_EQ(Title(), "song.txt - Vesmo Editor") << "Return still means Yes";
}

TEST_F(Opening, DroppedSongsAreGivenToThePlayerAndTheLyricsOfTheFirstAreOpened) {
  const std::string song = fFolder.Write("a.mp3", std::string("ID3\x03\0\0\0\0\0\0", 10));
  fFolder.Write("a.lrc", "sung\n");
  const std::string other = fFolder.Write("b.lrc", "other\n");
  const auto drop = [this](const std::vector<std::string>& paths) {
    hands::drop_files(*fWindow, {200, 200}, paths);
    Settle();
  };
  drop({song});
  EXPECT_TRUE(Until([&] { return fHost->PlayedFile() == song; }));
  EXPECT_EQ(Title(), "a.lrc - Vesmo Editor");
  drop({song, other});
  EXPECT_EQ(Title(), "b.lrc - Vesmo Editor");
  drop({fFolder.Path()});
  EXPECT_TRUE(Until([&] { return fHost->PlayedFile() == fFolder.Path(); }));
  EXPECT_EQ(Title(), "b.lrc - Vesmo Editor");
}
