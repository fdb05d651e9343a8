#pragma once

#include "window/mruf.h"

class BHandler;
class BMessage;
class TEditorMenus;
class TNoticeBoard;

/** The editor window's list of recent files: in its menu, and on the disk. Owned by the window, on its thread. */
class TRecentFiles {
public:
  /** `opener` gets the ref messages of the menu. Nothing is owned. */
  TRecentFiles(BHandler* opener, const TEditorMenus* menus, TNoticeBoard* notices);

  /** False for a message that is not about the list. */
  bool Handle(const BMessage& message);
  /** After the menus were built, too. */
  void GenerateMenuMRUF();

private:
  void SaveMRUF();
  void AddHistoryRqtd(const BMessage& message);
  void RemoveHistoryRqtd(const BMessage& message);
  void MItemDelAllMRUFClicked();

  const TEditorMenus* const fMenus;
  TNoticeBoard* const fNotices;
  TMRUF fMRUF;
  bool fIsSaved = true;
};
