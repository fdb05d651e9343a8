#pragma once

#include <QStyledItemDelegate>

/** Draws a row of the playlist: title, artist and, right-aligned, the duration. */
class TSongRowPainter : public QStyledItemDelegate {
public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
