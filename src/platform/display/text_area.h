#pragma once

#include "platform/app/messenger.h"
#include "platform/interface/text_change.h"

#include <QPlainTextEdit>

#include <vector>

namespace display {

/** A text widget that inserts no text itself: what is pasted, dropped or committed by an input method is reported to
    the view, which inserts it with `Enter`. The user's changes are queued in order until the view takes them. */
class TextArea : public QPlainTextEdit {
public:
  explicit TextArea(const BMessenger& view);

  void SetBytes(const std::string& text);
  void Enter(const QString& text);
  /** Selects `text`, which follows `before` in that line. */
  void SelectInLine(int line, const std::string& before, const std::string& text);
  /** Selects what an input method replaces; positions in UTF-16 units, from the caret. */
  void SelectFromCaret(int from, int length);
  /** Handles a key with Ctrl in its turn among the other keys. Returns the text it pastes, which is not inserted. */
  QString DoCommand(int key, int modifiers);
  std::vector<text_change> TakeChanges();
  /** A change by the program, which is not reported. The caret goes after the new text. False, and no effect, while
      there are changes that the view has not taken. */
  bool ReplaceLines(const text_change& change);

  /** Lines are counted as if the text were this wide; 0: as shown. */
  void SetCountWidth(int width) { fCountWidth = width; }
  void GoToLine(int line);
  int CurrentLine() const;
  /** Shown while the text is empty, or only one empty line. */
  void SetPlaceholder(const QString& text);

protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  QMimeData* createMimeDataFromSelection() const override;
  bool canInsertFromMimeData(const QMimeData* source) const override;
  void insertFromMimeData(const QMimeData* source) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

private:
  bool HasNoText() const;
  void DescribePlaceholder();
  bool LeaveText(const QKeyEvent& key);
  void ReportTooLong() const;
  void Report(const QString& text, int replacedFrom = 0, int replacedLength = 0) const;
  void NoteChange(int position, int added);
  /** Positions in the block at which its lines begin; the first is 0. */
  std::vector<int> LineStarts(const QTextBlock& block) const;
  int LinesIn(const QTextBlock& block) const;

  BMessenger fView;
  QString fPlaceholder;
  std::vector<text_change> fChanges;
  int fBlockCount = 1;
  QString* fPasted = nullptr; // during DoCommand
  bool fReportsChanges = true;
  bool fHasReported = false; // the view knows that there are changes
  int fCountWidth = 0;
};

} // namespace display
