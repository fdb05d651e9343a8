#include "companion/display_window.h"

#include "companion/vesmo_d.h"
#include "platform/app/application.h"
#include "platform/app/message.h"
#include "platform/interface/view.h"

TVesmoDWin::TVesmoDWin(BRect frame) : TKRVWin(frame, kDisplayName, B_DOCUMENT_WINDOW_LOOK) {
  KeepWhenClosed();
  AddMainChild(new BView(Bounds(), "Lyrics", B_FOLLOW_ALL_SIDES));
}

void TVesmoDWin::PutAway() {
  const BMessage* const request = CurrentMessage();
  const bool isPlayers = request && be_app && request->ReturnAddress() == BMessenger(be_app);
  if (!isPlayers) TKRVWin::PutAway();
}
