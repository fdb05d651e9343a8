#include "tests/editor/editor_fixture.h"

#include "lyrics/editor_view.h"
#include "platform/app/application.h"
#include "platform/app/message.h"
#include "platform/interface/file_panel.h"
#include "platform/interface/window.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <sys/stat.h>

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

class Saving : public EditorTest {
protected:
  /** The save panel's answer, as the panel sends it. */
  void SaveAs(const std::string& folder, const std::string& name, int32 encoding, int32 crType) {
    BMessage save(B_SAVE_REQUESTED);
    entry_ref directory;
    get_ref_for_path(folder.c_str(), &directory);
    save.AddRef("directory", &directory);
    save.AddString("name", name);
    save.AddInt32("Encoding", encoding);
    save.AddInt32("CRType", crType);
    Send(save);
  }
  int CountFiles() const {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(fGlobals.Folder())) count += entry.is_regular_file();
    return count;
  }
};

TEST_F(Saving, KeepsEncodingAndLineEndsToTheByte) {
  struct {
    const char* name;
    std::string before;
    std::string after;
  } const rows[] = {
      {"utf8_lf.lrc", "[00:01:00]歌\nb\n", std::string("歌\nb\n\0", 7)},
      {"utf8_crlf.lrc", "[00:01]a\r\nb\r\n", std::string("a\r\nb\r\n\0", 7)},
      {"utf8_cr.lrc", "[00:01]a\rb\r", std::string("a\rb\r\0", 5)},
      {"sjis_crlf.lrc", "[00:01]\x89\xCC\x8C\xBE\x97\x74\r\nb\r\n", "\x89\xCC\x8C\xBE\x97\x74\r\nb\r\n"},
      {"jis_lf.lrc", "[00:01]\x1B$B2N\x1B(B\nb\n", "\x1B$B2N\x1B(B\nb\n"},
  };
  for (const auto& row : rows) {
    const std::string path = Write(row.name, row.before);
    Open(path);
    Change();
    Press("Ctrl+S");
    EXPECT_EQ(Read(path), row.after) << row.name;
    EXPECT_FALSE(IsModified());
    EXPECT_THAT(Status(), EndsWith("Saved"));
  }
  EXPECT_EQ(CountFiles(), 5); // nothing is left beside them
}

TEST_F(Saving, AnswerOfThePanelNamesFileEncodingAndLineEnds) {
  Open(Write("a.lrc", "歌\n"));
  SaveAs(fGlobals.Folder(), "b.lrc", 1, 1);
  EXPECT_EQ(Read(PathOf("b.lrc")), "\x89\xCC\r\n");
  EXPECT_EQ(Title(), "b.lrc - Vesmo Editor");
  EXPECT_THAT(Status(), HasSubstr("Shift-JIS <CR LF>"));
  EXPECT_EQ(Read(PathOf("a.lrc")), "歌\n");
}

TEST_F(Saving, AnswerWithoutAFileWritesNothing) {
  const std::string path = Write("a.lrc", "[00:01]a\n");
  Open(path);
  Change();
  Send(BMessage(B_SAVE_REQUESTED));
  BMessage nameless(B_SAVE_REQUESTED);
  entry_ref folder;
  get_ref_for_path(fGlobals.Folder().c_str(), &folder);
  nameless.AddRef("directory", &folder);
  Send(nameless);
  EXPECT_EQ(Read(path), "[00:01]a\n");
  EXPECT_TRUE(IsModified());
  EXPECT_EQ(CountFiles(), 1);
}

TEST_F(Saving, LyricsThatCannotBeWrittenAreKeptElsewhereAndStayChanged) {
  std::filesystem::create_directory(PathOf("gone"));
  Open(Write("gone/a.lrc", "[00:01]a\n"));
  Change();
  std::filesystem::remove_all(PathOf("gone"));
  const hands::Question told = Answer("Escape", [&] { Press("Ctrl+S"); });
  EXPECT_THAT(told.text, HasSubstr(PathOf("gone/a.lrc")));
  EXPECT_TRUE(IsModified());
  const std::string kept = told.text.substr(told.text.rfind('\n') + 1);
  EXPECT_EQ(Read(kept), std::string("a\n\0", 3)) << kept;
}

