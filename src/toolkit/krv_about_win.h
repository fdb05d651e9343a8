#pragma once

#include "platform/interface/bitmap.h"
#include "toolkit/krv_win.h"

#include <string>

class BButton;
class BTabView;
class TAppInfoView;
class TKRVDlgView;
class TLangInfoView;

/** Tells of the program and of the languages it speaks, on a page each. Closing hides it; who owns it ends it. */
class TKRVAboutWin : public TKRVWin {
public:
  TKRVAboutWin(const std::string& appName, const std::string& version, const BBitmap& icon = {});

  struct TContent {
    std::string author;
    std::string languageFolder;
    /** Empty: the built-in texts. */
    std::string languageFile;
    /** How the label of the button shows its letter. */
    std::string letterFormat;
  };
  /** Takes every text anew, in the language of now. */
  void SetContent(const TContent& content);

private:
  TAppInfoView* fAppInfo; // pages
  TLangInfoView* fLangInfo;
  BTabView* fTabs;
  BButton* fClose;
  TKRVDlgView* fView; // the main child
};
