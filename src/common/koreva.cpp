#include "common/koreva.h"

#include "platform/app/message.h"
#include "platform/kernel/images.h"
#include "platform/storage/directory.h"
#include "platform/storage/entry.h"
#include "platform/storage/find_directory.h"
#include "platform/storage/path.h"

#include <optional>

namespace koreva {

namespace {

constexpr const char* kMakerFolder = "KOREVA";
constexpr uint32 kFolderMode = 0777;

bool base_folder(TBaseDir base, BPath* folder) {
  if (base == kSettingsDir) {
    return find_directory(B_USER_SETTINGS_DIRECTORY, folder) == B_OK && folder->Append(kMakerFolder) == B_OK;
  }
  int32 cookie = 0;
  image_info program;
  BPath file;
  return get_next_image_info(&cookie, &program) == B_OK && file.SetTo(program.name.c_str()) == B_OK &&
         file.GetParent(folder) == B_OK;
}

bool folder_for(TBaseDir base, const char* sub, BPath* folder) {
  if (base == kGivenDir) return folder->SetTo(sub) == B_OK;
  if (!base_folder(base, folder)) return false;
  if (sub && *sub && folder->Append(sub) != B_OK) return false;
  return create_directory(folder->Path(), kFolderMode) == B_OK;
}

} // namespace

bool get_entry(const char* name, BEntry* entry, TBaseDir base, const char* sub) {
  if (name == nullptr || *name == '\0') return false;
  if (*name == '/') return entry->SetTo(name) == B_OK;
  BPath path;
  return folder_for(base, sub, &path) && path.Append(name) == B_OK && entry->SetTo(path.Path()) == B_OK;
}

bool add_next_msg(BMessage* message, const BMessage& next, const BHandler* target) {
  message->AddMessage("NextMsg", &next);
  message->AddPointer("NextMsgTgt", target);
  message->AddMessenger("NextMsgTgtMsgr", BMessenger(target));
  return true;
}

namespace {

struct TNextMsg {
  BMessage message;
  void* target = nullptr;
  BMessenger address;
};

std::optional<TNextMsg> find_next_msg(const BMessage& message) {
  TNextMsg next;
  if (message.FindMessage("NextMsg", &next.message) != B_OK ||
      message.FindPointer("NextMsgTgt", &next.target) != B_OK) {
    return {};
  }
  // Without the messenger the pointer is only followed if the message was made in this process.
  if (message.FindMessenger("NextMsgTgtMsgr", &next.address) != B_OK && !message.IsSourceRemote())
    next.address = BMessenger(static_cast<const BHandler*>(next.target));
  return next;
}

} // namespace

bool copy_next_msg(BMessage* destination, const BMessage& source) {
  const auto next = find_next_msg(source);
  if (!next) return false;
  destination->AddMessage("NextMsg", &next->message);
  destination->AddPointer("NextMsgTgt", next->target);
  destination->AddMessenger("NextMsgTgtMsgr", next->address);
  return true;
}

bool invoke_next_msg(const BMessage* message) {
  const auto next = find_next_msg(*message);
  return next && next->address.SendMessage(&next->message, BMessenger(), 0) == B_OK;
}

bool get_save_ref(const BMessage* message, entry_ref* ref) {
  entry_ref directory;
  if (message->FindRef("directory", &directory) != B_OK) directory = entry_ref();
  *ref = {directory.name == "." ? directory.directory : directory.FullPath(), message->GetString("name")};
  return true;
}

std::string merge_accelerator_key(std::string_view format, std::string_view key, std::string_view label) {
  const size_t place = format.find('a');
  if (place == std::string_view::npos) return std::string(label);
  std::string merged(format.substr(0, place));
  return merged.append(key).append(format.substr(place + 1)).append(label);
}

std::string reext(std::string_view path, std::string_view extension) {
  const size_t slash = path.rfind('/');
  const size_t nameStart = slash == std::string_view::npos ? 0 : slash + 1;
  const size_t period = path.rfind('.');
  const bool hasExtension = period != std::string_view::npos && period > nameStart;
  std::string result(hasExtension ? path.substr(0, period) : path);
  return result.append(".").append(extension);
}

} // namespace koreva
