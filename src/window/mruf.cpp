#include "window/mruf.h"

#include "common/koreva.h"
#include "platform/app/message.h"
#include "platform/interface/menu.h"
#include "platform/kernel/modifiers.h"
#include "platform/storage/entry_ref.h"
#include "platform/storage/path.h"

#include <algorithm>
#include <cstring>

namespace {

char trigger_of(int32 number) {
  return static_cast<char>(number <= 9 ? '0' + number : 'A' + (number - 10));
}

} // namespace

TMRUF::TMRUF() : fMessage(std::make_unique<BMessage>(B_REFS_RECEIVED)) {}

TMRUF::~TMRUF() = default;

void TMRUF::AddMRUF(const char* path) {
  const int32 known = FindMRUF(path);
  if (known >= 0) {
    std::rotate(fPaths.begin(), fPaths.begin() + known, fPaths.begin() + known + 1);
    return;
  }
  const size_t size = std::strlen(path) + 1;
  fPaths.push_front(std::make_unique<char[]>(size));
  std::memcpy(fPaths.front().get(), path, size);
  DeleteExtraMRUF();
}

char* TMRUF::RemoveMRUF(int32 index) {
  if (index < 0 || index >= CountMRUFs()) return nullptr;
  const auto entry = fPaths.begin() + index;
  char* const path = entry->release();
  fPaths.erase(entry);
  return path;
}

char* TMRUF::RemoveMRUF(const char* path) {
  return RemoveMRUF(FindMRUF(path));
}

int32 TMRUF::FindMRUF(const char* path) const {
  const auto is_path = [path](const Path& entry) { return std::strcmp(entry.get(), path) == 0; };
  const auto found = std::find_if(fPaths.begin(), fPaths.end(), is_path);
  return found == fPaths.end() ? -1 : static_cast<int32>(found - fPaths.begin());
}

const char* TMRUF::MRUFAt(int32 index) const {
  return index >= 0 && index < CountMRUFs() ? fPaths[static_cast<size_t>(index)].get() : nullptr;
}

void TMRUF::ClearMRUF() {
  fPaths.clear();
}

void TMRUF::SetMaxMRUF(int32 count) {
  fMaximum = count;
  DeleteExtraMRUF();
}

void TMRUF::DeleteExtraMRUF() {
  while (CountMRUFs() > std::max(fMaximum, int32{0})) fPaths.pop_back();
}

void TMRUF::SetMessage(BMessage* message) {
  *fMessage = *message;
  delete message;
}

BMenuItem* TMRUF::MakeItem(int32 index) const {
  const char* const path = MRUFAt(index);
  entry_ref ref;
  get_ref_for_path(path, &ref);
  auto* const message = new BMessage(*fMessage);
  message->AddRef("refs", &ref);
  const int32 number = index + fTriggerBase;
  const char trigger = trigger_of(number);
  const std::string label = koreva::merge_accelerator_key(fSeparator, std::string(1, trigger), BPath(path).Leaf());
  const bool hasShortcut = fShowsShortcuts && number <= 9;
  auto* const item =
      new BMenuItem(label.c_str(), message, hasShortcut ? trigger : '\0', hasShortcut ? uint32{B_SHIFT_KEY} : 0);
  item->SetTarget(fTarget);
  return item;
}

void TMRUF::GenerateMenu() {
  if (fMenu == nullptr) return;
  while (fMenu->CountItems() > fTargetBase && !fMenu->ItemAt(fTargetBase)->IsSeparator())
    delete fMenu->RemoveItem(fTargetBase);
  for (int32 i = 0; i < CountMRUFs(); ++i) fMenu->AddItem(MakeItem(i), fTargetBase + i);
}

bool TMRUF::Archive(BMessage* archive) {
  bool succeeded = TArchivable::Archive(archive);
  for (auto path = fPaths.rbegin(); path != fPaths.rend(); ++path)
    succeeded = archive->AddString("MRUF", path->get()) == B_OK && succeeded;
  return succeeded;
}

bool TMRUF::Unarchive(const BMessage& archive) {
  const bool succeeded = TArchivable::Unarchive(archive);
  ClearMRUF();
  const char* path = nullptr;
  int32 index = 0;
  status_t status = B_OK;
  while ((status = Find(archive, "MRUF", &path, index++)) == B_OK) AddMRUF(path);
  return succeeded && status != B_BAD_TYPE;
}
