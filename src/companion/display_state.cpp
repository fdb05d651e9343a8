#include "companion/display_state.h"

#include "platform/app/message.h"

TDisplayState* gDisplayState = nullptr;

bool TDisplayState::Archive(BMessage* archive) {
  return archive->AddBool("Open", fIsOpen) == B_OK && archive->AddRect("_WFr", fWindowFrame) == B_OK;
}

bool TDisplayState::Unarchive(const BMessage& archive) {
  const bool isReadable = Read(archive, "Open", &fIsOpen);
  return Read(archive, "_WFr", &fWindowFrame) && isReadable;
}
