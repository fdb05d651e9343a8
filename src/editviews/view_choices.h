#pragma once

#include "common/archivable.h"

class BWindow;

/** What the user has chosen to see in the editor's window. Stored in "VesmoE_View.arc". One thread at a time. */
struct TViewChoices : koreva::TArchivable {
  /** Loads them, unless stored settings are held off. */
  TViewChoices();
  /** To be called after a change. */
  void Store();

  bool follows = true;     // "Flow": the list follows the song
  bool showsClock = false; // "Clok": position and seek bar in the status bar
  bool showsLane = false;  // "Lane": the sound below the lyrics
  bool showsWave = false;  // "Wave": as a wave, not a spectrogram
  bool timesWords = false; // "Word": the space bar times words, which the rows show
  bool clicks = false;     // "Clck": the player clicks at the tags
  bool countsIn = false;   // "CtIn": and twice before a line that is to be stamped again

private:
  bool Archive(BMessage* archive) override;
  bool Unarchive(const BMessage& archive) override;
};

/** The window marks them in its menu. Null is ignored. */
void report_view_choices(const TViewChoices& choices, BWindow* window);
