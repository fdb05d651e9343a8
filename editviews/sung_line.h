#pragma once

#include "platform/support/types.h"

#include <string>
#include <vector>

/** Which line is being sung: the last one, by time, whose tag has come. Keeps the times of a list of lines. */
class TSungLine {
public:
  void Clear();
  void Append(const std::string& line);
  void Change(int32 row, const std::string& line);
  /** Negative before the first tag. */
  int32 RowAt(int32 positionMs);

private:
  static int32 TimeOf(const std::string& line);

  /** Negative for lines without a tag. */
  std::vector<int32> fTimesMs;
  /** The last answer holds from here until there. */
  int32 fRow = -1;
  int32 fFromMs = 0;
  int32 fUntilMs = 0;
};
