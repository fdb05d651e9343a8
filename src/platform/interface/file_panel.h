#pragma once

#include "platform/app/messenger.h"
#include "platform/storage/entry_ref.h"

#include <memory>
#include <string>
#include <vector>

class BMessage;
class BWindow;

enum file_panel_mode { B_OPEN_PANEL, B_SAVE_PANEL };
enum file_panel_button { B_CANCEL_BUTTON, B_DEFAULT_BUTTON };

/** The window in which a file is chosen. It has a looper of its own, `Window()`, from whose thread answers are sent. An
    open panel sends a copy of its message (B_REFS_RECEIVED by default) with "refs", a save panel one (B_SAVE_REQUESTED)
    with ref "directory" and string "name". Whenever the panel closes, B_CANCEL with pointer "source" (the panel)
    follows, whether a file was chosen or not. Saving over a file asks first. Thread-safe, except on a thread that holds
    the panel's lock. */
class BFilePanel {
public:
  explicit BFilePanel(file_panel_mode mode = B_OPEN_PANEL, const BMessenger* target = nullptr,
                      const entry_ref* directory = nullptr, bool allowMultiple = false,
                      const BMessage* message = nullptr);
  BFilePanel(const BFilePanel&) = delete;
  BFilePanel& operator=(const BFilePanel&) = delete;
  virtual ~BFilePanel();
  /** Closes the window for good and waits for its thread. A derived class must call it in its destructor, so that the
      hook is never called on a partly destroyed object. */
  void End();

  void Show();
  bool IsShowing() const;
  /** Its only view is the menu bar "MenuBar", which is shown once it has menus. */
  BWindow* Window() const;

  void SetMessage(const BMessage* message);
  void SetPanelDirectory(const entry_ref* directory);
  void SetPanelDirectory(const char* path);
  /** The folders listed at the side, existing ones only; the user's home follows them. */
  void SetPlaces(const std::vector<std::string>& folders);
  /** The folder that is or was last shown. Blocks on the display thread. */
  void GetPanelDirectory(entry_ref* directory) const;
  /** Sets the file name and selects it. */
  void SetSaveText(const char* name);
  void SetButtonLabel(file_panel_button button, const char* label);
  void SetTitle(const char* title);

  /** Hook, on the panel window's thread with the window locked: the user has chosen. The base sends the message. */
  virtual void SendMessage(const BMessenger* target, BMessage* message);

private:
  class PanelWindow;
  friend class PanelWindow;
  file_panel_mode fMode;
  PanelWindow* fWindow;
  bool fHasHook = false; // was shown as a derived class
  bool fEnded = false;
};
