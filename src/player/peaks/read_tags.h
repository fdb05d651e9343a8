#pragma once

#include "player/pictures/tag_talk.h"

/** Looks into one file, without decoding its sound, in the sandbox of player/peaks/confined_work.h. */
TTagAnswer answer_to(const TTagQuestion& question);
/** Answers what is asked through standard input until that ends. False when nobody listens any more. */
bool answer_questions();
