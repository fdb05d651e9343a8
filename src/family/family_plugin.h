#pragma once

#include "plugin/general_plugin.h"

#include <memory>
#include <string>

class TFamilyCommMan;

/** What the player sees of either plug-in: its name, and calls that become messages to its manager. */
class TFamilyPlugin : public GeneralPlugin {
public:
  bool About(bool query) override;
  bool Prefs(bool query) override;
  uint32 GetFlags() override { return 0; }

protected:
  explicit TFamilyPlugin(const std::string& name);
  /** Throws when there is no thread for it. */
  void StartManager(TFamilyCommMan* manager);
  TFamilyCommMan& Manager() const { return *fCommMan; }
  void EndManager();
  /** `isSaved`: the settings that the plug-in saves at its end. Otherwise the user is told, as long as there are
     windows to do so; the end is held up for some seconds at most. */
  static void EndSettings(bool isSaved);

private:
  /** The texts that the player reads; freed also when the construction fails. */
  const std::unique_ptr<char[]> fNameText;
  const std::unique_ptr<char[]> fInfoText;
  TFamilyCommMan* fCommMan = nullptr;
};
