#pragma once

#include "companion/prefs/pref_page.h"

/** The language, what files are made of, and how the editor's window behaves. */
class TGeneralPage : public TPrefPage {
public:
  /** The languages offered are those of the folder, and the built-in English. */
  explicit TGeneralPage(std::string languageFolder);

  void Relabel() override;

private:
  void ListLanguages();

  const std::string fFolder;
  std::vector<std::string> fFiles; // names of the files; the first one is empty: built in
  BMenuField* fLanguage;
};
