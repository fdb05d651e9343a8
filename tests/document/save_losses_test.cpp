/** What a save would lose is asked about before anything is written. */

#include "plugin/message_codes.h"
#include "tests/support/editor_fixture.h"

using namespace testing;

namespace {

class SaveLosses : public EditorByHand {
protected:
  void Save() { SendToView(BMessage(kMsgSave)); } // no shortcut: no window is active after a question
  void Type(const std::string& text) {
    SendToView(message_of(kMsgMode, "Mode", 2));
    Press("Ctrl+End");
    hands::paste(*fWindow, text);
    Settle();
  }
  /** The file whose path ends the text. */
  std::string FileAtEndOf(const std::string& text, const std::string& before) const {
    const std::string path = text.substr(text.rfind(before) + before.size());
    return fFolder.Read(std::filesystem::relative(path, fFolder.Path()));
  }
};

} // namespace

TEST_F(SaveLosses, AreAskedAboutOnceForEachCharacterOfAFile) {
  Open(fFolder.Write("a.lrc", "[00:01]한é\n日é\n"));
  const hands::Question asked = Answer("Escape", [&] { Send(SaveAs("a.lrc", "Encoding", 1)); });
  EXPECT_EQ(asked.text, "Saving as Shift-JIS would lose:\n\n• characters that this encoding does not have: 한 é");
  EXPECT_THAT(asked.buttons, ElementsAre("C - Cancel", "A - Save anyway", "U - Save as UTF-8 instead"));
  EXPECT_EQ(fFolder.Read("a.lrc"), "[00:01]한é\n日é\n");
  Answer("A", [&] { Send(SaveAs("a.lrc", "Encoding", 1)); });
  EXPECT_EQ(fFolder.Read("a.lrc"), "[00:01]\x1A\x1A\n\x93\xFA\x1A\n");
  EXPECT_FALSE(IsModified());
  EXPECT_EQ(FileAtEndOf(Status(), "whole text as UTF-8: "), std::string("[00:01]한é\n日é\n\0", 20));
  Change();
  Save(); // the same losses
  EXPECT_THAT(Status(), EndsWith("Saved"));
  Type("ñ");
  EXPECT_THAT(Answer("U", [&] { Save(); }).text, EndsWith("does not have: ñ"));
  EXPECT_THAT(fFolder.Read("a.lrc"), HasSubstr("한é"));
  EXPECT_THAT(Status(), HasSubstr("UTF-8"));
  Save(); // nothing is lost any more
  EXPECT_THAT(Status(), EndsWith("Saved"));
}

TEST_F(SaveLosses, CharactersBehindTheThirtiethAreCounted) {
  std::string text;
  for (char32_t code = 0xAC00; code < 0xAC00 + 42; ++code)
    text += {static_cast<char>(0xE0 | code >> 12), static_cast<char>(0x80 | (code >> 6 & 0x3F)),
             static_cast<char>(0x80 | (code & 0x3F))};
  Open(fFolder.Write("a.lrc", text + "\n"));
  EXPECT_THAT(Answer("A", [&] { Send(SaveAs("a.lrc", "Encoding", 1)); }).text, EndsWith(" and 12 more"));
  Type("é"); // behind the thirty
  EXPECT_THAT(Answer("Escape", [&] { Save(); }).text, EndsWith("does not have: é"));
}

TEST_F(SaveLosses, AFailedLossySaveSilencesNothingAndKeepsTheWholeText) {
  Open(fFolder.Write("a.lrc", "한\n"));
  std::filesystem::create_directory(fFolder.File("b.lrc"));
  const auto asked = Answer({"A", "U"}, [&] { Send(SaveAs("b.lrc", "Encoding", 1)); });
  EXPECT_EQ(FileAtEndOf(asked.back().text, "\n"), std::string("한\n\0", 5)) << "not with substitutes";
  std::filesystem::remove(fFolder.File("b.lrc"));
  EXPECT_THAT(Answer("Escape", [&] { Send(SaveAs("b.lrc", "Encoding", 1)); }).text, EndsWith("한"));
}

