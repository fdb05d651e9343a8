#include "platform/interface/view.h"

#include "platform/app/message.h"
#include "platform/interface/follow.h"
#include "platform/interface/picture.h"
#include "platform/interface/view_peer.h"
#include "platform/interface/window.h"

#include <algorithm>
#include <cassert>
#include <utility>

BView::BView(BRect frame, const char* name, uint32 resizingMode, uint32 flags)
    : BHandler(name), fFrame(frame), fSetFrame(frame), fResizingMode(resizingMode), fFlags(flags) {}

BView::~BView() {
  RemoveSelf();
  for (BView* child : std::exchange(fChildren, {})) {
    child->fParent = nullptr;
    delete child;
  }
}

void BView::AddChild(BView* child) {
  assert(!fWindow || fWindow->IsCallAllowed());
  if (child == nullptr || child->fParent || child->fWindow) return;
  fChildren.push_back(child);
  child->fParent = this;
  child->SetFrame(child->fFrame);
  if (fWindow) child->AttachTo(fWindow, fPeer.get());
}

bool BView::RemoveChild(BView* child) {
  assert(!fWindow || fWindow->IsCallAllowed());
  if (std::erase(fChildren, child) == 0) return false;
  child->Detach();
  child->fParent = nullptr;
  return true;
}

bool BView::RemoveSelf() {
  if (fParent) return fParent->RemoveChild(this);
  return fWindow && fWindow->RemoveChild(this);
}

BView* BView::ChildAt(int32 index) const {
  return index >= 0 && index < CountChildren() ? fChildren[static_cast<size_t>(index)] : nullptr;
}

BView* BView::FindView(const char* name) {
  if (std::string_view(Name()) == name) return this;
  for (BView* child : fChildren)
    if (BView* found = child->FindView(name)) return found;
  return nullptr;
}

void BView::AttachTo(BWindow* window, display::ViewPeer* parentPeer) {
  fWindow = window;
  window->AddHandler(this);
  SetNextHandler(fParent ? static_cast<BHandler*>(fParent) : window);
  fPeer = MakePeer();
  if (parentPeer)
    fPeer->AttachTo(*parentPeer);
  else
    fPeer->AttachTo(*window->Peer());
  HandStateToPeer();
  AttachedToWindow();
  for (BView* child : fChildren) child->AttachTo(window, fPeer.get());
  AllAttached();
  Invalidate();
}

void BView::Detach() {
  if (!fWindow) return;
  for (BView* child : fChildren) child->Detach();
  DetachedFromWindow();
  fWindow->Forget(this);
  fWindow->RemoveHandler(this);
  SetNextHandler(nullptr);
  fHasFocus = false;
  fWindow = nullptr;
  fPeer.reset();
}

void BView::HandStateToPeer() {
  fPeer->SetName(Name());
  fPeer->SetPlacement({fSetFrame, fSetParentSize, fResizingMode});
  if (fViewColor.alpha != 0) fPeer->SetColor(fViewColor);
  if (fFont != *be_plain_font) fPeer->SetFont(fFont);
  if (!fToolTip.empty()) fPeer->SetToolTip(fToolTip);
  if (fAccessibleRole) fPeer->SetAccessibleRole(*fAccessibleRole);
  if (!fAccessibleName.empty() || !fAccessibleDescription.empty())
    fPeer->SetAccessibleTexts(fAccessibleName, fAccessibleDescription);
  fPeer->SetVisible(fHideLevel == 0);
}

std::shared_ptr<display::ViewPeer> BView::MakePeer() {
  return display::make_plain_peer(BMessenger(this), (fFlags & B_NAVIGABLE) != 0);
}

display::ViewPeer* BView::Peer() const {
  assert(!fWindow || fWindow->IsCallAllowed());
  return fPeer.get();
}

void BView::Show() {
  if (--fHideLevel == 0 && fPeer) fPeer->SetVisible(true);
}

void BView::Hide() {
  if (++fHideLevel == 1 && fPeer) fPeer->SetVisible(false);
}

bool BView::IsHidden() const {
  if (fHideLevel > 0) return true;
  if (fParent) return fParent->IsHidden();
  return fWindow && fWindow->IsHidden();
}

void BView::MakeFocus(bool focused) {
  // Sent even if the view seems to have the focus: Qt moves the focus of a hidden window without an event.
  if (!fWindow || (!focused && !fHasFocus)) return;
  fWindow->FocusChanged(this, focused);
  fPeer->SetFocus(focused);
}

bool BView::IsFocus() const {
  return fHasFocus;
}

void BView::SetViewColor(rgb_color color) {
  fViewColor = color;
  if (fPeer) fPeer->SetColor(color);
}

void BView::SetFont(const BFont* font) {
  fFont = *font;
  if (fPeer) fPeer->SetFont(fFont);
}

void BView::SetToolTip(std::string_view text) {
  fToolTip = text;
  if (fPeer) fPeer->SetToolTip(fToolTip);
}

void BView::ShowToolTip(bool shown) {
  if (fPeer) fPeer->ShowToolTip(shown);
}

void BView::SetAccessibleName(std::string_view name) {
  fAccessibleName = name;
  if (fPeer) fPeer->SetAccessibleTexts(fAccessibleName, fAccessibleDescription);
}

void BView::SetAccessibleDescription(std::string_view description) {
  fAccessibleDescription = description;
  if (fPeer) fPeer->SetAccessibleTexts(fAccessibleName, fAccessibleDescription);
}

void BView::KeyDown(const char* bytes, int32 count) {
  if (!fPeer) return;
  display::KeyPress key;
  key.bytes.assign(bytes, static_cast<size_t>(count));
  const BMessage* event = fWindow->CurrentMessage();
  if (event && event->what == B_KEY_DOWN) {
    key.modifiers = static_cast<uint32>(event->GetInt32("modifiers"));
    key.repeat = event->GetInt32("key_repeat");
    key.keyCode = event->GetInt32("key_code");
  }
  fPeer->HandBack(key);
}

void BView::FrameMoved(BPoint) {}

void BView::FrameResized(float, float) {}

void BView::WindowActivated(bool) {}

void BView::MessageReceived(BMessage* message) {
  bool focused = false;
  if (message->what == display::DISPLAY_FOCUS_CHANGED && message->FindBool("focused", &focused) == B_OK) {
    if (fWindow) fWindow->FocusChanged(this, focused);
    return;
  }
  BHandler::MessageReceived(message);
}

void BView::TellActivated(bool active) {
  WindowActivated(active);
  for (BView* child : fChildren) child->TellActivated(active);
}
