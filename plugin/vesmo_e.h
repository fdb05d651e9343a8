#pragma once

#include "plugin/general_plugin.h"

#include <memory>

class TVesmoECommMan;

/** The plug-in as the player sees it. Makes the process-wide objects and the manager, and turns the player's calls into
    messages to the manager. */
class TVesmoE : public GeneralPlugin {
public:
  explicit TVesmoE(PluginConstructorStruct* record);
  ~TVesmoE() override;

  bool Init() override;
  void Cleanup() override;
  bool About(bool query) override;
  bool Prefs(bool query) override;
  uint32 GetFlags() override { return 0; }

private:
  void WaitForManager() const;

  /** The texts that the player reads; freed also when the construction fails. */
  const std::unique_ptr<char[]> fNameText;
  const std::unique_ptr<char[]> fInfoText;
  TVesmoECommMan* fCommMan;
};
