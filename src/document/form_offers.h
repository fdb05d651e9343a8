#pragma once

#include "document/notice.h"

#include <functional>
#include <map>

class TDocument;
class TEditSession;

/** Offers, in the notice bar, to change the form of the text that was just opened: mixed time tags to one form
    (lyrics/dialect.h), a probably misdetected encoding to the probable one (lyrics/foreign_encoding.h). Owned by the
    document's view, on its window's thread. */
class TFormOffers {
public:
  /** `owner` gets the messages of the buttons. Nothing is owned. */
  TFormOffers(const BMessenger& owner, const TDocument* document, TEditSession* session, TNoticeBoard* notices)
      : fOwner(owner), fDocument(document), fSession(session), fNotices(notices) {}

  /** Offers to unify the tags if they are mixed; until then they are shown as they are. */
  void CheckTags(bool areMixed);
  /** Shift-JIS is what a file that is neither UTF-8 nor JIS is detected as; offers another encoding if that is
      probably wrong. */
  void CheckEncoding();
  /** The user has chosen an encoding. */
  void WithdrawEncoding();
  /** The document is another one. */
  void Withdraw();
  void LanguageChanged();
  /** False for a message that accepts no offer. */
  bool Handle(const BMessage& message);

private:
  void Unify(const BMessage& message);
  void Show(int32 id, std::function<TNotice()> notice);
  void Remove(int32 id);
  TNotice UnifyNotice() const;

  const BMessenger fOwner;
  const TDocument* const fDocument;
  TEditSession* const fSession;
  TNoticeBoard* const fNotices;
  std::map<int32, std::function<TNotice()>> fShown; // how to make them again, in another language
};
