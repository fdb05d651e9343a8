#pragma once

#include "platform/app/messenger.h"
#include "platform/interface/text_change.h"

#include <QPlainTextEdit>

#include <vector>

namespace display {

/** A text control that puts in no text by itself: what is pasted, dropped or committed by an input method is told to
   the view, which has it put in by `Enter`. What the user changes is kept in order until the view takes it. */
class TextArea : public QPlainTextEdit {
public:
  explicit TextArea(const BMessenger& view);

  void SetBytes(const std::string& text);
  void Enter(const QString& text);
  /** A key with Ctrl that has waited for its turn. Returns what it pastes, which is not put in. */
  QString DoCommand(int key, int modifiers);
  std::vector<text_change> TakeChanges();
  /** Not for the user's changes: none is told. The caret goes behind what is new. False, and nothing done, while there
      are changes that the view has not taken. */
  bool ReplaceLines(const text_change& change);

  /** Lines are counted as they would be shown in a text of this width; 0: as they are shown. */
  void SetCountWidth(int width) { fCountWidth = width; }
  void GoToLine(int line);
  int CurrentLine() const;

protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  bool canInsertFromMimeData(const QMimeData* source) const override;
  void insertFromMimeData(const QMimeData* source) override;
  void inputMethodEvent(QInputMethodEvent* event) override;

private:
  bool LeaveText(const QKeyEvent& key);
  void Tell(const QString& text) const;
  void NoteChange(int position, int added);
  /** Where in the block its lines begin, the first at 0. */
  std::vector<int> LineStarts(const QTextBlock& block) const;
  int LinesIn(const QTextBlock& block) const;

  BMessenger fView;
  std::vector<text_change> fChanges;
  int fBlockCount = 1;
  QString* fPasted = nullptr; // while a command is done
  bool fTellsChanges = true;
  bool fHasTold = false; // the view knows that there are changes
  int fCountWidth = 0;
};

} // namespace display
