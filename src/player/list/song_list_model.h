#pragma once

#include "player/model/player_state.h"

#include <QAbstractListModel>

/** The list of songs as a view wants it. Shows what it was given last, and tells views no more than what has changed,
    so that their selection and place last. Display thread. */
class TSongListModel : public QAbstractListModel {
public:
  void Show(std::shared_ptr<const TSongs> songs, int32 current);

  const TSong& At(int row) const { return (*fSongs)[static_cast<size_t>(row)]; }
  bool IsCurrent(int row) const { return row == fCurrent; }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

private:
  void Replace(std::shared_ptr<const TSongs> songs);
  void Reorder(std::shared_ptr<const TSongs> songs);
  void TellRow(int row);

  std::shared_ptr<const TSongs> fSongs = std::make_shared<TSongs>();
  int32 fCurrent = -1;
};
