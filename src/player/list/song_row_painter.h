#pragma once

#include <QStyledItemDelegate>

/** Draws a row of the list of songs: title and artist, and at its end the length. */
class TSongRowPainter : public QStyledItemDelegate {
public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
