#include "toolkit/krv_about_win.h"

#include "common/koreva.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/interface/button.h"
#include "platform/interface/tab_view.h"
#include "toolkit/app_info_view.h"
#include "toolkit/krv_dlg_view.h"
#include "toolkit/lang_info_view.h"

#include <algorithm>

namespace {
constexpr BRect kBeforeFitting{0, 0, 99, 99};
constexpr float kNoLimit = 32767;
} // namespace

TKRVAboutWin::TKRVAboutWin(const std::string& appName, const std::string& version, const BBitmap& icon,
                           const char* titleKey)
    : TKRVWin(kBeforeFitting, "", B_TITLED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, B_NOT_MINIMIZABLE | B_NOT_ZOOMABLE),
      fTitleKey(titleKey), fAppInfo(new TAppInfoView(icon, appName, version)), fLangInfo(new TLangInfoView),
      fTabs(new BTabView({}, "AboutTabs")), fClose(new BButton({}, "Close", "", new BMessage(B_QUIT_REQUESTED))),
      fView(new TKRVDlgView("About")) {
  KeepWhenClosed();
  fTabs->AddTab(fAppInfo, "");
  fTabs->AddTab(fLangInfo, "");
  fView->AddRow({fTabs});
  fView->AddButtons({fClose});
  fView->SetDefaultButton(fClose);
  fView->SetCancelButton(fClose);
  AddMainChild(fView);
  fTabs->MakeFocus();
}

void TKRVAboutWin::SetContent(const TContent& content) {
  SetTitle(gLLT->Text(fTitleKey));
  fTabs->SetTabLabel(0, gLLT->Text("About_Tab_App"));
  fTabs->SetTabLabel(1, gLLT->Text("About_Tab_Lang"));
  fClose->SetLabel(koreva::merge_accelerator_key(content.letterFormat, "C", gLLT->Text("Button_Close")).c_str());
  fAppInfo->SetAuthor(content.author);
  fLangInfo->SetAccessibleName(gLLT->Text("About_Tab_Lang"));
  fLangInfo->List(content.languageFolder, content.languageFile);
  const BPoint size = PreferredSize();
  SetSizeLimits(size.x, kNoLimit, size.y, kNoLimit);
  ResizeTo(std::max(size.x, Bounds().Width()), std::max(size.y, Bounds().Height()));
  fView->LayOut();
}
