#include "companion/lyrics_window_state.h"

#include "platform/app/message.h"

TLyricsWindowState* gLyricsWindowState = nullptr;

bool TLyricsWindowState::Archive(BMessage* archive) {
  return archive->AddBool("Open", fIsOpen) == B_OK && archive->AddRect("_WFr", fWindowFrame) == B_OK &&
         archive->AddInt32("Zoom", fZoom) == B_OK;
}

bool TLyricsWindowState::Unarchive(const BMessage& archive) {
  const bool isReadable = Read(archive, "Open", &fIsOpen);
  return Read(archive, "Zoom", &fZoom) && Read(archive, "_WFr", &fWindowFrame) && isReadable;
}
