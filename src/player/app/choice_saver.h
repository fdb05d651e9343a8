#pragma once

#include "platform/kernel/thread_checker.h"
#include "player/app/message_timer.h"
#include "player/model/player_choices.h"

/** Keeps the choices of the player's menu from one run to the next. Saving is debounced, since a slider changes them
    many times a second. Application's thread. */
class TChoiceSaver {
public:
  /** `player` is sent kMsgKeepChoices when the choices are to be saved. */
  explicit TChoiceSaver(const BMessenger& player) : fSaveTimer(player) {}

  /** The choices of the last run; the defaults if there are none. */
  TPlayerChoices Load();
  void Note(const TPlayerChoices& choices);
  /** Does nothing if nothing has changed. False when the file cannot be written. */
  [[nodiscard]] bool Save();

private:
  ThreadChecker fThread;
  TPlayerChoices fSaved;
  TPlayerChoices fNoted;
  TMessageTimer fSaveTimer;
};
