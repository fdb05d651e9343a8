#include "player/app/open_folder.h"

#include "platform/display/display_thread.h"
#include "player/list/requests.h"
#include "player/model/player_messages.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

void open_folder_of(const std::string& path, const BMessenger& player) {
  display::post([path, player] {
    const QUrl folder = QUrl::fromLocalFile(QFileInfo(QString::fromStdString(path)).path());
    if (!QDesktopServices::openUrl(folder)) ask_about_paths(player, kMsgFolderClosed, {path});
  });
}
