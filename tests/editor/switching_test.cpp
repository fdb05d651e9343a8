#include "editor/vesmo_e_comm_man.h"
#include "platform/interface/window.h"
#include "plugin/message_codes.h"
#include "tests/support/hands.h"
#include "tests/support/loaded_images.h"
#include "tests/support/long_tests.h"
#include "tests/support/messages.h"

namespace {

constexpr const char* kEditor = "application/x-vnd.KOREVA-VesmoEditor";
constexpr std::array<const char*, 5> kLanguages = {"English.llt", "Japanese.llt", "", "German.llt", "French.llt"};
constexpr std::array<const char*, 4> kFormats = {"", "a) ", "a\u30fb", "a - "};

BMessage language_notice(const char* file) {
  return message_of(kMsgLanguageChanged, "LLTF", file);
}

template <typename Value>
BMessage notice_of(const char* item, const Value& value) {
  return message_of(kMsgIAPChanged, "IAP:SrcApp", kEditor, "IAP:SrcIAPItem", item, "IAP:Value", value);
}

BMessage format_notice(const char* format) {
  return notice_of("AccKeyFormat", format);
}

/** The real image with all its windows open. */
struct Switching : LoadedImages {
  Switching() : fPlugin(Load(EDITOR_FILE)) {
    fPlugin->Init();
    fManager = fApp->LooperOn(find_thread("VesmoE Communication Manager"));
    fMain = &hands::wait_for_window("Untitled - Vesmo Editor");
  }
  ~Switching() override {
    fPlugin->Cleanup();
    fPlugin.reset();
  }
  void OpenTheOthers() {
    for (const uint32 request : std::array<uint32, 3>{kMsgPrepareAbout, kMsgFineTimeTag, kMsgCommonPref})
      fManager.SendMessage(request);
    fAbout = &hands::wait_for_window("About Vesmo Editor");
    fFineTag = &hands::wait_for_window("Shift all time tags");
    fCommon = &hands::wait_for_window("KOREVA Common Preferences");
  }
  static std::string FirstMenu(BWindow& window) { return hands::menu_lines(window, {}).front().label; }

  std::unique_ptr<GeneralPlugin> fPlugin;
  BMessenger fManager;
  BWindow* fMain;
  BWindow* fAbout = nullptr;
  BWindow* fFineTag = nullptr;
  BWindow* fCommon = nullptr;
};

} // namespace

TEST_F(Switching, ManyLanguagesAndPreferencesEndWithTheLast) {
  OpenTheOthers();
  const int switches = long_tests() ? 1000 : 40;
  for (int i = 0; i < switches; ++i) {
    const BMessage language = language_notice(kLanguages[static_cast<size_t>(i) % kLanguages.size()]);
    const BMessage preference = i % 2 == 0 ? format_notice(kFormats[static_cast<size_t>(i / 2) % kFormats.size()])
                                           : notice_of("FlatToolBar", i % 4 == 1);
    ASSERT_EQ(fManager.SendMessage(&language), B_OK);
    ASSERT_EQ(BMessenger(kEditor).SendMessage(&preference), B_OK);
  }
  const BMessage lastLanguage = language_notice("German.llt");
  const BMessage lastFormat = format_notice("a) ");
  fManager.SendMessage(&lastLanguage);
  BMessenger(kEditor).SendMessage(&lastFormat);
  wait_for(BMessenger(fApp.get()));
  wait_for(fManager);
  wait_for(BMessenger(fMain));
  wait_for(BMessenger(fMain)); // its menus are updated by a message to itself
  EXPECT_EQ(FirstMenu(*fMain), "F) Datei");
  EXPECT_EQ(hands::spoken(*fMain, "TBSave").name, "Speichern");
  EXPECT_EQ(hands::spoken(*fAbout, "Close").name, "C) Schließen");
  EXPECT_EQ(hands::spoken(*fFineTag, "Cancel").name, "C) Abbrechen");
  EXPECT_TRUE(hands::is_shown(*fCommon));
}

TEST_F(Switching, TheHelpIsOpenedWithTheChangedKeysInIt) {
  std::ofstream(fFolder.File("xdg-open"))
      << "#!/bin/sh\nprintf %s \"$1\" >\"${0%/*}/path\"\nmv \"${0%/*}/path\" \"${0%/*}/opened\"\n";
  std::filesystem::permissions(fFolder.File("xdg-open"), std::filesystem::perms::owner_all);
  const std::string path = std::getenv("PATH");
  setenv("PATH", (fFolder.Path() + ":" + path).c_str(), 1);
  const auto opened = [this] {
    std::filesystem::remove(fFolder.File("opened"));
    fManager.SendMessage(kMsgHelp);
    EXPECT_TRUE(eventually([this] { return std::filesystem::exists(fFolder.File("opened")); }));
    return fFolder.Read("opened");
  };
  EXPECT_TRUE(std::filesystem::equivalent(opened(), std::filesystem::path(EDITOR_FILE).parent_path() / "VesmoE.htm"));
  const BMessage keys = message_of(kMsgKeys, "save", "F9");
  fManager.SendMessage(&keys);
  EXPECT_THAT(fFolder.Read(std::filesystem::relative(opened(), fFolder.Path())),
              testing::HasSubstr("<td>Save</td><td><kbd>F9</kbd></td>"));
  setenv("PATH", path.c_str(), 1);
}
