/** The manager's dialogs: About, and the shift of all time tags. Created lazily, hidden when closed, and quit by the
    manager. */

#include "common/app_info.h"
#include "document/editor_view.h"
#include "editor/shift_amount.h"
#include "editor/vesmo_e_comm_man.h"
#include "interapp/inter_app_prefs.h"
#include "language/llt.h"
#include "platform/app/looper_lock.h"
#include "plugin/message_codes.h"
#include "toolkit/krv_about_win.h"
#include "toolkit/placement.h"
#include "toolkit/simple_input_win.h"
#include "window/editor_window.h"
#include "window/tool_bar_images.h"

#include <utility>

namespace {

std::string check_shift(const std::string& text) {
  return is_shift_amount(text) ? "" : gLLT->Text("Err_No_Number");
}

} // namespace

TKRVAboutWin* TVesmoECommMan::MakeAboutWindow() const {
  return new TKRVAboutWin(gAppName, gAppVer, GetBitmap(kAppIcon));
}

void TVesmoECommMan::MItemFineTimeTagClicked() {
  BRect neighbour;
  if (!FindMainWindowFrame(&neighbour)) return; // no tags to shift
  if (fFineTagWindow == nullptr) {
    fFineTagWindow = new TSimpleInputWin;
    fFineTagWindow->SetCheck(check_shift);
    SetFineTagWinLabel();
    move_beside(fFineTagWindow, neighbour);
  }
  if (const TLooperLock lock(fFineTagWindow); lock) fFineTagWindow->SetMessage(BMessage(kMsgShiftTags), fMainAddress);
  BringUp(fFineTagWindow);
}

/** Not while a shift is being typed that is meant for the open document. */
void TVesmoECommMan::OfferSongLyrics(BMessage* offer) {
  if (const TLooperLock lock(fFineTagWindow); lock && !fFineTagWindow->IsHidden()) return;
  offer->what = kMsgOpenSongLyrics;
  Forward(offer);
}

void TVesmoECommMan::BringUp(TKRVWin* window) const {
  const TLooperLock lock(window);
  if (!lock) return;
  if (fMainWindow) window->StandInFrontOf(fMainProxy);
  window->BringUp();
}

void TVesmoECommMan::SetFineTagWinLabel() {
  const TLooperLock lock(fFineTagWindow);
  if (!lock) return;
  fFineTagWindow->SetLabels({gLLT->Text("Fine_Tag_Win_Title"), gLLT->Text("StrView_Delta_Time"),
                             accelerator_label("G", gLLT->Text("Button_Go")),
                             accelerator_label("C", gLLT->Text("Button_Cancel"))});
}

void TVesmoECommMan::CloseFineTimeTagWindowRqtd() {
  BWindow* window = std::exchange(fFineTagWindow, nullptr);
  CloseWindow(&window);
}
