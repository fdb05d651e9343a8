#pragma once

#include <string>
#include <vector>

/** Letters of a program with bad intentions: every code and field name of this program's sources, with random values,
    to signatures and to loopers by number. What opens files and asks the user about them is left out. */
struct HostileLetters {
  int count = 0;
  unsigned seed = 0;
  std::string process; // the number of the one that is attacked
  std::vector<std::string> signatures;
};

/** Returns how many were let through to a looper. */
int send_hostile_letters(const HostileLetters& letters);
