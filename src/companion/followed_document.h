#pragma once

#include "platform/support/types.h"

#include <string>
#include <vector>

class BMessage;

/** A document that is being edited elsewhere, as its notices tell of it (`plugin/message_codes.h`). */
class TFollowedDocument {
public:
  /** False when notices were missed: the whole is to be asked for again. */
  bool Take(const BMessage& notice);
  void Forget();

  /** The document says what is sung in the song of that title, whose lyrics lie at that path. One without a word in it
      says nothing of any song. */
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
