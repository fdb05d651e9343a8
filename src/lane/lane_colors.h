#pragma once

#include "platform/support/geometry.h"

/** The colours of the lane. Pure: any thread. */
struct TLaneColors {
  rgb_color background;
  rgb_color middle; // of the spectrogram, between the background and the loudest
  rgb_color loudest;
  rgb_color wave;
  rgb_color text;
  rgb_color tag;
  rgb_color chosen;
  rgb_color neighbour;
  rgb_color onset;
  rgb_color head;

  /** On the background of the lyrics. */
  static TLaneColors On(rgb_color background, rgb_color text);
};
