#include "player/list/song_list_model.h"

#include "player/model/display_thread_check.h"
#include "player/widgets/tool_tip.h"

#include <algorithm>
#include <unordered_map>

namespace {
bool same_song(const TSong& a, const TSong& b) {
  return a.id == b.id;
}

std::string with_error(const std::string& text, const TSong& song) {
  return song.error.empty() ? text : text + " (" + song.error + ")";
}
} // namespace

int TSongListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(fSongs->size());
}

QVariant TSongListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const TSong& song = At(index.row());
  if (role == Qt::ToolTipRole) return tool_tip(with_error(song.path, song));
  if (role != Qt::DisplayRole) return {};
  const std::string text = song.artist.empty() ? song.title : song.title + " — " + song.artist;
  return QString::fromStdString(with_error(text, song));
}

void TSongListModel::Show(std::shared_ptr<const TSongs> songs, int32 current) {
  check_display_thread();
  if (songs != fSongs) Replace(std::move(songs));
  const int32 before = std::exchange(fCurrent, current);
  if (before == current) return;
  RowChanged(before);
  RowChanged(current);
}

void TSongListModel::RowChanged(int row) {
  if (row >= 0 && row < rowCount()) emit dataChanged(index(row), index(row));
}

void TSongListModel::Replace(std::shared_ptr<const TSongs> songs) {
  const auto count = std::min(fSongs->size(), songs->size());
  const auto [differs, alsoDiffers] =
      std::mismatch(fSongs->begin(), fSongs->begin() + static_cast<long>(count), songs->begin(), same_song);
  const auto head = differs - fSongs->begin();
  const auto [fromBack, alsoFromBack] =
      std::mismatch(fSongs->rbegin(), fSongs->rbegin() + (static_cast<long>(count) - head), songs->rbegin(), same_song);
  const auto tail = fromBack - fSongs->rbegin();
  const auto first = static_cast<int>(head);
  const auto gone = static_cast<int>(static_cast<long>(fSongs->size()) - head - tail);
  const auto come = static_cast<int>(static_cast<long>(songs->size()) - head - tail);
  if (gone == come) {
    Reorder(std::move(songs));
  } else if (gone == 0) {
    beginInsertRows({}, first, first + come - 1);
    fSongs = std::move(songs);
    endInsertRows();
  } else if (come == 0) {
    beginRemoveRows({}, first, first + gone - 1);
    fSongs = std::move(songs);
    endRemoveRows();
  } else {
    beginResetModel();
    fSongs = std::move(songs);
    endResetModel();
  }
  if (rowCount() > 0) emit dataChanged(index(0), index(rowCount() - 1)); // titles may have become known
}

/** Also if no song has moved and only tags have changed. */
void TSongListModel::Reorder(std::shared_ptr<const TSongs> songs) {
  if (std::equal(fSongs->begin(), fSongs->end(), songs->begin(), same_song)) {
    fSongs = std::move(songs);
    return;
  }
  emit layoutAboutToBeChanged();
  std::unordered_map<int64, int> rows;
  for (const TSong& song : *songs) rows.emplace(song.id, static_cast<int>(rows.size()));
  const QModelIndexList before = persistentIndexList();
  QModelIndexList after;
  for (const QModelIndex& old : before) {
    const auto row = rows.find(At(old.row()).id);
    after.push_back(row == rows.end() ? QModelIndex() : index(row->second));
  }
  fSongs = std::move(songs);
  changePersistentIndexList(before, after);
  emit layoutChanged();
}
