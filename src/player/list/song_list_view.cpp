#include "player/list/song_list_view.h"

#include "player/list/requests.h"
#include "player/list/song_row_painter.h"
#include "player/model/player_messages.h"
#include "player/widgets/dropped_files.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace {
constexpr double kHintStrength = 0.6;
constexpr qint64 kInUseMs = 10000;
} // namespace

TSongListView::TSongListView(const BMessenger& player) : fPlayer(player) {
  setModel(&fModel);
  setItemDelegate(new TSongRowPainter(this));
  setAccessibleName(tr("Playlist"));
  setUniformItemSizes(true); // fast layout of ten thousand songs
  setAlternatingRowColors(true);
  setSelectionMode(ExtendedSelection);
  setEditTriggers(NoEditTriggers);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setAcceptDrops(true);
  connect(verticalScrollBar(), &QScrollBar::actionTriggered, this, [this] { fUsed.start(); });
  connect(this, &QListView::activated, this,
          [this](const QModelIndex& index) { ask(fPlayer, kMsgPlaySong, "index", index.row()); });
}

void TSongListView::Show(const TPlayerState& state) {
  if (std::exchange(fIsSearching, state.isSearching) != fIsSearching) viewport()->update();
  fModel.Show(state.songs, state.current);
  const bool hasCurrent = state.current >= 0 && state.current < fModel.rowCount();
  const int64 id = hasCurrent ? fModel.At(state.current).id : 0;
  if (std::exchange(fCurrentId, id) != id && id != 0 && !IsInUse()) scrollTo(fModel.index(state.current));
}

bool TSongListView::IsInUse() const {
  return QApplication::mouseButtons() != Qt::NoButton || (fUsed.isValid() && fUsed.elapsed() < kInUseMs);
}

bool TSongListView::viewportEvent(QEvent* event) {
  const QEvent::Type type = event->type();
  if (type == QEvent::Wheel || type == QEvent::HoverMove || type == QEvent::MouseButtonPress) fUsed.start();
  if (type == QEvent::HoverLeave) fUsed.invalidate();
  return QListView::viewportEvent(event);
}

std::vector<int> TSongListView::SelectedRows() const {
  std::vector<int> rows;
  for (const QModelIndex& index : selectionModel()->selectedRows()) rows.push_back(index.row());
  std::sort(rows.begin(), rows.end());
  return rows;
}

std::vector<int64> TSongListView::SelectedIds() const {
  std::vector<int64> ids;
  for (const int row : SelectedRows()) ids.push_back(fModel.At(row).id);
  return ids;
}

void TSongListView::RemoveSelected() {
  ask_about_songs(fPlayer, kMsgRemoveSongs, SelectedIds());
}

void TSongListView::MoveSelected(int direction) {
  const std::vector<int> rows = SelectedRows();
  if (rows.empty()) return;
  const int before = direction < 0 ? rows.front() - 1 : rows.back() + 2;
  if (before >= 0 && before <= fModel.rowCount()) ask_about_songs(fPlayer, kMsgMoveSongs, SelectedIds(), before);
}

void TSongListView::mousePressEvent(QMouseEvent* event) {
  QListView::mousePressEvent(event);
  fPressed = event->pos();
  fHoldsSongs = event->button() == Qt::LeftButton && indexAt(fPressed).isValid();
}

void TSongListView::mouseMoveEvent(QMouseEvent* event) {
  if (!fHoldsSongs) return QListView::mouseMoveEvent(event);
  const QPoint where = event->pos();
  const bool isFar = (where - fPressed).manhattanLength() >= QApplication::startDragDistance();
  if (fDropRow < 0 && !isFar) return;
  const int beyond = where.y() < 0 ? -1 : where.y() > viewport()->height() ? 1 : 0;
  verticalScrollBar()->setValue(verticalScrollBar()->value() + beyond);
  ShowDrop(RowForDrop(where));
}

void TSongListView::mouseReleaseEvent(QMouseEvent* event) {
  fHoldsSongs = false;
  if (fDropRow < 0) return QListView::mouseReleaseEvent(event);
  ask_about_songs(fPlayer, kMsgMoveSongs, SelectedIds(), fDropRow);
  ShowDrop(-1);
  setState(NoState);
}

int TSongListView::RowForDrop(const QPoint& where) const {
  const QModelIndex index =
      indexAt(QPoint(viewport()->width() / 2, std::clamp(where.y(), 0, viewport()->height() - 1)));
  if (!index.isValid()) return fModel.rowCount();
  return index.row() + (where.y() > visualRect(index).center().y() ? 1 : 0);
}

void TSongListView::ShowDrop(int row) {
  if (row == fDropRow) return;
  fDropRow = row;
  viewport()->update();
}

void TSongListView::paintEvent(QPaintEvent* event) {
  QListView::paintEvent(event);
  QPainter painter(viewport());
  if (fModel.rowCount() == 0) {
    painter.setOpacity(kHintStrength);
    painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap,
                     fIsSearching ? tr("Searching for songs…")
                                  : tr("Drop songs, folders or playlists here,\nor press Ctrl+O"));
    painter.setOpacity(1);
  }
  if (fDropRow < 0) return;
  const int count = fModel.rowCount();
  const int y = count == 0          ? 0
                : fDropRow == count ? visualRect(fModel.index(count - 1)).bottom()
                                    : visualRect(fModel.index(fDropRow)).top();
  painter.fillRect(QRect(0, y - 1, viewport()->width(), 2), palette().color(QPalette::Highlight));
}

void TSongListView::dragEnterEvent(QDragEnterEvent* event) {
  if (!event->mimeData()->hasUrls()) return;
  event->acceptProposedAction();
  ShowDrop(RowForDrop(event->position().toPoint()));
}

void TSongListView::dragMoveEvent(QDragMoveEvent* event) {
  event->acceptProposedAction();
  ShowDrop(RowForDrop(event->position().toPoint()));
}

void TSongListView::dragLeaveEvent(QDragLeaveEvent*) {
  ShowDrop(-1);
}

void TSongListView::dropEvent(QDropEvent* event) {
  ask_about_paths(fPlayer, kMsgDropFiles, dropped_files(*event), RowForDrop(event->position().toPoint()));
  event->acceptProposedAction();
  ShowDrop(-1);
}

void TSongListView::keyPressEvent(QKeyEvent* event) {
  fUsed.start();
  const bool alone = event->modifiers() == Qt::NoModifier || event->modifiers() == Qt::KeypadModifier;
  if (event->key() == Qt::Key_Delete && alone) return RemoveSelected();
  QListView::keyPressEvent(event);
}

void TSongListView::contextMenuEvent(QContextMenuEvent* event) {
  const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
  const QModelIndex index = isByKey ? currentIndex() : indexAt(event->pos());
  if (!index.isValid()) return;
  auto* const menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->addAction(tr("&Play\tReturn"), this, [this, id = fModel.At(index.row()).id] {
    for (int row = 0; row < fModel.rowCount(); ++row) {
      if (fModel.At(row).id == id) ask(fPlayer, kMsgPlaySong, "index", row);
    }
  });
  menu->addAction(tr("Move &up\tAlt+Up"), this, [this] { MoveSelected(-1); });
  menu->addAction(tr("Move &down\tAlt+Down"), this, [this] { MoveSelected(1); });
  menu->addAction(tr("&Remove from playlist\tDelete"), this, [this] { RemoveSelected(); });
  menu->popup(isByKey ? viewport()->mapToGlobal(visualRect(index).center()) : event->globalPos());
}
