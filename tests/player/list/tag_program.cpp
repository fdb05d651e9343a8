/** A fake `sonivo-peaks --tags` that fails in the way that the name of the song says. */

#include "player/pictures/tag_talk.h"

#include <unistd.h>

#include <iostream>

int main() {
  TTagQuestion question;
  while (std::getline(std::cin, question.knownState, '\0') && std::getline(std::cin, question.path, '\0')) {
    if (question.path == "/dies") return 1;
    std::string bytes = answer_bytes({"1", {question.path, "", 1000}});
    if (question.path == "/babbles") bytes += "x";
    if (question.path != "/hangs") std::cout << bytes << std::flush;
    if (question.path == "/hangs") pause();
  }
}
