/** How soon a language file that was saved stands in the menus, and what many changes of the language cost in memory:
    the editor's real image in a player of nothing else, with its windows open. */

#include "platform/app/application.h"
#include "platform/app/message.h"
#include "platform/display/display.h"
#include "platform/display/display_thread.h"
#include "platform/interface/window.h"
#include "plugin/general_plugin.h"
#include "plugin/message_codes.h"

#include <QApplication>
#include <QMenuBar>
#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr int kReloads = 20;
constexpr int kFewSwitches = 100;
constexpr int kManySwitches = 10000;
constexpr auto kPatience = std::chrono::seconds(30);
constexpr const char* kEditor = "application/x-vnd.KOREVA-VesmoEditor";
constexpr std::array<const char*, 4> kLanguages = {"English.llt", "Japanese.llt", "German.llt", "French.llt"};

/** What the first menu of the editor's window is called on the screen. */
std::string first_menu() {
  return display::call([]() -> std::string {
    for (const QWidget* window : QApplication::topLevelWidgets()) {
      const auto* const bar = window->findChild<QMenuBar*>();
      if (bar && !bar->actions().isEmpty()) return bar->actions().first()->text().remove('&').toStdString();
    }
    return {};
  });
}

void wait_for_menu(const std::string& text) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (first_menu() != text) {
    if (std::chrono::steady_clock::now() > end) throw std::runtime_error("the menu is never called " + text);
    std::this_thread::sleep_for(std::chrono::microseconds(200));
  }
}

void save_with_menu(const fs::path& file, const std::string& text) {
  std::stringstream whole;
  whole << std::ifstream(file).rdbuf();
  static const std::regex line("Menu_File = .*");
  std::ofstream(file) << std::regex_replace(whole.str(), line, "Menu_File = " + text);
}

void choose_language(const char* file) {
  BMessage notice(kMsgLanguageChanged);
  notice.AddString("LLTF", file);
  BMessenger(kEditor).SendMessage(&notice);
}

/** Until everybody has handled what came before. */
void settle() {
  const BMessage question('wait');
  BMessage answer;
  BMessenger(kEditor).SendMessage(&question, &answer);
  for (const BMessenger& window : be_app->WindowAddresses()) window.SendMessage(&question, &answer);
  first_menu();
}

long resident_kib() {
  long whole = 0;
  long resident = 0;
  std::ifstream("/proc/self/statm") >> whole >> resident;
  return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

void measure_reloads(const fs::path& file) {
  choose_language(file.filename().c_str());
  settle();
  std::vector<double> waits;
  for (int i = 0; i < kReloads; ++i) {
    const std::string name = "File " + std::to_string(i);
    const auto start = std::chrono::steady_clock::now();
    save_with_menu(file, name);
    wait_for_menu(name);
    waits.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
  }
  std::ranges::sort(waits);
  std::printf("from saving the language file to the menu on the screen: median of %d %.1f ms, longest %.1f ms\n",
              kReloads, waits[waits.size() / 2], waits.back());
}

void measure_memory() {
  for (const uint32 request : {kMsgPrepareAbout, kMsgFineTimeTag, kMsgCommonPref})
    BMessenger(kEditor).SendMessage(request);
  settle();
  long few = 0;
  const auto start = std::chrono::steady_clock::now();
  for (int i = 1; i <= kManySwitches; ++i) {
    choose_language(kLanguages[static_cast<size_t>(i) % kLanguages.size()]);
    if (i != kFewSwitches && i != kManySwitches) continue;
    settle();
    if (i == kFewSwitches) few = resident_kib();
  }
  const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
  std::printf("a change of the language, four windows open: %.2f ms\n", taken.count() / kManySwitches);
  std::printf("memory after %d changes %ld KiB, after %d %ld KiB: %+ld KiB\n", kFewSwitches, few, kManySwitches,
              resident_kib(), resident_kib() - few);
}

/** A folder with the image and its languages, and settings of its own. */
class Scratch {
public:
  explicit Scratch(const fs::path& plugins) {
    std::string name = (fs::temp_directory_path() / "languages-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no folder for the measurement");
    fFolder = name;
    fs::copy(plugins / "gen_VesmoE.so", Image());
    fs::copy(plugins / "Language", Language());
    setenv("XDG_CONFIG_HOME", fFolder.c_str(), 1);
    setenv("XDG_RUNTIME_DIR", fFolder.c_str(), 1);
    // No player runs here: the editor is not to start an installed one.
    setenv("XDG_DATA_HOME", fFolder.c_str(), 1);
    setenv("XDG_DATA_DIRS", fFolder.c_str(), 1);
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  ~Scratch() { fs::remove_all(fFolder); }
  fs::path Image() const { return fFolder / "gen_VesmoE.so"; }
  fs::path Language() const { return fFolder / "Language"; }

private:
  fs::path fFolder;
};

void measure(const fs::path& plugins) {
  const Scratch scratch(plugins);
  auto* const app = new BApplication("application/x-vnd.test-languages");
  app->Run();
  void* const image = dlopen(scratch.Image().c_str(), RTLD_NOW | RTLD_LOCAL);
  if (image == nullptr) throw std::runtime_error(dlerror());
  const auto construct = reinterpret_cast<GeneralPlugin* (*)(PluginConstructorStruct*)>(dlsym(image, "NewPlugin"));
  PluginConstructorStruct record;
  std::unique_ptr<GeneralPlugin> plugin(construct(&record));
  plugin->Init();
  wait_for_menu("File");
  measure_reloads(scratch.Language() / "English.llt");
  measure_memory();
  plugin->Cleanup();
  plugin.reset();
  if (app->Lock()) app->Quit();
}

int measured(const fs::path& plugins) {
  try {
    measure(plugins);
    return 0;
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "%s\n", fault.what());
    return 1;
  }
}

} // namespace

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  const fs::path plugins = fs::canonical("/proc/self/exe").parent_path() / "plugins";
  std::thread work;
  const int exitCode = display::run(argc, argv, [&] { work = std::thread([&] { display::quit(measured(plugins)); }); });
  work.join();
  return exitCode;
}
