#include "player/app/list_saver.h"

#include "tests/support/own_looper.h"
#include "tests/support/songs.h"
#include "tests/support/testing.h"

TEST(ListSaver, AnotherCurrentSongIsAChangeToSave) {
  const ScratchFolder settings;
  setenv("XDG_CONFIG_HOME", settings.Path().c_str(), 1);
  ASSERT_TRUE(save_kept_list({songs_of({"/kept/a.mp3", "/kept/b.mp3"}), 0, 0, 100}, kept_list_path()));
  const OwnLooper<BLooper> player(new BLooper);
  TListSaver saver{BMessenger(player.get())};
  TPlaylist songs;
  saver.Restore(&songs);
  songs.SetCurrent(1);
  saver.NoteChanges(songs);
  EXPECT_TRUE(eventually([&] { return player->CountMessages() == 1; }));
}
