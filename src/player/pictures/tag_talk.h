#pragma once

#include "player/model/song_tags.h"

#include <string>
#include <string_view>

/** What the player and the program `sonivo-peaks --tags` say to each other through its standard input and output: a
    question, its answer, the next question. Every field ends with a NUL, which neither paths nor tags contain.
    A question is the state of the file that the player knows, empty for none, and its path. An answer is the file's
    state, its length in ms, its title and its artist. The state is empty where no plain file can be looked into; where
    it is the one that is known, the other fields say nothing. */
struct TTagQuestion {
  std::string knownState;
  std::string path;
};
struct TTagAnswer {
  std::string state; // of size and time of the last change
  TSongTags tags;
};

std::string question_bytes(const TTagQuestion& question);
/** Texts that are longer than anybody can read are cut between characters. */
std::string answer_bytes(const TTagAnswer& answer);

enum class TAnswerForm { kIncomplete, kWhole, kBroken };
/** Touches `answer` only when it is whole; broken is what no further bytes make an answer. */
TAnswerForm read_answer(std::string_view bytes, TTagAnswer* answer);
