#include "tools/vesmo_lrc/help.h"

const char* const kVersionText = "vesmo-lrc (Vesmo Editor) 3.26\n";

const char* const kHelpText = R"(Usage: vesmo-lrc COMMAND [OPTION]... FILE|FOLDER|-...

Inspect, change and export timed lyrics, one file or many at once. Folders are searched for *.lrc files, with their
subfolders; extract and embed search for songs instead. "-" reads standard input and writes standard output.

Commands:
  info      show encoding, line endings, lines, tags and times
  check     report what other players may misread
  shift     move all time tags             --by MS (such as 250, -1500, 1.5s)
  convert   give all tags the same form    --to std|ext   [mm:ss] or [mm:ss:cc]
                                           --dialect family|common   [mm:ss:cc], or [mm:ss.cc] as in most
                                           other players
  strip     remove the time tags
  encode    change encoding or line endings
                                           --to utf-8|sjis|jis, --eol lf|crlf|cr
  export    write a copy for other programs
                                           --to lrc|enhanced|srt
                                           [mm:ss.cc], the same with <mm:ss.cc> at words, or subtitles
  extract   write the lyrics inside songs to files or standard output
  embed     write the .lrc or .txt next to each song into the song
                                           (MP3, FLAC, Ogg, Opus, MP4)

shift, convert, strip and encode replace each file atomically and keep its permissions. A file that would lose
something is left unchanged, also by embed, which never changes the sound or other tags. So are lines with a bracket that is not a time tag, such as [ti:Title] or [Chorus].

Options:
  -n, --dry-run         show what would change, write nothing
  -o, --output=PATH     export, extract: output file, or output folder for several files (default for one file: standard
                        output)
  -f, --force           export, extract: overwrite existing files; shift, convert, strip, encode: also change files in which
                        an editor has unsaved changes
      --from=ENCODING   utf-8, sjis, jis or auto (detected for each file; the default)
      --like-editor     shift, convert, strip: treat every line that begins with a bracket as tagged, as the editor
                        does
      --to=ENCODING     check: encoding that must be able to hold the lyrics
      --length=TIME     check: song length (mm:ss); default: the [length:mm:ss] line
      --lyrics=FILE     embed: the lyrics for a single song, instead of those next to it
      --format=FORMAT   info, check: text, tsv or json
  -j, --jobs=N          number of files processed in parallel (default: one per core)
  -q, --quiet           no summary and no progress bar
  -h, --help            show this help
      --version         show the version

Exit status: 0 on success, 1 if a file could not be processed or a check found something, 2 for a usage error, and
128 + the signal's number when interrupted; no file is left half written.
)";
