#include "player/window/playback_menu.h"

#include "player/widgets/shown_text.h"
#include "player/window/choose.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>

#include <utility>

namespace {

QAction* add_checkable(QMenu* menu, const char* text, bool isChecked) {
  QAction* const action = menu->addAction(shown_text(text));
  action->setCheckable(true);
  action->setChecked(isChecked);
  return action;
}

void add_switch(QMenu* menu, const char* text, bool isOn, const char* field, const BMessenger& player) {
  QObject::connect(add_checkable(menu, text, isOn), &QAction::triggered, menu,
                   [=](bool checked) { choose(player, field, checked); });
}

void add_repeat(QMenu* menu, TRepeat chosen, const BMessenger& player) {
  QActionGroup* group = nullptr;
  for (const auto& [text, repeat] : {std::pair{"Player_Repeat_Off", TRepeat::kOff},
                                     {"Player_Repeat_Song", TRepeat::kSong},
                                     {"Player_Repeat_List", TRepeat::kList}}) {
    QAction* const action = add_checkable(menu, text, repeat == chosen);
    if (group == nullptr) group = new QActionGroup(action); // it goes with the entries at the next clear()
    group->addAction(action);
    const auto number = static_cast<int32>(repeat);
    QObject::connect(action, &QAction::triggered, menu, [=] { choose(player, choice::kRepeat, number); });
  }
}

void fill(QMenu* menu, const TPlayerChoices& choices, const BMessenger& player,
          const std::function<void()>& openSound) {
  menu->clear();
  add_switch(menu, "Player_Shuffle", choices.modes.shuffles, choice::kShuffle, player);
  menu->addSeparator();
  add_repeat(menu, choices.modes.repeat, player);
  menu->addSeparator();
  add_switch(menu, "Player_Stop_After", choices.modes.stopsAfterSong, choice::kStopAfter, player);
  add_switch(menu, "Player_Gapless", choices.sound.isGapless, choice::kGapless, player);
  add_switch(menu, "Player_Keep_Awake", choices.keepsAwake, choice::kKeepsAwake, player);
  add_switch(menu, "Player_Close_To_Tray", choices.closesToTray, choice::kTray, player);
  menu->addSeparator();
  menu->addAction(shown_text("Player_Sound"), menu, openSound);
}

} // namespace

QMenu* new_playback_menu(QWidget* parent, const BMessenger& player, const TPlayerChoices* choices,
                         const std::function<void()>& openSound) {
  auto* const menu = new QMenu(shown_text("Player_Playback"), parent);
  QObject::connect(menu, &QMenu::aboutToShow, menu, [=] { fill(menu, *choices, player, openSound); });
  return menu;
}
