#include "player/window/player_window.h"

#include "platform/app/looper_lock.h"
#include "platform/app/message.h"
#include "platform/display/display_thread.h"
#include "platform/display/native_view.h"
#include "player/model/player_messages.h"
#include "player/window/player_widget.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

struct TPlayerWindow::TWidgetSlot {
  QPointer<TPlayerWidget> widget;
  TPlayerState state; // pending until there is a widget

  /** An empty placeholder that gets its content when the display thread is idle: at the start the user waits for the
      editor's window, which is built at the same time. */
  static QWidget* MakePlace(const std::shared_ptr<TWidgetSlot>& slot, const BMessenger& player, bool isMaximized) {
    auto* const place = new QWidget;
    auto* const layout = new QVBoxLayout(place);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* const whenIdle = new QTimer(place);
    whenIdle->setSingleShot(true);
    QObject::connect(whenIdle, &QTimer::timeout, place, [slot, player, layout, isMaximized] {
      slot->widget = new TPlayerWidget(player);
      slot->widget->ShowState(std::exchange(slot->state, {}));
      layout->addWidget(slot->widget);
      if (isMaximized) slot->widget->window()->setWindowState(Qt::WindowMaximized);
    });
    whenIdle->start(0);
    return place;
  }
};

namespace {
constexpr float kMinWidth = 360;
constexpr float kMinHeight = 320;
constexpr float kNoLimit = 32767;
} // namespace

TPlayerWindow::TPlayerWindow(const BMessenger& player, const BRect& frame, bool isMaximized)
    : BWindow(frame, "Sonivo"), fPlayer(player), fSlot(std::make_shared<TWidgetSlot>()) {
  AddChild(new display::NativeView(Bounds(), "Player", B_FOLLOW_ALL_SIDES, [player, isMaximized, slot = fSlot] {
    return TWidgetSlot::MakePlace(slot, player, isMaximized);
  }));
  SetSizeLimits(kMinWidth, kNoLimit, kMinHeight, kNoLimit);
}

void TPlayerWindow::ShowState(const TPlayerState& state) {
  const TSong* const song = shown_song(state);
  const std::string title = song ? "Sonivo – " + song->title : "Sonivo";
  if (const TLooperLock lock(this); lock && Title() != title) SetTitle(title.c_str());
  display::post([slot = fSlot, state] {
    if (slot->widget)
      slot->widget->ShowState(state);
    else
      slot->state = state;
  });
}

void TPlayerWindow::ShowPosition(int32 positionMs) {
  display::post([slot = fSlot, positionMs] {
    if (slot->widget) slot->widget->ShowPosition(positionMs);
  });
}

void TPlayerWindow::BringToFront() {
  const TLooperLock lock(this);
  if (!lock) return;
  if (IsHidden()) Show();
  Activate();
}

void TPlayerWindow::HideInTray() {
  if (const TLooperLock lock(this); lock && !IsHidden()) Hide();
}

void TPlayerWindow::LanguageChanged() {
  display::post([slot = fSlot] {
    QEvent change(QEvent::LanguageChange);
    if (slot->widget) QCoreApplication::sendEvent(slot->widget, &change);
  });
}

bool TPlayerWindow::QuitRequested() {
  const BMessage message(kMsgCloseButton);
  fPlayer.SendMessage(&message, BMessenger(), 0);
  return false;
}
