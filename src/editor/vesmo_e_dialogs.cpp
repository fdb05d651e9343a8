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

/** The fields of a request, checked. Without them the shift is of all lines. */
BMessage shift_of_lines(const BMessage& request) {
  BMessage shift(kMsgShiftTags);
  int32 first = 0;
  int32 count = 0;
  int32 document = 0;
  if (request.FindInt32("First", &first) != B_OK || request.FindInt32("Count", &count) != B_OK ||
      request.FindInt32("Document", &document) != B_OK)
    return shift;
  shift.AddInt32("First", first);
  shift.AddInt32("Count", count);
  shift.AddInt32("Document", document);
  return shift;
}

/** Says which lines, if not all. */
std::string title_of(const BMessage& shift) {
  int32 first = 0;
  int32 count = 0;
  if (shift.FindInt32("First", &first) != B_OK || shift.FindInt32("Count", &count) != B_OK)
    return gLLT->Text("Fine_Tag_Win_Title");
  if (count == INT32_MAX) return gLLT->Text("Shift_From_Win_Title") + std::to_string(first + 1);
  return gLLT->Text("Shift_Lines_Win_Title") + (std::to_string(first + 1) + "–" + std::to_string(int64{first} + count));
}

} // namespace

TKRVAboutWin* TVesmoECommMan::MakeAboutWindow() const {
  return new TKRVAboutWin(gAppName, gAppVer, GetBitmap(kAppIcon));
}

void TVesmoECommMan::MItemFineTimeTagClicked(const BMessage& message) {
  BRect neighbour;
  if (!FindMainWindowFrame(&neighbour)) return; // no tags to shift
  fShift = shift_of_lines(message);
  if (fFineTagWindow == nullptr) {
    fFineTagWindow = new TSimpleInputWin;
    fFineTagWindow->SetCheck(check_shift);
    move_beside(fFineTagWindow, neighbour);
  }
  SetFineTagWinLabel();
  if (const TLooperLock lock(fFineTagWindow); lock) fFineTagWindow->SetMessage(fShift, fMainAddress);
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
  fFineTagWindow->SetLabels({title_of(fShift), gLLT->Text("StrView_Delta_Time"),
                             accelerator_label("G", gLLT->Text("Button_Go")),
                             accelerator_label("C", gLLT->Text("Button_Cancel"))});
}

void TVesmoECommMan::CloseFineTimeTagWindowRqtd() {
  BWindow* window = std::exchange(fFineTagWindow, nullptr);
  CloseWindow(&window);
}
