#include "platform/display/text_area.h"

#include "platform/app/message.h"
#include "platform/display/view_peer.h"

#include <QInputMethodEvent>
#include <QMimeData>
#include <QTextBlock>
#include <QTextLayout>

#include <algorithm>

namespace display {

namespace {

/** Blocks off the screen are laid out only when asked for. */
int lines_in(const QTextDocument& document, const QTextBlock& block) {
  document.documentLayout()->blockBoundingRect(block);
  return std::max(1, block.layout()->lineCount());
}

} // namespace

TextArea::TextArea(const BMessenger& view) : fView(view) {
  setTabChangesFocus(true);
  setFrameShape(NoFrame);
}

void TextArea::Tell(const QString& text) const {
  if (text.isEmpty() || isReadOnly()) return;
  BMessage entered(DISPLAY_TEXT_ENTERED);
  entered.AddString("text", text.toStdString());
  fView.SendMessage(&entered, BMessenger(), 0);
}

void TextArea::Enter(const QString& text) {
  textCursor().insertText(text);
  ensureCursorVisible();
}

bool TextArea::canInsertFromMimeData(const QMimeData* source) const {
  return !source->hasUrls() && QPlainTextEdit::canInsertFromMimeData(source); // files are for the window
}

void TextArea::insertFromMimeData(const QMimeData* source) {
  Tell(source->text());
}

void TextArea::inputMethodEvent(QInputMethodEvent* event) {
  Tell(event->commitString());
  QInputMethodEvent composition(event->preeditString(), event->attributes());
  QPlainTextEdit::inputMethodEvent(&composition);
  event->accept();
}

void TextArea::GoToLine(int line) {
  QTextBlock block = document()->firstBlock();
  int left = std::max(0, line);
  for (int lines = lines_in(*document(), block); left >= lines && block.next().isValid();
       lines = lines_in(*document(), block)) {
    left -= lines;
    block = block.next();
  }
  const int inBlock = std::min(left, lines_in(*document(), block) - 1);
  const QTextLine shown = block.layout()->lineAt(inBlock);
  QTextCursor caret(block);
  if (shown.isValid()) caret.setPosition(block.position() + shown.textStart());
  setTextCursor(caret);
}

int TextArea::CurrentLine() const {
  const QTextCursor caret = textCursor();
  int line = 0;
  for (QTextBlock block = document()->firstBlock(); block != caret.block(); block = block.next())
    line += lines_in(*document(), block);
  lines_in(*document(), caret.block());
  const QTextLine shown = caret.block().layout()->lineForTextPosition(caret.positionInBlock());
  return line + (shown.isValid() ? shown.lineNumber() : 0);
}

int TextArea::CountLines() const {
  int lines = 0;
  for (QTextBlock block = document()->firstBlock(); block.isValid(); block = block.next())
    lines += lines_in(*document(), block);
  return lines;
}

} // namespace display
