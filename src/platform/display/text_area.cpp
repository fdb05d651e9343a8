#include "platform/display/text_area.h"

#include "platform/app/message.h"
#include "platform/display/placeholder.h"
#include "platform/display/text_bytes.h"
#include "platform/display/text_mime.h"
#include "platform/interface/clipboard.h"
#include "platform/interface/text_peer.h"

#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QTextBlock>
#include <QTextLayout>

#include <algorithm>
#include <utility>

namespace display {

namespace {

/** The text of blocks as the widget stores it. */
QString raw_text(const QTextDocument& document, int first, int count) {
  QString text;
  QTextBlock block = document.findBlockByNumber(first);
  for (int i = 0; i < count && block.isValid(); ++i, block = block.next()) {
    if (i > 0) text += QChar(QChar::ParagraphSeparator);
    text += block.text();
  }
  return text;
}

int common_start(QStringView left, QStringView right) {
  const auto [end, _] = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
  return static_cast<int>(end - left.begin());
}

int common_end(QStringView left, QStringView right) {
  const auto end = std::mismatch(left.rbegin(), left.rend(), right.rbegin(), right.rend()).first;
  return static_cast<int>(end - left.rbegin());
}

} // namespace

TextArea::TextArea(const BMessenger& view) : fView(view) {
  setTabChangesFocus(true);
  setFrameShape(NoFrame);
  setUndoRedoEnabled(false); // the program has its own history
  connect(document(), &QTextDocument::contentsChange, this,
          [this](int position, int, int added) { NoteChange(position, added); });
  connect(this, &QPlainTextEdit::textChanged, this, &TextArea::DescribePlaceholder);
}

/** The document's last line end is an empty block. */
bool TextArea::HasNoText() const {
  return document()->blockCount() <= 2 && document()->characterCount() == document()->blockCount();
}

void TextArea::SetPlaceholder(const QString& text) {
  fPlaceholder = text;
  DescribePlaceholder();
}

void TextArea::DescribePlaceholder() {
  const QString description = HasNoText() ? fPlaceholder : QString();
  if (fPlaceholder.isEmpty() || description == accessibleDescription()) return;
  setAccessibleDescription(description);
  viewport()->update();
}

void TextArea::paintEvent(QPaintEvent* event) {
  QPlainTextEdit::paintEvent(event);
  if (fPlaceholder.isEmpty() || !HasNoText()) return;
  QPainter painter(viewport());
  const int top = 2 * fontMetrics().lineSpacing();
  paint_placeholder(&painter, viewport()->rect().adjusted(0, top, 0, 0), fPlaceholder, palette().color(QPalette::Text));
}

void TextArea::SetBytes(const std::string& text) {
  fReportsChanges = false;
  setPlainText(text_from_bytes(text));
  fReportsChanges = true;
  fChanges.clear();
}

/** The blocks from the change's first to its last are new; their previous number follows from the total. */
void TextArea::NoteChange(int position, int added) {
  const int before = std::exchange(fBlockCount, document()->blockCount());
  if (!fReportsChanges) return;
  text_change change;
  change.first = document()->findBlock(position).blockNumber();
  const QTextBlock end = document()->findBlock(position + added);
  const int last = end.isValid() ? end.blockNumber() : fBlockCount - 1;
  change.removed = last - change.first + 1 + before - fBlockCount;
  change.count = fBlockCount;
  QTextBlock block = document()->findBlockByNumber(change.first);
  for (int i = change.first; i <= last; ++i, block = block.next())
    change.lines.push_back(bytes_from_text(block.text()));
  fChanges.push_back(std::move(change));
  const BMessage changed(DISPLAY_TEXT_CHANGED);
  if (!fHasReported) fHasReported = fView.SendMessage(&changed, BMessenger(), 0) == B_OK;
}

std::vector<text_change> TextArea::TakeChanges() {
  fHasReported = false;
  return std::exchange(fChanges, {});
}

bool TextArea::ReplaceLines(const text_change& change) {
  if (!fChanges.empty()) return false;
  QString lines;
  for (const std::string& line : change.lines) lines += text_from_bytes(line) + QChar(QChar::ParagraphSeparator);
  // Lines are replaced with their line end; the last line has none, so the one before it is taken instead.
  const int end = std::min(change.first + change.removed, fBlockCount);
  QString old = raw_text(*document(), change.first, end - change.first);
  int start = change.first < fBlockCount ? document()->findBlockByNumber(change.first).position()
                                         : document()->characterCount() - 1;
  if (end < fBlockCount && change.removed > 0) old += QChar(QChar::ParagraphSeparator);
  if (end == fBlockCount) {
    lines.chop(lines.isEmpty() ? 0 : 1);
    if (change.first >= fBlockCount) {
      lines.prepend(QChar(QChar::ParagraphSeparator));
    } else if (change.lines.empty() && change.first > 0) {
      old.prepend(QChar(QChar::ParagraphSeparator));
      --start;
    }
  }
  const int same = common_start(old, lines);
  const int sameEnd = common_end(QStringView(old).sliced(same), QStringView(lines).sliced(same));
  QTextCursor caret(document());
  caret.setPosition(start + same);
  caret.setPosition(start + static_cast<int>(old.size()) - sameEnd, QTextCursor::KeepAnchor);
  fReportsChanges = false;
  caret.insertText(lines.sliced(same, lines.size() - same - sameEnd));
  fReportsChanges = true;
  setTextCursor(caret);
  ensureCursorVisible();
  return true;
}

/** Undo and redo belong to the program: the shortcuts go to its menus. */
bool TextArea::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    auto* const key = static_cast<QKeyEvent*>(event);
    if (key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo)) {
      event->ignore();
      return true;
    }
  }
  if (event->type() == QEvent::KeyPress && LeaveText(static_cast<const QKeyEvent&>(*event))) return true;
  return QPlainTextEdit::event(event);
}

