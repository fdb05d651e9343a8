#pragma once

#include "companion/followed_document.h"
#include "platform/app/messenger.h"
#include "toolkit/krv_win.h"

#include <memory>
#include <optional>

class BMessageRunner;
class Sonivo_FrontEnd;
class TLyricsView;
class TSongLyrics;

/** The lyrics window: shows the lyrics of the song being played, from the file next to it or, while they are being
    edited, from the editor. Closing hides it; its manager calls Quit. While hidden it polls nothing. */
class TLyricsWindow : public TKRVWin {
public:
  TLyricsWindow(BRect frame, const BMessenger& manager);
  ~TLyricsWindow() override;

  void Show() override;
  /** Ignored when the player is closing: then the window must be open again after the next start. */
  void PutAway() override;
  void MessageReceived(BMessage* message) override;
  /** Where it is, or returns to from full screen. */
  BRect NormalFrame() const { return fFrameBefore.value_or(Frame()); }

private:
  void Follow(bool follows);
  void Poll();
  void SetPollRate(bool isPlaying);
  void ShowLyrics();
  void LanguageChanged();
  void FullScreenChanged(const BMessage& message);
  void Zoom(const BMessage& message);
  void ShowMenu();

  const BMessenger fManager;
  std::unique_ptr<Sonivo_FrontEnd> fFrontEnd;
  std::unique_ptr<TSongLyrics> fSong;
  TFollowedDocument fDocument;
  TLyricsView* fView; // the main child
  std::unique_ptr<BMessageRunner> fPoll;
  bool fPollsFast = false;
  std::optional<BRect> fFrameBefore; // while it is in full screen
};
