#pragma once

#include "platform/support/types.h"

#include <memory>
#include <string>
#include <vector>

class BMessage;
struct TSong;

/** The tagged moments that a front end has last sent, and the song they belong to. */
class TSongMarks {
public:
  /** kMsgHostMarks. False when it names no song, and nothing changes. */
  bool Take(const BMessage& message);
  /** In ms, ascending; null when none were sent for this song (null for no song). */
  std::shared_ptr<const std::vector<int32>> Of(const TSong* song) const;
  /** The same if they are also to be heard, else null. */
  std::shared_ptr<const std::vector<int32>> ClicksOf(const TSong* song) const { return fClick ? Of(song) : nullptr; }

private:
  std::string fTitle;
  bool fClick = false;
  std::shared_ptr<const std::vector<int32>> fMarksMs;
};