/** Tab types text here, so other keys move the focus: Ctrl+Tab and F6 forward, Shift+Ctrl+Tab back (Shift+Tab works as
    usual). False for any other key. */
bool TextArea::LeaveText(const QKeyEvent& key) {
  const Qt::KeyboardModifiers down = key.modifiers();
  const bool isTab = key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab;
  const bool isCtrlTab = isTab && (down & ~Qt::ShiftModifier) == Qt::ControlModifier;
  if (!isCtrlTab && !(key.key() == Qt::Key_F6 && down == Qt::NoModifier)) return false;
  focusNextPrevChild(!(down & Qt::ShiftModifier));
  return true;
}

/** Keys with Ctrl take the detour through the view, too; handled at once, they would overtake plain keys. */
void TextArea::keyPressEvent(QKeyEvent* event) {
  if (!(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)))
    return QPlainTextEdit::keyPressEvent(event);
  BMessage command(DISPLAY_TEXT_COMMAND);
  command.AddInt32("key", event->key());
  command.AddInt32("modifiers", static_cast<int32>(event->modifiers().toInt()));
  fView.SendMessage(&command, BMessenger(), 0);
}

QString TextArea::DoCommand(int key, int modifiers) {
  QString pasted;
  fPasted = &pasted;
  QKeyEvent press(QEvent::KeyPress, key, Qt::KeyboardModifiers(modifiers));
  QPlainTextEdit::keyPressEvent(&press);
  fPasted = nullptr;
  return pasted;
}

void TextArea::contextMenuEvent(QContextMenuEvent* event) {
  QMenu* const menu = createStandardContextMenu();
  for (const char* name : {"edit-undo", "edit-redo"})
    if (auto* const action = menu->findChild<QAction*>(QLatin1String(name))) menu->removeAction(action);
  if (!menu->actions().isEmpty() && menu->actions().constFirst()->isSeparator())
    menu->removeAction(menu->actions().constFirst());
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->popup(event->globalPos());
}

void TextArea::Report(const QString& text, int replacedFrom, int replacedLength) const {
  if ((text.isEmpty() && replacedLength <= 0) || isReadOnly()) return;
  BMessage entered(DISPLAY_TEXT_ENTERED);
  entered.AddString("text", bytes_from_text(text));
  if (replacedLength > 0) {
    entered.AddInt32("from", replacedFrom);
    entered.AddInt32("length", replacedLength);
  }
  fView.SendMessage(&entered, BMessenger(), 0);
}

void TextArea::ReportTooLong() const {
  const BMessage refused(DISPLAY_TEXT_TOO_LONG);
  if (!isReadOnly()) fView.SendMessage(&refused, BMessenger(), 0);
}

