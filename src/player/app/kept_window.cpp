#include "player/app/kept_window.h"

#include "platform/app/message.h"
#include "platform/storage/entry.h"
#include "player/model/player_messages.h"
#include "plugin/kept_record.h"
#include "toolkit/placement.h"

#include <cmath>
#include <utility>

namespace {

constexpr const char* kFolder = "Sonivo";
constexpr const char* kFile = "Sonivo_Window.arc";
constexpr bigtime_t kSaveDelayUs = 1000000;
constexpr float kLargest = 32767;

bool is_usable(const BRect& frame) {
  for (const float edge : {frame.left, frame.top, frame.right, frame.bottom})
    if (!std::isfinite(edge) || std::abs(edge) > kLargest) return false;
  return frame.IsValid();
}

} // namespace

void TKeptWindow::Restore() {
  load_record(this, kFolder, kFile);
}

BRect TKeptWindow::OpeningFrame() const {
  const BRect first = TKeptWindow(BMessenger()).fFrame;
  return fFrame == first || is_in_sight(fFrame) ? fFrame : first;
}

void TKeptWindow::TakePlace(const BMessage& message) {
  BRect frame;
  bool isMaximized = false;
  if (message.FindRect("frame", &frame) != B_OK || message.FindBool("maximized", &isMaximized) != B_OK) return;
  if (frame == fFrame && isMaximized == fIsMaximized) return;
  fFrame = frame;
  fIsMaximized = isMaximized;
  fIsChanged = true;
  fSaveTimer.StartOnce(kMsgKeepWindow, kSaveDelayUs);
}

void TKeptWindow::SaveChanges() {
  if (std::exchange(fIsChanged, false)) save_record(this, kFolder, kFile);
}

bool TKeptWindow::Archive(BMessage* archive) {
  return archive->AddRect("_WFr", fFrame) == B_OK && archive->AddBool("Maxi", fIsMaximized) == B_OK;
}

bool TKeptWindow::Unarchive(const BMessage& archive) {
  BRect frame = fFrame;
  const bool isReadable = Read(archive, "_WFr", &frame) && Read(archive, "Maxi", &fIsMaximized);
  if (is_usable(frame)) fFrame = frame;
  return isReadable;
}
