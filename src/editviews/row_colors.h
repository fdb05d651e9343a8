#pragma once

#include "platform/support/geometry.h"

/** Colours of a row's additions, from the colours of the settings. Pure: any thread. */

/** The text's colour moved towards the background, as far as it stays readable. */
rgb_color quiet_color(rgb_color text, rgb_color background);
/** Readable on the background, and unlike most text colours. */
rgb_color warning_color(rgb_color background);
/** From 1 (the same) to 21 (black and white), as WCAG 2 defines it. */
double contrast(rgb_color a, rgb_color b);
