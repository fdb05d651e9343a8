#pragma once

#include <string>
#include <vector>

/** The errors since the user last chose what to play, as the window shows them. */
class TErrors {
public:
  /** Ignores duplicates. */
  void Add(const std::string& error);
  /** False when there were none. */
  bool Clear();
  /** The last few, a line each, after a line that counts the earlier ones. */
  std::string Text() const;

private:
  std::vector<std::string> fErrors;
};
