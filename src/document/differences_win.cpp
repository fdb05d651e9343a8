#include "document/differences_win.h"

#include "interapp/inter_app_prefs.h"
#include "language/llt.h"
#include "lyrics/line_diff.h"
#include "platform/app/looper_lock.h"
#include "platform/app/message.h"
#include "platform/interface/button.h"
#include "platform/interface/screen.h"
#include "platform/interface/string_view.h"
#include "platform/interface/text_view.h"
#include "toolkit/krv_dlg_view.h"
#include "toolkit/placement.h"

namespace {

constexpr float kWidth = 560;
constexpr float kHeight = 400;
/** More lines are not read by anyone. */
constexpr int kMostLinesShown = 5000;

} // namespace

TDifferencesWin::TDifferencesWin(BRect frame)
    : TKRVWin(frame, "", B_DOCUMENT_WINDOW_LOOK), fLegend(new BStringView({}, "DifferencesLegend", "")),
      fText(new BTextView({}, "Differences", B_FOLLOW_ALL_SIDES)),
      fClose(new BButton({}, "DifferencesClose", "", new BMessage(B_QUIT_REQUESTED))) {
  KeepWhenClosed();
  fText->MakeEditable(false);
  auto* const view = new TKRVDlgView("DifferencesView");
  view->AddRow({fLegend});
  view->AddRow({fText});
  view->AddButtons({fClose});
  view->SetDefaultButton(fClose);
  view->SetCancelButton(fClose);
  AddMainChild(view);
}

void TDifferencesWin::SetContent(const std::string& name, const std::string& legend, const std::string& differences) {
  SetTitle((gLLT->Text("Differences_Title") + name).c_str());
  fLegend->SetText(legend.c_str());
  fText->SetText(differences.empty() ? gLLT->Text("Differences_None") : differences);
  fText->SetAccessibleName(legend);
  fClose->SetLabel(accelerator_label("C", gLLT->Text("Button_Close")).c_str());
  fText->MakeFocus();
}

TDifferences::~TDifferences() {
  if (fWindow && fWindow->Lock()) fWindow->Quit();
}

void TDifferences::Show(const std::string& name, const char* legendKey, const std::vector<std::string>& before,
                        const std::vector<std::string>& after) {
  const std::string differences = diff_text(before, after, kMostLinesShown);
  const BWindow* const owner = fOwner->Window();
  if (!fWindow) {
    const BRect place = owner->Frame();
    fWindow = new TDifferencesWin(frame_beside(place, kWidth, kHeight, screen_frame(place.LeftTop())));
  }
  const TLooperLock lock(fWindow);
  if (!lock) return;
  fWindow->SetContent(name, gLLT->Text(legendKey), differences);
  fWindow->StandInFrontOf(owner->Proxy());
  fWindow->BringUp();
}
