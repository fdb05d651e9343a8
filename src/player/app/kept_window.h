#pragma once

#include "common/archivable.h"
#include "player/app/message_timer.h"

/** Place and size of the player's window, kept from one run to the next; quoted names are the fields on disk.
    Application's thread. */
class TKeptWindow : private koreva::TArchivable {
public:
  /** `player` is sent kMsgKeepWindow when the record is to be saved (debounced). */
  explicit TKeptWindow(const BMessenger& player) : fSaveTimer(player) {}

  void Restore();
  /** The frame to open with: the one of the last run if the user could still reach it. */
  BRect OpeningFrame() const;
  bool IsMaximized() const { return fIsMaximized; }
  /** kMsgWindowPlaced. */
  void TakePlace(const BMessage& message);
  /** Writes what has changed. */
  void SaveChanges();

private:
  bool Archive(BMessage* archive) override;
  bool Unarchive(const BMessage& archive) override;

  BRect fFrame{60, 80, 500, 560}; // "_WFr": while it is not maximized
  bool fIsMaximized = false;      // "Maxi"
  bool fIsChanged = false;
  TMessageTimer fSaveTimer;
};
