#pragma once

#include "companion/prefs/pref_page.h"

class TLyricsPreview;

/** Font and colours of the lyrics in the editor and the lyrics window, with a preview. */
class TAppearancePage : public TPrefPage {
public:
  TAppearancePage();

  void Relabel() override;
  void ShowValues(const TPrefValues& values) override;
  /** Updates the preview only; the user is editing the controls. */
  void Preview(const TPrefValues& values);

private:
  void ListFamilies();

  std::vector<std::string> fFamilies; // the first is empty: the system font
  BMenuField* fFamily;
  TLyricsPreview* fPreview;
};
