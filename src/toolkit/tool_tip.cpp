#include "toolkit/tool_tip.h"

#include "platform/app/message.h"
#include "platform/interface/view_peer.h"
#include "platform/interface/window.h"

void TToolTipWin::ShowAt(BView* view) {
  fView = view;
  view->ShowToolTip(true);
}

void TToolTipWin::HideFrom(BView* view) {
  if (fView != view) return;
  fView = nullptr;
  view->ShowToolTip(false);
}

TTTSpy::TTTSpy() : BMessageFilter(display::DISPLAY_FOCUS_CHANGED) {}

filter_result TTTSpy::Filter(BMessage* message, BHandler** target) {
  auto* const view = dynamic_cast<BView*>(*target);
  bool focused = false;
  if (!view || message->FindBool("focused", &focused) != B_OK) return B_DISPATCH_MESSAGE;
  if (!focused) fWindow.HideFrom(view);
  if (focused && message->GetBool("byTab") && !view->ToolTip().empty()) fWindow.ShowAt(view);
  return B_DISPATCH_MESSAGE;
}

TToolTip::TToolTip(BWindow* window) : fWindow(window), fSpy(new TTTSpy) {
  window->AddCommonFilter(fSpy);
}

TToolTip::~TToolTip() {
  if (fWindow->RemoveCommonFilter(fSpy)) delete fSpy;
}

void TToolTip::SetTip(BView* view, const std::string& text) {
  view->SetToolTip(text);
  view->SetAccessibleName(text);
}
