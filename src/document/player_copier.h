#pragma once

#include "platform/app/handler.h"
#include "platform/storage/entry_ref.h"

#include <memory>
#include <string>

class BView;
class Sonivo_FrontEnd;
class TCurrentSongFinder;
class TDocument;
class TEditSession;
class TNoticeBoard;

/** "Save a copy for other players": the lyrics as they read them, `song.lrc` next to the song, without a question for
    the name. Offers to renew the copy at every save. Owned by the document's view, on its window's thread; handles the
    answers of its own search for the current song. */
class TPlayerCopier : public BHandler {
public:
  /** Nothing that is passed is owned. The view is attached to its window. */
  TPlayerCopier(BView* view, Sonivo_FrontEnd* frontEnd, TEditSession* session, const TDocument* document,
                TNoticeBoard* notices);
  /** `Sonivo_FrontEnd::StopWaiting` must have been called. */
  ~TPlayerCopier() override;

  void MessageReceived(BMessage* message) override;
  /** Saves the copy as soon as the player has named its song. */
  void Start();
  /** After a save: renews the copy of the document, if the user wants that. Returns what the status bar adds. */
  std::string Renew();
  void LanguageChanged();

private:
  /** `songLyrics` is the lyrics file of the current song, existing or not; empty without a song. */
  void Copy(const entry_ref& songLyrics);
  entry_ref Target(const entry_ref& songLyrics) const;
  void OfferToSaveAsCommon();
  bool MayReplace(const entry_ref& target) const;
  bool Write(const std::string& path, const std::string& bytes);
  void OfferToRenew(const std::string& name);
  void RenewRqtd();

  BView* const fView;
  TEditSession* const fSession;
  const TDocument* const fDocument;
  TNoticeBoard* const fNotices;
  std::unique_ptr<TCurrentSongFinder> fFinder;
  std::string fOffered;     // the name of the copy in the notice
  std::string fUnsavedCopy; // the path of the copy of a document without a file
  int32 fUnsavedNumber = 0; // of that document
};
