/** The dialect of the document's time tags (lyrics/dialect.h). */

#include "document/edit_session.h"
#include "document/editor_view.h"
#include "document/notice.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "plugin/message_codes.h"

namespace {

constexpr int32 kMixedTagsNotice = kOtherNotices + 20;

TNoticeButton unify_button(TDialect dialect) {
  BMessage unify(kMsgUnifyTags);
  unify.AddInt32("Dialect", static_cast<int32>(dialect));
  return {gLLT->Text(("StatBarSymbol_Dialect_" + std::to_string(static_cast<int32>(dialect))).c_str()), unify};
}

} // namespace

/** Offers to give all time tags of the document the same form; until then they are shown as they are. */
void TVesmoEView::OfferToUnifyTags() {
  fNotices->ShowNotice({kMixedTagsNotice,
                        gLLT->Text("Notice_Mixed_Tags"),
                        {unify_button(TDialect::kCommon), unify_button(TDialect::kFamily)},
                        BMessenger(this),
                        BMessage()});
}

void TVesmoEView::WithdrawUnifyOffer() {
  fNotices->RemoveNotice(kMixedTagsNotice);
}

void TVesmoEView::RelabelUnifyOffer() {
  if (fNotices->HasNotice(kMixedTagsNotice)) OfferToUnifyTags();
}

void TVesmoEView::UnifyTagsRqtd(const BMessage& message) {
  int32 dialect = 0;
  if (message.FindInt32("Dialect", &dialect) != B_OK || !fNotices->HasNotice(kMixedTagsNotice)) return;
  WithdrawUnifyOffer();
  fSession->UnifyTags(dialect_of(dialect));
  SetStatBarStr(gLLT->Text("StatBarStr_Tags_Unified"));
}
