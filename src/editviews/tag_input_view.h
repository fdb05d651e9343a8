#pragma once

#include "editviews/tracked_edit_view.h"
#include "lyrics/line_times.h"
#include "lyrics/reaction_time.h"
#include "platform/interface/list_view.h"

#include <optional>

class Sonivo_FrontEnd;
class TTagInputItem;

/** To the window: what an edit view has done; string "StatBarStr", and "Finding" where there is more to say, which is
    shown behind it. */
inline constexpr uint32 kMsgStatBarStr = 'Sssr';

/** The lyrics as a list, one line selected: a key press writes the play position in front of it. On the window's
    thread; owns its items, not the link to the player. */
class TTagInputView : public BListView, public TTrackedEditView {
public:
  TTagInputView(BRect frame, Sonivo_FrontEnd* frontEnd);
  ~TTagInputView() override;

  void SetMode(int32 mode) override { fMode = mode; }
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

  bool Replay(const TReplay& replay) override;
  /** Marks the line that is sung at this moment of the song; none while it does not play. */
  void SetSongPosition(std::optional<int32> positionMs);

  void KeyDown(const char* bytes, int32 count) override;
  void AttachedToWindow() override;
  void FrameResized(float width, float height) override;

  /** The three commands: stamp the selected line, move its tag by one step ('+' or '-'), take its tag off. */
  void InputTagRqtd();
  void IncDecTagRqtd(char key);
  void RemoveTagRqtd();
  /** Return, or a double click: the player goes to the line's time. */
  void Invoke() override;

private:
  TTagInputItem* SelectedItem() const;
  TTagInputItem* Item(int32 row) const;
  int32 StampTimeMs() const;
  /** A key with the Command modifier; false for one that the player has no use for. */
  bool PlayerKey(char key);
  void MarkSung(int32 row);
  void SetText(int32 row, const std::string& text);
  bool IsKeyRepeat() const;
  void ClearLines();
  /** The row bears another text from now on. */
  void ChangeRow(int32 row, const std::string& text, TEditKind kind);
  void Report(const std::string& text, const std::string& finding = {});

  // tag_input_habit.cpp
  void NoteStamp(int32 row, int32 timeMs);
  void NoteMove(int32 row, int32 timeMs);
  /** After a step of the history. */
  void NoteReplay(int32 first, const std::list<std::string>& lines);
  /** What there is to say of the user's habit, to be shown behind a report; nearly always empty. */
  std::string NewFinding();

  bool fModified = false;
  int32 fMode = 0;
  TLineTimes fLineTimes;
  int32 fSungRow = -1;
  TStampCorrections fCorrections;
  Sonivo_FrontEnd* const fFrontEnd;
};
