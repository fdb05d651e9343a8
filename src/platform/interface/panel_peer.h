#pragma once

#include "platform/interface/file_panel.h"
#include "platform/interface/window_peer.h"

#include <string>
#include <vector>

namespace display {

/** Thread-safe handle to a file dialog. */
class PanelPeer : public WindowPeer {
public:
  PanelPeer(const BMessenger& window, const WindowSetup& setup, file_panel_mode mode, bool allowMultiple);

  /** Falls back to the user's home if the folder does not exist. */
  void SetDirectory(const std::string& path);
  void SetPlaces(const std::vector<std::string>& folders);
  /** Blocks on the display thread; empty when the display has ended. */
  std::string Directory() const;
  void SetSaveText(const std::string& name);
  void SetButtonLabel(file_panel_button button, const std::string& label);
  /** Closes the dialog like the Cancel button. */
  void Cancel();
};

} // namespace display
