#pragma once

#include "common/archivable.h"

/** What the display remembers between runs; the names in quotes are the fields on disk. Written by the manager when the
    window closes, and read by it. */
class TLyricsWindowState : public koreva::TArchivable {
public:
  bool Archive(BMessage* archive) override;
  bool Unarchive(const BMessage& archive) override;

  bool fIsOpen = false;                   // "Open": at the end
  BRect fWindowFrame{120, 520, 759, 759}; // "_WFr"
};

/** Null before start. */
extern TLyricsWindowState* gLyricsWindowState;
