#pragma once

#include "document/song_lyrics_job.h"
#include "document/song_opener.h"
#include "hostlink/current_song_finder.h"
#include "platform/storage/entry_ref.h"

class BMessage;
class BView;
class Sonivo_FrontEnd;
class TDocument;
class TDocumentFile;
class TDocumentLoader;
class TEditSession;
class TSaveCommands;

/** Opens the lyrics of the playing song, by command or, if the user wants that, by itself: its lyrics file or, if there
    is none, the lyrics inside the song. Owned by the document's view, on its window's thread. */
class TSongLyricsOpener {
public:
  struct TParts {
    Sonivo_FrontEnd* frontEnd;
    const TDocument* document;
    TEditSession* session;
    TDocumentFile* file;
    TSaveCommands* saving;
    TDocumentLoader* loader;
  };
  /** `owner` is attached, and passes its messages on. Nothing is owned. */
  TSongLyricsOpener(BView* owner, const TParts& parts);

  /** False for a message that is not about the lyrics of the playing song. */
  bool Handle(const BMessage& message);
  /** To be called at every poll of the player: opens what is due. */
  void Poll(bool isPlaying);
  /** Of the song whose lyrics were last searched for; empty if unknown. */
  const std::string& SongFolder() const { return fSongFolder; }

private:
  void MItemOpenCurLyricsClicked();
  void SongSearched(const BMessage& answer);
  void SongFound(const BMessage& answer, bool isByItself);
  void SongLyricsRead();
  void OpenFile(const entry_ref& file);
  void OfferSongLyrics(const entry_ref& file);
  void OpenOffered(const BMessage& message);
  [[nodiscard]] bool IsDocumentUntouched() const;
  bool MayOpenByItself();
  /** That reading has found; null without any. */
  const TEmbeddedLyrics* LyricsInside() const;
  void ShowLyricsInside();

  BView* const fOwner;
  const TParts fParts;
  TSongOpener fOpener;
  TCurrentSongFinder fFinder;
  TSongLyricsJob fReader;
  bool fSearchesByItself = false; // the search was not a command of the user
  bool fReadsByItself = false;    // nor was reading inside the song
  int32 fInsideNumber = -1;       // of the document that shows the lyrics inside a song
  std::string fSongFolder;
  entry_ref fMissingFile; // of the song that fReader reads
};
