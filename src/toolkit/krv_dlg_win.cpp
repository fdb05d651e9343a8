#include "toolkit/krv_dlg_win.h"

namespace {
constexpr BRect kBeforeFitting{0, 0, 299, 99};
} // namespace

TKRVDlgWin::TKRVDlgWin(const char* title)
    : TKRVWin(kBeforeFitting, title, B_MODAL_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL,
              B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE) {
  KeepWhenClosed();
}

void TKRVDlgWin::Fit() {
  const BPoint size = PreferredSize();
  SetSizeLimits(size.x, size.x, size.y, size.y);
  ResizeTo(size.x, size.y);
}
