#pragma once

#include <string>

/** The song that a document belongs to: the one that played when the document was opened or created, else the first one
    that plays after that. Pure; owned by the document's view. */
class TDocumentSong {
public:
  /** Of the song; empty while no song has played. */
  const std::string& Title() const { return fTitle; }
  /** Another document; `playing` is the title of the song that plays, if any. */
  void Reset(const std::string& playing) { fTitle = playing; }
  /** Returns true when the document had no song and now has this one. */
  bool Adopt(const std::string& playing) {
    if (!fTitle.empty() || playing.empty()) return false;
    fTitle = playing;
    return true;
  }
  bool IsAnother(const std::string& playing) const { return !playing.empty() && playing != fTitle; }

private:
  std::string fTitle;
};
