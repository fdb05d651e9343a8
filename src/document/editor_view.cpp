#include "document/editor_view.h"

#include "common/app_info.h"
#include "document/differences_win.h"
#include "document/document_file.h"
#include "document/document_publisher.h"
#include "document/document_recovery.h"
#include "document/edit_session.h"
#include "document/export_command.h"
#include "document/line_split_win.h"
#include "document/player_copier.h"
#include "document/song_lyrics_job.h"
#include "document/text_finder.h"
#include "editviews/tag_input_view.h"
#include "hostlink/current_song_finder.h"
#include "hostlink/host_link.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/app/message_runner.h"
#include "platform/interface/window.h"
#include "plugin/file_choices.h"
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

TVesmoEView::~TVesmoEView() {
  if (fLineSplit && fLineSplit->Lock()) fLineSplit->Quit();
  fFile.reset();
  fRecovery.reset();
  fDifferences.reset();
  fPoll.reset();
  fPublisher.reset();
  fFrontEnd->StopWaiting();
  fSongFinder.reset();
  fCopier.reset();
  fSongLyrics.reset();
}

void TVesmoEView::AttachedToWindow() {
  fSongLyrics = std::make_unique<TSongLyricsJob>(BMessenger(this));
  fSongFinder = std::make_unique<TCurrentSongFinder>(fFrontEnd.get(), BMessenger(this));
  fPublisher = std::make_unique<TDocumentPublisher>(BMessenger(this), &fDocument, &fSong, fFrontEnd.get());
  fDifferences = std::make_unique<TDifferences>(this);
  fFile = std::make_unique<TDocumentFile>(this, &fDocument, fSession.get(), fNotices, fDifferences.get());
  fRecovery = std::make_unique<TDocumentRecovery>(this, &fDocument, fSession.get(), fNotices, fDifferences.get());
  fCopier = std::make_unique<TPlayerCopier>(this, fFrontEnd.get(), fSession.get(), &fDocument, fNotices);
  const BMessage refresh(kMsgRefreshInfo);
  fPoll = std::make_unique<BMessageRunner>(BMessenger(this), &refresh, gPref->Values()->pollIntervalUs);
}

void TVesmoEView::MessageReceived(BMessage* message) {
  switch (message->what) {
  case kMsgNew:
    return MItemNewClicked();
  case kMsgOpenCurrent:
    return MItemOpenCurLyricsClicked();
  case kMsgSongFound:
  case kMsgNoSong:
  case kMsgPlayerSilent:
    return SongSearched(*message);
  case kMsgWriteIntoSong:
    return MItemWriteIntoSongClicked();
  case kMsgSongLyricsRead:
    return SongLyricsRead();
  case kMsgSongLyricsWritten:
    return SongLyricsWritten();
  case kMsgOpenSongLyrics:
    return OpenSongLyrics(*message);
  case B_REFS_RECEIVED:
    return RefsReceived(*message);
  case B_SIMPLE_DATA:
    if (!SimpleData(*message)) TKRVView::MessageReceived(message);
    return LanguageChanged();
  case kMsgSave:
    return MItemSaveClicked(*message);
  case B_SAVE_REQUESTED:
    return SaveRequested(*message);
  case kMsgMode:
    return MItemModeClicked(*message);
  case kMsgFollowDocument:
    return fPublisher->FollowRqtd(*message);
  case kMsgSendDocument:
    return fPublisher->PublishWhole();
  case kMsgSendMarks:
    return fPublisher->PublishMarks();
  case kMsgFind:
    return fFinder->Find(*message);
  case kMsgReplace:
    return fFinder->Replace(*message);
  case kMsgTagCommand:
    return TagCommandRqtd(*message);
  case kMsgKeys:
    return fSession->TagInput().KeysChanged();
  case kMsgSplitLine:
    return SplitLineRqtd(*message);
  case kMsgSplitLineAt:
    return SplitLine(*message);
  case kMsgShowClock:
    return fSession->ToggleClock();
  case kMsgSeekInSong:
    return fSession->Clock().Seek();
  case kMsgUndo:
    return fSession->Undo();
  case kMsgRedo:
    return fSession->Redo();
  case kMsgConvertTags:
    return MItemCvtTag(*message);
  case kMsgDeleteTags:
    return MItemDelAllTimeTagClicked();
  case kMsgExportTo:
    if (IsForAnotherDocument(*message)) return;
    fSession->Active().FlushEdits();
    if (const auto report = export_document(fDocument, *message)) SetStatBarStr(report->c_str());
    return;
  case kMsgCopyForPlayers:
    return fCopier->Start();
  case kMsgReopenAs:
    return ReopenRqtd(*message);
  case kMsgUnifyTags:
    return UnifyTagsRqtd(*message);
  case kMsgShiftTags:
    return FineTimeTagRqtd(*message);
  case kMsgStatBarStr:
    return SetStatBarStrRqtd(*message);
  case kMsgDefaultStatBar:
    return ExpDefaultStatBarRqtd();
  case kMsgRefreshInfo:
    return RefreshSonivoInfoRqtd();
  case kMsgAppearance:
    return PrefAppearanceChanged();
  case kMsgPollInterval:
    fPoll->SetInterval(gPref->Values()->pollIntervalUs);
    return;
  case kMsgLanguageChanged:
    return LanguageChanged();
  case kMsgRecover:
    return RecoverRqtd(*message);
  default:
    if (!fFile->Handle(*message) && !fRecovery->Handle(*message)) TKRVView::MessageReceived(message);
  }
}

