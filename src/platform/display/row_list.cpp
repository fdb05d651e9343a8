#include "platform/display/row_list.h"

#include "platform/app/message.h"
#include "platform/display/convert.h"
#include "platform/display/event_time.h"
#include "platform/display/picture_painter.h"
#include "platform/display/placeholder.h"

#include <QAbstractItemDelegate>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QShortcut>
#include <QTimer>
#include <QToolTip>

#include <algorithm>

namespace display {

namespace {

/** Backoff when the window's queue is full. */
constexpr int kRetryMs = 50;
/** Characters; more would cover the screen. */
constexpr int kMostInTip = 1000;
/** So long the list stays where the user has scrolled it. */
constexpr int kLeftAloneMs = 4000;

bool is_modifier(int key) {
  return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_Meta;
}

/** Rich text is wrapped. */
QString as_rich_text(const QString& text) {
  return QStringLiteral("<qt>%1</qt>").arg(text.left(kMostInTip).toHtmlEscaped());
}

class RowPainter : public QAbstractItemDelegate {
public:
  RowPainter(const RowModel& model, QObject* parent) : QAbstractItemDelegate(parent), fModel(model) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const BPicture* picture = fModel.PictureOf(index.row());
    if (!picture) return;
    painter->save();
    painter->setClipRect(option.rect, Qt::IntersectClip);
    painter->translate(option.rect.topLeft());
    paint_picture(*painter, *picture);
    painter->restore();
  }

  QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const override {
    return QSize(0, fModel.HeightOf(index.row()));
  }

private:
  const RowModel& fModel;
};

} // namespace

RowList::RowList(const BMessenger& view, bool selectsSeveral) : fView(view) {
  setModel(&fModel);
  setItemDelegate(new RowPainter(fModel, this));
  setEditTriggers(NoEditTriggers);
  setSelectionMode(selectsSeveral ? ContiguousSelection : SingleSelection);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollMode(ScrollPerPixel);
  setFrameShape(NoFrame);
  setAttribute(Qt::WA_InputMethodEnabled, false);
  connect(verticalScrollBar(), &QAbstractSlider::actionTriggered, this, [this] { fScrolled.start(); });
}

void RowList::SetRows(const RowLayout& layout, int firstChanged) {
  setUniformItemSizes(layout.heights.size() <= 1);
  const int offset = verticalOffset();
  fModel.SetRows(layout, firstChanged);
  verticalScrollBar()->setSingleStep(std::max(1, fModel.HeightOf(0)));
  SelectRows(layout.selected);
  doItemsLayout();
  verticalScrollBar()->setValue(offset);
  AskSoon();
}

void RowList::SetPictures(const std::vector<std::pair<int32, BPicture>>& pictures) {
  fAsked = false;
  for (const auto& [row, picture] : pictures) fModel.SetPicture(row, picture);
  const auto [first, last] = RowsOnScreen();
  fModel.Trim(first, last);
  AskSoon();
}

void RowList::SelectRows(const row_selection& rows) {
  const QModelIndex current = fModel.index(rows.current);
  if (!current.isValid()) return clearSelection();
  // Selecting does not scroll: the program decides that.
  setAutoScroll(false);
  if (rows.Count() == 1) return selectionModel()->setCurrentIndex(current, QItemSelectionModel::ClearAndSelect);
  const QItemSelection all(fModel.index(rows.first), fModel.index(rows.last));
  selectionModel()->select(all, QItemSelectionModel::ClearAndSelect);
  selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
}

void RowList::ScrollToRow(int row) {
  scrollTo(fModel.index(row));
}

void RowList::KeepInSight(int row) {
  if (fScrolled.isValid() && fScrolled.elapsed() < kLeftAloneMs) return;
  const QRect place = visualRect(fModel.index(row));
  const int height = viewport()->height();
  const int margin = std::min(2 * place.height(), height / 4);
  if (place.isEmpty() || (place.top() >= margin && place.bottom() < height - margin)) return;
  // A third from the top, so that the lines to come are in sight for longer.
  verticalScrollBar()->setValue(verticalScrollBar()->value() + place.top() - height / 3);
}

void RowList::InvalidateRows(int first, int last) {
  fModel.Invalidate(first, last);
  AskSoon();
}

/** Qt finds the key of a shortcut on every keyboard layout, also where Shift changes its character. */
void RowList::SetShortcuts(const std::vector<ListShortcut>& shortcuts) {
  qDeleteAll(fShortcuts);
  fShortcuts.clear();
  for (const ListShortcut& each : shortcuts) {
    const QKeySequence keys(to_qstring(each.keys), QKeySequence::PortableText);
    auto* const shortcut = new QShortcut(keys, this);
    shortcut->setContext(Qt::WidgetShortcut);
    shortcut->setAutoRepeat(each.repeats);
    connect(shortcut, &QShortcut::activated, this, [this, command = each.command] {
      BMessage pressed(DISPLAY_SHORTCUT);
      pressed.AddInt32("command", command);
      pressed.AddInt64("when", fKeyUs);
      pressed.AddInt32("scan_code", static_cast<int32>(fScanCode));
      fView.SendMessage(&pressed, BMessenger(), 0);
    });
    fShortcuts.push_back(shortcut);
  }
}

