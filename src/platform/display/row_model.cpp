#include "platform/display/row_model.h"

#include "platform/display/convert.h"
#include "platform/display/picture_painter.h"

#include <algorithm>

namespace display {

namespace {

/** A few screenfuls. */
constexpr size_t kPicturesKept = 1000;

} // namespace

int RowModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : fLayout.count;
}

QVariant RowModel::data(const QModelIndex& index, int role) const {
  const BPicture* picture = PictureOf(index.row());
  if (picture && (role == Qt::DisplayRole || role == Qt::AccessibleTextRole)) return to_qstring(picture->Text());
  if (picture && role == Qt::AccessibleDescriptionRole) return to_qstring(meaning_of_signs(*picture));
  return {};
}

void RowModel::SetRows(const RowLayout& layout, int firstChanged) {
  beginResetModel();
  fLayout = layout;
  std::erase_if(fEntries, [&](const auto& entry) { return entry.first >= layout.count; });
  for (auto& [row, entry] : fEntries)
    if (row >= firstChanged) entry.fresh = false;
  endResetModel();
}

int RowModel::HeightOf(int row) const {
  if (fLayout.heights.empty()) return 1;
  const size_t index = HasOneHeight() ? 0 : static_cast<size_t>(row);
  return std::max(1, qRound(fLayout.heights[std::min(index, fLayout.heights.size() - 1)]));
}

const BPicture* RowModel::PictureOf(int row) const {
  const auto found = fEntries.find(row);
  return found == fEntries.end() ? nullptr : &found->second.picture;
}

bool RowModel::IsFresh(int row) const {
  const auto found = fEntries.find(row);
  return found != fEntries.end() && found->second.fresh;
}

void RowModel::SetPicture(int row, const BPicture& picture) {
  if (row < 0 || row >= fLayout.count) return;
  fEntries[row] = Entry{picture, true};
  emit dataChanged(index(row), index(row));
}

void RowModel::Invalidate(int first, int last) {
  for (auto& [row, entry] : fEntries)
    if (row >= first && row <= last) entry.fresh = false;
}

void RowModel::InvalidateAll() {
  Invalidate(0, fLayout.count - 1);
}

void RowModel::Trim(int first, int last) {
  if (fEntries.size() <= kPicturesKept) return;
  const int margin = last - first;
  std::erase_if(fEntries,
                [&](const auto& entry) { return entry.first < first - margin || entry.first > last + margin; });
}

} // namespace display
