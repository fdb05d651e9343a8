#pragma once

/** How far the library's position is ahead of the sound, in ms of the song, at speeds other than 1. The time-stretching
    filter ("rubberband") keeps this offset constant per speed; the values were measured against the recorded sound
    (bench/audio_chain.sh) and hold after seeks and for every format. 0 at speed 1, which needs no filter. */
double speed_bias_ms(double speed);
