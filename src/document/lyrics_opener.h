#pragma once

#include "platform/app/message_runner.h"
#include "platform/storage/entry_ref.h"

#include <optional>

class BView;
class BWindow;
class Sonivo_FrontEnd;
class TDocument;
class TDocumentLoader;
class TEditSession;
class TFormOffers;
class TSaveCommands;
struct TOpenedLyrics;

/** In a ref message: bool, the file was chosen among the recent ones. */
inline constexpr const char* kFromRecentFiles = "FromMRUF";
/** In a ref message: bool, the file belongs to the current song. */
inline constexpr const char* kForCurrentSong = "ForSong";

/** Opens the message's files by way of the window. */
void post_open(BWindow* window, const BMessage& message);

/** Opens lyrics files by command, with the questions that this raises. Owned by the document's view, on its window's
    thread; blocks while a question is shown. */
class TLyricsOpener {
public:
  struct TParts {
    BMessageRunner* poll; // of the player, slowed down meanwhile
    Sonivo_FrontEnd* frontEnd;
    TDocument* document;
    TEditSession* session;
    TFormOffers* offers;
    TSaveCommands* saving;
    TDocumentLoader* loader;
  };
  /** `owner` is attached, and passes its messages on. Nothing is owned. */
  TLyricsOpener(BView* owner, const TParts& parts) : fOwner(owner), fParts(parts) {}

  /** False for a message that is no command to open a file. */
  bool Handle(const BMessage& message);

private:
  void RefsReceived(const BMessage& message);
  void ReopenRqtd(const BMessage& message);
  /** Offers to create a missing file; for the current song's lyrics also `ref` with the other extension. */
  bool EnsureExists(entry_ref* ref, bool isForSong);
  bool IsTextOrWanted(const entry_ref& ref);
  static bool CreateNewLyricsFile(const entry_ref& ref);
  void SendRemoveHistoryRqtd(const entry_ref& ref);

  BView* const fOwner;
  const TParts fParts;
};
