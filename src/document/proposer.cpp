#include "document/proposer.h"

#include "document/document_answer.h"
#include "document/edit_session.h"
#include "document/proposal_win.h"
#include "document/song_sound_source.h"
#include "editviews/tag_input_view.h"
#include "hostlink/host_link.h"
#include "lane/lane_proposals.h"
#include "language/llt.h"
#include "lyrics/document.h"
#include "lyrics/line_parts.h"
#include "lyrics/time_tags.h"
#include "platform/app/looper_lock.h"
#include "platform/app/message.h"
#include "platform/interface/screen.h"
#include "platform/interface/view.h"
#include "plugin/message_codes.h"
#include "songsound/song_sound.h"
#include "toolkit/placement.h"

#include <algorithm>

namespace {

constexpr float kWidth = 560;
constexpr float kHeight = 360;
/** What is heard of a proposal before it. */
constexpr int32 kLeadMs = 1000;
/** All of the song is needed, no part of it first. */
constexpr TLaneRange kNoPart{0, 1};

std::string tag_of(long timeMs) {
  std::string tag;
  time_to_time_tag(timeMs, &tag, true);
  return tag;
}

} // namespace

TProposer::~TProposer() {
  if (fWindow && fWindow->Lock()) fWindow->Quit();
}

bool TProposer::Handle(const BMessage& message) {
  switch (message.what) {
  case kMsgPropose:
    Start();
    return true;
  case kMsgAcceptProposals:
    Accept(message);
    return true;
  case kMsgHearProposal:
    Hear(message);
    return true;
  default:
    return false;
  }
}

void TProposer::Start() {
  if (fParts.session->Mode() == TEditMode::kFreeEdit)
    return fParts.session->Report(gLLT->Text("StatBarStr_Propose_Mode"));
  fIsWaiting = true;
  fParts.session->Report(gLLT->Text("Lane_Reading"));
  Poll(false);
}

void TProposer::Poll(bool isSoundUsed) {
  if (!fIsWaiting) return;
  if (!isSoundUsed) fParts.sound->Poll(kNoPart);
  const TSoundState state = fParts.sound->State();
  const auto sound = fParts.sound->Sound();
  const bool isReading = state == TSoundState::kReading || (state == TSoundState::kKnown && !sound->IsComplete());
  if (isReading) return;
  fIsWaiting = false;
  const TTagInputView& tagInput = fParts.session->TagInput();
  const auto times = times_to_improve(fParts.document->Lines(), tagInput.Times().OffsetMs());
  std::vector<TProposedTag> proposed;
  if (state == TSoundState::kKnown) proposed = propose_tags(times, sound->Onsets(), tagInput.LatenessMs());
  if (!isSoundUsed) fParts.sound->Rest();
  if (state == TSoundState::kKnown) return Offer(proposed);
  const bool hasSong = state != TSoundState::kNoSong;
  const char* const noSound = state == TSoundState::kNoFile ? "Lane_No_File" : "Lane_Failed";
  fParts.session->Report(gLLT->Text(hasSong ? noSound : "Lane_No_Song"));
}

TProposalRow TProposer::RowOf(const TProposedTag& tag) const {
  const long offsetMs = fParts.session->TagInput().Times().OffsetMs();
  const std::string& line = fParts.document->Lines()[static_cast<size_t>(tag.line)];
  const long fromMs = tag.fromMs + offsetMs;
  const long toMs = improved_tag_ms(tag, offsetMs);
  return {tag, tag_of(fromMs), tag_of(toMs), static_cast<int32>(toMs - fromMs), parts_of(line).text};
}

void TProposer::Offer(const std::vector<TProposedTag>& proposed) {
  std::vector<TProposalRow> rows;
  for (const TProposedTag& tag : proposed) {
    TProposalRow row = RowOf(tag);
    if (row.from != row.to) rows.push_back(std::move(row));
  }
  const std::string count = std::to_string(rows.size());
  fParts.session->Report(gLLT->Text(rows.empty() ? "StatBarStr_Nothing_Proposed" : "StatBarStr_Proposed") +
                         (rows.empty() ? "" : count));
  if (rows.empty()) return;
  BMessage answer;
  answer.AddInt32("Document", fParts.document->Number());
  const BRect place = fOwner->Window()->Frame();
  if (!fWindow) fWindow = new TProposalWin(frame_beside(place, kWidth, kHeight, screen_frame(place.LeftTop())));
  const TLooperLock lock(fWindow);
  if (!lock) return;
  fWindow->Offer(std::move(rows), answer, BMessenger(fOwner));
  fWindow->StandInFrontOf(fOwner->Window()->Proxy());
  fWindow->BringUp();
}

void TProposer::Accept(const BMessage& answer) {
  if (is_for_another_document(answer, *fParts.document)) return;
  if (fParts.session->Mode() == TEditMode::kFreeEdit)
    return fParts.session->Report(gLLT->Text("StatBarStr_Propose_Mode"));
  std::vector<TProposedTag> accepted;
  TProposedTag tag;
  for (int32 i = 0;
       answer.FindInt32("Row", i, &tag.line) == B_OK && answer.FindInt32("FromMs", i, &tag.fromMs) == B_OK &&
       answer.FindInt32("ToMs", i, &tag.toMs) == B_OK;
       ++i)
    accepted.push_back(tag);
  int32 count = 0;
  const TLinesChange change =
      lines_improved(fParts.document->Lines(), accepted, fParts.session->TagInput().Times().OffsetMs(), &count);
  if (count > 0) fParts.session->TagInput().RetimeLines(change);
  fParts.session->Report(gLLT->Text("StatBarStr_Accepted") + std::to_string(count));
}

void TProposer::Hear(const BMessage& answer) {
  int32 row = 0;
  int32 toMs = 0;
  if (answer.FindInt32("Row", &row) != B_OK || answer.FindInt32("ToMs", &toMs) != B_OK) return;
  if (is_for_another_document(answer, *fParts.document)) return;
  fParts.session->TagInput().SetCurLine(row);
  fParts.frontEnd->PlayFrom(std::max(toMs - kLeadMs, int32{0}));
}
