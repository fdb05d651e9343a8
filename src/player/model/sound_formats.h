#pragma once

/** The kinds of file that are opened as songs, by the decoding library's names, for its option "format_whitelist". None
    of them names another file or a host: lists of songs, streams in pieces (HLS, DASH), concatenations, pictures and
    session descriptions are left out, whatever the name of the file. */
#define SOUND_FORMATS                                                                                                  \
  "aac,ac3,aiff,amr,ape,asf,au,avi,caf,dsf,dts,dtshd,eac3,flac,flv,iff,loas,matroska,mov,mp3,mpc,mpc8,mpeg,mpegts,"    \
  "ogg,oma,rm,shn,tak,truehd,tta,voc,w64,wav,wsd,wv,xwma"
