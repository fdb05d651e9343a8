#pragma once

#include "interapp/iap_item.h"
#include "platform/app/messenger.h"

#include <map>
#include <memory>
#include <string>

class TIAPWin;
class TLLT;

/** The preferences that every application of the family shares, by name. The items are added at start; their values may
    be read by any thread, and are written on the communication manager's. */
class TInterAppPrefs {
public:
  /** Borrowed; handed on to the items. */
  void SetAppSignatureRef(const char* signature);
  void SetLLTRef(const TLLT* texts);

  /** Takes the item over and reads its value from the user's settings. */
  void AddItem(TIAPItem* item);
  /** B_NAME_NOT_FOUND for an unknown name, B_BAD_TYPE for an item of another type. */
  status_t GetBool(const char* name, bool* value) const;
  status_t GetString(const char* name, std::string* value) const;
  status_t SetBool(const char* name, bool value);
  status_t SetString(const char* name, const std::string& value);
  /** Takes a change notice: -1 unless its string "IAP:SrcIAPItem" names an item. */
  status_t SetValue(const BMessage& notice);

  /** Opens the common window in the frame, or brings it to the front wherever it is open, and adds this application's
      controls to it. 0; -1 when its port cannot be made, or the process that has it does not take them. Waits until the
      port is there. */
  status_t ShowWindow(BRect frame);
  /** The common window, locked, when this process made it and it is open; else null. */
  TIAPWin* LockWindow() const;
  /** Ends the window if this process made it and it is still open, and waits until it has ended. */
  void EndWindow();
  /** Asks the common window to close, wherever it is open: 0 when there is none; -1, and nothing is sent, when another
      process made it and `force` is off. */
  status_t CloseWindow(bool force) const;
  /** 'iawr' to the window behind the port: come to the front. */
  status_t ActivateWindow(port_id port) const;
  /** B_TIMED_OUT when the window's process takes nothing for a few seconds. */
  status_t SendMessage(port_id port, BMessage* message) const;

private:
  TIAPItem* Find(const char* name) const;
  bool MadeWindow() const { return fWindow.IsValid(); }
  /** The port of a new window; negative when it cannot be made. */
  port_id MakeWindow(BRect frame);
  status_t AddControls(port_id port) const;

  const char* fSignature = "";
  const TLLT* fTexts = nullptr;
  BMessenger fWindow; // the one that this process made; not valid when that is closed
  thread_id fWindowThread = -1;
  std::map<std::string, std::unique_ptr<TIAPItem>> fItems;
};

/** Null before start. */
extern TInterAppPrefs* gIAP;

/** The label with its accelerator letter in the family's format ("AccKeyFormat"); the label alone before start. */
std::string accelerator_label(const char* letter, const char* label);
