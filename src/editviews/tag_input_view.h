#pragma once

#include "commands/command_table.h"
#include "editviews/current_words.h"
#include "editviews/line_commands.h"
#include "editviews/listening.h"
#include "editviews/nudge_replay.h"
#include "editviews/player_keys.h"
#include "editviews/problem_rows.h"
#include "editviews/stamp_habit.h"
#include "editviews/sung_row.h"
#include "editviews/tag_keys.h"
#include "editviews/tag_rows.h"
#include "editviews/tracked_edit_view.h"
#include "editviews/word_keys.h"
#include "editviews/word_rows.h"
#include "platform/interface/list_view.h"

#include <optional>

class BMessage;
class Sonivo_FrontEnd;

/** The lyrics as a list, one line selected: a key press writes the play position in front of it. Passes keys and
    messages on to its parts, of which each does one kind of work on the rows. On the window's thread; owns the parts
   but not the link to the player. */
class TTagInputView : public BListView, public TTrackedEditView {
public:
  /** `frontEnd` and `choices` are not owned. */
  TTagInputView(BRect frame, Sonivo_FrontEnd* frontEnd, TViewChoices* choices);
  ~TTagInputView() override;

  void SetMode(int32 mode) override { fRows.SetForm(mode == 0 ? TTagForm::kExtended : TTagForm::kStandard); }
  void SetLines(const std::list<std::string>& lines) override { fRows.SetLines(lines); }
  void GetLines(std::list<std::string>* lines) const override { fRows.GetLines(lines); }
  void SetModified(bool modified) override { fRows.SetModified(modified); }
  bool IsModified() const override { return fRows.IsModified(); }
  void SetCurLine(int32 line) override;
  int32 CurLine() override { return fRows.Current(); }
  void SetAppearance() override;
  void LanguageChanged() override { fRows.ShowPlaceholder(); }
  std::string StatBarSymbol() const override;
  std::string DefaultStatBarStr() const override;
  void Clear() override;
  bool Replay(const TReplay& replay) override;
  void ShowMatch(int32 line, const std::string&, const std::string&) override { fRows.GoTo(line); }

  void KeyDown(const char* bytes, int32 count) override;
  /** A command of this view, by its number. */
  void ShortcutPressed(int32 number) override;
  void MessageReceived(BMessage* message) override;
  void SelectionChanged() override;
  void AttachedToWindow() override;
  void WindowActivated(bool active) override;
  void FrameResized(float width, float height) override;
  /** Return or a double click: the player seeks to the line's time. */
  void Invoke() override;

  /** Another key was given to a command. */
  void KeysChanged();
  bool IsWordByWord() const { return fChoices->timesWords; }
  /** Highlights the line that is sung at this position; none while the song does not play. */
  void SetSongPosition(std::optional<int32> positionMs);
  TLineCommands& LineCommands() { return fLineCommands; }
  /** Gives lines other times by the user's command, in one step. */
  void RetimeLines(const TLinesChange& change);
  const TLineTimes& Times() const { return fRows.Times(); }
  std::optional<int32> LatenessMs() const { return fHabit.LatenessMs(); }
  /** -1 while none is sung. */
  int32 SungRow() const { return fSung.Row(); }

private:
  /** Returns false for a command that this view does not have. */
  bool RunCommand(TCommandId id);
  bool IsKeyRepeat() const;
  void ToggleWordByWord();
  void MarkRows(const BMessage& rowsWanted);
  void RowsEmptied();

  TViewChoices* const fChoices;
  TTagRows fRows;
  TNudgeReplay fReplay;
  TStampHabit fHabit;
  TTagKeys fTagKeys;
  TLineCommands fLineCommands;
  TProblemRows fProblems;
  TPlayerKeys fPlayerKeys;
  TListening fListening;
  TSungRow fSung;
  TCurrentWords fWords;
  TWordKeys fWordKeys;
  TWordRows fWordRows;
};
