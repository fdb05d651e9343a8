#include "player/window/source_menu.h"

#include "platform/app/message.h"
#include "player/model/bus_messages.h"
#include "player/widgets/shown_text.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>

namespace {

QAction* add_source(QMenu* menu, const QString& name, const std::string& id, const std::string& chosen,
                    const BMessenger& player) {
  QAction* const action = menu->addAction(QString(name).replace('&', "&&"));
  action->setCheckable(true);
  action->setChecked(id == chosen);
  QObject::connect(action, &QAction::triggered, menu, [id, player] {
    BMessage message(kMsgChooseSource);
    message.AddString("id", id);
    player.SendMessage(&message, BMessenger(), 0);
  });
  return action;
}

void fill(QMenu* menu, const TSources& sources, const BMessenger& player) {
  menu->clear();
  QAction* const own = add_source(menu, shown_text("Player_Own_Sound"), {}, sources.chosen, player);
  auto* const group = new QActionGroup(own); // it goes with the entries at the next clear()
  group->addAction(own);
  menu->addSeparator();
  for (const TSourceName& source : sources.players)
    group->addAction(add_source(menu, QString::fromStdString(source.name), source.id, sources.chosen, player));
  if (!sources.players.empty()) return;
  const char* const why = sources.isBusReachable ? "Player_No_Other" : "Player_No_Bus";
  menu->addAction(shown_text(why))->setEnabled(false);
}

} // namespace

QMenu* new_source_menu(QWidget* parent, const BMessenger& player, const TSources* sources) {
  auto* const menu = new QMenu(shown_text("Player_Source"), parent);
  QObject::connect(menu, &QMenu::aboutToShow, menu, [=] { fill(menu, *sources, player); });
  return menu;
}
