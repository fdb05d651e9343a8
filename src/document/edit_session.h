#pragma once

#include "document/song_clock.h"
#include "editviews/edit_mode.h"
#include "editviews/tracked_edit_view.h"
#include "editviews/view_choices.h"
#include "lyrics/document.h"

#include <functional>
#include <list>
#include <memory>
#include <string>

class BMessage;
class BScrollView;
class BStringView;
class BView;
class Sonivo_FrontEnd;
class TDocumentSong;
class TFreeEditView;
class TTagInputView;
class TWordStrip;

/** The two edit views of a document, of which one is shown, with the status bar. Turns the user's changes into steps of
    the document and replays the document's steps in the view. Owned by the editor view, on its window's thread. */
class TEditSession : private TEditListener {
public:
  /** Adds the views to `parent`, filling it. Nothing that is passed is owned. */
  TEditSession(BView* parent, Sonivo_FrontEnd* frontEnd, TDocument* document, TDocumentSong* song);
  /** Deletes the edit view that is not shown; the others belong to the parent. */
  ~TEditSession() override;

  /** The edit view that is shown. */
  TTrackedEditView& Active() const { return *fActive; }
  TTagInputView& TagInput() const { return *fTagInput; }
  TEditMode Mode() const { return fMode; }
  /** Shows the mode's view, which may be empty. */
  void SetMode(TEditMode mode);
  /** The same, with the lines, the modified flag and the current line. */
  void SwitchMode(TEditMode mode);
  void MakeFocus();
  void SetAppearance();
  void LanguageChanged();

  /** The status bar shows the text after the mode and the file's form. */
  void Report(const std::string& text);
  void ReportDefault();
  /** Shows in the status bar whether there are unsaved changes, and notifies the window when that has changed. To be
      called at every poll: the mark is set and cleared in many places. */
  void ShowModified();
  /** The text of an edit view's kMsgStatBarStr, with a warning when a line was stamped to another song. */
  void ReportFromView(const BMessage& message);

  void Show(const std::list<std::string>& lines);
  /** After another document was opened or started; the views show its lines already. */
  void DocumentStarted();
  /** Changes every line in one step. The document counts as modified even if no line changed. */
  void Rewrite(const std::function<void(std::list<std::string>*)>& rewrite);
  /** Gives all time tags the form of that dialect, in one step. */
  void UnifyTags(TDialect dialect);
  /** Replaces the document by its file in one step. */
  void Reload(const TOpenedLyrics& opened);
  /** Shows or hides position and seek bar in the status bar. */
  void ToggleClock();
  void ToggleClicks() { Toggle(&fChoices.clicks); }
  void ToggleCountIn() { Toggle(&fChoices.countsIn); }
  TSongClock& Clock() const { return *fClock; }
  /** Of this window; to be stored after a change. */
  TViewChoices& Choices() { return fChoices; }
  /** Takes so much room from the edit view, above the status bar. */
  void SetRoomBelow(float height);
  BRect RoomBelow() const;
  float LyricsHeight() const;
  /** Runs a command of the edit view that is shown, by its number in the command table; no effect for one that it does
      not have. */
  void ViewCommand(int32 number);
  void Undo();
  void Redo();

private:
  void Toggle(bool* choice);
  void LinesEdited(const TLinesChange& change, TEditKind kind, TSelectedLines before, TSelectedLines after) override;
  TWordForm WordForm() const override;
  void ShowWordTimes(const std::optional<std::string>& text) override;
  void RetakeRqtd() override;
  bool Replay(TReplayDirection direction);
  void CheckSong();
  void SendHistoryState();
  void PlaceStatusBar();
  void ShowClock();

  Sonivo_FrontEnd* const fFrontEnd;
  TDocument* const fDocument;
  TDocumentSong* const fSong;
  TViewChoices fChoices;
  TTagInputView* fTagInput; // fTagInput and fFreeEdit: the one that is not shown is owned
  TFreeEditView* fFreeEdit;
  TTrackedEditView* fActive;
  BScrollView* fScroll;
  BStringView* fStatusBar;
  BStringView* fUnsavedMark;
  std::unique_ptr<TSongClock> fClock;
  std::unique_ptr<TWordStrip> fWordStrip;
  TEditMode fMode = TEditMode::kTagInputExtended;
  bool fCanUndo = false; // fCanUndo and fCanRedo: as last sent to the window
  bool fCanRedo = false;
  bool fShowsUnsaved = false;
  float fRoomBelow = 0;
  std::string fSongWarning; // appended to the next report of the view
};
