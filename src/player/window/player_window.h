#pragma once

#include "platform/interface/window.h"
#include "player/model/player_state.h"

#include <memory>

/** The player's window. Its title begins with "Sonivo", by which front ends find it. Closing it asks the application.
 */
class TPlayerWindow : public BWindow {
public:
  explicit TPlayerWindow(const BMessenger& player);

  /** From any thread; shown in the order of the calls. */
  void ShowState(const TPlayerState& state);
  void ShowPosition(int32 positionMs);

  bool QuitRequested() override;

private:
  struct TWidgetSlot;
  const BMessenger fPlayer;
  /** The widget, which comes a moment after the window, and what it is to show then: known to the display thread alone.
   */
  std::shared_ptr<TWidgetSlot> fSlot;
};
