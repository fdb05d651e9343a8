#pragma once

#include "companion/prefs/click_track.h"
#include "companion/prefs/pref_page.h"

#include <optional>

class TTapPad;

/** The time offset: typed, or proposed by a tap test or from the user's corrections in the editor. */
class TTimingPage : public TPrefPage {
public:
  explicit TTimingPage(TClickTrack::TOpen openOutput);
  ~TTimingPage() override;

  void AttachedToWindow() override;
  void Relabel() override;
  void MessageReceived(BMessage* message) override;

  /** Measured by the editor: typical delay of the stamps made with that offset. */
  void SetStampHint(int32 latenessMs, int32 offsetMs);
  /** Cancels a running test. Must also be called when the window closes. */
  void StopTest();

private:
  /** A line with the user's delay, and a button that sets the offset compensating for it. */
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
  static void Show(const TProposal& proposal, const TWords& words, const char* placeholder);
  void ShowAll();
  void StartTest();
  void TrackReported(const BMessage& message);
  void EndTest();

  const TClickTrack::TOpen fOpenOutput;
  BStringView* fNote;
  BButton* fStart;
  TTapPad* fPad;
  TProposal fStamps;
  TProposal fTaps;
  std::unique_ptr<TClickTrack> fTrack; // null without a running test
  int32 fTest = 0;                     // number of the last test
  bool fIsUnclear = false;
  bool fIsSilent = false;
};
