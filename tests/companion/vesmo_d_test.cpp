#include "companion/display_state.h"
#include "platform/storage/entry.h"
#include "tests/display/hands.h"
#include "tests/link/loaded_images.h"

#include <cstdio>
#include <string>

namespace {

class BothPlugins : public LoadedImages {
protected:
  TDisplayState Stored() const {
    TDisplayState state;
    state.Load(BEntry(fFolder.File("KOREVA/VesmoD/VesmoD_ExitStates.arc").c_str()));
    return state;
  }
};

/** The names that an image exports, each with its line end. */
std::string exports_of(const std::string& file) {
  FILE* const names = popen(("nm -D --defined-only " + file + " | awk '{ print $3 }'").c_str(), "r");
  std::string exported;
  char line[512];
  while (names && std::fgets(line, sizeof line, names)) exported += line;
  if (names) pclose(names);
  return exported;
}

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

TEST(PluginImages, ExportTheirEntryAlone) {
  for (const char* file : {EDITOR_FILE, DISPLAY_FILE}) EXPECT_EQ(exports_of(file), "NewPlugin\n") << file;
}