TEST_F(SaveLosses, TailBehindANulIsKnownUnderAnotherNameOfTheFile) {
  const std::string bytes("a\n\0tail\n", 8);
  const std::string path = fFolder.Write("a.lrc", bytes);
  std::filesystem::create_symlink(path, fFolder.File("link.lrc"));
  Answer("Escape", [&] { Open(path); });
  EXPECT_THAT(Answer("Escape", [&] { Send(SaveAs("link.lrc", "Encoding", 0)); }).text,
              HasSubstr("after a NUL, which are not shown: 5"));
  EXPECT_EQ(fFolder.Read("a.lrc"), bytes);
  Send(SaveAs("b.lrc", "Encoding", 0)); // another file loses nothing
  EXPECT_EQ(fFolder.Read("b.lrc"), std::string("a\n\0", 3));
}

TEST_F(SaveLosses, OddBytesAreNamedBeforeTheyAreWrittenDifferently) {
  const std::pair<const char*, const char*> rows[] = {{"cr.lrc", "a\rb\nc\nd\n"},                   // joins two words
                                                      {"nec.lrc", "\x87\x90\n"},                    // a doubled code
                                                      {"jis.lrc", "\x1B$B\x1B(B\x1B$B2N\x1B(B\n"}}; // idle escapes
  for (const auto& [name, bytes] : rows) {
    Open(fFolder.Write(name, bytes));
    Type("x");
    EXPECT_THAT(Answer("C", [&] { Save(); }).text, HasSubstr("the exact bytes of some lines")) << name;
    EXPECT_EQ(fFolder.Read(name), bytes);
    Answer("A", [&] { Save(); });
    EXPECT_EQ(FileAtEndOf(Status(), "previous file: "), bytes);
  }
}

TEST_F(SaveLosses, TextIsKeptEvenIfTheTemporaryFolderDoesNotExist) {
  const std::string path = fFolder.Write("a.lrc", "[00:01]a\n");
  Open(path);
  Change();
  std::filesystem::remove(path);
  std::filesystem::create_directory(path);
  std::filesystem::permissions(fFolder.File("KOREVA/VesmoE"), std::filesystem::perms::owner_read);
  const char* const before = std::getenv("TMPDIR");
  const std::string folder = before ? before : "/tmp";
  setenv("TMPDIR", fFolder.File("missing").c_str(), 1);
  const std::string told = Answer("U", [&] { Save(); }).text;
  setenv("TMPDIR", folder.c_str(), 1);
  std::filesystem::permissions(fFolder.File("KOREVA/VesmoE"), std::filesystem::perms::owner_all);
  EXPECT_THAT(told, HasSubstr("A copy was saved here:\n/tmp/Recovered_"));
  std::filesystem::remove(told.substr(told.rfind('\n') + 1));
}

TEST_F(SaveLosses, AndAVersionOfAnotherProgramAreOneQuestion) {
  Open(fFolder.Write("a.lrc", "[00:01]\x93\xFA\n"));
  Type("é");
  fFolder.Write("a.lrc", "theirs\n");
  const hands::Question asked = Answer("C", [&] { Save(); });
  EXPECT_THAT(asked.text, HasSubstr("\"a.lrc\" was changed by another program."));
  EXPECT_THAT(asked.text,
              EndsWith("Saving as Shift-JIS would lose:\n\n• characters that this encoding does not have: é"));
  EXPECT_EQ(fFolder.Read("a.lrc"), "theirs\n");
  Answer("U", [&] { Save(); });
  EXPECT_THAT(fFolder.Read("a.lrc"), HasSubstr("日\né"));
  EXPECT_EQ(FileAtEndOf(Status(), "previous file: "), "theirs\n");
}
