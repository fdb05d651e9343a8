#pragma once

#include <QStyledItemDelegate>

class TSongHeader;
struct TSong;

/** Draws a row of the playlist in the columns of its header. */
class TSongRowPainter : public QStyledItemDelegate {
public:
  TSongRowPainter(QObject* parent, const TSongHeader* header) : QStyledItemDelegate(parent), fHeader(header) {}
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
  struct TLook;
  void DrawTexts(QPainter* painter, const QRect& row, const TSong& song, const TLook& look) const;
  void DrawNumbers(QPainter* painter, const QRect& row, const TSong& song) const;

  const TSongHeader* const fHeader;
};
