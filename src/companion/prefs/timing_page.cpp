#include "companion/prefs/timing_page.h"

#include "companion/prefs/numbers.h"
#include "companion/prefs/tap_pad.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/interface/button.h"
#include "platform/interface/string_view.h"
#include "platform/interface/window.h"
#include "plugin/message_codes.h"

#include <cstdlib>

namespace {

constexpr long kLargestOffsetMs = 60000;

std::string offset(const TPrefValues& values) {
  return std::to_string(values.timeOffsetMs);
}

bool take_offset(const std::string& text, TPrefValues* values) {
  const auto ms = whole_number(text, -kLargestOffsetMs, kLargestOffsetMs);
  if (ms) values->timeOffsetMs = static_cast<int32>(*ms);
  return ms.has_value();
}

std::string lead_in(const TPrefValues& values) {
  return std::to_string(values.leadInMs);
}

bool take_lead_in(const std::string& text, TPrefValues* values) {
  const auto ms = whole_number(text, 0, kLongestLeadInMs);
  if (ms) values->leadInMs = static_cast<int32>(*ms);
  return ms.has_value();
}

std::string use_label(int32 offsetMs) {
  return gLLT->Text("Pref_Use_1") + std::to_string(offsetMs) + gLLT->Text("Pref_Use_2");
}

} // namespace

TTimingPage::TTimingPage(TClickTrack::TOpen openOutput)
    : TPrefPage("Timing"), fOpenOutput(std::move(openOutput)), fNote(new BStringView({}, "TapNote", "")),
      fStart(new BButton({}, "StartTest", "", new BMessage(kMsgStartTapTest))), fPad(new TTapPad) {
  AddText("TimeOffset", "Pref_Time_Offset", offset, take_offset);
  fStamps = AddProposal("StampHint", "UseStampHint");
  AddWide(fNote, fStart);
  AddWide(fPad);
  fTaps = AddProposal("TapResult", "UseTapResult");
  AddText("LeadIn", "Pref_Lead_In", lead_in, take_lead_in);
  AddCheckBox("ReplayNudges", "Pref_Replay_Nudges", &TPrefValues::replaysNudges);
}

TTimingPage::~TTimingPage() = default;

TTimingPage::TProposal TTimingPage::AddProposal(const char* name, const char* buttonName) {
  TProposal proposal;
  proposal.text = new BStringView({}, name, "");
  proposal.use = new BButton({}, buttonName, "", nullptr);
  AddWide(proposal.text, proposal.use);
  return proposal;
}

void TTimingPage::AttachedToWindow() {
  fStart->SetTarget(this);
}

void TTimingPage::Relabel() {
  TPrefPage::Relabel();
  fStart->SetLabel(gLLT->Text("Pref_Start_Test"));
  fPad->SetAccessibleName(gLLT->Text("Pref_Tap_Pad"));
  ShowAll();
}

void TTimingPage::ShowAll() {
  fNote->SetText(gLLT->Text(fIsSilent ? "Pref_Tap_No_Sound" : "Pref_Tap_Note"));
  Show(fStamps,
       {"StatBarStr_Stamps_Late_1", "StatBarStr_Stamps_Late_2", "StatBarStr_Stamps_Early_1",
        "StatBarStr_Stamps_Early_2"},
       "Pref_No_Stamp_Hint");
  Show(fTaps, {"Pref_Taps_Late_1", "Pref_Taps_Late_2", "Pref_Taps_Early_1", "Pref_Taps_Early_2"},
       fIsUnclear ? "Pref_Taps_Unclear" : "Pref_No_Taps");
  LayOut(); // the buttons adapt to their texts
}

void TTimingPage::Show(const TProposal& proposal, const TWords& words, const char* placeholder) {
  proposal.use->SetEnabled(proposal.latenessMs.has_value());
  proposal.use->SetLabel(use_label(proposal.offsetMs).c_str());
  if (!proposal.latenessMs) return proposal.text->SetText(gLLT->Text(placeholder));
  const bool isLate = *proposal.latenessMs >= 0;
  const std::string text = gLLT->Text(isLate ? words.late1 : words.early1) +
                           std::to_string(std::abs(*proposal.latenessMs)) +
                           gLLT->Text(isLate ? words.late2 : words.early2);
  proposal.text->SetText(text.c_str());
  auto* const use = new BMessage(kMsgUseOffset);
  use->AddInt32("TmDf", proposal.offsetMs);
  proposal.use->SetMessage(use);
}

void TTimingPage::SetStampHint(int32 latenessMs, int32 offsetMs) {
  fStamps.latenessMs = latenessMs;
  fStamps.offsetMs = offsetMs - latenessMs;
  ShowAll();
}

void TTimingPage::MessageReceived(BMessage* message) {
  if (message->what == kMsgStartTapTest) return StartTest();
  int32 test = 0;
  if (message->FindInt32("Test", &test) != B_OK) return TPrefPage::MessageReceived(message);
  // Messages of a cancelled test may still be queued.
  if (test == fTest && fTrack) TrackReported(*message);
}

void TTimingPage::TrackReported(const BMessage& message) {
  int64 whenUs = 0;
  switch (message.what) {
  case kMsgClick:
    if (message.FindInt64("WhenUs", &whenUs) == B_OK) fPad->Click(whenUs);
    return;
  case kMsgNoSound:
    fIsSilent = true;
    return ShowAll();
  case kMsgTrackEnded:
    return EndTest();
  default:
    return;
  }
}

void TTimingPage::StartTest() {
  StopTest();
  fTaps.latenessMs.reset();
  fIsUnclear = fIsSilent = false;
  ShowAll();
  fPad->Begin();
  fTrack = std::make_unique<TClickTrack>(BMessenger(this), ++fTest, fOpenOutput);
  fTrack->Resume();
}

void TTimingPage::StopTest() {
  fTrack.reset();
}

void TTimingPage::EndTest() {
  fTrack.reset();
  fTaps.latenessMs = fPad->Lateness();
  fTaps.offsetMs = -fTaps.latenessMs.value_or(0);
  fIsUnclear = !fTaps.latenessMs;
  ShowAll();
}
