#include "player/list/song_actions.h"

#include "player/list/requests.h"
#include "player/model/player_messages.h"
#include "player/model/song_address.h"
#include "player/widgets/shown_text.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>

void add_song_actions(QMenu* menu, const BMessenger& player, const TSong& song) {
  const bool isFile = is_file_path(song.path);
  menu->addAction(shown_text("Player_Song_Lyrics"), menu,
                  [player, path = song.path] { ask_about_paths(player, kMsgSongLyrics, {path}); })
      ->setEnabled(isFile);
  menu->addAction(shown_text("Player_Show_In_Folder"), menu,
                  [player, path = song.path] { ask_about_paths(player, kMsgShowInFolder, {path}); })
      ->setEnabled(isFile);
  const QString title = QString::fromStdString(song.artist.empty() ? song.title : song.title + " — " + song.artist);
  menu->addAction(shown_text("Player_Copy_Title"), menu, [title] { QGuiApplication::clipboard()->setText(title); });
}
