#include "document/file_watch.h"

#include "document/notice.h"
#include "language/llt.h"
#include "platform/app/handler.h"
#include "platform/app/message.h"
#include "platform/app/message_runner.h"
#include "platform/app/node_monitor.h"
#include "plugin/message_codes.h"

namespace {

/** Programs that save a file change its folder several times within moments. */
constexpr bigtime_t kCollectUs = 200000;
/** A look without an answer is reported after this long. */
constexpr bigtime_t kOverdueUs = 4000000;

std::unique_ptr<BMessageRunner> send_later(uint32 code, const BHandler* owner, bigtime_t delayUs) {
  const BMessage message(code);
  return std::make_unique<BMessageRunner>(BMessenger(owner), &message, delayUs, 1);
}

bool is_same(const TFileLook& left, const TFileLook& right) {
  if (left.kind != right.kind || left.state.has_value() != right.state.has_value()) return false;
  return !left.state || left.state->HasBytesOf(*right.state);
}

const char* text_key(TDiskState state) {
  switch (state) {
  case TDiskState::kChanged:
    return "Notice_File_Changed";
  case TDiskState::kMissing:
    return "Notice_File_Missing";
  case TDiskState::kFolderMissing:
    return "Notice_Folder_Missing";
  case TDiskState::kNotRegular:
    return "Notice_No_File";
  case TDiskState::kUnreadable:
    return "Notice_File_Unreadable";
  default:
    return "Notice_Disk_Silent";
  }
}

TNoticeButton button(const char* key, uint32 code) {
  return {gLLT->Text(key), BMessage(code)};
}

std::vector<TNoticeButton> buttons_for(TDiskState state) {
  switch (state) {
  case TDiskState::kChanged:
    return {button("Button_Compare", kMsgCompareFile), button("Button_Reload", kMsgReloadFile),
            button("Button_Keep_Mine", kMsgKeepMine)};
  case TDiskState::kMissing:
    return {button("Button_Save", kMsgSave), button("MItem_Save_As", kMsgSaveAs)};
  default:
    return {button("MItem_Save_As", kMsgSaveAs)};
  }
}

} // namespace

TFileWatch::TFileWatch(const BHandler* owner, TDocument* document, TNoticeBoard* notices, TFileLooker::TOptions options)
    : fOwner(owner), fDocument(document), fNotices(notices), fLooker(BMessenger(owner), std::move(options)) {}

TFileWatch::~TFileWatch() {
  StopWatching();
}

void TFileWatch::StopWatching() {
  if (fWatched) stop_watching(fOwner);
  fWatched.reset();
}

void TFileWatch::Follow() {
  fState = TDiskState::kUnchanged;
  fSettled.reset();
  fNotices->RemoveNotice(kFileNotice);
  if (fPath != Path()) StopWatching();
  Check();
}

void TFileWatch::Check() {
  fPath = Path();
  if (fPath.empty()) return fOverdue.reset();
  fLooksAgain = !fLooker.Start(fPath);
  if (!fOverdue) fOverdue = send_later(kMsgFileLate, fOwner, kOverdueUs);
}

void TFileWatch::FolderChanged(const BMessage& notice) {
  std::string name;
  const int32 opcode = notice.GetInt32("opcode");
  if (notice.FindString("name", &name) == B_OK && name != fDocument->File().name) return;
  // A new file may have the number of the removed one.
  if (fWatched && opcode != B_STAT_CHANGED && opcode != B_ATTR_CHANGED) fWatched->inode = 0;
  if (!fDelay) fDelay = send_later(kMsgLookAtFile, fOwner, kCollectUs);
}

void TFileWatch::CheckNow() {
  fDelay.reset();
  Check();
}

void TFileWatch::Looked() {
  const TFileLook look = fLooker.Result(fPath);
  const bool isOvertaken = look.kind == TFileKind::kNoAnswer; // by a look that was waited for
  if (isOvertaken || fLooksAgain || fPath != Path() || WatchAgain(look)) return Check();
  fOverdue.reset();
  Judge(look);
}

void TFileWatch::Late() {
  fOverdue.reset();
  if (fLooker.Result(fPath).kind == TFileKind::kNoAnswer) Judge({TFileKind::kNoAnswer, {}});
}

/** Watched on this thread, since the disk has just answered. A change between the reading and the watch is found by the
    next look. */
bool TFileWatch::WatchAgain(const TFileLook& look) {
  if (!look.state && fWatched) fWatched->inode = 0;
  if (!look.state || (fWatched && fWatched->IsSameFile(*look.state))) return false;
  StopWatching();
  fWatched = look.state;
  watch_node(fDocument->File().directory.c_str(), B_WATCH_DIRECTORY, fOwner);
  watch_node(Path().c_str(), B_WATCH_STAT | B_WATCH_NAME, fOwner);
  return true;
}

void TFileWatch::Judge(const TFileLook& look) {
  const TDiskState before = fState;
  fState = fDocument->CompareWithDisk(look);
  if (fState == TDiskState::kUnchanged) {
    if (look.state) fDocument->SeenOnDisk(*look.state);
    fSettled.reset();
    fNotices->RemoveNotice(kFileNotice);
    return;
  }
  const bool isKnown = fState == before && is_same(look, fLook) && fNotices->HasNotice(kFileNotice);
  fLook = look;
  if (fSettled && is_same(look, *fSettled)) return;
  fSettled.reset();
  if (!isKnown) ShowNotice();
}

void TFileWatch::ShowNotice() {
  TNotice notice;
  notice.id = kFileNotice;
  notice.text = "\"" + fDocument->File().name + "\"" + gLLT->Text(text_key(fState));
  notice.buttons = buttons_for(fState);
  notice.target = BMessenger(fOwner);
  notice.whenClosed = BMessage(kMsgKeepMine);
  fNotices->ShowNotice(notice);
}

void TFileWatch::KeepMine() {
  fSettled = fLook;
  fNotices->RemoveNotice(kFileNotice);
}

void TFileWatch::LanguageChanged() {
  if (fNotices->HasNotice(kFileNotice)) ShowNotice();
}

TDiskState TFileWatch::StateNow() {
  if (fDocument->File().IsEmpty()) return TDiskState::kUnchanged;
  return fDocument->CompareWithDisk(fLooker.LookNow(Path()));
}

/** A disk that does not answer may still have it. */
bool TFileWatch::IsGone() {
  const TDiskState state = StateNow();
  return state != TDiskState::kUnchanged && state != TDiskState::kChanged && state != TDiskState::kNoAnswer;
}

TSaveTarget TFileWatch::TargetNow(const entry_ref& file) {
  const TFileLook now = fLooker.LookNow(file.FullPath());
  if (file == fDocument->File()) return {true, now};
  if (fDocument->File().IsEmpty() || !now.state) return {false, now};
  const TFileLook own = fLooker.LookNow(Path());
  return {own.state && own.state->IsSameFile(*now.state), now};
}
