#pragma once

#include "plugin/general_plugin.h"

#include <memory>
#include <string>

class TFamilyCommMan;

/** Base class of both plug-in objects: the name, and calls that are posted to the manager as messages. */
class TFamilyPlugin : public GeneralPlugin {
public:
  bool About(bool query) override;
  bool Prefs(bool query) override;
  uint32 GetFlags() override { return 0; }

protected:
  explicit TFamilyPlugin(const std::string& name);
  /** Throws if no thread can be created. */
  void StartManager(TFamilyCommMan* manager);
  TFamilyCommMan& Manager() const { return *fCommMan; }
  void EndManager();
  /** Shows an error for at most a few seconds unless the settings have been saved (`isSaved`). */
  static void EndSettings(bool isSaved);

private:
  /** Storage of the texts in GeneralPlugin, freed even if the construction fails. */
  const std::unique_ptr<char[]> fNameText;
  const std::unique_ptr<char[]> fInfoText;
  TFamilyCommMan* fCommMan = nullptr;
};
