#include "family/about_content.h"

#include "interapp/inter_app_prefs.h"
#include "language/llt.h"
#include "language/load_language.h"
#include "plugin/pref.h"

TKRVAboutWin::TContent about_content(const std::string& pluginPath) {
  TKRVAboutWin::TContent content;
  content.author = gLLT->Text("App_Author");
  content.languageFolder = language_folder(pluginPath);
  content.languageFile = gPref->Values()->languageFile;
  gIAP->GetString("AccKeyFormat", &content.letterFormat);
  return content;
}
