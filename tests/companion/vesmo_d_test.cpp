#include "companion/display_state.h"
#include "platform/storage/entry.h"
#include "tests/display/hands.h"
#include "tests/link/loaded_images.h"

namespace {

class BothPlugins : public LoadedImages {
protected:
  TDisplayState Stored() const {
    TDisplayState state;
    state.Load(BEntry(fFolder.File("KOREVA/VesmoD/VesmoD_ExitStates.arc").c_str()));
    return state;
  }
};

} // namespace

TEST_F(BothPlugins, TheEditorsPreferencesAreTheDisplaysWhicheverIsLoadedFirst) {
  for (const auto& [first, second] : {std::pair(EDITOR_FILE, DISPLAY_FILE), std::pair(DISPLAY_FILE, EDITOR_FILE)}) {
    auto a = Load(first);
    auto b = Load(second);
    GeneralPlugin* const editor = std::string_view(first) == EDITOR_FILE ? a.get() : b.get();
    EXPECT_STREQ(editor->fName, "Vesmo Editor");
    editor->Prefs(false);
    hands::wait_for_window("Preferences of Vesmo");
    for (auto* plugin : {&b, &a}) {
      (*plugin)->Cleanup();
      plugin->reset();
    }
    EXPECT_FALSE(HasWindows());
  }
}

TEST_F(BothPlugins, TheDisplayOpensAgainWhenItWasOpenAtTheEnd) {
  auto display = Load(DISPLAY_FILE);
  EXPECT_STREQ(display->fName, "Vesmo Display");
  display->Init();
  display->Cleanup();
  display.reset();
  EXPECT_FALSE(Stored().fIsOpen) << "nobody has asked for it";
  display = Load(DISPLAY_FILE);
  display->Init();
  display->Init();
  hands::wait_for_window("Vesmo Display");
  display->Cleanup();
  display.reset();
  EXPECT_TRUE(Stored().fIsOpen);
  display = Load(DISPLAY_FILE);
  display->Init();
  hands::wait_for_window("Vesmo Display");
  display->Cleanup();
  display.reset();
  EXPECT_FALSE(HasWindows());
}

TEST(DisplayImage, ExportsItsEntryAlone) {
  EXPECT_EQ(exports_of(DISPLAY_FILE), "NewPlugin\n");
}
