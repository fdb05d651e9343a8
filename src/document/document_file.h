#pragma once

#include "document/file_watch.h"
#include "document/save_guard.h"

class TDifferences;
class TEditSession;
class TFormOffers;

/** The file under the open document: what other programs do to it, what the user decides about that, and what a save
    would overwrite or lose. Owned by the document's view, on its window's thread. */
class TDocumentFile {
public:
  /** `owner` is attached, and passes its messages on. Nothing is owned. */
  TDocumentFile(const BHandler* owner, TDocument* document, TEditSession* session, TNoticeBoard* notices,
                TDifferences* differences, TFormOffers* offers);

  /** False for a message that is not about the file. */
  bool Handle(const BMessage& message);
  /** The document was opened, started, saved or reloaded: what was noticed before is settled. */
  void Follow() { fWatch.Follow(); }
  /** Compares in the background. */
  void Check() { fWatch.Check(); }
  void LanguageChanged() { fWatch.LanguageChanged(); }
  /** Compares now; blocks as long as the disk delivers. */
  TDiskState StateNow() { return fWatch.StateNow(); }
  bool IsGone() { return fWatch.IsGone(); }

  /** Asks when the save would lose something; see TSaveGuard. */
  [[nodiscard]] bool MaySave(TLyricsInfo* info, TDialect dialect) { return fSaveGuard.Allow(info, dialect); }
  /** What the last save has backed up, for the status bar. */
  const std::string& SaveReport() const { return fSaveGuard.Report(); }

private:
  void Compare();
  void Reload();
  std::optional<TOpenedLyrics> ReadAgain();

  TDocument* const fDocument;
  TEditSession* const fSession;
  TDifferences* const fDifferences;
  TFormOffers* const fOffers;
  TFileWatch fWatch;
  TSaveGuard fSaveGuard;
};
