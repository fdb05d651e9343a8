#pragma once

#include "commands/command_table.h"
#include "editviews/following.h"
#include "editviews/nudge_replay.h"
#include "editviews/tracked_edit_view.h"
#include "lyrics/line_times.h"
#include "lyrics/reaction_time.h"
#include "lyrics/stamp.h"
#include "lyrics/word_stamper.h"
#include "platform/interface/list_view.h"

#include <optional>

class BMessage;
class Sonivo_FrontEnd;
class TTagInputItem;
struct TWordRow;

/** The lyrics as a list, one line selected: a key press writes the play position in front of it. On the window's
    thread; owns its items but not the link to the player. */
class TTagInputView : public BListView, public TTrackedEditView {
public:
  /** `frontEnd` and `choices` are not owned. */
  TTagInputView(BRect frame, Sonivo_FrontEnd* frontEnd, TViewChoices* choices);
  ~TTagInputView() override;

  void SetMode(int32 mode) override { fForm = mode == 0 ? TTagForm::kExtended : TTagForm::kStandard; }
  void SetLines(const std::list<std::string>& lines) override;
  void GetLines(std::list<std::string>* lines) const override;
  void SetModified(bool modified) override { fModified = modified; }
  bool IsModified() const override { return fModified; }
  void SetCurLine(int32 line) override;
  int32 CurLine() override { return CurrentSelection(); }
  void SetAppearance() override;
  std::string StatBarSymbol() const override;
  std::string DefaultStatBarStr() const override;
  void Clear() override;

  void LanguageChanged() override { ShowPlaceholder(); }

  bool Replay(const TReplay& replay) override;
  void ShowMatch(int32 line, const std::string&, const std::string&) override { GoTo(line); }
  /** Highlights the line that is sung at this position; none while the song does not play. */
  void SetSongPosition(std::optional<int32> positionMs);

  void KeyDown(const char* bytes, int32 count) override;
  /** A command of this view, by its number. */
  void ShortcutPressed(int32 number) override;
  /** Another key was given to a command. */
  void KeysChanged();
  void MessageReceived(BMessage* message) override;
  bool IsWordByWord() const { return fChoices->timesWords; }
  void SelectionChanged() override;
  void AttachedToWindow() override;
  void FrameResized(float width, float height) override;

  /** Stamps the selected line. Blocks for 20 ms, so that the player can answer. */
  void InputTagRqtd();
  /** Moves its tag by one step: '+' or '-'. */
  void IncDecTagRqtd(char key);
  void RemoveTagRqtd();
  /** The answer to kMsgSplitLine: the line's text in two parts. Refused when the line has changed meanwhile. */
  void SplitLine(const BMessage& answer);
  /** Return or a double click: the player seeks to the line's time. */
  void Invoke() override;

private:
  TTagInputItem* SelectedItem() const;
  TTagInputItem* Item(int32 row) const;
  /** The play position, or that of a moment ago. Blocks for 20 ms. */
  int32 StampTimeMs(std::optional<bigtime_t> whenUs = {}) const;
  // tag_input_commands.cpp
  void RunCommand(TCommandId id);
  void RunPlayerCommand(TCommandId id);
  void RetakeRqtd();

  void MarkSung(int32 row);
  void SetText(int32 row, const std::string& text);
  bool IsKeyRepeat() const;
  void ClearLines();
  /** Changes the row's text and reports it to the listener. */
  void ChangeRow(int32 row, const std::string& text, TEditKind kind);
  void Report(const std::string& text, const std::string& finding = {});

  // tag_input_lines.cpp
  /** A command on the selected lines; no effect for others. */
  void RunLineCommand(TCommandId id);
  std::list<std::string> LinesAt(int32 first, int32 last) const;
  TSelectedLines SelectedLines() const;
  void SelectLines(const TSelectedLines& lines);
  /** Shows the change. */
  void ChangeLines(const TLinesChange& change);
  /** Makes the change by the user's command. */
  void EditLines(const TLinesChange& change, const TSelectedLines& selectedAfter);
  bool IsEmptyDocument() const;
  /** An empty document says how to fill it. */
  void ShowPlaceholder();
  void CutLines();
  void CopyLines();
  void PasteLines();
  void DeleteLines();
  void InsertLine();
  void MoveLines(bool down);
  void JoinLines();
  void SplitLineRqtd();
  void ReportLines(const char* key, int32 count);

  /** Moves the tag of the line by so much, if its form can show that. */
  void NudgeBy(int32 stepMs);
  void Nudged(int32 row, const TNudgedLine& nudged);
  void PlayFrom(int32 leadInMs);
  void ShiftRqtd(int32 firstRow, int32 count);

  // tag_input_follow.cpp
  void ToggleFollowing();
  void GoToSungRow();
  void GoToStart();

  // tag_input_problems.cpp
  /** Sets the signs of the rows that are about to be drawn. */
  void MarkProblems(const BMessage& rowsWanted);
  /** The row's time has changed, and so has the distance to it of the next tagged row. */
  void InvalidateNextTagged(int32 row);
  void GoToProblem(bool below);
  void GoToUntagged(bool below);
  void GoTo(int32 row);

  // tag_input_words.cpp
  void ToggleWordByWord();
  /** A command that works only word by word; says so otherwise. */
  void RunWordCommand(TCommandId id);
  void TapWord();
  void TakeBackWord();
  /** Ends the line if the key that has stamped its last word was held long enough. */
  void KeyReleased(const BMessage& release);
  void ClearWords();
  void UnstampFromHere();
  void CopyWordTimes();
  void MoveCaret(bool right);
  /** Makes fWords that of the current row. */
  void ReadWords();
  void SetWordsFrom(int32 row, const std::string& before, const std::string& after);
  /** Sets how the rows that are about to be drawn show words. */
  void MarkWords(const BMessage& rowsWanted);
  std::optional<TWordRow> WordRow(int32 row);
  void ReportWordTimes();
  void MarkSungWord(std::optional<int32> positionMs);
  TStampForms StampForms() const;
  void ReportWord(int32 row, size_t unit, const char* key);

  // tag_input_habit.cpp
  void NoteStamp(int32 row, int32 timeMs);
  void NoteMove(int32 row, int32 timeMs);
  /** Lines from `first` on were changed by a step of the history. */
  void NoteReplay(int32 first, const std::list<std::string>& lines);
  /** Something that the user should know about a stamp of that time; nearly always empty. */
  std::string StampRemark(int32 timeMs);
  /** A newly found lateness of the user's stamps, to be shown after a report; nearly always empty. */
  std::string NewFinding();

  bool fModified = false;
  TTagForm fForm = TTagForm::kExtended;
  TLineTimes fLineTimes;
  int32 fSungRow = -1;
  TStampCorrections fCorrections;
  std::optional<int32> fLastStampMs;
  TViewChoices* const fChoices;
  TFollowing fFollowing;
  Sonivo_FrontEnd* const fFrontEnd;
  TNudgeReplay fReplay;

  /** The key that has stamped the last word of a line and may still be held. */
  struct THeldKey {
    int32 row;
    std::string line;
    bigtime_t sinceUs;
  };
  TWordStamper fWords;
  int32 fWordsRow = -1;
  int32 fTappedRow = -1; // by the last tap, unless another row was selected since
  std::optional<THeldKey> fHeldKey;
  std::optional<size_t> fSungWord;       // of fSungRow
  std::optional<std::string> fWordTimes; // as last reported to the listener
};
