#pragma once

/** Allow list of demuxers for songs, for the decoding library's option "format_whitelist". None of these formats can
    refer to another file or host: playlists, segmented streams (HLS, DASH), concatenations, pictures and session
    descriptions are excluded, whatever the file's name. */
#define SOUND_FORMATS                                                                                                  \
  "aac,ac3,aiff,amr,ape,asf,au,avi,caf,dsf,dts,dtshd,eac3,flac,flv,iff,loas,matroska,mov,mp3,mpc,mpc8,mpeg,mpegts,"    \
  "ogg,oma,rm,shn,tak,truehd,tta,voc,w64,wav,wsd,wv,xwma"
