#pragma once

#include "common/archivable.h"

#include <deque>
#include <memory>
#include <string>

class BHandler;
class BMenu;
class BMenuItem;
class BMessage;

/** The most recently used files, newest first, shown as items of a menu and stored in an archive. On the thread of the
    menu's window. */
class TMRUF : public koreva::TArchivable {
public:
  TMRUF();
  ~TMRUF() override;

  /** Moves a known path to the front, or adds it and drops those beyond the maximum. Case-sensitive. */
  void AddMRUF(const char* path);
  /** Returns the path, which the caller frees with delete[]; null outside the list or for an unknown path. */
  char* RemoveMRUF(int32 index);
  char* RemoveMRUF(const char* path);
  /** -1 for an unknown path. */
  int32 FindMRUF(const char* path) const;
  /** Null outside the list. */
  const char* MRUFAt(int32 index) const;
  int32 CountMRUFs() const { return static_cast<int32>(fPaths.size()); }
  void ClearMRUF();

  /** Drops files beyond it at once. */
  void SetMaxMRUF(int32 count);
  /** The first ten get the digits as shortcuts, with Shift. */
  void SetShowSC(bool shows) { fShowsShortcuts = shows; }
  /** The menu index of the first file. */
  void SetTgtBase(int32 index) { fTargetBase = index; }
  /** The number of the first file: 0 to 9 are digits, 10 and more the letters from A. */
  void SetTriggerBase(int32 number) { fTriggerBase = number; }
  /** Not owned. */
  void SetTgtMenu(BMenu* menu) { fMenu = menu; }
  /** Not owned; used for items generated after this. */
  void SetTgtHandler(const BHandler* handler) { fTarget = handler; }
  /** The format of the labels' accelerators. */
  void SetSeparator(const std::string& separator) { fSeparator = separator; }
  /** Each item sends a copy with its file in "refs". Takes ownership. */
  void SetMessage(BMessage* message);

  /** Replaces the items of the files, up to the separator after them. */
  void GenerateMenu();

  /** Strings "MRUF", oldest first. */
  bool Archive(BMessage* archive) override;
  bool Unarchive(const BMessage& archive) override;

private:
  using Path = std::unique_ptr<char[]>;

  void DeleteExtraMRUF();
  BMenuItem* MakeItem(int32 index) const;

  bool fShowsShortcuts = false;
  int32 fTargetBase = 0;
  int32 fTriggerBase = 0;
  int32 fMaximum = 10;
  std::deque<Path> fPaths;
  BMenu* fMenu = nullptr;
  const BHandler* fTarget = nullptr;
  std::string fSeparator;
  std::unique_ptr<BMessage> fMessage;
};
