#pragma once

#include "platform/support/geometry.h"
#include "platform/support/types.h"

#include <string>

class BMessage;
class BSlider;
class BStringView;
class BView;
class Sonivo_FrontEnd;

/** Play position, duration and a seek bar at the end of the status bar, which the user may show. Owned by the edit
    session, on the window's thread; the views belong to the parent. */
class TSongClock {
public:
  /** Hidden at first. The seek bar sends the window kMsgSeekInSong. `frontEnd` is not owned. */
  TSongClock(BView* parent, BRect statusBar, Sonivo_FrontEnd* frontEnd);

  void SetShown(bool isShown);
  /** Moves it to the right end of the bar; returns what is left of the bar. */
  BRect PlaceIn(BRect bar);
  /** To be called at every poll. */
  void Update();
  /** The user has chosen a place on the seek bar. */
  void Seek();
  void LanguageChanged();

private:
  Sonivo_FrontEnd* const fFrontEnd;
  BStringView* fTime;
  BSlider* fSeekBar;
  bool fIsShown = false;
  float fTimeWidth = 0;
  std::string fText; // fText and fValue: as last shown
  int32 fValue = -1;
};
