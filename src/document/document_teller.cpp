#include "document/document_teller.h"

#include "hostlink/host_link.h"
#include "lyrics/document_notices.h"
#include "lyrics/line_times.h"
#include "platform/app/message.h"
#include "platform/app/message_runner.h"

namespace {

constexpr bigtime_t kMarksAfterUs = 200000;

std::vector<int32> sung_times(const std::vector<std::string>& lines) {
  TLineTimes times;
  for (const std::string& line : lines) times.Append(line);
  return times.Times();
}

} // namespace

TDocumentTeller::TDocumentTeller(const BMessenger& owner, const Sonivo_FrontEnd* frontEnd)
    : fOwner(owner), fFrontEnd(frontEnd) {}

TDocumentTeller::~TDocumentTeller() {
  BMessage closed(kMsgDocumentClosed);
  Tell(&closed);
  TellMarks({}, fMarksTitle);
}

void TDocumentTeller::FollowRqtd(const BMessage& request) {
  fFollower = BMessenger();
  request.FindMessenger("Follower", &fFollower);
  DocumentChanged();
}

void TDocumentTeller::DocumentChanged() {
  MarksChanged();
  if (fIsWholeDue || !fFollower.IsValid()) return;
  const BMessage whole(kMsgTellWhole);
  fIsWholeDue = fOwner.SendMessage(&whole, BMessenger(), 0) == B_OK;
}

void TDocumentTeller::LinesChanged(const TLinesChange& change) {
  MarksChanged();
  if (fIsWholeDue || !fFollower.IsValid()) return;
  BMessage notice(kMsgDocumentLines);
  notice.AddInt32("First", change.first);
  notice.AddInt32("Removed", change.removed);
  for (const std::string& line : change.lines) notice.AddString("Line", line);
  Tell(&notice);
}

/** Without waiting: a follower that has no room for it sees the gap. */
void TDocumentTeller::Tell(BMessage* notice) {
  notice->AddInt32("Number", ++fNumber);
  if (fFollower.IsValid()) fFollower.SendMessage(notice, BMessenger(), 0);
}

void TDocumentTeller::TellWhole(const std::vector<std::string>& lines, const std::string& title,
                                const std::string& path) {
  fIsWholeDue = false;
  BMessage notice(kMsgDocumentWhole);
  notice.AddString("Title", title);
  notice.AddString("Path", path);
  for (const std::string& line : lines) notice.AddString("Line", line);
  Tell(&notice);
}

void TDocumentTeller::MarksChanged() {
  if (fMarksLater) {
    fMarksLater->SetInterval(kMarksAfterUs);
    return;
  }
  const BMessage marks(kMsgTellMarks);
  fMarksLater = std::make_unique<BMessageRunner>(fOwner, &marks, kMarksAfterUs, 1);
}

void TDocumentTeller::TellMarks(const std::vector<std::string>& lines, const std::string& title) {
  fMarksLater.reset();
  std::vector<int32> timesMs = sung_times(lines);
  if (timesMs == fMarksMs && (title == fMarksTitle || timesMs.empty())) return;
  // What was marked of another song is taken away first.
  if (title != fMarksTitle && !fMarksMs.empty()) fFrontEnd->ShowMarks(fMarksTitle, {});
  fMarksMs = std::move(timesMs);
  fMarksTitle = title;
  fFrontEnd->ShowMarks(fMarksTitle, fMarksMs);
}
