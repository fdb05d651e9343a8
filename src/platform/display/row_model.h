#pragma once

#include "platform/interface/list_peer.h"

#include <QAbstractListModel>

#include <unordered_map>

namespace display {

/** The rows of a list: count, heights, and a cache of the pictures of recently visible rows. */
class RowModel : public QAbstractListModel {
public:
  using QAbstractListModel::QAbstractListModel;

  int rowCount(const QModelIndex& parent = {}) const override;
  /** For screen readers a row is the text of its picture. */
  QVariant data(const QModelIndex& index, int role) const override;

  void SetRows(const RowLayout& layout, int firstChanged);
  bool HasOneHeight() const { return fLayout.heights.size() <= 1; }
  int HeightOf(int row) const;

  /** Null for a row that is not in the cache. */
  const BPicture* PictureOf(int row) const;
  bool IsFresh(int row) const;
  void SetPicture(int row, const BPicture& picture);
  void Invalidate(int first, int last);
  void InvalidateAll();
  /** Evicts pictures far from these rows when the cache is large. */
  void Trim(int first, int last);

private:
  struct Entry {
    BPicture picture;
    bool fresh = false;
  };

  RowLayout fLayout;
  std::unordered_map<int, Entry> fEntries;
};

} // namespace display
