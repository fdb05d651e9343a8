#pragma once

#include <string>
#include <vector>

/** What went wrong since the user last chose what to play; the window shows it. */
class TFaults {
public:
  /** One that is there already is not told twice. */
  void Add(const std::string& fault);
  /** False when there was none. */
  bool Clear();
  /** The last few, a line each, under the number of those before them. */
  std::string Text() const;

private:
  std::vector<std::string> fFaults;
};
