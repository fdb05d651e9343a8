#pragma once

#include "platform/support/types.h"

#include <string>
#include <vector>

/** When the line is sung, in ms; negative for one without a tag. */
int32 sung_time(const std::string& line);

/** Which line is being sung: the last one, by time, whose tag has come. Keeps the times of a list of lines. */
class TSungLine {
public:
  void Clear();
  void Append(const std::string& line);
  void Change(int32 row, const std::string& line);
  /** Negative before the first tag. */
  int32 RowAt(int32 positionMs);

  bool HasTimes() const;

private:
  /** Negative for lines without a tag. */
  std::vector<int32> fTimesMs;
  /** The last answer holds from here until there. */
  int32 fRow = -1;
  int32 fFromMs = 0;
  int32 fUntilMs = 0;
};
