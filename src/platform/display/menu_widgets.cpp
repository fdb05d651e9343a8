#include "platform/display/menu_widgets.h"

#include "platform/app/message.h"
#include "platform/display/accelerators.h"
#include "platform/display/convert.h"
#include "platform/kernel/modifiers.h"

#include <QActionGroup>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QShortcut>

#include <algorithm>

namespace display {

namespace {

/** Property of submenu actions that can be chosen themselves. */
constexpr const char* kChoosable = "choosable";

QKeySequence shortcut_of(const MenuEntry& entry) {
  if (!entry.keys.empty()) return QKeySequence(to_qstring(entry.keys), QKeySequence::PortableText);
  if (entry.shortcut == 0) return {};
  int keys = Qt::CTRL | QChar::fromLatin1(entry.shortcut).toUpper().unicode();
  if (entry.modifiers & B_SHIFT_KEY) keys |= Qt::SHIFT;
  if (entry.modifiers & B_CONTROL_KEY) keys |= Qt::ALT;
  if (entry.modifiers & B_OPTION_KEY) keys |= Qt::META;
  return QKeySequence(keys);
}

/** The same items in the same places, ignoring labels and marks. */
bool same_items(const std::vector<MenuEntry>& left, const std::vector<MenuEntry>& right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(), [](const MenuEntry& a, const MenuEntry& b) {
    return a.id == b.id && a.isRadio == b.isRadio && same_items(a.submenu, b.submenu);
  });
}

void show_state(QAction* action, const MenuEntry& entry, bool inBar) {
  action->setText(inBar ? title_in_bar(entry.label) : accelerated_label(entry.label));
  action->setEnabled(entry.isEnabled);
  action->setCheckable(entry.isMarked || entry.isRadio);
  action->setChecked(entry.isMarked);
  action->setShortcut(shortcut_of(entry));
  // With the context of a widget that never has the focus the keys are shown but have no effect.
  action->setShortcutContext(entry.showsKeysOnly ? Qt::WidgetShortcut : Qt::WindowShortcut);
  action->setProperty(kChoosable, entry.hasSubmenu && entry.hasMessage);
}

void show_states(const QWidget* menu, const std::vector<MenuEntry>& entries) {
  const QList<QAction*> actions = menu->actions();
  for (qsizetype i = 0; i < actions.size() && i < std::ssize(entries); ++i) {
    const MenuEntry& entry = entries[static_cast<size_t>(i)];
    show_state(actions[i], entry, qobject_cast<const QMenuBar*>(menu) != nullptr);
    if (entry.hasSubmenu) show_states(actions[i]->menu<QMenu*>(), entry.submenu);
  }
}

/** The menu opened from the bar. */
QWidget* outermost(QMenu* menu) {
  QWidget* widget = menu;
  while (auto* outer = qobject_cast<QMenu*>(widget->parentWidget())) widget = outer;
  return widget;
}

} // namespace

void ChoosableMenu::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F10)
    outermost(this)->close();
  else if (event->key() != Qt::Key_Alt)
    QMenu::keyPressEvent(event);
}

void ChoosableMenu::mouseReleaseEvent(QMouseEvent* event) {
  QAction* action = actionAt(event->position().toPoint());
  if (!action || !action->isEnabled() || !action->property(kChoosable).toBool()) return QMenu::mouseReleaseEvent(event);
  outermost(this)->close();
  action->trigger();
}

MenuRow::MenuRow(const BMessenger& view) : fView(view) {
  connect(new QShortcut(Qt::Key_F10, this), &QShortcut::activated, this, &MenuRow::OpenByKeyboard);
}

void MenuRow::OpenByKeyboard() {
  if (actions().isEmpty()) return;
  // The focus stays where it is: nothing would restore it once an item was chosen.
  setActiveAction(actions().constFirst());
}

void MenuRow::SetMenus(const std::vector<MenuEntry>& menus) {
  if (menus == fMenus) return;
  if (!same_items(menus, fMenus)) {
    qDeleteAll(findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly));
    clear();
    Fill(this, menus);
  }
  fMenus = menus;
  show_states(this, menus);
}

void MenuRow::Fill(QWidget* menu, const std::vector<MenuEntry>& entries) {
  QActionGroup* radio = nullptr; // shows its items with radio marks
  for (const MenuEntry& entry : entries) {
    QAction* action = Make(menu, entry);
    menu->addAction(action);
    if (!entry.isRadio) continue;
    if (!radio) radio = new QActionGroup(menu);
    radio->addAction(action);
  }
}

QAction* MenuRow::Make(QWidget* menu, const MenuEntry& entry) {
  if (entry.isSeparator) {
    auto* separator = new QAction(menu);
    separator->setSeparator(true);
    return separator;
  }
  QAction* action = nullptr;
  if (entry.hasSubmenu) {
    auto* submenu = new ChoosableMenu(menu);
    Fill(submenu, entry.submenu);
    action = submenu->menuAction();
  } else {
    action = new QAction(menu);
  }
  if (!entry.hasSubmenu || entry.hasMessage)
    connect(action, &QAction::triggered, this, [this, id = entry.id] { Report(id); });
  return action;
}

void MenuRow::Report(int32 id) const {
  // Qt has already moved a mark: undo that; the program decides and sends its own.
  show_states(this, fMenus);
  BMessage chosen(DISPLAY_ITEM_CHOSEN);
  chosen.AddInt32("id", id);
  fView.SendMessage(&chosen, BMessenger(), 0);
}

} // namespace display
