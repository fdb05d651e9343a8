#pragma once

#include "platform/app/messenger.h"
#include "player/list/song_filter.h"
#include "player/list/song_header.h"
#include "player/list/song_list_model.h"
#include "player/list/type_ahead.h"

#include <QElapsedTimer>
#include <QListView>

/** View of the playlist: plays, removes and moves songs, and accepts dropped files. Dragging songs is done by mouse
    events instead of Qt's drag and drop, which would run a nested event loop. Display thread. */
class TSongListView : public QListView {
public:
  explicit TSongListView(const BMessenger& player);

  /** Scrolls to a song that has become current, unless the user is busy with the list. */
  void Show(const TPlayerState& state);
  /** Scrolls to the next song that becomes current in any case, since the user has asked for it. */
  void FollowNextSong() { fUsed.invalidate(); }
  int32 FirstSeenRow() const { return indexAt(QPoint(0, 0)).row(); }
  /** Hides all other songs. */
  void SetFilter(const QString& words);
  void PlayCurrent();
  /** The letters that are commands when no name is being typed. */
  void SetCommands(const QString& letters, TTypeAhead::TCommand command) {
    fTypeAhead.SetCommands(letters, std::move(command));
  }
  void RemoveSelected();
  /** By one place up (-1) or down (1). */
  void MoveSelected(int direction);

protected:
  bool event(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void updateGeometries() override;
  void resizeEvent(QResizeEvent* event) override;
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
  void PlaceHeader();
  void FilterRows();
  void FindTyped(const QString& typed);
  void PlayNext();
  QString HintText() const;
  std::vector<int> SelectedRows() const;
  std::vector<int64> SelectedIds() const;
  /** The row before which a drop here inserts. */
  int RowForDrop(const QPoint& where) const;
  void ShowDrop(int row);
  bool IsInUse() const;

  const BMessenger fPlayer;
  TSongListModel fModel;
  TSongHeader* const fHeader;
  TSongFilter fFilter;
  TTypeAhead fTypeAhead{[this](const QString& typed) { FindTyped(typed); }};
  int64 fCurrentId = 0;
  bool fIsSearching = false;
  QElapsedTimer fUsed; // since the last action in the list; invalid after the pointer has left it
  QPoint fPressed;
  bool fHoldsSongs = false;
  int fDropRow = -1;
};
