#include "player/list/song_header.h"

#include "platform/app/message.h"
#include "player/list/requests.h"
#include "player/model/player_messages.h"
#include "player/widgets/shown_text.h"

#include <QContextMenuEvent>
#include <QMenu>

#include <algorithm>
#include <utility>

namespace {

constexpr int kMarkWidth = 20;
constexpr int kPadding = 8;
constexpr std::array<const char*, kColumnCount> kNames{nullptr,
                                                       "Player_Column_Track",
                                                       "Player_Column_Title",
                                                       "Player_Column_Artist",
                                                       "Player_Column_Album",
                                                       "Player_Column_Length"};
constexpr TColumnWidths kTextWidths{0, 0, 240, 160, 160, 0};

std::optional<TSortKey> sort_key(TColumn column) {
  switch (column) {
  case TColumn::kTrack:
    return TSortKey::kTrack;
  case TColumn::kTitle:
    return TSortKey::kTitle;
  case TColumn::kArtist:
    return TSortKey::kArtist;
  case TColumn::kAlbum:
    return TSortKey::kAlbum;
  case TColumn::kLength:
    return TSortKey::kDuration;
  default:
    return {};
  }
}

bool is_number(TColumn column) {
  return column == TColumn::kTrack || column == TColumn::kLength;
}

void send_columns(const BMessenger& player, const TColumnChoices& columns) {
  BMessage message(kMsgChoose);
  archive_columns(columns, &message);
  player.SendMessage(&message, BMessenger(), 0);
}

} // namespace

QVariant TSongHeader::TNames::headerData(int section, Qt::Orientation, int role) const {
  const auto column = static_cast<TColumn>(section);
  if (column == TColumn::kMark) return {};
  if (role == Qt::DisplayRole) return shown_text(kNames[static_cast<size_t>(section)]);
  if (role == Qt::ToolTipRole) return shown_text("Player_Column_Tip");
  if (role == Qt::TextAlignmentRole)
    return QVariant::fromValue(Qt::Alignment(Qt::AlignVCenter) | (is_number(column) ? Qt::AlignRight : Qt::AlignLeft));
  return {};
}

TSongHeader::TSongHeader(const BMessenger& player, QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent), fPlayer(player) {
  setModel(&fNames);
  setMinimumSectionSize(1); // the columns keep their own minimum
  setSectionsClickable(true);
  setHighlightSections(false);
  setTextElideMode(Qt::ElideRight);
  connect(this, &QHeaderView::sectionClicked, this, &TSongHeader::Sort);
  connect(this, &QHeaderView::sectionResized, this, &TSongHeader::EdgeMoved);
  setSectionResizeMode(0, Fixed);
  Fit();
}

void TSongHeader::Show(const TPlayerState& state) {
  if (std::exchange(fOrder, state.order) != state.order) ShowOrder();
  if (state.choices.columns == fTold) return;
  fTold = fChoices = state.choices.columns;
  Fit();
}

void TSongHeader::ShowOrder() {
  setSortIndicatorShown(fOrder.has_value());
  for (int i = 0; fOrder && i < count(); ++i) {
    if (sort_key(static_cast<TColumn>(i)) == fOrder->key)
      setSortIndicator(i, fOrder->isDescending ? Qt::DescendingOrder : Qt::AscendingOrder);
  }
}

QRect TSongHeader::Cell(TColumn column, const QRect& row) const {
  const int section = static_cast<int>(column);
  return {sectionViewportPosition(section), row.top(), sectionSize(section), row.height()};
}

void TSongHeader::LanguageChanged() {
  emit fNames.headerDataChanged(Qt::Horizontal, 0, count() - 1);
  Fit();
}

void TSongHeader::Sort(int column) {
  const std::optional<TSortKey> key = sort_key(static_cast<TColumn>(column));
  if (!key) return;
  BMessage message(kMsgSortSongs);
  const bool isSorted = fOrder && fOrder->key == *key;
  message.AddInt32("by", isSorted && fOrder->isDescending ? kSortAsBefore : static_cast<int32>(*key));
  message.AddBool("descending", isSorted);
  fPlayer.SendMessage(&message, BMessenger(), 0);
}

TColumnWidths TSongHeader::WantedWidths() const {
  TColumnWidths wanted = kTextWidths;
  wanted[index_of(TColumn::kMark)] = kMarkWidth;
  for (const TColumn column : {TColumn::kTrack, TColumn::kLength}) {
    const int widest = fontMetrics().horizontalAdvance(column == TColumn::kTrack ? "0000" : "0:00:00");
    wanted[index_of(column)] = std::max(widest + 2 * kPadding, sectionSizeHint(static_cast<int>(column)));
  }
  for (size_t i = 1; i < kColumnCount; ++i)
    if (fChoices.widths[i] > 0) wanted[i] = fChoices.widths[i];
  return wanted;
}

void TSongHeader::Fit() {
  fIsFitting = true;
  const TColumnWidths widths = fit_columns(WantedWidths(), fChoices.shown, width());
  for (size_t i = 0; i < kColumnCount; ++i) {
    const auto section = static_cast<int>(i);
    setSectionHidden(section, !fChoices.shown[i]);
    if (fChoices.shown[i]) resizeSection(section, widths[i]);
  }
  fIsFitting = false;
  if (parentWidget()) parentWidget()->update();
}

/** What a column gains its right neighbour loses. */
void TSongHeader::EdgeMoved(int column, int before, int now) {
  if (fIsFitting) return;
  fIsFitting = true;
  int next = column + 1;
  while (next < count() && isSectionHidden(next)) ++next;
  const int most = next < count() ? before + std::max(sectionSize(next) - kNarrowestColumn, 0) : before;
  const int wanted = std::clamp(now, std::min(kNarrowestColumn, most), most);
  resizeSection(column, wanted);
  if (next < count()) resizeSection(next, sectionSize(next) + before - wanted);
  for (int i = 1; i < count(); ++i)
    if (!isSectionHidden(i)) fChoices.widths[static_cast<size_t>(i)] = std::min(sectionSize(i), kWidestColumn);
  fIsFitting = false;
  fIsEdgeMoved = true;
  if (parentWidget()) parentWidget()->update();
}

void TSongHeader::resizeEvent(QResizeEvent* event) {
  QHeaderView::resizeEvent(event);
  Fit();
}

void TSongHeader::mouseReleaseEvent(QMouseEvent* event) {
  QHeaderView::mouseReleaseEvent(event);
  if (std::exchange(fIsEdgeMoved, false)) send_columns(fPlayer, fChoices);
}

void TSongHeader::contextMenuEvent(QContextMenuEvent* event) {
  auto* const menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  add_column_choices(menu, fChoices, fPlayer);
  menu->popup(event->globalPos());
}

void add_column_choices(QMenu* menu, const TColumnChoices& columns, const BMessenger& player) {
  for (size_t i = 0; i < kColumnCount; ++i) {
    if (!is_optional(static_cast<TColumn>(i))) continue;
    QAction* const action = menu->addAction(shown_text(kNames[i]));
    action->setCheckable(true);
    action->setChecked(columns.shown[i]);
    QObject::connect(action, &QAction::triggered, menu, [=](bool isShown) {
      TColumnChoices changed = columns;
      changed.shown[i] = isShown;
      send_columns(player, changed);
    });
  }
}
