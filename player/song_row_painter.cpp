#include "player/song_row_painter.h"

#include "player/song_list_model.h"
#include "player/song_text.h"

#include <QApplication>
#include <QPainter>

namespace {

constexpr int kSide = 8;
constexpr int kAbove = 4;
constexpr int kSignWidth = 14;

QColor dimmed(QColor color) {
  color.setAlphaF(0.6F);
  return color;
}

/** Of the song that is current, in front of its title. */
void draw_sign(QPainter* painter, const QRect& row) {
  const QPointF centre(row.left() + kSignWidth / 2.0 - 2, row.center().y() + 0.5);
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setBrush(painter->pen().color());
  painter->drawPolygon(QPolygonF({centre + QPointF(-3, -4), centre + QPointF(4, 0), centre + QPointF(-3, 4)}));
}

} // namespace

QSize TSongRowPainter::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
  return {100, option.fontMetrics.height() + 2 * kAbove};
}

void TSongRowPainter::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const auto& model = static_cast<const TSongListModel&>(*index.model());
  const TSong& song = model.At(index.row());
  QStyleOptionViewItem background = option;
  initStyleOption(&background, index);
  background.text.clear();
  QApplication::style()->drawControl(QStyle::CE_ItemViewItem, &background, painter, option.widget);

  const bool selected = option.state & QStyle::State_Selected;
  const QColor color = option.palette.color(option.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive,
                                            selected ? QPalette::HighlightedText : QPalette::Text);
  painter->save();
  painter->setPen(song.failed ? dimmed(color) : color);
  QRect row = option.rect.adjusted(kSide, 0, -kSide, 0);
  if (model.IsCurrent(index.row())) draw_sign(painter, row);
  row.setLeft(row.left() + kSignWidth);
  if (song.durationMs > 0) {
    const QString length = QString::fromStdString(clock_text(song.durationMs));
    painter->drawText(row, Qt::AlignRight | Qt::AlignVCenter, length);
    row.setRight(row.right() - option.fontMetrics.horizontalAdvance(length) - kSide);
  }
  QFont font = option.font;
  font.setBold(model.IsCurrent(index.row()));
  font.setStrikeOut(song.failed);
  painter->setFont(font);
  const QFontMetrics metrics(font);
  const QString title = metrics.elidedText(QString::fromStdString(song.title), Qt::ElideRight, row.width());
  painter->drawText(row, Qt::AlignVCenter, title);
  row.setLeft(row.left() + metrics.horizontalAdvance(title) + kSide);
  painter->setFont(option.font);
  painter->setPen(dimmed(color));
  const QString artist = QString::fromStdString(song.artist);
  painter->drawText(row, Qt::AlignVCenter,
                    option.fontMetrics.elidedText(artist, Qt::ElideRight, std::max(row.width(), 0)));
  painter->restore();
}
