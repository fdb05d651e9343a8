#pragma once

#include "player/pictures/tag_talk.h"

/** Reads the tags of one file, without decoding audio, in a sandbox (confined/confined_work.h). */
TTagAnswer answer_to(const TTagQuestion& question);
/** Answers questions on standard input until its end. False if standard output is closed. */
bool answer_questions();
