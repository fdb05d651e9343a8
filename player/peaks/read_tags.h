#pragma once

#include "player/peaks/tag_talk.h"

/** Looks into one file, without decoding its sound. */
TTagAnswer answer_to(const TTagQuestion& question);
/** Answers what is asked through standard input until that ends. False when nobody listens any more. */
bool answer_questions();
