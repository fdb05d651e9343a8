#pragma once

#include "player/model/song_tags.h"

#include <string>
#include <string_view>

/** Protocol between the player and the program `sonivo-peaks --tags` over its standard input and output: one question,
    its answer, the next question. Fields are NUL-terminated; neither paths nor tags contain a NUL.
    Question: the file's state as last seen by the player (empty for none), and its path. Answer: the file's state, its
    duration in ms, title, artist, album, track number. The state is empty if the path is no readable regular file; if
   it equals the known state, the other fields are meaningless. */
struct TTagQuestion {
  std::string knownState;
  std::string path;
};
struct TTagAnswer {
  std::string state; // size and modification time
  TSongTags tags;
};

std::string question_bytes(const TTagQuestion& question);
/** Truncates overlong texts at a character boundary. */
std::string answer_bytes(const TTagAnswer& answer);

enum class TAnswerForm { kIncomplete, kWhole, kBroken };
/** Stores `answer` only if it is complete. kBroken: no further bytes can make it valid. */
TAnswerForm read_answer(std::string_view bytes, TTagAnswer* answer);