void TextArea::Enter(const QString& text) {
  textCursor().insertText(text);
  ensureCursorVisible();
}

void TextArea::SelectFromCaret(int from, int length) {
  const int end = document()->characterCount() - 1;
  QTextCursor caret = textCursor();
  const int start = std::clamp(caret.position() + from, 0, end);
  caret.setPosition(start);
  caret.setPosition(std::clamp(start + length, start, end), QTextCursor::KeepAnchor);
  setTextCursor(caret);
}

void TextArea::SelectInLine(int line, const std::string& before, const std::string& text) {
  const QTextBlock block = document()->findBlockByNumber(line);
  if (!block.isValid()) return;
  const int end = block.length() - 1;
  const int start = std::min(static_cast<int>(text_from_bytes(before).size()), end);
  QTextCursor caret(block);
  caret.setPosition(block.position() + start);
  caret.setPosition(block.position() + std::min(start + static_cast<int>(text_from_bytes(text).size()), end),
                    QTextCursor::KeepAnchor);
  setTextCursor(caret);
  centerCursor();
}

/** Qt's own would replace no-break spaces by blanks, and bytes that are not UTF-8 by a replacement character. */
QMimeData* TextArea::createMimeDataFromSelection() const {
  return mime_of_text(textCursor().selectedText().replace(QChar(QChar::ParagraphSeparator), QLatin1Char('\n')));
}

bool TextArea::canInsertFromMimeData(const QMimeData* source) const {
  return !source->hasUrls() && QPlainTextEdit::canInsertFromMimeData(source); // dropped files go to the window
}

void TextArea::insertFromMimeData(const QMimeData* source) {
  const std::optional<QString> text = text_of_mime(*source, kMostPastedBytes);
  if (!text) return ReportTooLong();
  if (!fPasted) return Report(*text);
  if (!isReadOnly()) *fPasted = *text;
}

void TextArea::inputMethodEvent(QInputMethodEvent* event) {
  Report(with_line_feeds(event->commitString()), event->replacementStart(), event->replacementLength());
  QInputMethodEvent composition(event->preeditString(), event->attributes());
  QPlainTextEdit::inputMethodEvent(&composition);
  event->accept();
}

std::vector<int> TextArea::LineStarts(const QTextBlock& block) const {
  QTextLayout counted(block.text(), font());
  const QTextLayout* layout = block.layout();
  if (fCountWidth > 0) {
    counted.beginLayout();
    for (QTextLine line = counted.createLine(); line.isValid(); line = counted.createLine())
      line.setLineWidth(fCountWidth);
    counted.endLayout();
    layout = &counted;
  } else {
    document()->documentLayout()->blockBoundingRect(block); // invisible blocks are laid out lazily
  }
  std::vector<int> starts{0};
  for (int i = 1; i < layout->lineCount(); ++i) starts.push_back(layout->lineAt(i).textStart());
  return starts;
}

int TextArea::LinesIn(const QTextBlock& block) const {
  const bool surelyFits = fCountWidth > 0 && block.length() * fontMetrics().maxWidth() <= fCountWidth;
  return surelyFits ? 1 : static_cast<int>(LineStarts(block).size());
}

void TextArea::GoToLine(int line) {
  QTextBlock block = document()->firstBlock();
  int left = std::max(0, line);
  for (int lines = LinesIn(block); left >= lines && block.next().isValid(); lines = LinesIn(block)) {
    left -= lines;
    block = block.next();
  }
  const std::vector<int> starts = LineStarts(block);
  QTextCursor caret(block);
  caret.setPosition(block.position() + starts[std::min(static_cast<size_t>(left), starts.size() - 1)]);
  setTextCursor(caret);
}

int TextArea::CurrentLine() const {
  const QTextCursor caret = textCursor();
  int line = 0;
  for (QTextBlock block = document()->firstBlock(); block != caret.block(); block = block.next())
    line += LinesIn(block);
  const std::vector<int> starts = LineStarts(caret.block());
  const auto behind = std::upper_bound(starts.begin(), starts.end(), caret.positionInBlock());
  return line + static_cast<int>(behind - starts.begin()) - 1;
}

} // namespace display
