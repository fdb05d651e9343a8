#include "document/form_offers.h"

#include "document/edit_session.h"
#include "document/encoding_name.h"
#include "language/llt.h"
#include "lyrics/dialect.h"
#include "lyrics/document.h"
#include "lyrics/foreign_encoding.h"
#include "platform/storage/file.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int32 kMixedTagsNotice = kOtherNotices + 20;
constexpr int32 kEncodingNotice = kOtherNotices + 23;
/** What the detection looks at. */
constexpr size_t kStartSize = size_t{256} << 10;

TNoticeButton unify_button(TDialect dialect) {
  BMessage unify(kMsgUnifyTags);
  unify.AddInt32("Dialect", static_cast<int32>(dialect));
  return {gLLT->Text(("StatBarSymbol_Dialect_" + std::to_string(static_cast<int32>(dialect))).c_str()), unify};
}

TNotice encoding_notice(TEncoding probable, const BMessenger& target) {
  const std::string name = encoding_name(probable);
  BMessage reopen(kMsgReopenAs);
  reopen.AddInt32("Encoding", static_cast<int32>(probable));
  return {kEncodingNotice,
          gLLT->Text("Notice_Encoding_1") + name + gLLT->Text("Notice_Encoding_2"),
          {{gLLT->Text("Button_Open_As") + name, reopen}},
          target,
          BMessage()};
}

std::string start_of(const entry_ref& ref) {
  BFile file(&ref, B_READ_ONLY);
  std::string bytes(kStartSize, '\0');
  const ssize_t count = file.InitCheck() == B_OK && file.IsRegular() ? file.Read(bytes.data(), bytes.size()) : 0;
  bytes.resize(count > 0 ? static_cast<size_t>(count) : 0);
  return bytes;
}

/** Full-width kana, as nearly every text has that really is Japanese. */
bool has_kana(const std::vector<std::string>& lines) {
  return std::ranges::any_of(lines, [](const std::string& line) {
    for (size_t at = line.find('\xE3'); at != std::string::npos; at = line.find('\xE3', at + 1))
      if (at + 1 < line.size() && line[at + 1] >= '\x81' && line[at + 1] <= '\x83') return true;
    return false;
  });
}

} // namespace

void TFormOffers::Show(int32 id, std::function<TNotice()> notice) {
  fNotices->ShowNotice(notice());
  fShown[id] = std::move(notice);
}

void TFormOffers::Remove(int32 id) {
  fNotices->RemoveNotice(id);
  fShown.erase(id);
}

TNotice TFormOffers::UnifyNotice() const {
  return {kMixedTagsNotice,
          gLLT->Text("Notice_Mixed_Tags"),
          {unify_button(TDialect::kCommon), unify_button(TDialect::kFamily)},
          fOwner,
          BMessage()};
}

void TFormOffers::CheckTags(bool areMixed) {
  if (!areMixed) return Remove(kMixedTagsNotice);
  Show(kMixedTagsNotice, [this] { return UnifyNotice(); });
}

void TFormOffers::CheckEncoding() {
  Remove(kEncodingNotice);
  const bool isDetected = gPref->Values()->readEncoding == kDetectEncoding;
  if (fDocument->Form().encoding != TEncoding::kShiftJis || !isDetected) return;
  if (!fDocument->Unread().hasBrokenBytes && has_kana(fDocument->Lines())) return;
  const std::optional<TEncoding> probable = probable_foreign_encoding(start_of(fDocument->File()));
  if (probable) Show(kEncodingNotice, [this, known = *probable] { return encoding_notice(known, fOwner); });
}

void TFormOffers::WithdrawEncoding() {
  Remove(kEncodingNotice);
}

void TFormOffers::Withdraw() {
  Remove(kMixedTagsNotice);
  WithdrawEncoding();
}

/** The user may have closed a notice meanwhile. */
void TFormOffers::LanguageChanged() {
  for (const auto& [id, notice] : fShown)
    if (fNotices->HasNotice(id)) fNotices->ShowNotice(notice());
}

bool TFormOffers::Handle(const BMessage& message) {
  if (message.what != kMsgUnifyTags) return false;
  Unify(message);
  return true;
}

void TFormOffers::Unify(const BMessage& message) {
  int32 dialect = 0;
  if (message.FindInt32("Dialect", &dialect) != B_OK || !fNotices->HasNotice(kMixedTagsNotice)) return;
  Remove(kMixedTagsNotice);
  fSession->Active().FlushEdits();
  const bool isCut = dialect_of(dialect) == TDialect::kFamily && has_thousandths(fDocument->CopyLines());
  fSession->UnifyTags(dialect_of(dialect));
  fSession->Report(std::string(gLLT->Text("StatBarStr_Tags_Unified")) +
                   (isCut ? gLLT->Text("StatBarStr_Thousandths_Cut") : ""));
}
