#include "tests/editor/editor_fixture.h"

#include "language/llt.h"
#include "lyrics/editor_view.h"
#include "platform/app/message.h"
#include "platform/storage/file.h"
#include "platform/storage/node_info.h"
#include "plugin/pref.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <sys/stat.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class Opening : public EditorTest {
protected:
  /** After the editor has learnt what plays, by the question that it repeats all the time outside the tests. */
  void AskForTheSong() {
    const int32 before = fPlayer->fRecordsSent;
    Until([&] {
      fWindow->PostMessage(kMsgRefreshInfo, fWindow->FindView("VesmoEditorView"));
      return fPlayer->fRecordsSent > before + 3;
    });
    Press("Ctrl+L");
  }
};

TEST_F(Opening, ShowsTheLinesTheNameAndWhatKindOfFileItIs) {
  Open(Write("song.lrc", "\xEF\xBB\xBF[00:01]first\r\n二行目\r\n"));
  EXPECT_THAT(Lines(), ElementsAre("[00:01]first", "二行目")); // without the byte-order mark
  EXPECT_EQ(Title(), "song.lrc - Vesmo Editor");
  EXPECT_THAT(Status(), StartsWith(" [Tag, extended] UTF-8 <CR LF>   Space: stamp"));
  EXPECT_FALSE(IsModified());
  EXPECT_EQ(hands::row_text(*fWindow, "TagInputView", 1), "二行目");
}

TEST_F(Opening, WhatCannotBeOpenedIsNamedAndLeavesTheDocumentAlone) {
  Open(Write("song.lrc", "kept\n"));
  Write("gigantic.lrc", "");
  std::filesystem::resize_file(PathOf("gigantic.lrc"), (uint64_t{1} << 30) + 1);
  std::filesystem::create_directory(PathOf("folder"));
  ASSERT_EQ(mkfifo(PathOf("pipe").c_str(), 0600), 0);
  for (const std::string& path :
       {PathOf("gigantic.lrc"), PathOf("folder"), PathOf("pipe"), std::string("/dev/null"), std::string("/dev/zero")}) {
    const hands::Question told = Answer("Escape", [&] { Open(path); });
    EXPECT_EQ(told.text, "These lyrics cannot be opened:\n" + path);
    EXPECT_THAT(told.buttons, ElementsAre("U - Understood"));
    EXPECT_THAT(Lines(), ElementsAre("kept"));
    EXPECT_EQ(Title(), "song.lrc - Vesmo Editor");
  }
}

TEST_F(Opening, UnreadableFileIsNamed) {
  if (geteuid() == 0) GTEST_SKIP() << "everything is readable to the superuser";
  chmod(Write("secret.lrc", "text").c_str(), 0);
  EXPECT_THAT(Answer("Escape", [&] { Open(PathOf("secret.lrc")); }).text, HasSubstr("secret.lrc"));
}

TEST_F(Opening, TextEndsAtItsFirstNul) {
  Open(Write("nul.lrc", std::string("one\ntwo\0three\n", 14)));
  EXPECT_THAT(Lines(), ElementsAre("one", "two"));
}

TEST_F(Opening, MissingFileIsMadeOnlyWhenTheUserWantsIt) {
  Open(Write("song.lrc", "kept\n"));
  const std::string path = PathOf("new song.lrc");
  const hands::Question asked = Answer("N", [&] { Open(path); });
  EXPECT_EQ(asked.text, "This file does not exist:\n\n" + path + "\n\nCreate it?");
  EXPECT_THAT(asked.buttons, ElementsAre("N - No", "Y - Yes"));
  EXPECT_FALSE(std::filesystem::exists(path));
  EXPECT_THAT(Lines(), ElementsAre("kept"));

  Answer("Escape", [&] { Open(path); });
  EXPECT_FALSE(std::filesystem::exists(path));

  Answer("Y", [&] { Open(path); });
  std::string type;
  BFile file(path.c_str(), B_READ_ONLY);
  EXPECT_EQ(BNodeInfo(&file).GetType(&type), B_OK);
  EXPECT_EQ(type, "text/plain");
  EXPECT_EQ(Title(), "new song.lrc - Vesmo Editor");
  EXPECT_THAT(Lines(), ElementsAre(""));
}

