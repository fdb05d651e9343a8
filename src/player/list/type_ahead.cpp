#include "player/list/type_ahead.h"

#include <utility>

TTypeAhead::TTypeAhead(TFind find) : fFind(std::move(find)) {
  fHold.setSingleShot(true);
  fHold.setInterval(kHoldMs);
  QObject::connect(&fHold, &QTimer::timeout, [this] { RunHeld(); });
  fPause.setSingleShot(true);
  fPause.setInterval(kPauseMs);
  QObject::connect(&fPause, &QTimer::timeout, [this] { fTyped.clear(); });
}

void TTypeAhead::SetCommands(QString letters, TCommand command) {
  fLetters = std::move(letters);
  fCommand = std::move(command);
}

/** Blanks and signs such as "+", which are commands as well, only within a name. */
bool TTypeAhead::IsPartOfName(const QKeyEvent& event) const {
  const QString text = event.text();
  if (text.isEmpty() || (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))) return false;
  const QChar first = text.front();
  return first.isLetterOrNumber() || first.isSurrogate() || (first.isPrint() && (IsSearching() || !fHeld.isEmpty()));
}

bool TTypeAhead::Takes(const QKeyEvent& event) const {
  return IsPartOfName(event);
}

bool TTypeAhead::Press(const QKeyEvent& event) {
  if (!IsPartOfName(event)) {
    RunHeld();
    fTyped.clear();
    return false;
  }
  const QString text = event.text();
  const bool isCommand = fLetters.contains(text, Qt::CaseInsensitive) && !(event.modifiers() & Qt::ShiftModifier);
  // The same letter again is the command again: names seldom begin with a double letter, and skipping by two is common.
  if (text == fHeld) RunHeld();
  if (!IsSearching() && fHeld.isEmpty() && isCommand) {
    Hold(event);
    return true;
  }
  fHold.stop();
  fTyped += std::exchange(fHeld, {}) + text;
  fPause.start();
  fFind(fTyped);
  return true;
}

void TTypeAhead::Hold(const QKeyEvent& event) {
  fHeld = event.text();
  fHold.start();
}

void TTypeAhead::RunHeld() {
  if (fHeld.isEmpty()) return;
  const int heldMs = fHold.isActive() ? kHoldMs - fHold.remainingTime() : kHoldMs;
  fHold.stop();
  const QString letter = std::exchange(fHeld, {}).toUpper();
  fCommand(static_cast<Qt::Key>(letter.front().unicode()), heldMs);
}
