#pragma once

#include "family/family_plugin.h"

inline constexpr const char* kCompanionName = "Vesmo Display";

/** The companion plug-in as the player sees it. Creates the global objects of its image and the manager. */
class TVesmoD : public TFamilyPlugin {
public:
  explicit TVesmoD(PluginConstructorStruct* record);
  ~TVesmoD() override;

  /** The first call opens the lyrics window if it was open when the program ended; later calls are the user's. */
  bool Init() override;
  void Cleanup() override;

private:
  bool fHasBegun = false;
};
