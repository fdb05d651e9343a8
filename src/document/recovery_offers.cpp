#include "document/recovery_offers.h"

#include "document/notice.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/storage/path.h"
#include "plugin/message_codes.h"

#include <algorithm>
#include <ctime>
#include <utility>

namespace {

enum : int32 { kRecoveryNotice = kOtherNotices, kOtherEditorNotice, kUnreadableNotice };

/** "14:32" today, else with the date in front. */
std::string moment(int64 whenS) {
  const std::time_t times[] = {static_cast<std::time_t>(whenS), std::time(nullptr)};
  std::tm then{};
  std::tm now{};
  localtime_r(&times[0], &then);
  localtime_r(&times[1], &now);
  const bool isToday = then.tm_year == now.tm_year && then.tm_yday == now.tm_yday;
  char text[32];
  std::strftime(text, sizeof text, "%F %H:%M", &then);
  return isToday ? std::string(text).substr(std::string("2000-01-01 ").size()) : text;
}

} // namespace

std::string name_of_document(const std::string& path) {
  return path.empty() ? gLLT->Text("New_Lyrics") : BPath(path.c_str()).Leaf();
}

TRecoveryOffers::TRecoveryOffers(const BMessenger& owner, TNoticeBoard* notices)
    : fOwner(owner), fNotices(notices), fSearch(owner) {}

void TRecoveryOffers::Search(const std::string& path) {
  fSearch.Start(path);
}

void TRecoveryOffers::Found() {
  for (TRecoverySearch::TResult& result : fSearch.Take()) {
    for (TFoundJournal& found : result.journals) fOffers.push_back({++fLastNumber, std::move(found)});
    if (!result.path.empty()) {
      std::stable_partition(fOffers.begin(), fOffers.end(),
                            [&result](const TOffer& one) { return is_same_file(one.found.target.path, result.path); });
    }
    if (result.otherEditor) ShowOtherEditor(result.path, *result.otherEditor);
    if (!result.unreadable.empty()) ShowUnreadable(result.unreadable);
  }
  Show();
}

const TFoundJournal* TRecoveryOffers::OfferOf(const BMessage& message) const {
  int32 number = 0;
  const bool isCurrent =
      message.FindInt32("Offer", &number) == B_OK && !fOffers.empty() && number == fOffers.front().number;
  return isCurrent ? &fOffers.front().found : nullptr;
}

void TRecoveryOffers::Next() {
  if (!fOffers.empty()) fOffers.pop_front();
  Show();
}

void TRecoveryOffers::Discard() {
  if (!fOffers.empty()) fSearch.Do([file = fOffers.front().found.file] { file->Remove(); });
  Next();
}

void TRecoveryOffers::LanguageChanged() {
  Show();
}

void TRecoveryOffers::Show() {
  if (fOffers.empty()) return fNotices->RemoveNotice(kRecoveryNotice);
  const TFoundJournal& offer = fOffers.front().found;
  const auto button = [number = fOffers.front().number](const char* key, uint32 code) {
    BMessage message(code);
    message.AddInt32("Offer", number);
    return TNoticeButton{gLLT->Text(key), message};
  };
  TNotice notice{kRecoveryNotice, TextOf(offer), {}, fOwner, button("Button_Close", kMsgRecoverLater).message};
  notice.buttons = {button("Button_View_Changes", kMsgViewChanges), button("Button_Recover", kMsgRecover),
                    button("Button_Discard", kMsgDiscardChanges)};
  fNotices->ShowNotice(notice);
  const auto mark = offer.expires ? TJournalMark::kExpiryAnnounced : TJournalMark::kOffered;
  fSearch.Do([file = offer.file, mark] { file->SetMark(mark); });
}

std::string TRecoveryOffers::TextOf(const TFoundJournal& found) const {
  std::string text = gLLT->Text("Notice_Unsaved_Found_1") + moment(found.lastChangeS) +
                     gLLT->Text("Notice_Unsaved_Found_2") + name_of_document(found.target.path);
  if (found.isFileChanged) text += gLLT->Text("Notice_Unsaved_File_Changed");
  if (found.expires) text += gLLT->Text("Notice_Unsaved_Expires");
  if (fOffers.size() > 1) text += gLLT->Text("Notice_Unsaved_More") + std::to_string(fOffers.size() - 1);
  return text;
}

void TRecoveryOffers::ShowOtherEditor(const std::string& path, const TOtherEditor& editor) {
  const char* const key = editor.hasUnsavedChanges ? "Notice_Other_Editor_1" : "Notice_Also_Open";
  fNotices->ShowNotice(
      {kOtherEditorNotice,
       gLLT->Text(key) + name_of_document(path) + gLLT->Text("Notice_Other_Editor_2") + std::to_string(editor.process),
       {},
       fOwner,
       BMessage()});
}

/** Once for each: it stays where it is, for somebody who can read it. */
void TRecoveryOffers::ShowUnreadable(const TJournalFiles& files) {
  std::string text = gLLT->Text("Notice_Unsaved_Unreadable") + files.front()->Path();
  if (files.size() > 1) text += gLLT->Text("Notice_Unsaved_More") + std::to_string(files.size() - 1);
  fNotices->ShowNotice({kUnreadableNotice, text, {}, fOwner, BMessage()});
  fSearch.Do([files] {
    for (const auto& file : files) file->SetMark(TJournalMark::kOffered);
  });
}
