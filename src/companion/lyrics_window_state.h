#pragma once

#include "common/archivable.h"

/** State of the lyrics window kept between runs; quoted names are the fields on disk. Used by the manager's thread,
    which updates it when the window closes. */
class TLyricsWindowState : public koreva::TArchivable {
public:
  bool Archive(BMessage* archive) override;
  bool Unarchive(const BMessage& archive) override;

  bool fIsOpen = false;                   // "Open": when the program ended
  BRect fWindowFrame{120, 520, 759, 759}; // "_WFr"
  int32 fZoom = 0;                        // "Zoom": steps of the text size
};

/** Null before start. */
extern TLyricsWindowState* gLyricsWindowState;
