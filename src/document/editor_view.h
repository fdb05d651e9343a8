#pragma once

#include "document/document_song.h"
#include "document/lyrics_saver.h"
#include "document/song_opener.h"
#include "editviews/edit_mode.h"
#include "lyrics/document.h"
#include "toolkit/krv_view.h"

#include <memory>

class BFile;
class BMessageRunner;
class Sonivo_FrontEnd;
class TCurrentSongFinder;
class TDifferences;
class TDocumentFile;
class TDocumentPublisher;
class TDocumentRecovery;
class TEditSession;
class TLineSplitWin;
class TNoticeBoard;
class TPlayerCopier;
class TSongLyricsJob;
class TTextFinder;

/** In a ref message: bool, the file was chosen among the recent ones. */
inline constexpr const char* kFromRecentFiles = "FromMRUF";
/** In a ref message: bool, the file belongs to the current song. */
inline constexpr const char* kForCurrentSong = "ForSong";

/** The open document with its edit views, its file and the link to the player. Dispatches the commands to their
    owners. Owned by the editor window, on its thread. */
class TVesmoEView : public TKRVView {
public:
  /** `notices` is not owned, and outlives the view. */
  TVesmoEView(BRect frame, TNoticeBoard* notices);
  ~TVesmoEView() override;

  void AttachedToWindow() override;
  void MessageReceived(BMessage* message) override;
  void WindowActivated(bool active) override;

  /** True when the caller may go on at once. After a Yes the lyrics are saved first, and `next` then goes to `target`.
   */
  bool AskSave(const BMessage& next, const BHandler* target);
  TLyricsInfo CurrentLyricsInfo() const { return fDocument.Info(); }
  TDialect Dialect() const { return fDocument.Form().dialect; }
  /** Another one for each document that is started or opened. */
  int32 DocumentNumber() const { return fDocument.Number(); }
  /** Of the song whose lyrics were last searched for; empty if unknown. */
  const std::string& SongFolder() const { return fSongFolder; }
  TEditMode Mode() const;
  /** Ignores a number of no mode. */
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
  void TagCommandRqtd(const BMessage& message);
  void SplitLineRqtd(const BMessage& request);
  void SplitLine(const BMessage& answer);
  void ModeChanged();
  void SetStatBarStrRqtd(const BMessage& message);
  void ExpDefaultStatBarRqtd();
  void RefreshSonivoInfoRqtd();
  void PrefAppearanceChanged();
  void RecoverRqtd(const BMessage& message);

  // editor_opening.cpp
  void MItemOpenCurLyricsClicked();
  void SongSearched(const BMessage& answer);
  void RefsReceived(const BMessage& message);
  /** Offers to create a missing file; for the current song's lyrics also `ref` with the other extension. */
  bool EnsureExists(entry_ref* ref, bool isForSong);
  bool IsTextOrWanted(const entry_ref& ref);
  bool CreateNewLyricsFile(const entry_ref& ref);
  void ShowOpened(const TOpenedLyrics& opened);
  void PostOpen(const BMessage& message);
  bool SimpleData(const BMessage& message);
  void FilesDropped(const BMessage& message);
  void PlayDropped(const std::vector<std::string>& songs);
  /** Ask the window to add the document's file to the recent files, or to remove a file from them. */
  void SendAddHistoryRqtd();
  void SendRemoveHistoryRqtd(const entry_ref& ref);

  // song_opening.cpp
  [[nodiscard]] bool IsDocumentUntouched() const;
  bool MayOpenByItself();
  void OpenSongLyricsIfDue(bool isPlaying);
  void OfferSongLyrics(const BMessage& found);
  void OpenSongLyrics(const BMessage& message);

  // editor_saving.cpp
  void MItemSaveClicked(const BMessage& message);
  void SaveRequested(const BMessage& message);
  /** True, after a message, for the answer of a panel that was opened while another document was. */
  bool IsForAnotherDocument(const BMessage& answer) const;
  status_t SaveLyrics(const TLyricsInfo& info, TDialect dialect);
  /** False, after a message or the user's Cancel, when nothing was saved. */
  bool SaveAndVerify(TLyricsInfo info, TDialect dialect);
  TLyricsInfo InfoToSave() const;
  void ReportSaved();
  void SetLyricsMimeType(BFile* file);

  // editor_dialect.cpp
  void OfferToUnifyTags();
  void WithdrawUnifyOffer();
  void RelabelUnifyOffer();
  void UnifyTagsRqtd(const BMessage& message);

  // editor_encoding.cpp
  void OfferEncoding();
  void WithdrawEncodingOffer();
  void ReopenRqtd(const BMessage& message);

  // editor_song_lyrics.cpp
  void MItemWriteIntoSongClicked();
  /** True if the answer to the search for the current song was taken: lyrics are to be written into the song, or it has
      no lyrics file. */
  bool TakeSong(const BMessage& answer);
  void SongLyricsRead();
  void ShowLyricsInside(const std::string& text);
  void AskWriteIntoSong();
  void SongLyricsWritten();

  // editor_bulk.cpp
  void FineTimeTagRqtd(const BMessage& message);
  void MItemCvtTag(const BMessage& message);
  void MItemDelAllTimeTagClicked();

  TNoticeBoard* const fNotices;
  TDocument fDocument;
  TDocumentSong fSong;
  TLyricsSaver fSaver{&fDocument};
  TLineSplitWin* fLineSplit = nullptr; // created at first use
  std::unique_ptr<Sonivo_FrontEnd> fFrontEnd;
  std::unique_ptr<TCurrentSongFinder> fSongFinder;
  bool fSearchesByItself = false; // the search for the current song was not a command of the user
  std::string fSongFolder;
  TSongOpener fSongOpener;
  std::unique_ptr<TEditSession> fSession;
  std::unique_ptr<TTextFinder> fFinder;
  std::unique_ptr<TDocumentPublisher> fPublisher;
  std::unique_ptr<TDifferences> fDifferences;
  std::unique_ptr<TDocumentFile> fFile;
  std::unique_ptr<TDocumentRecovery> fRecovery;
  std::unique_ptr<TPlayerCopier> fCopier;
  std::unique_ptr<BMessageRunner> fPoll;
  std::unique_ptr<TSongLyricsJob> fSongLyrics;
  bool fSongIsForWriting = false; // the one that is searched for
  bool fSaveIsPending = false;    // the user answered Yes, and the kMsgSave is on its way
};