TEST_F(Saving, WindowClosesOnlyWhenTheLyricsAreSafe) {
  const std::string path = Write("a.lrc", "[00:01]a\n");
  Open(path);
  Change();
  std::filesystem::remove(path);
  std::filesystem::create_directory(path); // nothing can be saved here any more
  auto close = [&] {
    hands::press_close_button(*fWindow);
    Settle();
  };
  Answer("Escape", close);
  EXPECT_FALSE(IsClosed());
  Answer({"Y", "U"}, close);
  EXPECT_FALSE(IsClosed());
  EXPECT_TRUE(IsModified());

  std::filesystem::remove(path);
  Answer("Y", close);
  EXPECT_TRUE(IsClosed());
  EXPECT_EQ(Read(path), std::string("a\n\0", 3));
}

TEST_F(Saving, ChangesThatTheUserDropsAreNotWritten) {
  const std::string path = Write("a.lrc", "[00:01]a\n");
  Open(path);
  Change();
  Answer("N", [&] {
    hands::press_close_button(*fWindow);
    Settle();
  });
  EXPECT_TRUE(IsClosed());
  EXPECT_EQ(Read(path), "[00:01]a\n");
}

/** A document that was never saved goes through the panel. */
class SavingNew : public Saving {
protected:
  SavingNew() : fApp(new BApplication("application/x-vnd.test-editor")) { Change(); }
  ~SavingNew() override {
    if (fApp->Lock()) fApp->Quit();
  }
  /** The panel's window: the only one titled so. */
  BWindow* Panel() const {
    for (int32 i = 0; BWindow* window = fApp->WindowAt(i); ++i)
      if (window != fWindow) return window;
    return nullptr;
  }
  void AskToClose() {
    hands::press_close_button(*fWindow);
    Settle();
  }
  BApplication* fApp;
};

TEST_F(SavingNew, FirstSaveAsksForAName) {
  Press("Ctrl+S");
  BWindow* const panel = Panel();
  ASSERT_NE(panel, nullptr);
  EXPECT_EQ(hands::file_name_selected(*panel), "New lyrics.lrc");
  hands::type_file_name(*panel, "named.lrc");
  EXPECT_TRUE(Until([&] { return Title() == "named.lrc - Vesmo Editor"; }));
  EXPECT_EQ(Read(PathOf("named.lrc")), std::string("\n\0", 2));
}

TEST_F(SavingNew, CloseWaitsForTheNameAndForNothingElse) {
  const hands::Question asked = Answer("Y", [&] { AskToClose(); });
  EXPECT_EQ(asked.text, "New lyrics has been changed.\nSave the changes?");
  ASSERT_NE(Panel(), nullptr);
  EXPECT_FALSE(IsClosed());
  hands::type_file_name(*Panel(), "named.lrc");
  EXPECT_TRUE(Until([&] { return IsClosed(); }));
  EXPECT_EQ(Read(PathOf("named.lrc")), std::string("\n\0", 2));
}

TEST_F(SavingNew, CancelledPanelDropsTheWaitingCommand) {
  Answer("Y", [&] { AskToClose(); });
  ASSERT_NE(Panel(), nullptr);
  hands::press(*Panel(), "Escape");
  Settle();
  EXPECT_TRUE(IsModified());
  fWindow->Activate(true);
  Press("Ctrl+2");
  hands::type_file_name(*Panel(), "later.lrc");
  EXPECT_TRUE(Until([&] { return Title() == "later.lrc - Vesmo Editor"; }));
  Settle();
  EXPECT_FALSE(IsClosed());
}
