#include "platform/interface/menu_bar.h"

#include "platform/app/message.h"
#include "platform/interface/menu_peer.h"
#include "platform/interface/window.h"

#include <cassert>

BMenuBar::BMenuBar(BRect frame, const char* name, uint32 resizingMode) : BMenu(name) {
  SetResizingMode(resizingMode);
  MoveTo(frame.LeftTop());
  ResizeTo(frame.Width(), frame.Height());
}

std::shared_ptr<display::ViewPeer> BMenuBar::MakePeer() {
  return std::make_shared<display::MenuPeer>(BMessenger(this));
}

void BMenuBar::AttachedToWindow() {
  if (!Window()->fKeyMenuBar) Window()->fKeyMenuBar = this;
  const float height = display::menu_bar_height();
  if (height > 0) ResizeTo(Bounds().Width(), height - 1);
  Changed();
}

void BMenuBar::Changed() {
  assert(!Window() || Window()->IsCallAllowed());
  if (fFlushPending || !Window()) return;
  fFlushPending = true;
  BMessenger(this).SendCoalesced(display::DISPLAY_MENU_CHANGED);
}

void BMenuBar::Flush() {
  fFlushPending = false;
  if (Peer()) static_cast<display::MenuPeer*>(Peer())->SetMenus(Snapshot());
}

void BMenuBar::MessageReceived(BMessage* message) {
  int32 id = 0;
  if (message->what == display::DISPLAY_MENU_CHANGED) {
    if (fFlushPending) Flush();
  } else if (message->what == display::DISPLAY_ITEM_CHOSEN && message->FindInt32("id", &id) == B_OK) {
    BMenuItem* const item = FindById(id);
    if (item && item->IsEnabled()) item->Invoke();
  } else {
    BMenu::MessageReceived(message);
  }
}
