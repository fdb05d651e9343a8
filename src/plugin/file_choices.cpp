#include "plugin/file_choices.h"

#include "platform/app/message.h"
#include "plugin/kept_record.h"

namespace {

constexpr const char* kFolder = "Shared";
constexpr const char* kName = "VesmoShared_Files.arc";

} // namespace

bool TFileChoices::Archive(BMessage* archive) {
  return archive->AddInt32("NDlc", newDialect) == B_OK && archive->AddBool("RCmn", recognisesCommon) == B_OK &&
         archive->AddBool("FUt8", savesForeignAsUtf8) == B_OK && archive->AddBool("RnwC", renewsCopies) == B_OK;
}

bool TFileChoices::Unarchive(const BMessage& archive) {
  bool all = Read(archive, "NDlc", &newDialect);
  all &= Read(archive, "RCmn", &recognisesCommon);
  all &= Read(archive, "FUt8", &savesForeignAsUtf8);
  all &= Read(archive, "RnwC", &renewsCopies);
  return all;
}

TFileChoices load_file_choices() {
  TFileChoices choices;
  load_record(&choices, kFolder, kName);
  return choices;
}

bool store_file_choices(const TFileChoices& choices) {
  TFileChoices record = choices;
  return save_record(&record, kFolder, kName);
}
