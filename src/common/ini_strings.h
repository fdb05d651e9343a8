#pragma once

/** Text helpers of the INI reader. Positions are 1-based, below 1 counting as 1; every destination is the caller's
    buffer, large enough, and may be the source itself. White space is the six ASCII characters. */

int trimleft(char* destination, const char* source);
int trimright(char* destination, const char* source);
int trim(char* destination, const char* source);
/** `count` characters from `start`; a count of 0 or past the end copies to the end, an empty range gives "".
    Returns the number copied. */
int mid(char* destination, const char* source, int start, int count);
/** Where `needle` first begins at or after `start`; 0 when nowhere. An empty needle is nowhere. */
int instr(const char* text, const char* needle, int start);
/** Replaces the first `find` at or after `start`; 0, and a plain copy, when there is none, else its position. */
int repstr(char* destination, const char* source, const char* find, const char* replace, int start);
