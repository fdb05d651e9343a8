# Completion of vesmo-lrc for bash.
_vesmo_lrc() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command='' word options values=''
  for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    case $word in info | check | shift | convert | strip | encode | export | extract | embed) command=$word && break ;; esac
  done
  # "--to=x" comes as three words.
  if [ "$current" = = ]; then current=''; elif [ "$previous" = = ]; then previous=${COMP_WORDS[COMP_CWORD - 2]}; fi
  case $previous in
    --to)
      case $command in
        convert) values="std ext" ;;
        export) values="lrc enhanced srt" ;;
        *) values="utf-8 sjis jis" ;;
      esac ;;
    --dialect) values="family common" ;;
    --from) values="utf-8 sjis jis auto" ;;
    --eol) values="lf crlf cr" ;;
    --format) values="text tsv json" ;;
    --by | --length | -j | --jobs) return ;;
  esac
  if [ -n "$values" ]; then
    mapfile -t COMPREPLY < <(compgen -W "$values" -- "$current")
  elif [[ $current == -* ]]; then
    options="--from --jobs --quiet --help --version"
    case $command in
      info) options+=" --format" ;;
      check) options+=" --format --to --length" ;;
      shift) options+=" --by --force --dry-run --like-editor" ;;
      convert) options+=" --to --dialect --force --dry-run --like-editor" ;;
      strip) options+=" --force --dry-run --like-editor" ;;
      encode) options+=" --to --eol --force --dry-run" ;;
      export) options+=" --to --output --force --dry-run" ;;
      extract) options+=" --output --force --dry-run" ;;
      embed) options+=" --lyrics --dry-run" ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
  elif [ -z "$command" ]; then
    mapfile -t COMPREPLY < <(compgen -W "info check shift convert strip encode export extract embed" -- "$current")
  else
    compopt -o filenames
    local wanted='*.[lL][rR][cC]'
    if [[ $command == e[xm][tb]* ]]; then wanted='*.@(mp[234]|flac|og[ga]|opus|m4[ab])'; fi
    mapfile -t COMPREPLY < <(shopt -s extglob nocasematch; compgen -d -- "$current"; compgen -f -X "!$wanted" -- "$current")
  fi
}
complete -F _vesmo_lrc vesmo-lrc
