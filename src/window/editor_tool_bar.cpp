/** The editor window's tool bar. */

#include "commands/key_bindings.h"
#include "document/editor_view.h"
#include "interapp/inter_app_prefs.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/interface/key_text.h"
#include "platform/interface/menu_bar.h"
#include "plugin/pref.h"
#include "toolkit/tool_bar.h"
#include "window/editor_window.h"
#include "window/tool_bar_images.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr float kNoLimit = 32767;
constexpr float kMinWidth = 260;
/** Three lines of text and the status bar. */
constexpr float kMinTextHeight = 85;

using enum TCommandId;
constexpr TVesmoEWin::TBarButton kButtons[] = {
    {"TBOpenCurLyrics", kOpenCurrent},
    {"TBOpen", kOpen},
    {"TBSave", kSave, true},
    {"TBFineTimeTag", kShiftAll, true},
    {"TBTagInputExtMode", kModeExtended, true},
    {"TBTagInputStdMode", kModeStandard},
    {"TBFreeEditMode", kModeFree},
    {"TBWordByWord", kWordByWord},
    {"TBHelp", kHelp, true},
    {"TBAbout", kAbout},
};

} // namespace

void TVesmoEWin::AddButton(const TBarButton& button) {
  auto* const message = new BMessage(message_of_command(button.command));
  fToolBar->AppendButton({}, button.name, GetBitmap(button.name), message)
      ->SetTarget(BMessenger(fMenus->Target(button.command)));
}

void TVesmoEWin::CreateToolBar() {
  for (const TBarButton& button : kButtons) {
    if (button.beginsGroup) fToolBar->AppendSeparator();
    AddButton(button);
  }
  fFirstModeButton = fToolBar->FindItem("TBTagInputExtMode");
}

void TVesmoEWin::SetToolTip() {
  const auto keys = current_keys();
  std::vector<std::string> ofButtons;
  for (const TBarButton& button : kButtons) ofButtons.push_back(keys->Of(button.command));
  ofButtons = shown_keys(ofButtons);
  for (size_t i = 0; i < std::size(kButtons); ++i)
    fToolBar->FindItem(kButtons[i].name)->SetTip(gLLT->Text(command(kButtons[i].command).textKey), ofButtons[i]);
}

void TVesmoEWin::MarkSaveButton() {
  fToolBar->FindItem("TBSave")->SetBadge(fIsModified ? gLLT->Text("Label_Not_Saved") : "");
}

void TVesmoEWin::PressModeButton(int32 mode) {
  const int32 first = fToolBar->IndexOf(fFirstModeButton);
  for (int32 i = 0; i < kEditModes; ++i) fToolBar->ButtonAt(first + i)->SetValue(i == mode);
}

void TVesmoEWin::UpdateToolBarCompos() {
  const bool isWanted = gPref->Values()->showToolBar;
  if (isWanted != std::exchange(fShowsToolBar, isWanted)) isWanted ? fToolBar->Show() : fToolBar->Hide();
  PlaceMainChild();
  bool isFlat = true;
  gIAP->GetBool("FlatToolBar", &isFlat);
  fToolBar->SetFlat(isFlat);
  // Without the notices, so that none of them makes the window grow.
  const BView* const lowestBar = isWanted ? static_cast<const BView*>(fToolBar) : fMenuBar;
  SetSizeLimits(isWanted ? std::max(kMinWidth, fToolBar->PreferredWidth()) : kMinWidth, kNoLimit,
                lowestBar->Frame().bottom + 1 + kMinTextHeight, kNoLimit);
}

void TVesmoEWin::PrefToolBarChanged() {
  UpdateToolBarCompos();
}
