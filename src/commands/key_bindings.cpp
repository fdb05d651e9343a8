#include "commands/key_bindings.h"

#include "commands/key_names.h"
#include "platform/app/message.h"
#include "plugin/kept_record.h"

TKeyBindings* gKeyBindings = nullptr;

namespace {
constexpr const char* kFolder = "Shared";
constexpr const char* kFile = "Vesmo_Keys.arc";
} // namespace

TKeys::TKeys() {
  for (const TEditorCommand& each : all_commands()) Set(each.id, each.keys);
}

std::optional<TCommandId> TKeys::OtherWith(const std::string& keys, TCommandId id) const {
  if (keys.empty()) return {};
  for (const TEditorCommand& each : all_commands())
    if (each.id != id && Of(each.id) == keys) return each.id;
  return {};
}

/** Each round gives one command its default, and the defaults do not conflict: so it ends. */
void TKeys::ResolveConflicts() {
  const auto reset_one = [this] {
    for (const TEditorCommand& each : all_commands()) {
      if (IsDefault(each.id) || !OtherWith(Of(each.id), each.id)) continue;
      Set(each.id, each.keys);
      return true;
    }
    return false;
  };
  while (reset_one()) {
  }
}

TKeyBindings::TKeyBindings() : fValues(std::make_shared<TKeys>()) {}

std::shared_ptr<const TKeys> TKeyBindings::Values() const {
  const std::lock_guard lock(fMutex);
  return fValues;
}

void TKeyBindings::SetValues(const TKeys& keys) {
  auto values = std::make_shared<const TKeys>(keys);
  const std::lock_guard lock(fMutex);
  fValues = std::move(values);
}

bool TKeyBindings::Archive(BMessage* archive) {
  const auto keys = Values();
  for (const TEditorCommand& each : all_commands())
    if (!keys->IsDefault(each.id) && archive->AddString(each.name, keys->Of(each.id)) != B_OK) return false;
  return true;
}

bool TKeyBindings::Unarchive(const BMessage& archive) {
  TKeys keys;
  bool isRead = true;
  for (const TEditorCommand& each : all_commands()) {
    std::string text = each.keys;
    isRead &= Read(archive, each.name, &text);
    const std::optional<std::string> changed = text.empty() ? text : normalized_keys(text);
    if (changed && !are_reserved_keys(*changed)) keys.Set(each.id, *changed);
  }
  keys.ResolveConflicts();
  SetValues(keys);
  return isRead;
}

std::shared_ptr<const TKeys> current_keys() {
  return gKeyBindings ? gKeyBindings->Values() : std::make_shared<const TKeys>();
}

bool load_key_bindings() {
  return load_record(gKeyBindings, kFolder, kFile);
}

bool save_key_bindings() {
  return save_record(gKeyBindings, kFolder, kFile);
}
