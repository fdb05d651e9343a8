#pragma once

#include "companion/prefs/pref_page.h"
#include "plugin/file_choices.h"

/** How lyrics files of other programs are read and written. The settings are in a record of their own. */
class TFilesPage : public TPrefPage {
public:
  TFilesPage();

  void ShowValues(const TPrefValues& values) override;
  void Opened() override { fOpened = load_file_choices(); }
  void Revert() override { fChoices = fOpened; }
  void SetDefaults() override { fChoices = {}; }
  bool Store() override;

private:
  TFileChoices fChoices;
  TFileChoices fStored;
  TFileChoices fOpened; // when the window was opened
};