void RowList::SetPlaceholder(const QString& text, const QColor& color) {
  fPlaceholder = text;
  fPlaceholderColor = color;
  setAccessibleDescription(text);
  viewport()->update();
}

/** A shortcut does not know its key event; this one precedes it. */
bool RowList::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const auto& key = *static_cast<QKeyEvent*>(event);
    fKeyUs = time_of(key);
    fScanCode = key.nativeScanCode();
  }
  return QListView::event(event);
}

bool RowList::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QListView::viewportEvent(event);
  const auto* const help = static_cast<QHelpEvent*>(event);
  const QModelIndex index = indexAt(help->pos());
  const BPicture* const picture = index.isValid() ? fModel.PictureOf(index.row()) : nullptr;
  const std::string whole = picture ? elided_text(*picture) : std::string();
  if (whole.empty())
    QToolTip::hideText();
  else
    QToolTip::showText(help->globalPos(), as_rich_text(to_qstring(whole)), viewport(), visualRect(index));
  return true;
}

void RowList::paintEvent(QPaintEvent* event) {
  QListView::paintEvent(event);
  AskForPictures();
  if (fPlaceholder.isEmpty()) return;
  QPainter painter(viewport());
  const int top = fModel.rowCount() > 0 ? fModel.HeightOf(0) : 0;
  paint_placeholder(&painter, viewport()->rect().adjusted(0, top, 0, 0), fPlaceholder, fPlaceholderColor);
}

void RowList::keyPressEvent(QKeyEvent* event) {
  event->ignore();
}

void RowList::keyReleaseEvent(QKeyEvent* event) {
  event->ignore();
  if (!fReportsReleases || event->isAutoRepeat() || is_modifier(event->key())) return;
  BMessage released(DISPLAY_KEY_RELEASED);
  released.AddInt64("when", time_of(*event));
  released.AddInt32("scan_code", static_cast<int32>(event->nativeScanCode()));
  fView.SendMessage(&released, BMessenger(), 0);
}

void RowList::resizeEvent(QResizeEvent* event) {
  QListView::resizeEvent(event);
  if (event->size().width() != event->oldSize().width()) fModel.InvalidateAll();
  AskSoon();
}

void RowList::mousePressEvent(QMouseEvent* event) {
  fReportedRow = -1;
  if (event->button() == Qt::LeftButton) ReportRow(DISPLAY_ROW_CHOSEN, *event);
}

void RowList::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() & Qt::LeftButton) ReportRow(DISPLAY_ROW_CHOSEN, *event);
}

void RowList::mouseReleaseEvent(QMouseEvent*) {
  fReportedRow = -1;
}

void RowList::mouseDoubleClickEvent(QMouseEvent* event) {
  fReportedRow = -1;
  if (event->button() == Qt::LeftButton) ReportRow(DISPLAY_ROW_INVOKED, *event);
}

void RowList::ReportRow(uint32 code, const QMouseEvent& event) {
  const int row = indexAt(event.position().toPoint()).row();
  if (row < 0 || row == fReportedRow) return;
  fReportedRow = row;
  BMessage chosen(code);
  chosen.AddInt32("row", row);
  if (event.modifiers() & Qt::ShiftModifier) chosen.AddBool("extends", true);
  fView.SendMessage(&chosen, BMessenger(), 0);
}

std::pair<int, int> RowList::RowsOnScreen() const {
  const QRect shown = viewport()->rect();
  if (fModel.rowCount() == 0 || shown.isEmpty() || !isVisible()) return {0, -1};
  const int first = indexAt(QPoint(0, 0)).row();
  const int last = indexAt(QPoint(0, shown.height() - 1)).row();
  return {std::max(0, first), last < 0 ? fModel.rowCount() - 1 : last};
}

void RowList::AskSoon() {
  if (std::exchange(fWillAsk, true)) return;
  QTimer::singleShot(0, this, [this] { AskForPictures(); });
}

void RowList::AskForPictures() {
  fWillAsk = false;
  if (fAsked) return;
  BMessage wanted(DISPLAY_ROWS_WANTED);
  const auto [first, last] = RowsOnScreen();
  for (int row = first; row <= last; ++row)
    if (!fModel.IsFresh(row)) wanted.AddInt32("row", row);
  if (wanted.IsEmpty()) return;
  wanted.AddFloat("width", static_cast<float>(viewport()->width() - 1));
  wanted.AddInt32("page", std::max(1, viewport()->height() / fModel.HeightOf(first)));
  fAsked = fView.SendMessage(&wanted, BMessenger(), 0) == B_OK;
  if (!fAsked && fView.IsValid()) QTimer::singleShot(kRetryMs, this, [this] { AskForPictures(); });
}

} // namespace display
