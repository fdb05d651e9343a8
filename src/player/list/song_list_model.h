#pragma once

#include "player/model/player_state.h"

#include <QAbstractListModel>

/** Qt model of the playlist. Compares each snapshot with the previous one and reports the difference only, so that
    views keep their selection and scroll position. Display thread. */
class TSongListModel : public QAbstractListModel {
public:
  void Show(std::shared_ptr<const TSongs> songs, int32 current);

  const TSong& At(int row) const { return (*fSongs)[static_cast<size_t>(row)]; }
  int Current() const { return fCurrent; }
  bool IsCurrent(int row) const { return row == fCurrent; }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

private:
  void Replace(std::shared_ptr<const TSongs> songs);
  void Reorder(std::shared_ptr<const TSongs> songs);
  void RowChanged(int row);

  std::shared_ptr<const TSongs> fSongs = std::make_shared<TSongs>();
  int32 fCurrent = -1;
};
