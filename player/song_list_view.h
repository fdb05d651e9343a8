#pragma once

#include "platform/app/messenger.h"
#include "player/song_list_model.h"

#include <QListView>

/** The list of songs: plays, removes and moves them, and takes files that are dropped on it. Songs are dragged by the
    mouse alone, without the desktop's drag and drop, which would wait in a loop of its own. */
class TSongListView : public QListView {
public:
  explicit TSongListView(const BMessenger& player);

  void Show(const TPlayerState& state);
  void RemoveSelected();
  /** By one place up (-1) or down (1). */
  void MoveSelected(int direction);

protected:
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

  const BMessenger fPlayer;
  TSongListModel fModel;
  QPoint fPressed;
  bool fHoldsSongs = false;
  int fDropRow = -1;
};
