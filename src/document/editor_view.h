#pragma once

#include "editviews/tracked_edit_view.h"
#include "lyrics/lyrics_file.h"
#include "toolkit/krv_view.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

class BFile;
class BMessageRunner;
class BScrollView;
class BStringView;
class Sonivo_FrontEnd;
class TCurrentSongFinder;
class TDocumentTeller;
class TFreeEditView;
class TTagInputView;

/** What the menus, the panels and the edit views ask of the editor view; the fields stand beside the codes. */
enum : uint32 {
  kMsgNew = '_new',
  kMsgOpenCurrent = 'opcl',
  kMsgSave = '_sav',        // may carry a waiting command
  kMsgSaveAs = '_sva',      // to the window; may carry a waiting command
  kMsgMode = 'mode',        // int32 "Mode"
  kMsgModeChanged = 'umcr', // to the window: int32 "Mode"
  kMsgDefaultStatBar = 'Sedr',
  kMsgRefreshInfo = 'rcir',
  kMsgAppearance = 'Spac',
  kMsgPollInterval = 'Ssic',
  kMsgConvertTags = 'cvtt', // bool "CvtTagS2E": to the extended form
  kMsgDeleteTags = 'datt',
  kMsgUndo = '_udo',
  kMsgRedo = '_rdo',
  kMsgHistoryChanged = '_hch', // to the window: bool "CanUndo", bool "CanRedo"
  kMsgShiftTags = 'fttr',      // string "_SmplIptData": ms, decimal
  kMsgAddHistory = '_ahr',     // to the window: ref "refs"
  kMsgRemoveHistory = '_rhr',  // to the window: ref "refs"
  kMsgExportTo = '_ext',       // ref "directory", string "name", int32 "Format"
};

/** In a ref message: bool, the file was chosen among the recent ones. */
inline constexpr const char* kFromRecentFiles = "FromMRUF";

/** The open document: its lines in an edit view, its file, its status bar, and the link to the player. Owned by the
    editor window, on its thread. */
class TVesmoEView : public TKRVView, private TEditListener {
public:
  explicit TVesmoEView(BRect frame);
  ~TVesmoEView() override;

  void AttachedToWindow() override;
  void MessageReceived(BMessage* message) override;

  /** True when the caller may go on at once. After a Yes the lyrics are saved first, and `next` then goes to `target`.
   */
  bool AskSave(const BMessage& next, const BHandler* target);
  TLyricsInfo CurrentLyricsInfo() const { return fInfo; }
  int32 Mode() const { return fMode; }
  void SetMode(int32 mode);
  void FocusLyrics();
  void SetStatBarStr(const char* text);
  void SetWinTitle();
  void CreateNewLyrics();
  void LanguageChanged();

private:
  // editor_view.cpp
  void MItemNewClicked();
  void MItemModeClicked(const BMessage& message);
  void SetStatBarStrRqtd(const BMessage& message);
  void ExpDefaultStatBarRqtd();
  void PrefAppearanceChanged();
  void PrefPollIntervalChanged();
  std::string DocumentName() const;

  void SetActive(int32 mode);

  // editor_history.cpp
  void LinesEdited(const TLinesChange& change, TEditKind kind, int32 lineBefore, int32 lineAfter) override;
  void UndoRqtd();
  void RedoRqtd();
  bool Replay(std::optional<TReplay> (TEditHistory::*next)() const, void (TEditHistory::*done)());
  void RecordWholeText(const std::list<std::string>& lines, int32 line);
  void BeginHistory();
  void MarkSaved();
  void MarkChanged();
  void TellHistory();

  // editor_song.cpp
  void RefreshSonivoInfoRqtd();
  void RetakeRqtd() override;
  void BelongsToSongNow();
  void LookAtSong();

  // editor_opening.cpp
  void MItemOpenCurLyricsClicked();
  void CurrentSongAnswered(const BMessage& message);
  void RefsReceived(const BMessage& message);
  bool OpenFile(const BMessage& request, const entry_ref& ref, const entry_ref& source);
  bool AsksToForget(const BMessage& message, const entry_ref& ref);
  bool MakeSureItExists(const entry_ref& ref);
  bool CreateNewLyricsFile(const entry_ref& ref);
  void ShowLines(std::list<std::string> lines);
  bool SimpleData(const BMessage& message);
  /** Ask the window to take the document's file into the recent ones, or a file out of them. */
  void SendAddHistoryRqtd();
  void SendRemoveHistoryRqtd(const entry_ref& ref);

  // editor_saving.cpp
  long AskAboutChanges() const;
  void MItemSaveClicked(const BMessage& message);
  void SaveRequested(const BMessage& message);
  status_t SaveLyrics(const TLyricsInfo& info);
  bool IsOnDisk(const TLyricsInfo& info);
  void SetLyricsMimeType(BFile* file);

  // editor_losses.cpp
  std::optional<entry_ref> CopyToOpenInstead(const entry_ref& ref) const;
  void TellNotWhole();
  void KeepFileAsItWas();
  void NoteOutside(const std::list<std::string>& lines, const TLyricsInfo& info);
  void TellLosses(const TLyricsInfo& info);

  // editor_export.cpp
  void ExportRqtd(const BMessage& message);

  // editor_bulk.cpp
  void RewriteLines(const std::function<void(std::list<std::string>*)>& rewrite);
  void FineTimeTagRqtd(const BMessage& message);
  void MItemCvtTag(const BMessage& message);
  void MItemDelAllTimeTagClicked();

  std::unique_ptr<Sonivo_FrontEnd> fFrontEnd;
  std::unique_ptr<TCurrentSongFinder> fSongFinder;
  std::unique_ptr<TDocumentTeller> fTeller;
  std::unique_ptr<BMessageRunner> fPoll;
  TTagInputView* fTagInput; // this one and the next: the active one a child, by way of the scroll view, the other owned
  TFreeEditView* fFreeEdit;
  TTrackedEditView* fActive; // the edit view that is shown
  TEditHistory fHistory;
  bool fCanUndo = false; // as last told to the window, and the next
  bool fCanRedo = false;
  BScrollView* fScroll;
  BStringView* fStatusBar;
  /** Of the song that played when the document was opened or begun; empty while none has. */
  std::string fSongTitle;
  std::string fSongWarning; // to stand behind the report of the stamp
  TLyricsInfo fInfo;
  bool fSaveWaits = false; // the user wanted it when he was asked, and it is on its way
  bool fIsWhole = true;    // the file's text is all in the document
  std::string fKeptFile;   // where it lies as it was, until that has been told
  std::string fWritten;    // between a save and the look at the disk
  std::string fOutside;    // what the encoding of the last save could not hold
  std::string fWholeText;  // with that in it, until it has been told of
  int32 fMode = 0;
};
