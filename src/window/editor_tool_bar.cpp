/** The editor window's tool bar. */

#include "document/editor_view.h"
#include "interapp/inter_app_prefs.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/interface/menu_bar.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"
#include "toolkit/tool_bar.h"
#include "window/editor_window.h"
#include "window/tool_bar_images.h"

#include <algorithm>
#include <utility>

namespace {

constexpr float kNoLimit = 32767;
constexpr float kMinWidth = 260;
/** Three lines of text and the status bar. */
constexpr float kMinTextHeight = 85;

} // namespace

void TVesmoEWin::AddButton(const char* name, uint32 code, BHandler* target, int32 mode) {
  auto* const message = new BMessage(code);
  if (mode >= 0) message->AddInt32("Mode", mode);
  fToolBar->AppendButton({}, name, GetBitmap(name), message)->SetTarget(BMessenger(target));
}

void TVesmoEWin::CreateToolBar() {
  AddButton("TBOpenCurLyrics", kMsgOpenCurrent, fEditorView);
  AddButton("TBOpen", kMsgOpenPanel, this);
  fToolBar->AppendSeparator();
  AddButton("TBSave", kMsgSave, fEditorView);
  fToolBar->AppendSeparator();
  AddButton("TBFineTimeTag", kMsgFineTimeTag, fManager);
  fToolBar->AppendSeparator();
  AddButton("TBTagInputExtMode", kMsgMode, fEditorView, 0);
  AddButton("TBTagInputStdMode", kMsgMode, fEditorView, 1);
  AddButton("TBFreeEditMode", kMsgMode, fEditorView, 2);
  fToolBar->AppendSeparator();
  AddButton("TBHelp", kMsgHelp, fManager);
  AddButton("TBAbout", B_ABOUT_REQUESTED, fManager);
  fFirstModeButton = fToolBar->FindItem("TBTagInputExtMode");
}

void TVesmoEWin::SetToolTip() {
  constexpr std::pair<const char*, const char*> kTips[] = {
      {"TBOpenCurLyrics", "MItem_Open_Cur"},
      {"TBOpen", "Menu_Open"},
      {"TBSave", "MItem_Save"},
      {"TBFineTimeTag", "MItem_Fine_Time_Tag"},
      {"TBTagInputExtMode", "MItem_Tag_Input_Ext_Mode"},
      {"TBTagInputStdMode", "MItem_Tag_Input_Std_Mode"},
      {"TBFreeEditMode", "MItem_Free_Edit_Mode"},
      {"TBHelp", "MItem_Help"},
      {"TBAbout", "MItem_About"},
  };
  for (const auto& [button, key] : kTips) fToolBar->FindItem(button)->SetTip(gLLT->Text(key));
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
