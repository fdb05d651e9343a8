#pragma once

#include "companion/prefs/click_track.h"
#include "companion/prefs/pref_page.h"

#include <optional>

class TTapPad;

/** The time offset: typed, or proposed by a tap test or by what the editor has seen the user correct. */
class TTimingPage : public TPrefPage {
public:
  explicit TTimingPage(TClickTrack::TOpen openOutput);
  ~TTimingPage() override;

  void AttachedToWindow() override;
  void Relabel() override;
  void MessageReceived(BMessage* message) override;

  /** What the editor has found: the stamps that were made with this offset are so late. */
  void SetStampHint(int32 latenessMs, int32 offsetMs);
  /** Also when the window is put away. */
  void StopTest();

private:
  /** A line that tells how late the user is, and a button to set the offset that makes up for it. */
  struct TProposal {
    BStringView* text;
    BButton* use;
    std::optional<int32> latenessMs;
    int32 offsetMs = 0;
  };
  TProposal AddProposal(const char* name, const char* buttonName);
  struct TWords {
    const char* late1;
    const char* late2;
    const char* early1;
    const char* early2;
  };
  static void Tell(const TProposal& proposal, const TWords& words, const char* otherwise);
  void TellAll();
  void StartTest();
  void TrackTold(const BMessage& message);
  void EndTest();

  const TClickTrack::TOpen fOpenOutput;
  BStringView* fNote;
  BButton* fStart;
  TTapPad* fPad;
  TProposal fStamps;
  TProposal fTaps;
  std::unique_ptr<TClickTrack> fTrack; // while a test is on
  int32 fTest = 0;                     // the number of the last one
  bool fIsUnclear = false;
  bool fIsSilent = false;
};
