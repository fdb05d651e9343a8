#pragma once

#include "platform/app/messenger.h"

#include <QPlainTextEdit>

namespace display {

/** A text control that puts in no text by itself: what is pasted, dropped or committed by an input method is told to
   the view, which has it put in by `Enter`. Lines are counted as shown. */
class TextArea : public QPlainTextEdit {
public:
  explicit TextArea(const BMessenger& view);

  void Enter(const QString& text);
  void GoToLine(int line);
  int CurrentLine() const;
  int CountLines() const;

protected:
  bool canInsertFromMimeData(const QMimeData* source) const override;
  void insertFromMimeData(const QMimeData* source) override;
  void inputMethodEvent(QInputMethodEvent* event) override;

private:
  void Tell(const QString& text) const;

  BMessenger fView;
};

} // namespace display
