#include "player/list/song_list_view.h"

#include "player/list/requests.h"
#include "player/list/song_actions.h"
#include "player/list/song_row_painter.h"
#include "player/model/player_messages.h"
#include "player/widgets/dropped_files.h"
#include "player/widgets/shown_text.h"

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

TSongListView::TSongListView(const BMessenger& player) : fPlayer(player), fHeader(new TSongHeader(player, this)) {
  setModel(&fModel);
  setItemDelegate(new TSongRowPainter(this, fHeader));
  setAccessibleName(shown_text("Player_Playlist"));
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
  fHeader->Show(state);
  fModel.Show(state.songs, state.current);
  if (!fFilter.IsEmpty()) FilterRows();
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
  for (const QModelIndex& index : selectionModel()->selectedRows()) {
    if (!isRowHidden(index.row())) rows.push_back(index.row()); // "select all" includes what the filter hides
  }
  std::sort(rows.begin(), rows.end());
  return rows;
}

std::vector<int64> TSongListView::SelectedIds() const {
  std::vector<int64> ids;
  for (const int row : SelectedRows()) ids.push_back(fModel.At(row).id);
  return ids;
}

void TSongListView::SetFilter(const QString& words) {
  fFilter = TSongFilter(words);
  FilterRows();
  scrollTo(currentIndex());
}

/** Moves the cursor to the first visible song if its own is hidden. */
void TSongListView::FilterRows() {
  int first = -1;
  for (int row = fModel.rowCount() - 1; row >= 0; --row) {
    const bool matches = fFilter.Matches(fModel.At(row));
    if (isRowHidden(row) == matches) setRowHidden(row, !matches);
    if (matches) first = row;
  }
  const bool isSeen = currentIndex().isValid() && !isRowHidden(currentIndex().row());
  if (!isSeen && !fFilter.IsEmpty()) setCurrentIndex(fModel.index(first));
  viewport()->update();
}

/** The first song from the current one on whose title, or else whose artist or any word in them, begins like that. */
void TSongListView::FindTyped(const QString& typed) {
  const QString wanted = folded_text(typed);
  const int count = fModel.rowCount();
  const int from = std::max(currentIndex().row(), 0);
  int found = -1;
  for (int i = 0; i < count; ++i) {
    const int row = (from + i) % count;
    if (isRowHidden(row)) continue;
    const TSong& song = fModel.At(row);
    const QString title = folded_text(QString::fromStdString(song.title));
    if (title.startsWith(wanted)) return setCurrentIndex(fModel.index(row));
    const QString all = ' ' + title + ' ' + folded_text(QString::fromStdString(song.artist));
    if (found < 0 && all.contains(' ' + wanted)) found = row;
  }
  if (found >= 0) setCurrentIndex(fModel.index(found));
}

void TSongListView::PlayCurrent() {
  if (currentIndex().isValid()) ask(fPlayer, kMsgPlaySong, "index", currentIndex().row());
}

void TSongListView::PlayNext() {
  ask_about_songs(fPlayer, kMsgMoveSongs, SelectedIds(), fModel.Current() + 1);
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

/** What an empty list says. */
QString TSongListView::HintText() const {
  if (fModel.rowCount() == 0) return shown_text(fIsSearching ? "Player_Searching" : "Player_Drop_Hint");
  const bool isAllHidden = !fFilter.IsEmpty() && (!currentIndex().isValid() || isRowHidden(currentIndex().row()));
  return isAllHidden ? shown_text("Player_No_Match") : QString();
}

void TSongListView::paintEvent(QPaintEvent* event) {
  QListView::paintEvent(event);
  QPainter painter(viewport());
  if (const QString hint = HintText(); !hint.isEmpty()) {
    painter.setOpacity(kHintStrength);
    painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, hint);
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

bool TSongListView::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && fTypeAhead.Takes(*static_cast<QKeyEvent*>(event))) event->accept();
  return QListView::event(event);
}

void TSongListView::changeEvent(QEvent* event) {
  if (event->type() == QEvent::LanguageChange) {
    setAccessibleName(shown_text("Player_Playlist"));
    fHeader->LanguageChanged();
  }
  QListView::changeEvent(event);
}

void TSongListView::updateGeometries() {
  QListView::updateGeometries();
  PlaceHeader();
}

void TSongListView::resizeEvent(QResizeEvent* event) {
  QListView::resizeEvent(event);
  PlaceHeader();
}

void TSongListView::PlaceHeader() {
  const int height = fHeader->sizeHint().height();
  if (viewportMargins().top() != height) setViewportMargins(0, height, 0, 0);
  const QRect below = viewport()->geometry();
  fHeader->setGeometry(below.left(), below.top() - height, below.width(), height);
}

void TSongListView::keyPressEvent(QKeyEvent* event) {
  fUsed.start();
  if (fTypeAhead.Press(*event)) return;
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
  const TSong song = fModel.At(index.row());
  menu->addAction(menu_text("Player_Play", Qt::Key_Return), this, [this, id = song.id] {
    for (int row = 0; row < fModel.rowCount(); ++row) {
      if (fModel.At(row).id == id) ask(fPlayer, kMsgPlaySong, "index", row);
    }
  });
  menu->addAction(shown_text("Player_Play_Next"), this, [this] { PlayNext(); });
  menu->addAction(menu_text("Player_Move_Up", Qt::ALT | Qt::Key_Up), this, [this] { MoveSelected(-1); });
  menu->addAction(menu_text("Player_Move_Down", Qt::ALT | Qt::Key_Down), this, [this] { MoveSelected(1); });
  menu->addSeparator();
  add_song_actions(menu, fPlayer, song);
  menu->addSeparator();
  menu->addAction(menu_text("Player_Remove", Qt::Key_Delete), this, [this] { RemoveSelected(); });
  menu->popup(isByKey ? viewport()->mapToGlobal(visualRect(index).center()) : event->globalPos());
}
