#include "toolkit/krv_dlg_win.h"

#include "platform/interface/screen.h"

#include <algorithm>

namespace {
constexpr BRect kBeforeFitting{0, 0, 299, 99};
/** What a window manager adds to a dialog. */
constexpr BPoint kDecoration{16, 40};
} // namespace

TKRVDlgWin::TKRVDlgWin(const char* title)
    : TKRVWin(kBeforeFitting, title, B_MODAL_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL,
              B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE) {
  KeepWhenClosed();
}

void TKRVDlgWin::Fit() {
  const BRect screen = screen_frame(Frame().LeftTop());
  const BPoint wanted = PreferredSize();
  const BPoint size{std::min(wanted.x, screen.Width() - kDecoration.x),
                    std::min(wanted.y, screen.Height() - kDecoration.y)};
  SetSizeLimits(size.x, size.x, size.y, size.y);
  ResizeTo(size.x, size.y);
}
