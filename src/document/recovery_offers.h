#pragma once

#include "document/recovery_search.h"

#include <deque>
#include <string>

class BMessage;
class TNoticeBoard;

/** Of the file, or that of a document without one. */
std::string name_of_document(const std::string& path);

/** Offers unsaved changes of earlier processes in a notice, one journal after the other; the journals stay locked and
   on the disk until they are settled. Owned by the editor view, on its thread. */
class TRecoveryOffers {
public:
  /** `owner` gets the messages of the search and of the notice's buttons. Nothing is owned. */
  TRecoveryOffers(const BMessenger& owner, TNoticeBoard* notices);

  /** Looks for all journals, or for those of the file at `path`, which are offered first. */
  void Search(const std::string& path = {});
  /** Other processes learn that the file at `path` is open, if any, instead of the previous one. */
  void AnnounceOpen(const std::string& path) { fSearch.AnnounceOpen(path); }
  /** Handles kMsgJournalsFound. */
  void Found();
  /** The offer that a button's message names; null if it is settled already. */
  const TFoundJournal* OfferOf(const BMessage& message) const;
  /** The current offer was recovered or put off: the next one is shown. */
  void Next();
  /** Removes the current offer's journal. */
  void Discard();
  void LanguageChanged();

private:
  void Show();
  void ShowOtherEditor(const std::string& path, const TOtherEditor& editor);
  void ShowUnreadable(const TJournalFiles& files);
  std::string TextOf(const TFoundJournal& found) const;

  struct TOffer {
    int32 number = 0;
    TFoundJournal found;
  };

  const BMessenger fOwner;
  TNoticeBoard* const fNotices;
  std::deque<TOffer> fOffers; // the first one is shown
  int32 fLastNumber = 0;
  TRecoverySearch fSearch;
};
