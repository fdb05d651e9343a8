#pragma once

#include "platform/interface/file_panel.h"
#include "platform/interface/window_peer.h"

#include <string>

namespace display {

/** The program's hand on a file dialog. */
class PanelPeer : public WindowPeer {
public:
  PanelPeer(const BMessenger& window, const WindowSetup& setup, file_panel_mode mode, bool allowMultiple);

  /** A folder that is not there means the user's home. */
  void SetDirectory(const std::string& path);
  /** Waits for the display; empty when it has ended. */
  std::string Directory() const;
  void SetSaveText(const std::string& name);
  void SetButtonLabel(file_panel_button button, const std::string& label);
  /** Closes the dialog as the user's Cancel would. */
  void Cancel();
};

} // namespace display
