#include "window/host_follower.h"

#include "family/message_filters.h"
#include "hostlink/sonivo_window.h"
#include "platform/interface/screen.h"
#include "platform/interface/window.h"

THostFollower::THostFollower(BWindow* window) : fWindow(window) {
  use_sonivo_window([this](BWindow* host) {
    fHostWindow = BMessenger(host);
    for (const uint32 change : {B_WINDOW_MOVED, B_WINDOW_RESIZED}) {
      fFilters.push_back(new TWMFilter(BMessenger(fWindow), change));
      host->AddCommonFilter(fFilters.back());
    }
  });
  MeasureDistance();
}

THostFollower::~THostFollower() {
  // A player's window that is already deleted has deleted its filters.
  if (fFilters.empty() || !fHostWindow.LockTarget()) return;
  BLooper* host = nullptr;
  fHostWindow.Target(&host);
  for (TWMFilter* const filter : fFilters)
    if (host->RemoveCommonFilter(filter)) delete filter;
  host->Unlock();
}

void THostFollower::Follow() {
  BRect host;
  uint32 workspaces = 0;
  if (get_sonivo_win_frame(&host) != B_OK || get_sonivo_win_workspaces(&workspaces) != B_OK) return;
  if (workspaces != fWindow->Workspaces()) return;
  fWindow->MoveTo(fDistance.Follow(host, fWindow->Frame(), screen_frame(host.LeftTop())));
}

void THostFollower::MeasureDistance() {
  BRect host;
  if (get_sonivo_win_frame(&host) == B_OK) fDistance.Set(fWindow->Frame().LeftTop(), host);
}

void THostFollower::WindowMoved(BPoint leftTop) {
  if (fDistance.IsUsersMove(leftTop, fWindow->MoveEnd())) MeasureDistance();
}
