#include "player/window/sort_menu.h"

#include "player/list/requests.h"
#include "player/model/player_messages.h"
#include "player/model/song_sorting.h"
#include "player/widgets/shown_text.h"

#include <QMenu>

#include <utility>

QMenu* new_sort_menu(QWidget* parent, const BMessenger& player) {
  auto* const menu = new QMenu(shown_text("Player_Sort"), parent);
  for (const auto& [text, key] : {std::pair{"Player_Sort_Title", TSortKey::kTitle},
                                  {"Player_Sort_Artist", TSortKey::kArtist},
                                  {"Player_Sort_Album", TSortKey::kAlbum},
                                  {"Player_Sort_Track", TSortKey::kTrack},
                                  {"Player_Sort_Length", TSortKey::kDuration},
                                  {"Player_Sort_File", TSortKey::kPath}}) {
    const auto number = static_cast<int32>(key);
    menu->addAction(shown_text(text), menu, [=] { ask(player, kMsgSortSongs, "by", number); });
  }
  return menu;
}
