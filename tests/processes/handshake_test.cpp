#include "family/comm_man.h"
#include "family/family_comm_man.h"
#include "platform/app/looper_lock.h"
#include "plugin/message_codes.h"
#include "tests/support/loaded_images.h"
#include "tests/support/long_tests.h"
#include "tests/support/messages.h"

namespace {

constexpr const char* kEditorManager = "VesmoE Communication Manager";
constexpr const char* kDisplayManager = "VesmoD Communication Manager";

struct Handshake : LoadedImages {
  /** A plug-in and its image, unloaded together. */
  struct Image {
    explicit Image(const char* file) : plugin(Load(file)), handle(dlopen(file, RTLD_NOW | RTLD_NOLOAD)), path(file) {}
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;
    ~Image() {
      plugin->Cleanup();
      plugin.reset();
      dlclose(handle);
      dlclose(handle);
      EXPECT_EQ(dlopen(path, RTLD_NOW | RTLD_NOLOAD), nullptr) << path << " is still mapped";
    }
    std::unique_ptr<GeneralPlugin> plugin;
    void* handle;
    const char* path;
  };
  BMessenger Manager(const char* name) const { return fApp->LooperOn(find_thread(name)); }
};

/** Blocks a manager, as a question to its user would. */
using Busy = TLooperLock;

/** 'Scmc' from a manager that is gone, that never existed, or without an address. */
BMessage odd_greeting(std::mt19937* random, const void* gone) {
  BMessage greeting(kMsgPartnerConnects);
  const unsigned kind = (*random)() % 4;
  if (kind == 0) greeting.AddPointer("CSCommMan", gone);
  if (kind == 1) greeting.AddPointer("CSCommMan", reinterpret_cast<const void*>(uintptr_t{0x10} << (*random)() % 40));
  if (kind == 2) greeting.AddPointer("CSCommMan", nullptr);
  if ((*random)() % 2 == 0) greeting.AddMessenger("CSMessenger", BMessenger());
  return greeting;
}

} // namespace

TEST_F(Handshake, AManagerThatWasBlockedWhileItsPartnerCameAndWentSurvives) {
  const Image editor(EDITOR_FILE);
  const BMessenger manager = Manager(kEditorManager);
  for (int i = 0; i < 3; ++i) {
    const Busy busy(manager);
    const Image display(COMPANION_FILE);
  }
  wait_for(manager);
}

TEST_F(Handshake, EditorAndDisplayComeAndGoWithTheHandshakeDisturbed) {
  const unsigned seed = std::random_device()();
  std::mt19937 random(seed);
  const auto chance = [&random](unsigned oneIn) { return random() % oneIn == 0; };
  const int32 loopers = fApp->CountLoopers();
  const int rounds = long_tests() ? 1000 : 30;
  for (int i = 0; i < rounds; ++i) {
    SCOPED_TRACE("seed " + std::to_string(seed) + ", round " + std::to_string(i));
    const bool editorFirst = chance(2);
    auto first = std::make_unique<Image>(editorFirst ? EDITOR_FILE : COMPANION_FILE);
    const BMessenger early = Manager(editorFirst ? kEditorManager : kDisplayManager);
    BLooper* firstManager = nullptr;
    early.Target(&firstManager);
    if (chance(2)) first->plugin->Init();
    auto busy = chance(2) ? std::make_unique<Busy>(early) : nullptr;
    if (chance(2)) {
      const BMessage greeting = odd_greeting(&random, this);
      early.SendMessage(&greeting, BMessenger(), 0);
    }
    auto second = std::make_unique<Image>(editorFirst ? COMPANION_FILE : EDITOR_FILE);
    if (chance(2)) second->plugin->Init();
    if (chance(2)) second->plugin->About(false);
    if (chance(3)) second.reset();
    busy.reset();
    if (second && chance(2)) first->plugin->Init();
    if (second && chance(3)) first.swap(second);
    second.reset();
    if (chance(2)) {
      const BMessage greeting = odd_greeting(&random, firstManager);
      for (const char* const name : {kEditorManager, kDisplayManager})
        Manager(name).SendMessage(&greeting, BMessenger(), 0);
    }
    first.reset();
    ASSERT_EQ(fApp->CountLoopers(), loopers);
    ASSERT_FALSE(HasWindows());
  }
}
