#include "companion/lyrics_window.h"

#include "companion/lyrics_view.h"
#include "companion/lyrics_window_state.h"
#include "companion/prefs/notices.h"
#include "companion/song_lyrics.h"
#include "hostlink/host_link.h"
#include "hostlink/sonivo_window.h"
#include "language/llt.h"
#include "platform/app/application.h"
#include "platform/app/message.h"
#include "platform/app/message_runner.h"
#include "platform/app/node_monitor.h"
#include "platform/interface/screen.h"
#include "platform/interface/viewer_input.h"
#include "plugin/message_codes.h"
#include "toolkit/placement.h"

#include <algorithm>

namespace {

constexpr bigtime_t kFastPollUs = 40000;
/** While paused: a seek or a new song is still noticed soon. */
constexpr bigtime_t kSlowPollUs = 250000;
/** The link's own thread does not poll the player; this is how often it checks whether to end. */
constexpr int64 kFrontEndIntervalUs = 100000;
constexpr float kGapToHost = 32;
constexpr float kMinWidth = 200;
constexpr float kMinHeight = 80;
constexpr float kNoLimit = 32767;
constexpr int32 kMostZoom = 12;

/** The stored one may be any number. */
int32 limited_zoom(int32 steps) {
  return std::clamp(steps, -kMostZoom, kMostZoom);
}

/** The stored frame; without one, or when its screen is gone, below the player but on the screen. */
BRect opening_frame(const BRect& stored) {
  const BRect first = TLyricsWindowState().fWindowFrame;
  if (!(stored == first) && is_in_sight(stored)) return stored;
  BRect host;
  if (get_sonivo_win_frame(&host) != B_OK) return first;
  const BRect screen = screen_frame(host.LeftTop());
  const float top = std::max(screen.top, std::min(host.bottom + kGapToHost, screen.bottom - first.Height()));
  return {host.left, top, host.left + first.Width(), top + first.Height()};
}

} // namespace

TLyricsWindow::TLyricsWindow(BRect frame, const BMessenger& manager)
    : TKRVWin(opening_frame(frame), gLLT->Text("Display_Win_Title"), B_DOCUMENT_WINDOW_LOOK), fManager(manager),
      fFrontEnd(std::make_unique<Sonivo_FrontEnd>(false, kFrontEndIntervalUs)),
      fSong(std::make_unique<TSongLyrics>(fFrontEnd.get(), this)), fView(new TLyricsView(Bounds())) {
  KeepWhenClosed();
  SetSizeLimits(kMinWidth, kNoLimit, kMinHeight, kNoLimit);
  AddMainChild(fView);
  fView->MakeFocus();
  display::add_viewer_input(this, {kMsgLyricsFullScreen, kMsgLyricsZoom, kMsgLyricsMenu});
  fFrontEnd->Start();
}

TLyricsWindow::~TLyricsWindow() {
  fPoll.reset();
  fFrontEnd->StopWaiting();
  fSong.reset();
}

void TLyricsWindow::Show() {
  const BMessage poll(kMsgLyricsPoll);
  fPollsFast = true;
  fPoll = std::make_unique<BMessageRunner>(BMessenger(this), &poll, kFastPollUs);
  Follow(true);
  ShowLyrics();
  TKRVWin::Show();
}

void TLyricsWindow::PutAway() {
  const BMessage* const request = CurrentMessage();
  if (request && be_app && request->ReturnAddress() == BMessenger(be_app)) return;
  fPoll.reset();
  Follow(false);
  fDocument.Forget();
  TKRVWin::PutAway();
}

void TLyricsWindow::Follow(bool follows) {
  BMessage request(kMsgFollowDocument);
  if (follows) request.AddMessenger("Follower", BMessenger(this));
  fManager.SendMessage(&request, BMessenger(), 0);
}

void TLyricsWindow::MessageReceived(BMessage* message) {
  switch (message->what) {
  case kMsgLyricsPoll:
    if (fPoll) Poll();
    return;
  case kMsgSongFound:
  case kMsgNoSong:
  case kMsgPlayerSilent:
    fSong->SearchAnswered(*message);
    return ShowLyrics();
  case B_NODE_MONITOR:
    if (fSong->FilesChanged(*message)) ShowLyrics();
    return;
  case kMsgDocumentWhole:
  case kMsgDocumentLines:
  case kMsgDocumentClosed:
    if (!fPoll) return; // still queued when the window was closed
    if (!fDocument.Take(*message)) return Follow(true);
    return ShowLyrics();
  case kMsgDocumentOpened:
    if (fPoll) Follow(true);
    return;
  case kMsgLyricsFullScreen:
    return FullScreenChanged(*message);
  case kMsgLyricsZoom:
    return Zoom(*message);
  case kMsgLyricsMenu:
    return ShowMenu();
  case kMsgAppearance:
  case kMsgDefaultStatBar:
    return fView->SetAppearance();
  case kMsgLanguageChanged:
    return LanguageChanged();
  default:
    TKRVWin::MessageReceived(message);
  }
}

void TLyricsWindow::Poll() {
  fFrontEnd->Refresh();
  SetPollRate(fFrontEnd->SungPositionMs().has_value());
  const bool isAnother = fSong->SongIs(fFrontEnd->Title());
  fView->SetPosition(fFrontEnd->PositionMs());
  if (isAnother) ShowLyrics();
}

void TLyricsWindow::SetPollRate(bool isPlaying) {
  if (isPlaying == fPollsFast) return;
  fPollsFast = isPlaying;
  fPoll->SetInterval(isPlaying ? kFastPollUs : kSlowPollUs);
}

void TLyricsWindow::ShowLyrics() {
  const bool isEdited = fDocument.BelongsTo(fSong->Title(), fSong->Path());
  const char* const placeholder = fSong->Title().empty()     ? "Hint_No_Song_To_Display"
                                  : fSong->HasTooManyLines() ? "Hint_Long_Lyrics_To_Display"
                                                             : "Hint_No_Lyrics_To_Display";
  fView->SetLines(isEdited ? fDocument.Lines() : fSong->Lines(), gLLT->Text(placeholder));
}

void TLyricsWindow::FullScreenChanged(const BMessage& message) {
  BRect frame;
  fFrameBefore = message.FindRect("frame", &frame) == B_OK ? std::optional(frame) : std::nullopt;
}

void TLyricsWindow::Zoom(const BMessage& message) {
  int32 by = 0;
  if (message.FindInt32("By", &by) != B_OK) return;
  int32& zoom = gLyricsWindowState->fZoom;
  zoom = by == 0 ? 0 : limited_zoom(limited_zoom(zoom) + limited_zoom(by));
  fView->SetAppearance();
}

void TLyricsWindow::ShowMenu() {
  display::show_viewer_menu(this, {gLLT->Text("Display_Full_Screen"), gLLT->Text("Display_Larger"),
                                   gLLT->Text("Display_Smaller"), gLLT->Text("Display_Normal_Size")});
}

void TLyricsWindow::LanguageChanged() {
  SetTitle(gLLT->Text("Display_Win_Title"));
  ShowLyrics();
}
