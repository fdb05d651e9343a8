#pragma once

#include "document/lyrics_saver.h"

class BFile;
class BHandler;
class BMessage;
class BView;
class TDocumentFile;
class TDocumentLoader;
class TDocumentRecovery;
class TEditSession;
class TPlayerCopier;

/** Saves the document by command, and asks before unsaved changes are lost. Owned by the document's view, on its
    window's thread; blocks while a question is shown. */
class TSaveCommands {
public:
  struct TParts {
    TDocument* document;
    TEditSession* session;
    TDocumentFile* file;
    TDocumentRecovery* recovery;
    TDocumentLoader* loader;
    TPlayerCopier* copier;
  };
  /** `owner` is attached, and passes its messages on. Nothing is owned. */
  TSaveCommands(BView* owner, const TParts& parts) : fOwner(owner), fParts(parts) {}

  /** False for a message that is no command to save. */
  bool Handle(const BMessage& message);
  /** True when the caller may replace the document at once. After a Yes the lyrics are saved first, and `next` then
      goes to `target`. */
  bool AskSave(const BMessage& next, const BHandler* target);

private:
  void MItemSaveClicked(const BMessage& message);
  void SaveRequested(const BMessage& message);
  TLyricsInfo InfoToSave() const;
  status_t SaveLyrics(const TLyricsInfo& info, TDialect dialect);
  /** False, after a message or the user's Cancel, when nothing was saved. */
  bool SaveAndVerify(TLyricsInfo info, TDialect dialect);
  /** The times within lines take the form of the dialect that the document is saved in from now on, as a step that can
      be undone. Returns true if it has changed lines. */
  bool RewriteWords(TDialect dialect);
  static void SetLyricsMimeType(BFile* file);
  void ReportSaved();

  BView* const fOwner;
  const TParts fParts;
  TLyricsSaver fSaver{fParts.document};
  bool fHasCutTimes = false;   // the last save has cut thousandths of a second
  bool fSaveIsPending = false; // the user answered Yes, and the kMsgSave is on its way
};
