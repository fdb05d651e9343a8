#pragma once

#include "family/family_plugin.h"

/** The plug-in as the player sees it. Makes the process-wide objects and the manager. */
class TVesmoE : public TFamilyPlugin {
public:
  explicit TVesmoE(PluginConstructorStruct* record);
  ~TVesmoE() override;

  bool Init() override;
  void Cleanup() override;
};
