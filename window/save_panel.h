#pragma once

#include "lyrics/lyrics_file.h"
#include "platform/interface/file_panel.h"

#include <atomic>

/** The save panel: its answer carries the encoding ("Encoding") and the line-end type ("CRType") of the file to be. */
class TVesmoESavePanel : public BFilePanel {
public:
  explicit TVesmoESavePanel(const BMessenger& target);

  void SetEncoding(int32 encoding) { fEncoding = encoding; }
  void SetCRType(int32 crType) { fCRType = crType; }
  void SendMessage(const BMessenger* target, BMessage* message) override;

private:
  // Set by the editor window's thread, read by the panel's.
  std::atomic<int32> fEncoding{0};
  std::atomic<int32> fCRType{0};
};
