#include "tools/vesmo_lrc/help.h"

const char* const kVersionText = "vesmo-lrc (Vesmo Editor) 3.26\n";

const char* const kHelpText = R"(Usage: vesmo-lrc COMMAND [OPTION]... FILE|FOLDER|-...

Looks at timed lyrics, changes them, or writes them for other programs; many files at once. Of a folder every *.lrc
in it and below it is taken. "-" is the standard input, whose result goes to the standard output.

Commands:
  info      tells encoding, line ends, lines, tags and times
  check     tells what other players may read differently than meant
  shift     moves all time tags            --by MS (such as 250, -1500, 1.5s)
  convert   gives all tags one form        --to std|ext   [mm:ss] or [mm:ss:cc]
  strip     takes the time tags off
  encode    writes the text anew           --to utf-8|sjis|jis, --eol lf|crlf|cr
  export    writes a copy for others       --to lrc|enhanced|srt
                                           [mm:ss.cc], the same with <mm:ss.cc> at words, or subtitles

shift, convert, strip and encode replace each file in one step, keep its permissions, and leave a file alone that
would lose something. Lines with a bracket that is no time tag, such as [ti:Title] or [Chorus], stay as they are.

Options:
  -n, --dry-run         show what would change and write nothing
  -o, --output=PATH     export: the file, or the folder for many; of one file without it the standard output
  -f, --force           export: replace files that are there
      --from=ENCODING   utf-8, sjis, jis or auto (found out for each file)
      --like-editor     shift, convert, strip: as the editor's commands, to which every line that begins with a
                        bracket is tagged
      --to=ENCODING     check: the encoding that the lyrics shall fit into
      --length=TIME     check: how long the song is (mm:ss); without it what [length:mm:ss] says
      --format=FORMAT   info, check: text, tsv or json
  -j, --jobs=N          files worked on at once; one a core if not given
  -q, --quiet           no summary and no progress bar
  -h, --help            this text
      --version         the version

The exit code is 0 when all went well, 1 when a file could not be worked on or a check found something, 2 for a
command line that makes no sense, and 128 and more when a signal ended the work: files are old or new, never half.
)";
