#pragma once

#include "platform/interface/list_peer.h"

#include <QAbstractListModel>

#include <unordered_map>

namespace display {

/** The rows of a list: a count, heights, and the pictures of those rows that were on the screen lately. */
class RowModel : public QAbstractListModel {
public:
  using QAbstractListModel::QAbstractListModel;

  int rowCount(const QModelIndex& parent = {}) const override;
  /** For those who listen to the screen: a row reads as the strings of its picture. */
  QVariant data(const QModelIndex& index, int role) const override;

  void SetRows(const RowLayout& layout, int firstChanged);
  bool HasOneHeight() const { return fLayout.heights.size() <= 1; }
  int HeightOf(int row) const;

  /** Null for a row that was never drawn. */
  const BPicture* PictureOf(int row) const;
  bool IsFresh(int row) const;
  void SetPicture(int row, const BPicture& picture);
  void Invalidate(int first, int last);
  void InvalidateAll();
  /** Forgets pictures far from these rows when there are many. */
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
