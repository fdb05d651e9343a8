#pragma once

#include "platform/app/messenger.h"
#include "player/model/player_state.h"

#include <QAbstractTableModel>
#include <QHeaderView>

#include <optional>

class QMenu;

/** The header of the playlist: a click sorts (then in reverse, then as before), the edges can be dragged, and the
    context menu chooses the columns. Owns their geometry. Display thread. */
class TSongHeader : public QHeaderView {
public:
  TSongHeader(const BMessenger& player, QWidget* parent);

  void Show(const TPlayerState& state);
  /** From the left edge to the right edge of a shown column, in the list's viewport. */
  QRect Cell(TColumn column, const QRect& row) const;
  bool IsShown(TColumn column) const { return fChoices.shown[index_of(column)]; }
  void LanguageChanged();

protected:
  void resizeEvent(QResizeEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

private:
  /** Names of the columns for QHeaderView; it has no rows. */
  struct TNames : QAbstractTableModel {
    int rowCount(const QModelIndex&) const override { return 0; }
    int columnCount(const QModelIndex&) const override { return static_cast<int>(kColumnCount); }
    QVariant data(const QModelIndex&, int) const override { return {}; }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  };
  void Sort(int column);
  void ShowOrder();
  void Fit();
  void EdgeMoved(int column, int before, int now);
  TColumnWidths WantedWidths() const;

  const BMessenger fPlayer;
  TNames fNames;
  TColumnChoices fChoices;
  TColumnChoices fTold; // as last received
  std::optional<TSongOrder> fOrder;
  bool fIsFitting = false;
  bool fIsEdgeMoved = false; // since the mouse button was pressed
};

/** Adds a checkable action for each column that can be hidden. */
void add_column_choices(QMenu* menu, const TColumnChoices& columns, const BMessenger& player);
