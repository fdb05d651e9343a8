#pragma once

/** String helpers of the INI reader. Positions are 1-based; less than 1 counts as 1. Destinations are large enough
    buffers of the caller and may be the source itself. White space is the six ASCII characters. */

int trimleft(char* destination, const char* source);
int trimright(char* destination, const char* source);
int trim(char* destination, const char* source);
/** `count` characters from `start`; a count of 0 or past the end copies to the end, an empty range gives "".
    Returns the number copied. */
int mid(char* destination, const char* source, int start, int count);
/** Position of the first `needle` at or after `start`; 0 if there is none or the needle is empty. */
int instr(const char* text, const char* needle, int start);
/** Copies with the first `find` at or after `start` replaced. Returns its position, 0 if there is none. */
int repstr(char* destination, const char* source, const char* find, const char* replace, int start);
