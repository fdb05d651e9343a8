#pragma once

#include "companion/prefs/pref_page.h"

class TLyricsPreview;

/** Font and colours of the lyrics, in the editor and in the display, with a few lines as they will look. */
class TAppearancePage : public TPrefPage {
public:
  TAppearancePage();

  void Relabel() override;
  void ShowValues(const TPrefValues& values) override;
  /** Only into the preview: the controls are what the user is working. */
  void Preview(const TPrefValues& values);

private:
  void ListFamilies();

  std::vector<std::string> fFamilies; // the first one is empty: the system's own
  BMenuField* fFamily;
  TLyricsPreview* fPreview;
};
