#pragma once

#include "companion/followed_document.h"
#include "platform/app/messenger.h"
#include "toolkit/krv_win.h"

#include <memory>

class BMessageRunner;
class Sonivo_FrontEnd;
class TLyricsView;
class TSongLyrics;

/** The display's window: shows the lyrics of the song that plays, as its file has them, or as the editor does while
   they are edited. Closing it hides it; its manager ends it. While it is hidden, it asks nobody anything. */
class TLyricsWindow : public TKRVWin {
public:
  TLyricsWindow(BRect frame, const BMessenger& manager);
  ~TLyricsWindow() override;

  void Show() override;
  /** Not when it is the player that ends: at the next start the display is to be open again. */
  void PutAway() override;
  void MessageReceived(BMessage* message) override;

private:
  void Follow(bool follows);
  void LookAtSong();
  void PollAsNeeded(bool isPlaying);
  void ShowLyrics();
  void LanguageChanged();

  const BMessenger fManager;
  std::unique_ptr<Sonivo_FrontEnd> fFrontEnd;
  std::unique_ptr<TSongLyrics> fSong;
  TFollowedDocument fDocument;
  TLyricsView* fView; // the main child
  std::unique_ptr<BMessageRunner> fPoll;
  bool fPollsOften = false;
};
