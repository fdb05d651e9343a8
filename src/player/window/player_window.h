#pragma once

#include "platform/interface/window.h"
#include "player/model/player_state.h"

#include <memory>

/** The player's window. Front ends find it by its title, which starts with "Sonivo". Its close button asks the
    application. */
class TPlayerWindow : public BWindow {
public:
  TPlayerWindow(const BMessenger& player, const BRect& frame, bool isMaximized);

  /** On any thread but the display thread; shown in the order of the calls. */
  void ShowState(const TPlayerState& state);
  void ShowPosition(int32 positionMs);
  void BringToFront();
  /** The texts have changed. */
  void LanguageChanged();
  /** Until BringToFront. */
  void HideInTray();

  bool QuitRequested() override;

private:
  struct TWidgetSlot;
  const BMessenger fPlayer;
  /** The lazily created widget and its pending state; used by the display thread only. */
  std::shared_ptr<TWidgetSlot> fSlot;
};
