#include "platform/interface/menu_item.h"

#include "platform/app/handler.h"
#include "platform/app/message.h"
#include "platform/interface/menu.h"
#include "platform/interface/window.h"
#include "platform/kernel/threads.h"

#include <atomic>

namespace {

std::atomic<int32> lastId{0};

} // namespace

BMenuItem::BMenuItem(const char* label, BMessage* message, char shortcut, uint32 modifiers)
    : fLabel(label), fMessage(message), fShortcut(shortcut), fModifiers(modifiers), fId(++lastId) {}

BMenuItem::BMenuItem(BMenu* submenu, BMessage* message, char shortcut, uint32 modifiers)
    : BMenuItem("", message, shortcut, modifiers) {
  fSubmenu.reset(submenu);
  submenu->fSuperitem = this;
}

BMenuItem::~BMenuItem() = default;

void BMenuItem::Changed() const {
  if (fMenu) fMenu->Changed();
}

const char* BMenuItem::Label() const {
  return fSubmenu ? fSubmenu->Title() : fLabel.c_str();
}

void BMenuItem::SetEnabled(bool enabled) {
  fEnabled = enabled;
  Changed();
}

void BMenuItem::SetMarked(bool marked) {
  fMarked = marked;
  if (marked && fMenu && fMenu->IsRadioMode()) fMenu->MarkOnly(this);
  Changed();
}

void BMenuItem::SetKeys(const std::string& keys, bool areOnlyShown) {
  fKeys = keys;
  fShowsKeysOnly = areOnlyShown;
  Changed();
}

void BMenuItem::SetTarget(const BHandler* handler) {
  fTarget = BMessenger(handler);
}

void BMenuItem::Invoke() {
  if (fMenu && fMenu->IsRadioMode()) SetMarked(true);
  if (!fMessage) return;
  BMessage chosen(*fMessage);
  chosen.AddPointer("source", this);
  chosen.AddInt32("index", fMenu ? fMenu->IndexOf(this) : -1);
  chosen.AddInt64("when", system_time());
  const bool hasTarget = !(fTarget == BMessenger());
  const BMessenger target = hasTarget || !fMenu ? fTarget : BMessenger(fMenu->RootWindow());
  target.SendMessage(&chosen, BMessenger(), 0);
}
