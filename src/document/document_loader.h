#pragma once

#include <list>
#include <string>

class BView;
class TDocument;
class TDocumentFile;
class TDocumentRecovery;
class TEditSession;
class TFormOffers;
struct TOpenedLyrics;

/** Makes another text the open document, and informs everything that shows, watches or records the document. Owned by
    the document's view, on its window's thread. */
class TDocumentLoader {
public:
  struct TParts {
    TDocument* document;
    TEditSession* session;
    TDocumentFile* file;
    TDocumentRecovery* recovery;
    TFormOffers* offers;
  };
  /** `owner` is attached. Nothing is owned. */
  TDocumentLoader(const BView* owner, const TParts& parts) : fOwner(owner), fParts(parts) {}

  /** In the form that the settings have for new documents. */
  void CreateNewLyrics();
  void Show(TOpenedLyrics opened);
  /** Lines that come from no lyrics file, in the form of new documents; they count as unmodified. */
  void ShowWithoutFile(std::list<std::string> lines);
  /** The document was replaced by a recovered one. */
  void Recovered();
  /** The document was saved under a name that the user has chosen: it becomes the newest of the recent files. */
  void Renamed() const;
  /** In the window's title, with the name of the file. */
  void SetWinTitle() const;

private:
  void SendAddHistoryRqtd() const;

  const BView* const fOwner;
  const TParts fParts;
};
