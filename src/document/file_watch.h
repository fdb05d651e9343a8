#pragma once

#include "document/file_looker.h"
#include "lyrics/document.h"

#include <memory>
#include <optional>
#include <string>

class BHandler;
class BMessage;
class BMessageRunner;
class TNoticeBoard;

/** Notices when the document's file is changed, replaced or removed by somebody else, and informs the user by a notice:
    compares the bytes when its window gets the focus and when the file's folder reports a change. A file with equal
    bytes is never mentioned. Owned by the document's view, on its window's thread. */
class TFileWatch {
public:
  /** `owner` is attached, and passes the messages below on. Nothing is owned. */
  TFileWatch(const BHandler* owner, TDocument* document, TNoticeBoard* notices, TFileLooker::TOptions options = {});
  TFileWatch(const TFileWatch&) = delete;
  TFileWatch& operator=(const TFileWatch&) = delete;
  ~TFileWatch();

  /** The document was opened, started, saved or reloaded: what was noticed before is settled. */
  void Follow();
  /** Compares in the background. */
  void Check();
  /** The user keeps the document as it is; the same version of the file is not mentioned again. */
  void KeepMine();
  /** The notice again, in the current language. */
  void LanguageChanged();

  /** Messages to the owner: B_NODE_MONITOR, kMsgLookAtFile, kMsgFileLooked, kMsgFileLate. */
  void FolderChanged(const BMessage& notice);
  void CheckNow();
  void Looked();
  void Late();

  /** Compares now; blocks as long as the disk delivers. */
  TDiskState StateNow();
  /** True, after a comparison, when the text of an unmodified document is no longer in its file. */
  bool IsGone();
  /** The file of a save. */
  TSaveTarget TargetNow(const entry_ref& file);

private:
  [[nodiscard]] std::string Path() const { return fDocument->File().FullPath(); }
  void Judge(const TFileLook& look);
  /** True when the file is another one than the watched one, so that it has to be read once more. */
  bool WatchAgain(const TFileLook& look);
  void StopWatching();
  void ShowNotice();

  const BHandler* const fOwner;
  TDocument* const fDocument;
  TNoticeBoard* const fNotices;
  TFileLooker fLooker;
  std::string fPath;                        // of the last look that was started
  bool fLooksAgain = false;                 // after the present look
  std::unique_ptr<BMessageRunner> fDelay;   // until CheckNow; collects changes
  std::unique_ptr<BMessageRunner> fOverdue; // until Late
  std::optional<TFileState> fWatched;       // the file that the notifications are about
  TDiskState fState = TDiskState::kUnchanged;
  TFileLook fLook;                   // that led to fState
  std::optional<TFileLook> fSettled; // as the user knows it and left it
};
