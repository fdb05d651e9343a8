#pragma once

#include "platform/app/messenger.h"
#include "platform/storage/entry_ref.h"

#include <memory>
#include <string>

class BMessage;
class BWindow;

enum file_panel_mode { B_OPEN_PANEL, B_SAVE_PANEL };
enum file_panel_button { B_CANCEL_BUTTON, B_DEFAULT_BUTTON };

/** The window in which a file is chosen. It has a looper of its own, `Window()`, on which answers are sent.
    An open panel answers with a copy of its message (B_REFS_RECEIVED by default) and "refs", a save panel
    (B_SAVE_REQUESTED) with ref "directory" and string "name"; B_CANCEL with pointer "source", the panel, follows
    whenever the panel closes, chosen or not. Saving over a file asks first. Any thread that does not hold the panel's
    lock. */
class BFilePanel {
public:
  explicit BFilePanel(file_panel_mode mode = B_OPEN_PANEL, const BMessenger* target = nullptr,
                      const entry_ref* directory = nullptr, bool allowMultiple = false,
                      const BMessage* message = nullptr);
  BFilePanel(const BFilePanel&) = delete;
  BFilePanel& operator=(const BFilePanel&) = delete;
  virtual ~BFilePanel();
  /** Closes the window for good and waits for its thread. A derived class calls it in its destructor, so that the hook
      is never called on what is half gone. */
  void End();

  void Show();
  bool IsShowing() const;
  /** A window without views but for the menu bar "MenuBar", which is shown once it has menus. */
  BWindow* Window() const;

  void SetMessage(const BMessage* message);
  void SetPanelDirectory(const entry_ref* directory);
  void SetPanelDirectory(const char* path);
  /** The folder shown now or last. */
  void GetPanelDirectory(entry_ref* directory) const;
  /** The name in the field, selected whole. */
  void SetSaveText(const char* name);
  void SetButtonLabel(file_panel_button button, const char* label);
  void SetTitle(const char* title);

  /** Hook, on the panel window's thread with it locked: the user has chosen. The base sends the message. */
  virtual void SendMessage(const BMessenger* target, BMessage* message);

private:
  class PanelWindow;
  friend class PanelWindow;
  file_panel_mode fMode;
  PanelWindow* fWindow;
  bool fHasHook = false; // it was shown as a derived class
  bool fEnded = false;
};
