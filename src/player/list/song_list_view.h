#pragma once

#include "platform/app/messenger.h"
#include "player/list/song_list_model.h"

#include <QElapsedTimer>
#include <QListView>

/** The list of songs: plays, removes and moves them, and takes files that are dropped on it. Songs are dragged by the
    mouse alone, without the desktop's drag and drop, which would wait in a loop of its own. */
class TSongListView : public QListView {
public:
  explicit TSongListView(const BMessenger& player);

  /** Goes to a song that has become current, unless the user is at the list just now. */
  void Show(const TPlayerState& state);
  /** The user wishes for another song, whatever he did with the list before: it shall be seen. */
  void FollowNextSong() { fUsed.invalidate(); }
  int32 FirstSeenRow() const { return indexAt(QPoint(0, 0)).row(); }
  void RemoveSelected();
  /** By one place up (-1) or down (1). */
  void MoveSelected(int direction);

protected:
  bool viewportEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

private:
  std::vector<int> SelectedRows() const;
  std::vector<int64> SelectedIds() const;
  /** Before which row something that is dropped here comes. */
  int RowForDrop(const QPoint& where) const;
  void ShowDrop(int row);
  bool IsInUse() const;

  const BMessenger fPlayer;
  TSongListModel fModel;
  int64 fCurrentId = 0;
  bool fIsSearching = false;
  QElapsedTimer fUsed; // since the user last did something in the list, which the pointer has not left
  QPoint fPressed;
  bool fHoldsSongs = false;
  int fDropRow = -1;
};
