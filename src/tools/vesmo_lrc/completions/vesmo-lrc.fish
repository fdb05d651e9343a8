# Completion of vesmo-lrc for fish.
set -l commands info check shift convert strip encode export extract embed
set -l command_is "__fish_seen_subcommand_from"
complete -c vesmo-lrc -n "not $command_is $commands" -f
complete -c vesmo-lrc -n "not $command_is $commands" -a info -d 'Show encoding, line endings, lines, tags and times'
complete -c vesmo-lrc -n "not $command_is $commands" -a check -d 'Report what other players may misread'
complete -c vesmo-lrc -n "not $command_is $commands" -a shift -d 'Move all time tags'
complete -c vesmo-lrc -n "not $command_is $commands" -a convert -d 'Give all tags the same form'
complete -c vesmo-lrc -n "not $command_is $commands" -a strip -d 'Remove the time tags'
complete -c vesmo-lrc -n "not $command_is $commands" -a encode -d 'Change encoding or line endings'
complete -c vesmo-lrc -n "not $command_is $commands" -a export -d 'Write a copy for other programs'
complete -c vesmo-lrc -n "not $command_is $commands" -a extract -d 'Write the lyrics inside songs to files'
complete -c vesmo-lrc -n "not $command_is $commands" -a embed -d 'Write the lyrics next to songs into them'
complete -c vesmo-lrc -l from -x -a 'utf-8 sjis jis auto' -d 'Read as'
complete -c vesmo-lrc -s j -l jobs -x -d 'Files processed in parallel'
complete -c vesmo-lrc -s q -l quiet -d 'No summary and no progress bar'
complete -c vesmo-lrc -s h -l help -d 'Show the help'
complete -c vesmo-lrc -l version -d 'Show the version'
complete -c vesmo-lrc -n "$command_is shift convert strip encode export extract embed" -s n -l dry-run -d 'Show what would change'
complete -c vesmo-lrc -n "$command_is shift convert strip" -l like-editor -d 'Treat every bracket as a tag'
complete -c vesmo-lrc -n "$command_is info check" -l format -x -a 'text tsv json' -d 'Output format'
complete -c vesmo-lrc -n "$command_is check" -l length -x -d 'Length of the song'
complete -c vesmo-lrc -n "$command_is shift" -l by -x -d 'Milliseconds'
complete -c vesmo-lrc -n "$command_is convert" -l to -x -a 'std ext' -d Form
complete -c vesmo-lrc -n "$command_is convert" -l dialect -x -a 'family common' -d Dialect
complete -c vesmo-lrc -n "$command_is encode check" -l to -x -a 'utf-8 sjis jis' -d Encoding
complete -c vesmo-lrc -n "$command_is encode" -l eol -x -a 'lf crlf cr' -d 'Line endings'
complete -c vesmo-lrc -n "$command_is export" -l to -x -a 'lrc enhanced srt' -d Format
complete -c vesmo-lrc -n "$command_is export extract" -s o -l output -r -d 'File or folder'
complete -c vesmo-lrc -n "$command_is export extract" -s f -l force -d 'Overwrite existing files'
complete -c vesmo-lrc -n "$command_is shift convert strip encode" -s f -l force -d 'Also change files that an editor has changed'
complete -c vesmo-lrc -n "$command_is embed" -l lyrics -r -d 'Lyrics for one song'
