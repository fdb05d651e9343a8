#pragma once

#include "lyrics/document.h"
#include "platform/app/messenger.h"

#include <memory>
#include <vector>

class BMessageRunner;
class Sonivo_FrontEnd;
class TDocumentSong;
struct TViewChoices;

/** Publishes a document: each change to its subscriber, and, debounced, the times of its lines to the player. Without a
    subscriber or a time tag it sends nothing. Owned by the document's view, on its thread. */
class TDocumentPublisher : public TDocumentObserver {
public:
  /** Observes the document from now on. `owner` gets the messages above; nothing is owned. */
  TDocumentPublisher(const BMessenger& owner, TDocument* document, const TDocumentSong* song,
                     const Sonivo_FrontEnd* frontEnd, const TViewChoices* choices);
  /** Publishes that the document is closed. */
  ~TDocumentPublisher() override;

  /** False for a message that is not about publishing. */
  bool Handle(const BMessage& message);
  void LinesChanged(const TLinesChange& change) override;
  void DocumentReplaced() override;
  /** The choice whether the player clicks at the tags has changed. */
  void ClicksChosen() { PublishMarks(); }

private:
  void FollowRqtd(const BMessage& request);
  void PublishWhole();
  void PublishMarks();
  void Send(BMessage* notice);
  void ScheduleMarks(bigtime_t delayUs);
  void ShowMarks(std::vector<int32> timesMs, const std::string& title);

  const BMessenger fOwner;
  TDocument* const fDocument;
  const TDocumentSong* const fSong;
  const Sonivo_FrontEnd* const fFrontEnd;
  const TViewChoices* const fChoices;
  BMessenger fSubscriber;
  bool fIsWholeDue = false;
  int32 fNumber = 0; // of the last notice
  std::unique_ptr<BMessageRunner> fMarksTimer;
  // As last sent to the player.
  std::vector<int32> fMarksMs;
  std::string fMarksTitle;
  bool fAreClicks = false;
};
