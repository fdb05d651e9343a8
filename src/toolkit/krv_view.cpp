#include "toolkit/krv_view.h"

TKRVView::TKRVView(BRect frame, const char* name, uint32 resizingMode, uint32 flags)
    : BView(frame, name, resizingMode, flags | B_FRAME_EVENTS) {}
