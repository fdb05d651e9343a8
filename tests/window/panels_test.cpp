#include "platform/app/looper_lock.h"
#include "tests/support/editor_fixture.h"

using namespace testing;
using namespace std::string_literals;

/** The panels run on threads of their own. */
struct Panels : EditorByHand {
  /** The only other window. */
  BWindow& Panel() {
    Settle();
    for (const BMessenger& address : fHost->WindowAddresses())
      if (const TLooperLock lock(address); lock && lock.Looper() != fWindow)
        return *static_cast<BWindow*>(lock.Looper());
    throw std::runtime_error("no panel");
  }
  bool Opens(const char* file) {
    return Until([&] { return Title() == file + std::string(" - Vesmo Editor"); });
  }
  bool Proposes(BWindow& panel, const std::string& name) {
    return Until([&] { return hands::file_name_selected(panel) == name; });
  }
  bool Exports(const char* name) {
    return Until([&] { return Status().ends_with(std::string("Exported as ") + name); });
  }
};

TEST_F(Panels, OpenPanelBeginsInTheFolderItWasClosedIn) {
  fFolder.Write("song.lrc", "one\n");
  std::filesystem::create_directory(fFolder.File("album"));
  fFolder.Write("album/other.lrc", "two\n");
  Press("Ctrl+O");
  BWindow& panel = Panel();
  EXPECT_THAT(hands::panel_texts(panel), IsSupersetOf({"Open lyrics", "Open", "Cancel"}));
  hands::type_file_name(panel, "song.lrc");
  EXPECT_TRUE(Opens("song.lrc"));
  gExitState->fPanelFolder = "/gone";
  Press("Ctrl+O");
  EXPECT_THAT(hands::panel_texts(panel), Contains(fFolder.Path())) << "of the open file";
  hands::type_file_name(panel, fFolder.File("album"));
  hands::press(panel, "Escape");
  EXPECT_TRUE(Until([&] { return gExitState->fPanelFolder == fFolder.File("album") && fWindow->IsActive(); }));
  Press("Ctrl+O");
  hands::type_file_name(panel, "other.lrc");
  EXPECT_TRUE(Opens("other.lrc"));
}

TEST_F(Panels, ExportProposesANameForEachFormatBesideTheLyrics) {
  Open(fFolder.Write("song.txt", "[00:01:50]a\n"));
  gExitState->fPanelFolder = "/";
  Send(BMessage(kMsgExport));
  BWindow& panel = Panel();
  EXPECT_TRUE(Proposes(panel, "song.lrc"));
  EXPECT_THAT(hands::panel_texts(panel), IsSupersetOf({"Export lyrics"s, "Save"s, "Cancel"s, fFolder.Path()}));
  EXPECT_TRUE(hands::menu_lines(panel, {"Format"}).front().isMarked);
  ASSERT_TRUE(hands::choose(panel, {"Format", "Subtitles (SRT)"}));
  EXPECT_TRUE(Proposes(panel, "song.srt"));
  Send(BMessage(kMsgExport));
  EXPECT_TRUE(Proposes(panel, "song.srt")) << "the same panel, brought to the front";
  hands::type_file_name(panel, "song.srt");
  EXPECT_TRUE(Exports("song.srt"));
  EXPECT_THAT(fFolder.Read("song.srt"), StartsWith("1\n"));
  fFolder.Write("song.lrc", "another's");
  Send(BMessage(kMsgExport));
  BWindow& next = Panel();
  EXPECT_TRUE(Proposes(next, "song.dotted.lrc"));
  hands::press(next, "Escape");
  EXPECT_TRUE(Until([&] { return fWindow->IsActive(); }));
  EXPECT_EQ(gExitState->fPanelFolder, "/") << "not a folder of lyrics";
}

TEST_F(Panels, SavePanelShowsAndKeepsTheFormOfTheFile) {
  Open(fFolder.Write("song.lrc", "[00:01]\xcf\xf0\r\n"));
  ASSERT_TRUE(hands::choose(*fWindow, {"F - File", "R - Open again as", "Windows-1251"}));
  Settle();
  ASSERT_THAT(Lines(), ElementsAre("[00:01]Пр"));
  Send(BMessage(kMsgSaveAs));
  BWindow& panel = Panel();
  EXPECT_THAT(hands::panel_texts(panel), IsSupersetOf({"Save lyrics"s, "Save"s, "Cancel"s, fFolder.Path()}));
  EXPECT_EQ(hands::file_name_selected(panel), "song.lrc");
  EXPECT_TRUE(hands::menu_lines(panel, {"Encoding"}).back().isMarked);
  EXPECT_TRUE(hands::menu_lines(panel, {"Return Code"})[1].isMarked);
  gLLT->Load(TEXTS_FOLDER "/German.llt");
  Send(BMessage(kMsgLanguageChanged));
  EXPECT_THAT(hands::panel_texts(panel), IsSupersetOf({"Liedtext speichern", "Speichern", "Abbrechen"}));
  hands::type_file_name(panel, "copy.lrc");
  EXPECT_TRUE(Opens("copy.lrc"));
  Send(BMessage(kMsgSaveAs));
  for (const auto& [menu, item] : {std::pair("Encoding", "UTF-8"), {"Return Code", "LF (Unix)"}})
    ASSERT_TRUE(hands::choose(panel, {menu, item}));
  hands::type_file_name(panel, "plain.lrc");
  EXPECT_TRUE(Opens("plain.lrc"));
  EXPECT_THAT(fFolder.Read("plain.lrc"), StartsWith("[00:01]Пр\n"));
  EXPECT_THAT(fFolder.Read("copy.lrc"), StartsWith("[00:01]\xcf\xf0\r\n"));
}
