#include "interapp/iap_item.h"

#include "common/koreva.h"
#include "platform/app/message.h"
#include "platform/storage/entry.h"

namespace {

/** The format is part of every label, and may come from another process or a damaged file. */
constexpr size_t kMaxFormatBytes = 100;

bool file_of(const std::string& name, BEntry* entry) {
  return koreva::get_entry((name + ".arc").c_str(), entry, koreva::kSettingsDir, "Shared");
}

} // namespace

status_t TIAPItem::GetBool(bool*) const {
  return B_BAD_TYPE;
}
status_t TIAPItem::GetString(std::string*) const {
  return B_BAD_TYPE;
}
status_t TIAPItem::SetBool(bool) {
  return B_BAD_TYPE;
}
status_t TIAPItem::SetString(const std::string&) {
  return B_BAD_TYPE;
}

status_t TIAPItem::SetValue(const BMessage& notice) {
  if (!Unarchive(notice)) return B_BAD_TYPE;
  return SaveValue() ? B_OK : B_IO_ERROR;
}

bool TIAPItem::LoadValue() {
  BEntry entry;
  return file_of(fName, &entry) && Load(entry);
}

bool TIAPItem::SaveValue() {
  BEntry entry;
  return file_of(fName, &entry) && Save(entry);
}

void TIAPItem::AddDefaultInfo(BMessage* message) const {
  message->AddString("IAP:SrcApp", fSignature);
  message->AddString("IAP:SrcIAPItem", fName);
}

status_t TIAPItemAccKeyFormat::GetString(std::string* value) const {
  const std::lock_guard lock(fMutex);
  *value = fFormat;
  return B_OK;
}

status_t TIAPItemAccKeyFormat::SetString(const std::string& value) {
  {
    const std::lock_guard lock(fMutex);
    fFormat = value;
  }
  return SaveValue() ? B_OK : B_IO_ERROR;
}

TIAPControl TIAPItemAccKeyFormat::MakeConfigurationView() const {
  TIAPControl control;
  control.kind = TIAPControl::kMenuField;
  control.item = Name();
  control.app = Signature();
  control.label = "Accelerator Format:";
  control.choices = {
      {"(None)", ""}, {"a) ", "a) "}, {"a\u30fb", "a\u30fb"}, {"a - ", "a - "}, {"Select ...", "", true}};
  GetString(&control.text);
  return control;
}

bool TIAPItemAccKeyFormat::Archive(BMessage* archive) {
  std::string format;
  GetString(&format);
  return archive->AddString("IAP:SrcApp", Signature()) == B_OK && archive->AddString(kValueField, format) == B_OK;
}

bool TIAPItemAccKeyFormat::Unarchive(const BMessage& archive) {
  std::string format;
  GetString(&format);
  if (!Read(archive, kValueField, &format) || format.size() > kMaxFormatBytes) return false;
  const std::lock_guard lock(fMutex);
  fFormat = format;
  return true;
}

status_t TIAPItemFlatToolBar::GetBool(bool* value) const {
  const std::lock_guard lock(fMutex);
  *value = fIsFlat;
  return B_OK;
}

status_t TIAPItemFlatToolBar::SetBool(bool value) {
  {
    const std::lock_guard lock(fMutex);
    fIsFlat = value;
  }
  return SaveValue() ? B_OK : B_IO_ERROR;
}

TIAPControl TIAPItemFlatToolBar::MakeConfigurationView() const {
  TIAPControl control;
  control.kind = TIAPControl::kCheckBox;
  control.item = Name();
  control.app = Signature();
  control.label = "Flat Tool Bar";
  control.defaultFlag = true;
  GetBool(&control.flag);
  return control;
}

bool TIAPItemFlatToolBar::Archive(BMessage* archive) {
  bool isFlat = true;
  GetBool(&isFlat);
  return archive->AddString("IAP:SrcApp", Signature()) == B_OK && archive->AddBool(kValueField, isFlat) == B_OK;
}

bool TIAPItemFlatToolBar::Unarchive(const BMessage& archive) {
  bool isFlat = true;
  GetBool(&isFlat);
  const bool readable = Read(archive, kValueField, &isFlat);
  const std::lock_guard lock(fMutex);
  fIsFlat = isFlat;
  return readable;
}
