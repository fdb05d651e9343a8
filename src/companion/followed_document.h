#pragma once

#include "platform/support/types.h"

#include <string>
#include <vector>

class BMessage;

/** A copy of the document open in the editor, kept up to date by its notices (`plugin/message_codes.h`). */
class TFollowedDocument {
public:
  /** False when notices were missed: request the whole document again. */
  bool Take(const BMessage& notice);
  void Forget();

  /** The document has the lyrics of the song with that title and lyrics file. False for an empty document. */
  bool BelongsTo(const std::string& title, const std::string& lyricsPath) const;
  const std::vector<std::string>& Lines() const { return fLines; }

private:
  bool TakeWhole(const BMessage& notice);
  bool TakeLines(const BMessage& notice);

  bool fIsKnown = false;
  int32 fNumber = 0; // of the last notice
  std::string fTitle;
  std::string fPath;
  std::vector<std::string> fLines;
};
