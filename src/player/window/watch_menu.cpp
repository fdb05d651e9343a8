#include "player/window/watch_menu.h"

#include "player/model/player_state.h"
#include "player/widgets/shown_text.h"
#include "player/window/choose.h"

#include <QMenu>

#include <algorithm>

namespace {

constexpr int kWidestPathEm = 40;

QString shown_folder(const QMenu* menu, const std::string& folder, bool isAbsent) {
  const QFontMetrics font = menu->fontMetrics();
  QString path = font.elidedText(QString::fromStdString(folder), Qt::ElideMiddle, kWidestPathEm * font.height());
  path.replace('&', QStringLiteral("&&"));
  return isAbsent ? shown_text("Player_Watch_Absent").arg(path) : path;
}

void fill(QMenu* menu, const BMessenger& player, const TPlayerState& state, const std::function<void()>& chooseFolder) {
  menu->clear();
  qDeleteAll(menu->findChildren<QMenu*>(Qt::FindDirectChildrenOnly));
  const TWatchedFolders& folders = state.choices.watchedFolders;
  menu->addAction(shown_text("Player_Watch_Add"), menu, chooseFolder)->setEnabled(folders.size() < kMostWatchedFolders);
  if (!folders.empty()) menu->addSeparator();
  for (const std::string& folder : folders) {
    const bool isAbsent = std::ranges::find(state.absentFolders, folder) != state.absentFolders.end();
    auto* const one = menu->addMenu(shown_folder(menu, folder, isAbsent));
    one->addAction(shown_text("Player_Watch_Stop"), menu, [player, folders, folder] {
      TWatchedFolders others = folders;
      std::erase(others, folder);
      choose_folders(player, others);
    });
  }
}

} // namespace

QMenu* new_watch_menu(QMenu* parent, const BMessenger& player, const TPlayerState* state,
                      const std::function<void()>& chooseFolder) {
  auto* const menu = new QMenu(shown_text("Player_Watch"), parent);
  QObject::connect(menu, &QMenu::aboutToShow, menu, [=] { fill(menu, player, *state, chooseFolder); });
  return menu;
}
