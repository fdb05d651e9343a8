#include "interapp/iap_control.h"

#include "platform/app/message.h"

#include <utility>

namespace {
constexpr int32 kMaxChoices = 100;
}

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
  if (archive.FindString("IAP:SrcIAPItem", &read.item) != B_OK || archive.FindString("IAP:SrcApp", &read.app) != B_OK ||
      archive.FindString("IAP:Label", &read.label) != B_OK) {
    return false;
  }
  TChoice choice;
  for (int32 i = 0; i < kMaxChoices && archive.FindString("IAP:Shown", i, &choice.shown) == B_OK &&
                    archive.FindString("IAP:Choice", i, &choice.value) == B_OK &&
                    archive.FindBool("IAP:Asks", i, &choice.asks) == B_OK;
       ++i) {
    read.choices.push_back(choice);
  }
  archive.FindBool("IAP:Flag", &read.flag);
  archive.FindBool("IAP:DefaultFlag", &read.defaultFlag);
  archive.FindString("IAP:Text", &read.text);
  archive.FindString("IAP:DefaultText", &read.defaultText);
  *this = std::move(read);
  return true;
}
