#pragma once

/** How far, in ms of the song, the library's position runs ahead of the sound at another speed than the song's own.
    The stretching filter ("rubberband") keeps this constant per speed; the figures were measured against the recorded
    sound (bench/audio_chain.sh) and hold after seeks and for every format. 0 at speed 1, where no filter is in. */
double speed_bias_ms(double speed);
