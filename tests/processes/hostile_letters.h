#pragma once

#include <string>
#include <vector>

/** The letters of a hostile program: every code and field name in the sources, with random values, to signatures and to
    loopers by number, except those that open files and may ask the user. */
struct HostileLetters {
  int count = 0;
  unsigned seed = 0;
  std::string process; // process id of the target
  std::vector<std::string> signatures;
};

/** Returns how many reached a looper; of the questions that do not wait only those that were answered at once. */
int send_hostile_letters(const HostileLetters& letters);
