#include "platform/app/message.h"
#include "platform/interface/view.h"
#include "platform/interface/window.h"
#include "platform/interface/window_peer.h"

/** Messages from the display to a window. */

void BWindow::DispatchMessage(BMessage* message, BHandler* handler) {
  switch (message->what) {
  case B_KEY_DOWN:
    return KeyPressed(message, handler);
  case B_WINDOW_MOVED:
    return Moved(handler, message);
  case B_WINDOW_RESIZED:
    return Resized(handler, message);
  case display::DISPLAY_WINDOW_ACTIVATED:
    return Activated(*message);
  case B_QUIT_REQUESTED:
    return CloseAsked(message, handler);
  default:
    return BLooper::DispatchMessage(message, handler);
  }
}

void BWindow::MessageReceived(BMessage* message) {
  BLooper::MessageReceived(message);
}

void BWindow::KeyPressed(BMessage* message, BHandler* handler) {
  auto* view = dynamic_cast<BView*>(handler);
  std::string bytes;
  if (!view || message->FindString("bytes", &bytes) != B_OK || bytes.empty())
    return BLooper::DispatchMessage(message, handler);
  view->KeyDown(bytes.c_str(), static_cast<int32>(bytes.size()));
}

void BWindow::Moved(BHandler* handler, BMessage* message) {
  if (handler != this) return BLooper::DispatchMessage(message, handler);
  const display::WindowMove move = fPeer->Move(); // the latest: moves are coalesced
  fMoveEnd = move.end;
  FrameMoved(move.leftTop);
}

void BWindow::Resized(BHandler* handler, BMessage* message) {
  if (handler != this) return BLooper::DispatchMessage(message, handler);
  const BRect frame = Frame();
  LayOut({frame.Width(), frame.Height()});
  FrameResized(fSize.x, fSize.y);
}

void BWindow::Activated(const BMessage& message) {
  bool active = false;
  if (message.FindBool("active", &active) != B_OK || active == fIsActive) return;
  fIsActive = active;
  WindowActivated(active);
  for (int32 i = 0; i < CountChildren(); ++i) fChildren[static_cast<size_t>(i)]->TellActivated(active);
}

void BWindow::CloseAsked(BMessage* message, BHandler* handler) {
  if (!fIsKept || handler != this) return BLooper::DispatchMessage(message, handler);
  PutAway();
  BMessage answer(B_REPLY);
  answer.AddBool("result", true);
  message->SendReply(&answer);
}

void BWindow::PutAway() {
  if (!IsHidden()) Hide();
}

void BWindow::FrameMoved(BPoint) {}

void BWindow::FrameResized(float, float) {}

void BWindow::WindowActivated(bool) {}
