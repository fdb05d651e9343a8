#include "editor/vesmo_e_comm_man.h"
#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "platform/kernel/threads.h"
#include "plugin/message_codes.h"
#include "tests/support/hands.h"
#include "tests/support/loaded_images.h"
#include "tests/support/long_tests.h"

#include <array>
#include <memory>

namespace {

constexpr const char* kEditor = "application/x-vnd.KOREVA-VesmoEditor";
constexpr std::array<const char*, 5> kLanguages = {"English.llt", "Japanese.llt", "", "German.llt", "French.llt"};
constexpr std::array<const char*, 4> kFormats = {"", "a) ", "a\u30fb", "a - "};

BMessage language_notice(const char* file) {
  BMessage notice(kMsgLanguageChanged);
  notice.AddString("LLTF", file);
  return notice;
}

template <typename Add>
BMessage preference_notice(const char* item, Add add) {
  BMessage notice(kMsgIAPChanged);
  notice.AddString("IAP:SrcApp", kEditor);
  notice.AddString("IAP:SrcIAPItem", item);
  add(&notice);
  return notice;
}

BMessage format_notice(const std::string& format) {
  return preference_notice("AccKeyFormat", [&](BMessage* notice) { notice->AddString("IAP:Value", format); });
}

BMessage flat_notice(bool isFlat) {
  return preference_notice("FlatToolBar", [&](BMessage* notice) { notice->AddBool("IAP:Value", isFlat); });
}

/** The real image with all its windows open. */
class Switching : public LoadedImages {
protected:
  Switching() : fPlugin(Load(PLUGIN_FILE)) {
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
  /** Waits until all earlier messages are handled. */
  static void WaitFor(const BMessenger& looper) {
    const BMessage question('wait');
    BMessage answer;
    looper.SendMessage(&question, &answer);
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
  const int switches = long_tests() ? 1000 : 100;
  for (int i = 0; i < switches; ++i) {
    const BMessage language = language_notice(kLanguages[static_cast<size_t>(i) % kLanguages.size()]);
    const BMessage preference =
        i % 2 == 0 ? format_notice(kFormats[static_cast<size_t>(i / 2) % kFormats.size()]) : flat_notice(i % 4 == 1);
    ASSERT_EQ(fManager.SendMessage(&language), B_OK);
    ASSERT_EQ(BMessenger(kEditor).SendMessage(&preference), B_OK);
  }
  const BMessage lastLanguage = language_notice("German.llt");
  const BMessage lastFormat = format_notice("a) ");
  fManager.SendMessage(&lastLanguage);
  BMessenger(kEditor).SendMessage(&lastFormat);
  WaitFor(BMessenger(fApp.get()));
  WaitFor(fManager);
  WaitFor(BMessenger(fMain));
  WaitFor(BMessenger(fMain)); // its menus are updated by a message to itself
  EXPECT_EQ(FirstMenu(*fMain), "F) Datei");
  EXPECT_EQ(hands::spoken(*fMain, "TBSave").name, "Speichern");
  EXPECT_EQ(hands::spoken(*fAbout, "Close").name, "C) Schließen");
  EXPECT_EQ(hands::spoken(*fFineTag, "Cancel").name, "C) Abbrechen");
  EXPECT_TRUE(hands::is_shown(*fCommon));
}
