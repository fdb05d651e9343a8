#include "companion/prefs/files_page.h"

TFilesPage::TFilesPage() : TPrefPage("Files") {
  AddChoices(
      "NewDialect", "Pref_New_Dialect", [this](const TPrefValues&) { return fChoices.newDialect; },
      [this](int32 dialect, TPrefValues*) { fChoices.newDialect = dialect; },
      {{0, "MItem_Dialect_0"}, {1, "MItem_Dialect_1"}});
  AddFreeCheckBox(
      "RecogniseCommon", "Pref_Recognise_Common", [this](const TPrefValues&) { return fChoices.recognisesCommon; },
      [this](bool isOn, TPrefValues*) { fChoices.recognisesCommon = isOn; });
  AddFreeCheckBox(
      "ForeignAsUtf8", "Pref_Foreign_As_UTF8", [this](const TPrefValues&) { return fChoices.savesForeignAsUtf8; },
      [this](bool isOn, TPrefValues*) { fChoices.savesForeignAsUtf8 = isOn; });
  AddFreeCheckBox(
      "RenewCopies", "Pref_Renew_Copies", [this](const TPrefValues&) { return fChoices.renewsCopies; },
      [this](bool isOn, TPrefValues*) { fChoices.renewsCopies = isOn; });
}

/** The editor may have changed the record. */
void TFilesPage::ShowValues(const TPrefValues& values) {
  fChoices = fStored = load_file_choices();
  TPrefPage::ShowValues(values);
}

bool TFilesPage::Store() {
  if (fChoices == fStored) return true;
  const bool isStored = store_file_choices(fChoices);
  if (isStored) fStored = fChoices;
  return isStored;
}
