#include "player/player_window.h"

#include "platform/app/message.h"
#include "platform/display/display_thread.h"
#include "platform/display/native_view.h"
#include "player/player_messages.h"
#include "player/player_widget.h"

#include <QPointer>

struct TPlayerWindow::TWidgetSlot {
  QPointer<TPlayerWidget> widget;
};

namespace {
constexpr BRect kFirstFrame{60, 80, 500, 560};
constexpr float kMinWidth = 360;
constexpr float kMinHeight = 320;
constexpr float kNoLimit = 32767;
} // namespace

TPlayerWindow::TPlayerWindow(const BMessenger& player)
    : BWindow(kFirstFrame, "Sonivo"), fPlayer(player), fSlot(std::make_shared<TWidgetSlot>()) {
  AddChild(new display::NativeView(Bounds(), "Player", B_FOLLOW_ALL_SIDES, [player, slot = fSlot] {
    slot->widget = new TPlayerWidget(player);
    return slot->widget.data();
  }));
  SetSizeLimits(kMinWidth, kNoLimit, kMinHeight, kNoLimit);
}

void TPlayerWindow::ShowState(const TPlayerState& state) {
  display::post([slot = fSlot, state] {
    if (slot->widget) slot->widget->ShowState(state);
  });
}

void TPlayerWindow::ShowPosition(int32 positionMs) {
  display::post([slot = fSlot, positionMs] {
    if (slot->widget) slot->widget->ShowPosition(positionMs);
  });
}

bool TPlayerWindow::QuitRequested() {
  const BMessage message(kMsgWindowCloses);
  fPlayer.SendMessage(&message, BMessenger(), 0);
  return false;
}
