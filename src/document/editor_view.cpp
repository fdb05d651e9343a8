#include "document/editor_view.h"

#include "document/bulk_commands.h"
#include "document/differences_win.h"
#include "document/document_answer.h"
#include "document/document_file.h"
#include "document/document_loader.h"
#include "document/document_publisher.h"
#include "document/document_recovery.h"
#include "document/edit_session.h"
#include "document/export_command.h"
#include "document/file_drop.h"
#include "document/form_offers.h"
#include "document/lane_wiring.h"
#include "document/line_split_win.h"
#include "document/lyrics_opener.h"
#include "document/player_copier.h"
#include "document/proposer.h"
#include "document/save_commands.h"
#include "document/song_lyrics_opener.h"
#include "document/song_sound_source.h"
#include "document/song_writer.h"
#include "document/text_finder.h"
#include "editviews/tag_input_view.h"
#include "hostlink/host_link.h"
#include "platform/app/message.h"
#include "platform/app/message_runner.h"
#include "platform/interface/window.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"

namespace {
/** How often the link's own thread, which does not poll, checks whether it has to end. */
constexpr int64 kFrontEndIntervalUs = 100000;
} // namespace

TVesmoEView::TVesmoEView(BRect frame, TNoticeBoard* notices)
    : TKRVView(frame, "VesmoEditorView", B_FOLLOW_ALL_SIDES, B_FRAME_EVENTS), fNotices(notices),
      fFrontEnd(std::make_unique<Sonivo_FrontEnd>(false, kFrontEndIntervalUs)) {
  fFrontEnd->Start();
  fSession = std::make_unique<TEditSession>(this, fFrontEnd.get(), &fDocument, &fSong);
  fFinder = std::make_unique<TTextFinder>(fSession.get(), &fDocument);
}

/** The player loses its marks before nothing waits for it any more; the other parts go in reverse order. */
TVesmoEView::~TVesmoEView() {
  fPublisher.reset();
  fFrontEnd->StopWaiting();
}

void TVesmoEView::AttachedToWindow() {
  const BMessenger self(this);
  const BMessage refresh(kMsgRefreshInfo);
  Sonivo_FrontEnd* const frontEnd = fFrontEnd.get();
  TEditSession* const session = fSession.get();
  fPoll = std::make_unique<BMessageRunner>(self, &refresh, gPref->Values()->pollIntervalUs);
  fBulk = std::make_unique<TBulkCommands>(&fDocument, session);
  fSplitter = std::make_unique<TLineSplitter>(this, &fDocument, session);
  fDrop = std::make_unique<TFileDrop>(this, frontEnd, session);
  fPublisher = std::make_unique<TDocumentPublisher>(self, &fDocument, &fSong, frontEnd, &session->Choices());
  fDifferences = std::make_unique<TDifferences>(this);
  fOffers = std::make_unique<TFormOffers>(self, &fDocument, session, fNotices);
  fFile = std::make_unique<TDocumentFile>(this, &fDocument, session, fNotices, fDifferences.get(), fOffers.get());
  fRecovery = std::make_unique<TDocumentRecovery>(this, &fDocument, session, fNotices, fDifferences.get());
  fLoader = std::make_unique<TDocumentLoader>(
      this, TDocumentLoader::TParts{&fDocument, session, fFile.get(), fRecovery.get(), fOffers.get()});
  fCopier = std::make_unique<TPlayerCopier>(this, frontEnd, session, &fDocument, fNotices);
  fSaving = std::make_unique<TSaveCommands>(
      this, TSaveCommands::TParts{&fDocument, session, fFile.get(), fRecovery.get(), fLoader.get(), fCopier.get()});
  fOpener = std::make_unique<TLyricsOpener>(this, TLyricsOpener::TParts{fPoll.get(), frontEnd, &fDocument, session,
                                                                        fOffers.get(), fSaving.get(), fLoader.get()});
  fSongLyrics = std::make_unique<TSongLyricsOpener>(
      this, TSongLyricsOpener::TParts{frontEnd, &fDocument, session, fFile.get(), fSaving.get(), fLoader.get()});
  fSongWriter = std::make_unique<TSongWriter>(Window(), frontEnd, session, &fDocument);
  fSound = std::make_unique<TSongSoundSource>(this, frontEnd);
  fLane = std::make_unique<TLaneWiring>(this, TLaneWiring::TParts{frontEnd, &fDocument, session, fSound.get()});
  fProposer = std::make_unique<TProposer>(this, TProposer::TParts{frontEnd, &fDocument, session, fSound.get()});
}

void TVesmoEView::MessageReceived(BMessage* message) {
  if (message->what == B_SIMPLE_DATA) {
    if (!fDrop->SimpleData(*message)) TKRVView::MessageReceived(message);
    return LanguageChanged();
  }
  if (!HandleByPart(*message) && !HandleChoice(*message) && !HandleOwn(*message)) TKRVView::MessageReceived(message);
}

bool TVesmoEView::HandleByPart(const BMessage& message) {
  return fOpener->Handle(message) || fSaving->Handle(message) || fSongLyrics->Handle(message) ||
         fBulk->Handle(message) || fSplitter->Handle(message) || fPublisher->Handle(message) ||
         fFinder->Handle(message) || fOffers->Handle(message) || fFile->Handle(message) || fRecovery->Handle(message) ||
         fLane->Handle(message) || fProposer->Handle(message);
}

