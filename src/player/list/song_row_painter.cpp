#include "player/list/song_row_painter.h"

#include "player/list/song_list_model.h"
#include "player/model/song_text.h"

#include <QApplication>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int kSide = 8;
constexpr int kAbove = 4;
constexpr int kSignWidth = 14;
/** The title's share of the width if title and artist do not fit. */
constexpr double kTitleShare = 0.65;
constexpr float kDimmed = 0.6F;
constexpr float kDimmedOnSelection = 0.8F; // the selection colour gives less contrast

QColor dimmed(QColor color, float strength) {
  color.setAlphaF(strength);
  return color;
}

/** Marks the current song, before its title. */
void draw_sign(QPainter* painter, const QRect& row) {
  const QPointF centre(row.left() + kSignWidth / 2.0 - 2, row.center().y() + 0.5);
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setBrush(painter->pen().color());
  painter->drawPolygon(QPolygonF({centre + QPointF(-3, -4), centre + QPointF(4, 0), centre + QPointF(-3, 4)}));
}

/** The title, followed by the artist or the reason why the song cannot be played. */
void draw_texts(QPainter* painter, QRect room, const TSong& song, const QFont& titleFont, const QColor& artistColor) {
  const QFont artistFont = painter->font();
  const QFontMetrics titles(titleFont);
  const QFontMetrics artists(artistFont);
  const QString artist = QString::fromStdString(song.error.empty() ? song.artist : song.error);
  const int forArtist = artist.isEmpty() ? 0 : kSide + artists.horizontalAdvance(artist);
  const int forTitle = std::max(room.width() - forArtist, static_cast<int>(room.width() * kTitleShare));
  const QString title = titles.elidedText(QString::fromStdString(song.title), Qt::ElideRight, forTitle);
  painter->setFont(titleFont);
  painter->drawText(room, Qt::AlignVCenter, title);
  room.setLeft(room.left() + titles.horizontalAdvance(title) + kSide);
  painter->setFont(artistFont);
  painter->setPen(artistColor);
  painter->drawText(room, Qt::AlignVCenter, artists.elidedText(artist, Qt::ElideRight, std::max(room.width(), 0)));
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
  const bool isDead = !song.error.empty();
  painter->save();
  const QColor faint = dimmed(color, selected ? kDimmedOnSelection : kDimmed);
  painter->setPen(isDead ? faint : color);
  QRect row = option.rect.adjusted(kSide, 0, -kSide, 0);
  if (model.IsCurrent(index.row())) draw_sign(painter, row);
  row.setLeft(row.left() + kSignWidth);
  if (song.durationMs > 0) {
    const QString length = QString::fromStdString(clock_text(song.durationMs));
    painter->drawText(row, Qt::AlignRight | Qt::AlignVCenter, length);
    row.setRight(row.right() - option.fontMetrics.horizontalAdvance(length) - kSide);
  }
  QFont titleFont = option.font;
  titleFont.setBold(model.IsCurrent(index.row()));
  titleFont.setStrikeOut(isDead);
  painter->setFont(option.font);
  draw_texts(painter, row, song, titleFont, faint);
  painter->restore();
}