TEST_F(Opening, FileThatCannotBeMadeIsNamed) {
  const std::string path = PathOf("no folder/new.lrc");
  const auto asked = Answer({"Y", "U"}, [&] { Open(path); });
  EXPECT_EQ(asked.back().text, "These lyrics cannot be opened:\n" + path);
  EXPECT_EQ(Title(), "New lyrics - Vesmo Editor");
}

TEST_F(Opening, EmptyFileIsANewDocumentThatHasItsFile) {
  TPrefValues settings = *gPref->Values();
  settings.writeCRType = 1;
  settings.writeEncoding = 1;
  gPref->SetValues(settings);
  Open(Write("empty.lrc", ""));
  EXPECT_THAT(Lines(), ElementsAre(""));
  EXPECT_EQ(Title(), "empty.lrc - Vesmo Editor");
  EXPECT_THAT(Status(), HasSubstr("Shift-JIS <CR LF>"));
}

TEST_F(Opening, UnchangedDocumentGoesWithoutAQuestion) {
  Open(Write("a.lrc", "a\n"));
  Open(Write("b.lrc", "b\n"));
  EXPECT_THAT(Lines(), ElementsAre("b"));
}

TEST_F(Opening, ChangedDocumentIsAskedAbout) {
  const std::string a = Write("a.lrc", "[00:01]a\n");
  const std::string b = Write("b.lrc", "b\n");
  Open(a);
  Change();
  const hands::Question asked = Answer("Escape", [&] { Open(b); });
  EXPECT_EQ(asked.text, "\"a.lrc\" has been changed.\nSave the changes?");
  EXPECT_THAT(asked.buttons, ElementsAre("C - Cancel", "N - No", "Y - Yes"));
  EXPECT_EQ(Title(), "a.lrc - Vesmo Editor");
  EXPECT_TRUE(IsModified());

  Answer("N", [&] { Open(b); });
  EXPECT_EQ(Title(), "b.lrc - Vesmo Editor");
  EXPECT_EQ(Read(a), "[00:01]a\n");

  Open(a);
  Change();
  Answer("Y", [&] { Open(b); });
  EXPECT_EQ(Title(), "b.lrc - Vesmo Editor");
  EXPECT_EQ(Read(a), std::string("a\n\0", 3));
}

TEST_F(Opening, DroppedFileIsOpened) {
  const std::string path = Write("dropped.lrc", "dropped\n");
  hands::drop_files(*fWindow, {200, 200}, {path});
  Settle();
  EXPECT_THAT(Lines(), ElementsAre("dropped"));
}

TEST_F(Opening, LyricsOfTheSongThatPlays) {
  fPlayer->fSongPath = PathOf("song.mp3");
  Write("song.lrc", "sung\n");
  AskForTheSong();
  EXPECT_TRUE(Until([&] { return Title() == "song.lrc - Vesmo Editor"; }));
  EXPECT_THAT(Lines(), ElementsAre("sung"));
}

TEST_F(Opening, WithoutASongTheUserIsToldSo) {
  const hands::Question told = Answer("Escape", [&] {
    AskForTheSong();
    EXPECT_TRUE(Until([&] { return fAnsweredQuestions > 0; }));
  });
  EXPECT_EQ(told.text, "There is no song in the player whose lyrics could be opened.");
}

TEST_F(Opening, PlayerThatNeverAnswersLeavesTheWindowAlive) {
  fPlayer->fSongPath = PathOf("song.mp3");
  fPlayer->fIsSilent = true;
  Open(Write("a.lrc", "[00:01]a\n"));
  AskForTheSong();
  Change();
  EXPECT_THAT(Lines(), ElementsAre("a"));
  EXPECT_TRUE(Until([&] { return Status().ends_with("The player does not answer."); }));
}
