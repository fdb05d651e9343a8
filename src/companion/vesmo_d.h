#pragma once

#include "family/family_plugin.h"

inline constexpr const char* kCompanionName = "Vesmo Display";

/** The lyrics display as the player sees it. Makes the process-wide objects of its image and the manager. */
class TVesmoD : public TFamilyPlugin {
public:
  explicit TVesmoD(PluginConstructorStruct* record);
  ~TVesmoD() override;

  /** The first time, the display comes up if it was open at the last end; later it is what the user asks for. */
  bool Init() override;
  void Cleanup() override;

private:
  bool fHasBegun = false;
};
