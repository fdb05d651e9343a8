#pragma once

#include <QKeyEvent>
#include <QString>
#include <QTimer>

#include <functional>

/** Type-ahead search of a list whose window also has single letters as commands. A command letter is held back for a
    moment: if another character follows, both begin a search, otherwise it is the command. So no typed name, however
    it is misspelled, runs a command. Display thread. */
class TTypeAhead {
public:
  /** `find` is called with all that was typed so far. */
  using TFind = std::function<void(const QString& typed)>;
  /** `heldMs`: how long ago the key was pressed. */
  using TCommand = std::function<void(Qt::Key key, int heldMs)>;
  static constexpr int kHoldMs = 400;
  static constexpr int kPauseMs = 1000;

  explicit TTypeAhead(TFind find);
  void SetCommands(QString letters, TCommand command);

  /** Whether the list handles the key itself, before it is looked up as a shortcut. */
  bool Takes(const QKeyEvent& event) const;
  /** False for keys that are not part of a name. These end the search. */
  bool Press(const QKeyEvent& event);
  bool IsSearching() const { return !fTyped.isEmpty(); }

private:
  bool IsPartOfName(const QKeyEvent& event) const;
  void Hold(const QKeyEvent& event);
  void RunHeld();

  const TFind fFind;
  QString fLetters;
  TCommand fCommand;
  QString fTyped;
  QString fHeld; // the command letter that is held back
  QTimer fHold;
  QTimer fPause; // ends the search
};
