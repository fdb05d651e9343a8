#pragma once

#include "platform/app/application.h"
#include "plugin/general_plugin.h"
#include "tests/support/own_looper.h"
#include "tests/support/testing.h"

#include <dlfcn.h>

/** Loads the real plug-in images as the player does, with fresh settings. */
struct LoadedImages : testing::Test {
  LoadedImages() {
    setenv("XDG_CONFIG_HOME", fFolder.Path().c_str(), 1);
    fApp.reset(new BApplication("application/x-vnd.test-host"));
    fApp->Run();
  }
  static std::unique_ptr<GeneralPlugin> Load(const char* file) {
    void* const image = dlopen(file, RTLD_NOW | RTLD_LOCAL);
    EXPECT_NE(image, nullptr) << dlerror();
    const auto construct = reinterpret_cast<GeneralPlugin* (*)(PluginConstructorStruct*)>(dlsym(image, "NewPlugin"));
    PluginConstructorStruct record;
    std::unique_ptr<GeneralPlugin> plugin(construct(&record));
    EXPECT_EQ(record.built, 1);
    return plugin;
  }
  bool HasWindows() const { return !fApp->WindowAddresses().empty(); }

  ScratchFolder fFolder;
  OwnLooper<BApplication> fApp;
};
