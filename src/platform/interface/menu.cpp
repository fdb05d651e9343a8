#include "platform/interface/menu.h"

#include "platform/app/message.h"
#include "platform/interface/menu_peer.h"

#include <algorithm>
#include <utility>

BMenu::BMenu(const char* title) : BView({}, title), fTitle(title) {}

BMenu::~BMenu() = default;

bool BMenu::AddItem(BMenuItem* item) {
  return AddItem(item, CountItems());
}

bool BMenu::AddItem(BMenuItem* item, int32 index) {
  if (item == nullptr || item->fMenu || index < 0 || index > CountItems()) return false;
  Insert(std::unique_ptr<BMenuItem>(item), index);
  return true;
}

void BMenu::Insert(std::unique_ptr<BMenuItem> item, int32 index) {
  item->fMenu = this;
  fItems.insert(fItems.begin() + index, std::move(item));
  Changed();
}

bool BMenu::AddItem(BMenu* submenu) {
  return AddItem(submenu, CountItems());
}

bool BMenu::AddItem(BMenu* submenu, int32 index) {
  if (submenu == nullptr || submenu->fSuperitem || index < 0 || index > CountItems()) return false;
  Insert(std::make_unique<BMenuItem>(submenu), index);
  return true;
}

bool BMenu::AddSeparatorItem() {
  Insert(std::make_unique<BSeparatorItem>(), CountItems());
  return true;
}

BMenuItem* BMenu::RemoveItem(int32 index) {
  if (!ItemAt(index)) return nullptr;
  const auto place = fItems.begin() + index;
  BMenuItem* const item = place->release();
  fItems.erase(place);
  item->fMenu = nullptr;
  Changed();
  return item;
}

BMenuItem* BMenu::ItemAt(int32 index) const {
  return index >= 0 && index < CountItems() ? fItems[static_cast<size_t>(index)].get() : nullptr;
}

int32 BMenu::IndexOf(const BMenuItem* item) const {
  const auto found = std::find_if(fItems.begin(), fItems.end(), [&](const auto& own) { return own.get() == item; });
  return item && found != fItems.end() ? static_cast<int32>(found - fItems.begin()) : -1;
}

template <class Wanted>
BMenuItem* BMenu::Find(const Wanted& wanted) const {
  for (const auto& item : fItems) {
    if (wanted(*item)) return item.get();
    if (!item->Submenu()) continue;
    if (BMenuItem* found = item->Submenu()->Find(wanted)) return found;
  }
  return nullptr;
}

BMenuItem* BMenu::FindItem(uint32 command) const {
  return Find([command](const BMenuItem& item) { return item.Message() && item.Message()->what == command; });
}

BMenuItem* BMenu::FindById(int32 id) const {
  return Find([id](const BMenuItem& item) { return item.fId == id; });
}

BMenuItem* BMenu::FindMarked() const {
  const auto found = std::find_if(fItems.begin(), fItems.end(), [](const auto& item) { return item->IsMarked(); });
  return found == fItems.end() ? nullptr : found->get();
}

void BMenu::SetRadioMode(bool radio) {
  fRadioMode = radio;
  Changed();
}

void BMenu::MarkOnly(const BMenuItem* marked) {
  for (const auto& item : fItems) item->fMarked = item.get() == marked;
}

void BMenu::SetTitle(const char* title) {
  fTitle = title;
  Changed();
}

BMenu* BMenu::Supermenu() const {
  return fSuperitem ? fSuperitem->Menu() : nullptr;
}

BWindow* BMenu::RootWindow() const {
  return Supermenu() ? Supermenu()->RootWindow() : nullptr;
}

void BMenu::Changed() {
  if (Supermenu()) Supermenu()->Changed();
}

std::vector<display::MenuEntry> BMenu::Snapshot() const {
  std::vector<display::MenuEntry> entries;
  for (const auto& item : fItems) {
    display::MenuEntry& entry = entries.emplace_back();
    entry.id = item->fId;
    entry.label = item->Label();
    entry.shortcut = item->Shortcut();
    entry.modifiers = item->ShortcutModifiers();
    entry.keys = item->Keys();
    entry.showsKeysOnly = item->AreKeysOnlyShown();
    entry.isSeparator = item->IsSeparator();
    entry.isEnabled = item->IsEnabled();
    entry.isMarked = item->IsMarked();
    entry.isRadio = fRadioMode;
    entry.hasSubmenu = item->Submenu() != nullptr;
    entry.hasMessage = item->Message() != nullptr;
    if (item->Submenu()) entry.submenu = item->Submenu()->Snapshot();
  }
  return entries;
}
