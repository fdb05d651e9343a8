#pragma once

#include "platform/support/geometry.h"

/** Colours of what is added to the lyrics, from the colours of the settings. Pure: any thread. */

/** The text's colour moved towards the background, as far as it stays readable. */
rgb_color quiet_color(rgb_color text, rgb_color background);
/** The colour moved towards `extreme` until it has that contrast to the background; at most `extreme` itself. */
rgb_color set_off(rgb_color color, rgb_color background, rgb_color extreme, double leastContrast);
rgb_color mixed_color(rgb_color a, rgb_color b, double partOfA);
/** Readable on the background, and unlike most text colours. */
rgb_color warning_color(rgb_color background);
/** From 1 (the same) to 21 (black and white), as WCAG 2 defines it. */
double contrast(rgb_color a, rgb_color b);
