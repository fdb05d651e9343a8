#include "player/list/song_row_painter.h"

#include "player/list/song_header.h"
#include "player/list/song_list_model.h"
#include "player/model/song_text.h"

#include <QApplication>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int kSide = 4; // as far as QHeaderView indents its texts
constexpr int kAbove = 4;
constexpr float kDimmed = 0.6F;
constexpr float kDimmedOnSelection = 0.8F; // the selection colour gives less contrast

QColor dimmed(QColor color, float strength) {
  color.setAlphaF(strength);
  return color;
}

/** Marks the current song. */
void draw_mark(QPainter* painter, const QRect& cell) {
  const QPointF centre = QRectF(cell).center();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setBrush(painter->pen().color());
  painter->drawPolygon(QPolygonF({centre + QPointF(-3, -4), centre + QPointF(4, 0), centre + QPointF(-3, 4)}));
}

/** Elided; returns the width that it takes. */
int draw_text(QPainter* painter, const QRect& cell, Qt::Alignment side, const std::string& text) {
  const QRect room = cell.adjusted(kSide, 0, -kSide, 0);
  const QFontMetrics metrics = painter->fontMetrics();
  const QString shown = metrics.elidedText(QString::fromStdString(text), Qt::ElideRight, std::max(room.width(), 0));
  painter->drawText(room, side | Qt::AlignVCenter | Qt::TextSingleLine, shown);
  return metrics.horizontalAdvance(shown) + 2 * kSide;
}

} // namespace

struct TSongRowPainter::TLook {
  QFont titleFont;
  QFont font;
  QColor faint;
};

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
  const bool isCurrent = model.IsCurrent(index.row());
  TLook look{option.font, option.font, dimmed(color, selected ? kDimmedOnSelection : kDimmed)};
  look.titleFont.setBold(isCurrent);
  look.titleFont.setStrikeOut(isDead);
  painter->save();
  painter->setPen(isDead ? look.faint : color);
  painter->setFont(option.font);
  if (isCurrent) draw_mark(painter, fHeader->Cell(TColumn::kMark, option.rect));
  DrawNumbers(painter, option.rect, song);
  DrawTexts(painter, option.rect, song, look);
  painter->restore();
}

void TSongRowPainter::DrawNumbers(QPainter* painter, const QRect& row, const TSong& song) const {
  if (fHeader->IsShown(TColumn::kTrack) && song.track > 0)
    draw_text(painter, fHeader->Cell(TColumn::kTrack, row), Qt::AlignRight, std::to_string(song.track));
  if (fHeader->IsShown(TColumn::kLength) && song.durationMs > 0)
    draw_text(painter, fHeader->Cell(TColumn::kLength, row), Qt::AlignRight, clock_text(song.durationMs));
}

/** The reason why a song cannot be played takes the room of its artist and album, and what its title leaves. */
void TSongRowPainter::DrawTexts(QPainter* painter, const QRect& row, const TSong& song, const TLook& look) const {
  const QRect title = fHeader->Cell(TColumn::kTitle, row);
  painter->setFont(look.titleFont);
  const int titleWidth = draw_text(painter, title, Qt::AlignLeft, song.title);
  painter->setFont(look.font);
  painter->setPen(look.faint);
  if (!song.error.empty()) {
    const bool hasLength = fHeader->IsShown(TColumn::kLength) && song.durationMs > 0;
    QRect rest = row;
    rest.setLeft(title.left() + titleWidth);
    if (hasLength) rest.setRight(fHeader->Cell(TColumn::kLength, row).left());
    draw_text(painter, rest, Qt::AlignLeft, song.error);
    return;
  }
  for (const TColumn column : {TColumn::kArtist, TColumn::kAlbum}) {
    if (!fHeader->IsShown(column)) continue;
    const std::string& text = column == TColumn::kArtist ? song.artist : song.album;
    draw_text(painter, fHeader->Cell(column, row), Qt::AlignLeft, text);
  }
}
