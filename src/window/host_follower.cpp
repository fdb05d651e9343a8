#include "window/host_follower.h"

#include "family/message_filters.h"
#include "hostlink/sonivo_window.h"
#include "platform/interface/window.h"

THostFollower::THostFollower(BWindow* window) : fWindow(window) {
  use_sonivo_window([this](BWindow* host) {
    fHostWindow = BMessenger(host);
    fFilter = new TWMFilter(BMessenger(fWindow));
    host->AddCommonFilter(fFilter);
  });
  MeasureDistance();
}

THostFollower::~THostFollower() {
  // A player's window that is already deleted has deleted its filters.
  if (fFilter == nullptr || !fHostWindow.LockTarget()) return;
  BLooper* host = nullptr;
  fHostWindow.Target(&host);
  if (host->RemoveCommonFilter(fFilter)) delete fFilter;
  host->Unlock();
}

void THostFollower::Follow() {
  BRect host;
  uint32 workspaces = 0;
  if (get_sonivo_win_frame(&host) != B_OK || get_sonivo_win_workspaces(&workspaces) != B_OK) return;
  if (workspaces == fWindow->Workspaces()) fWindow->MoveTo(fDistance.Follow(host.LeftTop()));
}

void THostFollower::MeasureDistance() {
  BRect host;
  if (get_sonivo_win_frame(&host) == B_OK) fDistance.Set(fWindow->Frame().LeftTop(), host.LeftTop());
}

void THostFollower::WindowMoved(BPoint leftTop) {
  if (fDistance.IsUsersMove(leftTop, fWindow->MoveEnd())) MeasureDistance();
}
