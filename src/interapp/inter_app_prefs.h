#pragma once

#include "interapp/iap_item.h"
#include "platform/app/messenger.h"

#include <map>
#include <memory>
#include <string>

class TIAPWin;
class TLLT;

/** The preferences shared by all applications of the family, by name. Items are added on start; their values are
    written on the communication manager's thread and may be read on any. */
class TInterAppPrefs {
public:
  /** Borrowed; passed to the items. */
  void SetAppSignatureRef(const char* signature);
  void SetLLTRef(const TLLT* texts);

  /** Takes ownership of the item and loads its value. */
  void AddItem(TIAPItem* item);
  /** B_NAME_NOT_FOUND for an unknown name, B_BAD_TYPE for an item of another type. */
  status_t GetBool(const char* name, bool* value) const;
  status_t GetString(const char* name, std::string* value) const;
  status_t SetBool(const char* name, bool value);
  status_t SetString(const char* name, const std::string& value);
  /** Applies a change notice; -1 unless its string "IAP:SrcIAPItem" names an item. */
  status_t SetValue(const BMessage& notice);

  /** Opens the common window at the frame's corner, or brings the existing one to the front, and adds this
      application's controls to it. 0; -1 if its port cannot be created or its process does not respond. Blocks until
      the port exists. */
  status_t ShowWindow(BRect frame);
  /** The common window, locked, if this process created it and it is open; otherwise null. */
  TIAPWin* LockWindow() const;
  /** Quits the window if this process created it and joins its thread. */
  void EndWindow();
  /** Asks the common window to close, in whichever process it is open. 0 if there is none; -1, with nothing sent, if
      another process created it and `force` is false. */
  status_t CloseWindow(bool force) const;
  /** Sends kMsgIAPActivate to the window of the port. */
  status_t ActivateWindow(port_id port) const;
  /** B_TIMED_OUT if the window's process reads nothing for a few seconds. */
  status_t SendMessage(port_id port, BMessage* message) const;

private:
  TIAPItem* Find(const char* name) const;
  bool MadeWindow() const { return fWindow.IsValid(); }
  /** The port of a new window; negative if it cannot be created. */
  port_id MakeWindow(BRect frame);
  status_t AddControls(port_id port) const;

  const char* fSignature = "";
  const TLLT* fTexts = nullptr;
  BMessenger fWindow; // created by this process; invalid once closed
  thread_id fWindowThread = -1;
  std::map<std::string, std::unique_ptr<TIAPItem>> fItems;
};

/** Null until the plug-in is constructed. */
extern TInterAppPrefs* gIAP;

/** The label with its accelerator letter in the family's format ("AccKeyFormat"); only the label while gIAP is null. */
std::string accelerator_label(const char* letter, const char* label);
