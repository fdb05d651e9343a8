#include "companion/prefs/files_page.h"

#include "plugin/pref.h"

TFilesPage::TFilesPage() : TPrefPage("Files") {
  AddChoices(
      "NewDialect", "Pref_New_Dialect", [](const TPrefValues& values) { return values.newDialect; },
      [](int32 dialect, TPrefValues* values) { values->newDialect = dialect; },
      {{0, "MItem_Dialect_0"}, {1, "MItem_Dialect_1"}});
  AddCheckBox("RecogniseCommon", "Pref_Recognise_Common", &TPrefValues::recognisesCommon);
  AddCheckBox("ForeignAsUtf8", "Pref_Foreign_As_UTF8", &TPrefValues::savesForeignAsUtf8);
  AddCheckBox("RenewCopies", "Pref_Renew_Copies", &TPrefValues::renewsCopies);
}
