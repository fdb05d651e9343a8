#include "common/app_info.h"
#include "common/koreva.h"
#include "companion/lyrics_window_state.h"
#include "platform/interface/window.h"
#include "platform/storage/entry.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"
#include "tests/support/hands.h"
#include "tests/support/loaded_images.h"
#include "tests/support/messages.h"
#include "tests/support/output_of.h"

using namespace testing;

namespace {

struct BothPlugins : LoadedImages {
  template <typename... Plugins>
  static void End(Plugins*... plugins) {
    (((*plugins)->Cleanup(), plugins->reset()), ...);
  }
};

} // namespace

TEST_F(BothPlugins, PreferencesOfTheEditorAreThoseOfTheCompanionInEitherOrderOfLoading) {
  for (const auto& [first, second] : {std::pair(EDITOR_FILE, COMPANION_FILE), std::pair(COMPANION_FILE, EDITOR_FILE)}) {
    auto a = Load(first);
    auto b = Load(second);
    GeneralPlugin* const editor = std::string_view(first) == EDITOR_FILE ? a.get() : b.get();
    EXPECT_STREQ(editor->fName, "Vesmo Editor");
    editor->Prefs(false);
    hands::wait_for_window("Vesmo preferences");
    End(&b, &a);
    EXPECT_FALSE(HasWindows());
  }
}

TEST_F(BothPlugins, MissingLanguageFileIsReportedOnce) {
  TPref settings;
  TPrefValues values;
  values.languageFile = "Missing.llt";
  settings.SetValues(values);
  BEntry entry;
  koreva::get_entry("VesmoShared_Prefs.arc", &entry, koreva::kSettingsDir, "Shared");
  ASSERT_TRUE(settings.Save(entry));
  auto editor = Load(EDITOR_FILE);
  auto companion = Load(COMPANION_FILE);
  EXPECT_THAT(hands::wait_for_question().text, EndsWith("/Language/Missing.llt"));
  EXPECT_TRUE(hands::answer_with_key("Escape"));
  hands::wait_for_display();
  EXPECT_FALSE(hands::answer_with_key("Escape")) << "the second one";
  End(&companion, &editor);
}

TEST_F(BothPlugins, NewAcceleratorFormatReachesEveryOpenWindowOfBothAtOnce) {
  auto editor = Load(EDITOR_FILE);
  auto companion = Load(COMPANION_FILE);
  editor->Init();
  BWindow& main = hands::wait_for_window("Untitled - Vesmo Editor");
  editor->About(false);
  companion->About(false);
  const std::array<BWindow*, 2> abouts{&hands::wait_for_window("About Vesmo Editor"),
                                       &hands::wait_for_window("About Vesmo Display")};
  editor->Prefs(false);
  BWindow& prefs = hands::wait_for_window("Vesmo preferences");
  ASSERT_TRUE(hands::choose(main, {"Edit", "Shift all time tags…"}));
  BWindow& fineTag = hands::wait_for_window("Shift all time tags");
  for (const char* format : {"a) ", "a - "}) {
    const BMessage notice = message_of(kMsgIAPChanged, "IAP:SrcIAPItem", "AccKeyFormat", "IAP:Value", format);
    EXPECT_EQ(BMessenger(gAppSignature).SendMessage(&notice), B_OK);
    const std::string behind(format + 1);
    const auto shows = [](BWindow& window, const char* view, const std::string& label) {
      return hands::until([&] { return hands::spoken(window, view).name == label; });
    };
    EXPECT_TRUE(hands::until([&] { return hands::menu_lines(main, {}).front().label == "F" + behind + "File"; }));
    EXPECT_TRUE(shows(fineTag, "Go", "G" + behind + "Go"));
    EXPECT_TRUE(shows(prefs, "Close", "C" + behind + "Close")) << "the companion's";
    for (BWindow* about : abouts) EXPECT_TRUE(shows(*about, "Close", "C" + behind + "Close"));
  }
  hands::click(prefs, "StayOnTop", {8, 8});
  EXPECT_TRUE(hands::until([&] { return hands::is_on_top(main); })) << "the editor takes the companion's settings over";
  End(&companion, &editor);
}

TEST_F(BothPlugins, LatenessMeasuredBeforeThePreferencesWereOpenedIsShownInThem) {
  auto companion = Load(COMPANION_FILE);
  const BMessage hint = message_of(kMsgStampHint, "LateMs", 140, "TmDf", -20);
  const BMessenger manager = be_app->LooperOn(find_thread("VesmoD Communication Manager"));
  EXPECT_EQ(manager.SendMessage(&hint), B_OK);
  companion->Prefs(false);
  BWindow& prefs = hands::wait_for_window("Vesmo preferences");
  EXPECT_TRUE(
      hands::until([&] { return hands::label_text(prefs, "StampHint") == "Your stamps are about 140 ms late"; }));
  EXPECT_THAT(hands::spoken(prefs, "UseStampHint").name, HasSubstr("-160"));
  End(&companion);
}

TEST_F(BothPlugins, NewAppearanceReachesTheOpenLyricsWindow) {
  auto companion = Load(COMPANION_FILE);
  for (int i = 0; i < 2; ++i) companion->Init();
  BWindow& lyrics = hands::wait_for_window("Vesmo Display");
  TPref settings;
  TPrefValues values;
  values.background = {0x12, 0x34, 0x56, 0xFF};
  settings.SetValues(values);
  BMessage notice(kMsgAppearance);
  settings.Archive(&notice);
  EXPECT_EQ(be_app->LooperOn(find_thread("VesmoD Communication Manager")).SendMessage(&notice), B_OK);
  EXPECT_TRUE(hands::until([&] { return hands::pixels(lyrics, "Lyrics").find("\x56\x34\x12") != std::string::npos; }));
  End(&companion);
}

TEST_F(BothPlugins, SettingsThatCannotBeSavedAtTheEndAreReported) {
  std::filesystem::create_directories(fFolder.File("KOREVA/VesmoD/VesmoD_ExitStates.arc/in the way"));
  auto companion = Load(COMPANION_FILE);
  companion->Cleanup();
  std::thread end([&companion] { companion.reset(); });
  EXPECT_THAT(hands::wait_for_question().text, StartsWith("The settings could not be saved."));
  EXPECT_TRUE(hands::answer_with_key("Escape"));
  end.join();
}

TEST_F(BothPlugins, LyricsWindowOpensAgainOnlyIfItWasOpenAtTheEnd) {
  for (const auto& [requests, isOpen] : {std::pair(1, false), {2, true}, {1, true}}) {
    auto companion = Load(COMPANION_FILE);
    for (int i = 0; i < requests; ++i) companion->Init(); // the second one shows it
    if (isOpen) hands::wait_for_window("Vesmo Display");
    End(&companion);
    TLyricsWindowState stored;
    stored.Load(BEntry(fFolder.File("KOREVA/VesmoD/VesmoD_ExitStates.arc").c_str()));
    EXPECT_EQ(stored.fIsOpen, isOpen);
  }
}

TEST(PluginImages, ExportTheirEntryAlone) {
  for (const char* file : {EDITOR_FILE, COMPANION_FILE})
    EXPECT_EQ(output_of(std::string("nm -D --defined-only ") + file + " | awk '{ print $3 }'"), "NewPlugin") << file;
}