TEditMode TVesmoEView::Mode() const {
  return fSession->Mode();
}

void TVesmoEView::FocusLyrics() {
  fSession->MakeFocus();
}

void TVesmoEView::SetMode(int32 mode) {
  const std::optional<TEditMode> known = edit_mode_of(mode);
  if (!known) return;
  fSession->SetMode(*known);
  ModeChanged();
}

/** The window marks the mode in its menus and tool bar. */
void TVesmoEView::ModeChanged() {
  ExpDefaultStatBarRqtd();
  if (fRecovery) fRecovery->ViewChanged();
  BMessage changed(kMsgModeChanged);
  changed.AddInt32("Mode", static_cast<int32>(Mode()));
  if (Window()) Window()->PostMessage(&changed);
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

void TVesmoEView::SplitLineRqtd(const BMessage& request) {
  std::string text;
  if (request.FindString("Text", &text) != B_OK) return;
  BMessage answer(request);
  answer.what = kMsgSplitLineAt;
  answer.AddInt32("Document", fDocument.Number());
  ask_where_to_split(&fLineSplit, Window(), text, answer, BMessenger(this));
}

void TVesmoEView::SplitLine(const BMessage& answer) {
  if (IsForAnotherDocument(answer)) return;
  if (Mode() == TEditMode::kFreeEdit) return SetStatBarStr(gLLT->Text("StatBarStr_Line_Has_Changed"));
  fSession->TagInput().SplitLine(answer);
}

void TVesmoEView::MItemNewClicked() {
  if (!AskSave(BMessage(kMsgNew), this)) return;
  CreateNewLyrics();
  SetWinTitle();
  ExpDefaultStatBarRqtd();
}

void TVesmoEView::CreateNewLyrics() {
  const auto settings = gPref->Values();
  fSession->Active().Clear();
  fSession->Show({std::string()});
  fDocument.StartNew({encoding_of(settings->writeEncoding), line_end_of(settings->writeCRType),
                      dialect_of(load_file_choices().newDialect)});
  fSession->DocumentStarted();
  WithdrawUnifyOffer();
  WithdrawEncodingOffer();
  fFile->Follow();
}

void TVesmoEView::SetWinTitle() {
  const entry_ref& file = fDocument.File();
  const std::string name = file.IsEmpty() ? gLLT->Text("New_Lyrics") : file.name;
  if (Window()) Window()->SetTitle((name + " - " + gAppName).c_str());
}

void TVesmoEView::SetStatBarStr(const char* text) {
  fSession->Report(text);
}

void TVesmoEView::SetStatBarStrRqtd(const BMessage& message) {
  fSession->ReportFromView(message);
}

void TVesmoEView::ExpDefaultStatBarRqtd() {
  fSession->ReportDefault();
}

void TVesmoEView::RefreshSonivoInfoRqtd() {
  fFrontEnd->Refresh();
  if (fSong.Adopt(fFrontEnd->Title())) fPublisher->DocumentReplaced();
  const std::optional<int32> sungMs = fFrontEnd->SungPositionMs();
  fSession->TagInput().SetSongPosition(sungMs);
  OpenSongLyricsIfDue(sungMs.has_value());
  fSession->Clock().Update();
  fSession->ShowModified();
  fRecovery->Poll();
}

void TVesmoEView::PrefAppearanceChanged() {
  fSession->SetAppearance();
}

/** The offer is settled already if its notice was answered twice. */
void TVesmoEView::RecoverRqtd(const BMessage& message) {
  if (!fRecovery->HasOffer(message) || !AskSave(message, this)) return;
  const std::optional<std::string> report = fRecovery->Recover(message);
  if (!report) return;
  WithdrawUnifyOffer();
  WithdrawEncodingOffer();
  ModeChanged();
  fFile->Follow();
  if (!fDocument.File().IsEmpty()) SendAddHistoryRqtd();
  SetWinTitle();
  SetStatBarStr(report->c_str());
}

void TVesmoEView::WindowActivated(bool active) {
  if (active) fFile->Check();
}

void TVesmoEView::LanguageChanged() {
  fFile->LanguageChanged();
  fRecovery->LanguageChanged();
  fSession->LanguageChanged();
  fCopier->LanguageChanged();
  RelabelUnifyOffer();
  SetWinTitle();
  ExpDefaultStatBarRqtd();
}
