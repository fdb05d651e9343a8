#pragma once

#include "plugin/general_plugin.h"

#include <memory>

class TVesmoDCommMan;

inline constexpr const char* kDisplayName = "Vesmo Display";

/** The lyrics display as the player sees it. Makes the process-wide objects of its image and the manager, and turns the
    player's calls into messages to the manager. */
class TVesmoD : public GeneralPlugin {
public:
  explicit TVesmoD(PluginConstructorStruct* record);
  ~TVesmoD() override;

  /** The first time, the display comes up if it was open at the last end; later it is what the user asks for. */
  bool Init() override;
  void Cleanup() override;
  bool About(bool query) override;
  bool Prefs(bool query) override;
  uint32 GetFlags() override { return 0; }

private:
  /** The texts that the player reads; freed also when the construction fails. */
  const std::unique_ptr<char[]> fNameText;
  const std::unique_ptr<char[]> fInfoText;
  TVesmoDCommMan* fCommMan;
  bool fHasBegun = false;
};
