#pragma once

#include "companion/prefs/pref_page.h"

/** Language, file format and behaviour of the editor window. */
class TGeneralPage : public TPrefPage {
public:
  /** Offers the languages in the folder and the built-in English. */
  explicit TGeneralPage(std::string languageFolder);

  void Relabel() override;

private:
  void ListLanguages();

  const std::string fFolder;
  std::vector<std::string> fFiles; // file names; the first is empty: built-in
  BMenuField* fLanguage;
};
