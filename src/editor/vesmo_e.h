#pragma once

#include "family/family_plugin.h"

/** The plug-in object. Owns the image's global objects and the manager. */
class TVesmoE : public TFamilyPlugin {
public:
  explicit TVesmoE(PluginConstructorStruct* record);
  ~TVesmoE() override;

  bool Init() override;
  void Cleanup() override;
};
