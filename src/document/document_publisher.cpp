#include "document/document_publisher.h"

#include "document/document_song.h"
#include "editviews/view_choices.h"
#include "hostlink/host_link.h"
#include "lyrics/line_times.h"
#include "platform/app/message.h"
#include "platform/app/message_runner.h"
#include "plugin/message_codes.h"

namespace {

/** Marks are sent this long after the last change of a line; those of another document follow it at once. */
constexpr bigtime_t kMarksDelayUs = 200000;
constexpr bigtime_t kMarksAtOnceUs = 1000;

std::vector<int32> sung_times(const std::vector<std::string>& lines) {
  TLineTimes times;
  for (const std::string& line : lines) times.Append(line);
  return times.Times();
}

} // namespace

TDocumentPublisher::TDocumentPublisher(const BMessenger& owner, TDocument* document, const TDocumentSong* song,
                                       const Sonivo_FrontEnd* frontEnd, const TViewChoices* choices)
    : fOwner(owner), fDocument(document), fSong(song), fFrontEnd(frontEnd), fChoices(choices) {
  fDocument->SetObserver(this);
}

TDocumentPublisher::~TDocumentPublisher() {
  fDocument->SetObserver(nullptr);
  BMessage closed(kMsgDocumentClosed);
  Send(&closed);
  ShowMarks({}, fMarksTitle);
}

bool TDocumentPublisher::Handle(const BMessage& message) {
  switch (message.what) {
  case kMsgFollowDocument:
    FollowRqtd(message);
    return true;
  case kMsgSendDocument:
    PublishWhole();
    return true;
  case kMsgSendMarks:
    PublishMarks();
    return true;
  default:
    return false;
  }
}

void TDocumentPublisher::FollowRqtd(const BMessage& request) {
  if (request.FindMessenger("Follower", &fSubscriber) != B_OK) fSubscriber = BMessenger();
  DocumentReplaced();
}

void TDocumentPublisher::DocumentReplaced() {
  ScheduleMarks(kMarksAtOnceUs);
  if (fIsWholeDue || !fSubscriber.IsValid()) return;
  const BMessage whole(kMsgSendDocument);
  fIsWholeDue = fOwner.SendMessage(&whole, BMessenger(), 0) == B_OK;
}

void TDocumentPublisher::LinesChanged(const TLinesChange& change) {
  ScheduleMarks(kMarksDelayUs);
  if (fIsWholeDue || !fSubscriber.IsValid()) return;
  BMessage notice(kMsgDocumentLines);
  notice.AddInt32("First", change.first);
  notice.AddInt32("Removed", change.removed);
  for (const std::string& line : change.lines) notice.AddString("Line", line);
  Send(&notice);
}

/** Never blocks: a subscriber whose queue is full notices the gap in the numbers. */
void TDocumentPublisher::Send(BMessage* notice) {
  notice->AddInt32("Number", ++fNumber);
  if (fSubscriber.IsValid()) fSubscriber.SendMessage(notice, BMessenger(), 0);
}

void TDocumentPublisher::PublishWhole() {
  fIsWholeDue = false;
  BMessage notice(kMsgDocumentWhole);
  notice.AddString("Title", fSong->Title());
  notice.AddString("Path", fDocument->File().FullPath());
  for (const std::string& line : fDocument->Lines()) notice.AddString("Line", line);
  Send(&notice);
}

void TDocumentPublisher::ScheduleMarks(bigtime_t delayUs) {
  if (fMarksTimer) {
    fMarksTimer->SetInterval(delayUs);
    return;
  }
  const BMessage marks(kMsgSendMarks);
  fMarksTimer = std::make_unique<BMessageRunner>(fOwner, &marks, delayUs, 1);
}

void TDocumentPublisher::PublishMarks() {
  ShowMarks(sung_times(fDocument->Lines()), fSong->Title());
}

void TDocumentPublisher::ShowMarks(std::vector<int32> timesMs, const std::string& title) {
  fMarksTimer.reset();
  const bool isSame = timesMs == fMarksMs && fChoices->clicks == fAreClicks;
  if (isSame && (title == fMarksTitle || timesMs.empty())) return;
  // The previous song loses its marks first.
  if (title != fMarksTitle && !fMarksMs.empty()) fFrontEnd->ShowMarks(fMarksTitle, {});
  fMarksMs = std::move(timesMs);
  fMarksTitle = title;
  fAreClicks = fChoices->clicks;
  fFrontEnd->ShowMarks(fMarksTitle, fMarksMs, fAreClicks);
}
