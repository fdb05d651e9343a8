#include "platform/interface/window.h"

#include "platform/app/message.h"
#include "platform/interface/menu_bar.h"
#include "platform/interface/view.h"
#include "platform/interface/window_peer.h"

#include <algorithm>
#include <cassert>

namespace {

/** Holds the keys typed while a handler is running. */
constexpr int32 kQueueCapacity = 2000;

} // namespace

BWindow::BWindow(BRect frame, const char* title, window_look look, window_feel feel, uint32 flags)
    : BLooper(title, B_DISPLAY_PRIORITY, kQueueCapacity), fTitle(title), fSize{frame.Width(), frame.Height()} {
  fPeer =
      std::make_shared<display::WindowPeer>(BMessenger(this), display::WindowSetup{frame, fTitle, look, feel, flags});
}

BWindow::BWindow(BRect frame, const char* title, const PeerMaker& makePeer)
    : BLooper(title, B_DISPLAY_PRIORITY, kQueueCapacity), fTitle(title), fSize{frame.Width(), frame.Height()} {
  fPeer = makePeer(BMessenger(this));
  SetWindow(this); // it becomes visible without Show
}

BWindow::~BWindow() {
  SetWindow(nullptr);
  fPeer->Hide();
  while (!fChildren.empty()) delete fChildren.back();
}

void BWindow::Show() {
  SetWindow(this); // not earlier: other threads must not find a window under construction
  if (--fHideLevel == 0) {
    if (fKeyMenuBar) fKeyMenuBar->Flush();
    fPeer->Show(!fAvoidsFocus);
  }
  if (fRunsOnShow) Run();
}

void BWindow::Hide() {
  if (++fHideLevel == 1) fPeer->Hide();
}

bool BWindow::IsHidden() const {
  return fHideLevel > 0;
}

void BWindow::Activate(bool active) {
  fPeer->Activate(active);
}

void BWindow::StandInFrontOf(const BWindowProxy& other) {
  if (const auto peer = other.fPeer.lock()) fPeer->StandInFrontOf(*peer);
}

bool BWindowProxy::GetFrame(BRect* frame) const {
  const auto peer = fPeer.lock();
  if (peer) *frame = peer->Frame();
  return peer != nullptr;
}

void BWindowProxy::Activate() const {
  if (const auto peer = fPeer.lock()) peer->Activate(true);
}

BRect BWindow::Frame() const {
  return fPeer->Frame();
}

uint32 BWindow::Workspaces() const {
  return fPeer->Workspaces();
}

BRect BWindow::Bounds() const {
  return {0, 0, fSize.x, fSize.y};
}

void BWindow::MoveTo(BPoint leftTop) {
  fPeer->MoveTo(leftTop);
}

void BWindow::ResizeTo(float width, float height) {
  fPeer->ResizeTo({width, height});
  LayOut({width, height});
}

void BWindow::SetSizeLimits(float minWidth, float maxWidth, float minHeight, float maxHeight) {
  fPeer->SetSizeLimits({minWidth, minHeight}, {maxWidth, maxHeight});
}

void BWindow::SetTitle(const char* title) {
  fTitle = title;
  fPeer->SetTitle(fTitle);
}

void BWindow::SetFeel(window_feel feel) {
  fPeer->SetFeel(feel);
}

void BWindow::AddChild(BView* child) {
  assert(IsCallAllowed());
  if (child == nullptr || child->fParent || child->fWindow) return;
  fChildren.push_back(child);
  child->fSetParentSize = fSize;
  child->AttachTo(this, nullptr);
}

bool BWindow::RemoveChild(BView* child) {
  if (std::erase(fChildren, child) == 0) return false;
  child->Detach();
  return true;
}

BView* BWindow::ChildAt(int32 index) const {
  return index >= 0 && index < CountChildren() ? fChildren[static_cast<size_t>(index)] : nullptr;
}

BView* BWindow::FindView(const char* name) const {
  for (BView* child : fChildren)
    if (BView* found = child->FindView(name)) return found;
  return nullptr;
}

void BWindow::FocusChanged(BView* view, bool focused) {
  view->fHasFocus = focused;
  if (!focused) {
    if (fFocus == view) fFocus = nullptr;
    return;
  }
  if (fFocus && fFocus != view) fFocus->fHasFocus = false;
  fFocus = view;
}

void BWindow::Forget(BView* view) {
  if (fFocus == view) fFocus = nullptr;
  if (fKeyMenuBar == view) fKeyMenuBar = nullptr;
}

void BWindow::LayOut(BPoint size) {
  fSize = size;
  for (BView* child : fChildren) child->FollowParent();
}
