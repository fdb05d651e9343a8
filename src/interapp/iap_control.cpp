#include "interapp/iap_control.h"

#include "platform/app/message.h"

#include <utility>

namespace {
constexpr int32 kMaxChoices = 100;
/** Limit for texts from another process. */
constexpr size_t kMaxBytes = 1024;

bool find_text(const BMessage& archive, const char* name, int32 index, std::string* text) {
  return archive.FindString(name, index, text) == B_OK && text->size() <= kMaxBytes;
}

} // namespace

void TIAPControl::Archive(BMessage* archive) const {
  archive->AddInt32("IAP:Kind", kind);
  archive->AddString("IAP:SrcIAPItem", item);
  archive->AddString("IAP:SrcApp", app);
  archive->AddString("IAP:Label", label);
  for (const TChoice& choice : choices) {
    archive->AddString("IAP:Shown", choice.shown);
    archive->AddString("IAP:Choice", choice.value);
    archive->AddBool("IAP:Asks", choice.asks);
  }
  archive->AddBool("IAP:Flag", flag);
  archive->AddBool("IAP:DefaultFlag", defaultFlag);
  archive->AddString("IAP:Text", text);
  archive->AddString("IAP:DefaultText", defaultText);
}

bool TIAPControl::Unarchive(const BMessage& archive) {
  TIAPControl read;
  int32 number = 0;
  if (archive.FindInt32("IAP:Kind", &number) != B_OK || (number != kCheckBox && number != kMenuField)) return false;
  read.kind = static_cast<TKind>(number);
  if (!find_text(archive, "IAP:SrcIAPItem", 0, &read.item) || !find_text(archive, "IAP:SrcApp", 0, &read.app) ||
      !find_text(archive, "IAP:Label", 0, &read.label)) {
    return false;
  }
  TChoice choice;
  for (int32 i = 0;
       i < kMaxChoices && find_text(archive, "IAP:Shown", i, &choice.shown) &&
       find_text(archive, "IAP:Choice", i, &choice.value) && archive.FindBool("IAP:Asks", i, &choice.asks) == B_OK;
       ++i) {
    read.choices.push_back(choice);
  }
  read.flag = archive.GetBool("IAP:Flag", read.flag);
  read.defaultFlag = archive.GetBool("IAP:DefaultFlag", read.defaultFlag);
  if (!find_text(archive, "IAP:Text", 0, &read.text)) read.text.clear();
  if (!find_text(archive, "IAP:DefaultText", 0, &read.defaultText)) read.defaultText.clear();
  *this = std::move(read);
  return true;
}
