#pragma once

#include "platform/interface/bitmap.h"
#include "toolkit/krv_win.h"

#include <string>

class BButton;
class BTabView;
class TAppInfoView;
class TKRVDlgView;
class TLangInfoView;

/** The About window: a page about the program and one about its languages. Closing hides it; the owner calls Quit. */
class TKRVAboutWin : public TKRVWin {
public:
  TKRVAboutWin(const std::string& appName, const std::string& version, const BBitmap& icon = {},
               const char* titleKey = "About_Win_Title");

  struct TContent {
    std::string author;
    std::string languageFolder;
    /** Empty for the built-in texts. */
    std::string languageFile;
    /** How the button's label shows its accelerator letter. */
    std::string letterFormat;
  };
  /** Sets all texts again, in the current language. */
  void SetContent(const TContent& content);

private:
  const char* const fTitleKey;
  TAppInfoView* fAppInfo; // pages
  TLangInfoView* fLangInfo;
  BTabView* fTabs;
  BButton* fClose;
  TKRVDlgView* fView; // the main child
};