bool TVesmoEView::HandleOwn(const BMessage& message) {
  switch (message.what) {
  case kMsgNew:
    MItemNewClicked();
    break;
  case kMsgMode:
    MItemModeClicked(message);
    break;
  case kMsgTagCommand:
    TagCommandRqtd(message);
    break;
  case kMsgSeekInSong:
    fSession->Clock().Seek();
    break;
  case kMsgUndo:
    fSession->Undo();
    break;
  case kMsgRedo:
    fSession->Redo();
    break;
  case kMsgExportTo:
    ExportRqtd(message);
    break;
  case kMsgCopyForPlayers:
    fCopier->Start();
    break;
  case kMsgWriteIntoSong:
    fSongWriter->Start();
    break;
  case kMsgStatBarStr:
    fSession->ReportFromView(message);
    break;
  case kMsgDefaultStatBar:
    fSession->ReportDefault();
    break;
  case kMsgRefreshInfo:
    RefreshSonivoInfoRqtd();
    break;
  case kMsgRecover:
    RecoverRqtd(message);
    break;
  default:
    return false;
  }
  return true;
}

/** What the user has chosen in the menus and the preferences. */
bool TVesmoEView::HandleChoice(const BMessage& message) {
  switch (message.what) {
  case kMsgKeys:
    fSession->TagInput().KeysChanged();
    break;
  case kMsgShowClock:
    fSession->ToggleClock();
    break;
  case kMsgToggleClicks:
    fSession->ToggleClicks();
    fPublisher->ClicksChosen();
    break;
  case kMsgToggleCountIn:
    fSession->ToggleCountIn();
    break;
  case kMsgAppearance:
    fSession->SetAppearance();
    fLane->AppearanceChanged();
    break;
  case kMsgPollInterval:
    fPoll->SetInterval(gPref->Values()->pollIntervalUs);
    break;
  case kMsgLanguageChanged:
    LanguageChanged();
    break;
  default:
    return false;
  }
  return true;
}

bool TVesmoEView::AskSave(const BMessage& next, const BHandler* target) {
  return fSaving->AskSave(next, target);
}

const std::string& TVesmoEView::SongFolder() const {
  return fSongLyrics->SongFolder();
}

TEditMode TVesmoEView::Mode() const {
  return fSession->Mode();
}

void TVesmoEView::FocusLyrics() {
  fSession->MakeFocus();
}

void TVesmoEView::SetWinTitle() {
  fLoader->SetWinTitle();
}

void TVesmoEView::CreateNewLyrics() {
  fLoader->CreateNewLyrics();
}

void TVesmoEView::SetMode(int32 mode) {
  const std::optional<TEditMode> known = edit_mode_of(mode);
  if (!known) return;
  fSession->SetMode(*known);
  ModeChanged();
}

/** The window marks the mode in its menus and tool bar. */
void TVesmoEView::ModeChanged() {
  fSession->ReportDefault();
  fRecovery->ViewChanged();
  BMessage changed(kMsgModeChanged);
  changed.AddInt32("Mode", static_cast<int32>(Mode()));
  Window()->PostMessage(&changed);
}

void TVesmoEView::MItemModeClicked(const BMessage& message) {
  int32 number = 0;
  if (message.FindInt32("Mode", &number) != B_OK) return;
  const std::optional<TEditMode> mode = edit_mode_of(number);
  if (!mode) return;
  fSession->SwitchMode(*mode);
  ModeChanged();
}

/** From a menu, in whichever mode: the command is of the view that is shown. */
void TVesmoEView::TagCommandRqtd(const BMessage& message) {
  int32 number = 0;
  if (message.FindInt32("Command", &number) == B_OK) fSession->ViewCommand(number);
}

void TVesmoEView::MItemNewClicked() {
  if (!AskSave(BMessage(kMsgNew), this)) return;
  CreateNewLyrics();
  SetWinTitle();
  fSession->ReportDefault();
}

void TVesmoEView::ExportRqtd(const BMessage& message) {
  if (is_for_another_document(message, fDocument)) return;
  fSession->Active().FlushEdits();
  if (const auto report = export_document(fDocument, message)) fSession->Report(*report);
}

void TVesmoEView::RefreshSonivoInfoRqtd() {
  fFrontEnd->Refresh();
  if (fSong.Adopt(fFrontEnd->Title())) fPublisher->DocumentReplaced();
  const std::optional<int32> sungMs = fFrontEnd->SungPositionMs();
  fSession->TagInput().SetSongPosition(sungMs);
  fSongLyrics->Poll(sungMs.has_value());
  fSession->Clock().Update();
  fLane->Poll(sungMs);
  fProposer->Poll(fLane->IsShown());
  fSession->ShowModified();
  fRecovery->Poll();
}

/** The offer is settled already if its notice was answered twice. */
void TVesmoEView::RecoverRqtd(const BMessage& message) {
  if (!fRecovery->HasOffer(message) || !AskSave(message, this)) return;
  const std::optional<std::string> report = fRecovery->Recover(message);
  if (!report) return;
  ModeChanged();
  fLoader->Recovered();
  fSession->Report(*report);
}

void TVesmoEView::WindowActivated(bool active) {
  if (active) fFile->Check();
}

void TVesmoEView::LanguageChanged() {
  fFile->LanguageChanged();
  fRecovery->LanguageChanged();
  fSession->LanguageChanged();
  fCopier->LanguageChanged();
  fOffers->LanguageChanged();
  fLane->LanguageChanged();
  SetWinTitle();
  fSession->ReportDefault();
}
