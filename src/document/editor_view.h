#pragma once

#include "document/document_song.h"
#include "editviews/edit_mode.h"
#include "lyrics/document.h"
#include "toolkit/krv_view.h"

#include <memory>

class BMessageRunner;
class Sonivo_FrontEnd;
class TBulkCommands;
class TDifferences;
class TDocumentFile;
class TDocumentLoader;
class TDocumentPublisher;
class TDocumentRecovery;
class TEditSession;
class TFileDrop;
class TFormOffers;
class TLaneWiring;
class TLineSplitter;
class TLyricsOpener;
class TNoticeBoard;
class TPlayerCopier;
class TProposer;
class TSaveCommands;
class TSongLyricsOpener;
class TSongSoundSource;
class TSongWriter;
class TTextFinder;

/** The open document with its edit views, its file and the link to the player. Owns the parts that work on them, and
    passes each message on to its part. Owned by the editor window, on its thread. */
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
  const std::string& SongFolder() const;
  TEditMode Mode() const;
  /** Ignores a number of no mode. */
  void SetMode(int32 mode);
  void FocusLyrics();
  void SetWinTitle();
  void CreateNewLyrics();
  void LanguageChanged();

private:
  /** False for a message that is for one of the parts. */
  bool HandleOwn(const BMessage& message);
  bool HandleChoice(const BMessage& message);
  bool HandleByPart(const BMessage& message);
  void MItemNewClicked();
  void MItemModeClicked(const BMessage& message);
  void TagCommandRqtd(const BMessage& message);
  void ModeChanged();
  void ExportRqtd(const BMessage& message);
  void RefreshSonivoInfoRqtd();
  void RecoverRqtd(const BMessage& message);

  TNoticeBoard* const fNotices;
  TDocument fDocument;
  TDocumentSong fSong;
  // Created in this order, the session and the finder with the view, the others when it is attached. Each uses those
  // above it.
  std::unique_ptr<Sonivo_FrontEnd> fFrontEnd;
  std::unique_ptr<TEditSession> fSession;
  std::unique_ptr<TTextFinder> fFinder;
  std::unique_ptr<BMessageRunner> fPoll;
  std::unique_ptr<TBulkCommands> fBulk;
  std::unique_ptr<TLineSplitter> fSplitter;
  std::unique_ptr<TFileDrop> fDrop;
  std::unique_ptr<TDocumentPublisher> fPublisher;
  std::unique_ptr<TDifferences> fDifferences;
  std::unique_ptr<TFormOffers> fOffers;
  std::unique_ptr<TDocumentFile> fFile;
  std::unique_ptr<TDocumentRecovery> fRecovery;
  std::unique_ptr<TDocumentLoader> fLoader;
  std::unique_ptr<TPlayerCopier> fCopier;
  std::unique_ptr<TSaveCommands> fSaving;
  std::unique_ptr<TLyricsOpener> fOpener;
  std::unique_ptr<TSongLyricsOpener> fSongLyrics;
  std::unique_ptr<TSongWriter> fSongWriter;
  std::unique_ptr<TSongSoundSource> fSound;
  std::unique_ptr<TLaneWiring> fLane;
  std::unique_ptr<TProposer> fProposer;
};
