#pragma once

#include "document/recovery_offers.h"
#include "lyrics/document.h"

#include <memory>

class BHandler;
class TDifferences;
class TDocumentJournal;
class TEditSession;

/** Unsaved changes across a crash: keeps the journal of the open document, and offers and recovers those of earlier
    processes. Owned by the document's view, on its window's thread. */
class TDocumentRecovery {
public:
  /** `owner` is attached, and passes its messages on. Nothing is owned. Looks for journals at once. */
  TDocumentRecovery(const BHandler* owner, TDocument* document, TEditSession* session, TNoticeBoard* notices,
                    TDifferences* differences);
  TDocumentRecovery(const TDocumentRecovery&) = delete;
  TDocumentRecovery& operator=(const TDocumentRecovery&) = delete;
  ~TDocumentRecovery();

  /** False for a message that is not about recovery, or that replaces the document: for kMsgRecover the owner asks
      whether the present changes are to be saved, and calls Recover. */
  bool Handle(const BMessage& message);
  /** The message's offer has not been settled yet. */
  bool HasOffer(const BMessage& message) const { return fOffers.OfferOf(message) != nullptr; }
  /** The document becomes the one of the message's offer. Returns the report for the status bar; nothing, after a
      message, when the offer cannot be read. */
  std::optional<std::string> Recover(const BMessage& message);
  /** Looks for journals of the document's file, and for other editors of it. */
  void DocumentOpened();

  /** The mode or the current line has changed. */
  void ViewChanged();
  /** Called now and then: catches up with what could not be recorded, and with the document's file. */
  void Poll();
  /** The user agreed to lose the changes that are unsaved now. */
  void AllowLoss();
  void LanguageChanged() { fOffers.LanguageChanged(); }

private:
  void JournalReported(const BMessage& message);
  void ViewChanges(const TFoundJournal& offer);
  void AnnounceFile();

  TDocument* const fDocument;
  TEditSession* const fSession;
  TNoticeBoard* const fNotices;
  TDifferences* const fDifferences;
  const BMessenger fOwner;
  bool fHasFailed = false; // the journal, and the user was notified
  std::unique_ptr<TDocumentJournal> fJournal;
  TRecoveryOffers fOffers;
  std::string fAnnounced; // path of the file that other processes know to be open
};
