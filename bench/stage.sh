# Sourced from the root of the sources, with the folder of the programs in $bin: set_stage PART ... gives a measurement
# a display, a sound and a message bus of its own, and settings in a new folder, $scratch. begin COMMAND ... starts a
# program beside it, whose process is then $begun; end_programs ends these. Everything goes when the script ends.
. scripts/headless_demo_display.sh
. scripts/headless_demo_sound.sh
scratch=$(mktemp -d)
programs=()
bus_pid=

begin() {
  "$@" >"$scratch/log" 2>&1 &
  begun=$!
  programs+=("$begun")
}
end_programs() {
  for pid in "${programs[@]}"; do kill "$pid" 2>/dev/null && wait "$pid" 2>/dev/null || true; done
  programs=()
}

clear_stage() {
  end_programs
  [ -z "$bus_pid" ] || kill "$bus_pid" 2>/dev/null || true
  stop_sound
  stop_display
  rm -rf "$scratch"
}
trap clear_stage EXIT

start_bus() {
  { read -r DBUS_SESSION_BUS_ADDRESS; read -r bus_pid; } < <(dbus-daemon --session --fork --print-address=1 --print-pid=1)
  export DBUS_SESSION_BUS_ADDRESS
}

set_stage() { # display, sound, bus: in this order
  local part
  for part in "$@"; do
    case "$part" in
      display) start_display "$scratch" ;;
      sound) start_sound "$scratch/sound" ;;
      bus) start_bus ;;
    esac
  done
  export XDG_CONFIG_HOME=$scratch/settings XDG_STATE_HOME=$scratch/state XDG_CACHE_HOME=$scratch/cache HOME=$scratch LC_ALL=C.UTF-8
  mkdir "$XDG_CONFIG_HOME" "$XDG_CACHE_HOME"
}

# The noise in which a position can be found, as $scratch/NAME in the form that the name tells.
noise_tracks=(noise.wav noise-vbr.mp3 noise-bare.mp3 noise.flac noise.ogg noise.opus noise.m4a)
make_tracks() { # NAME ...
  local name form
  "$bin/audio_chain" --noise "$scratch/noise.wav"
  for name in "$@"; do
    form=()
    case "$name" in
      noise.wav) continue ;;
      noise-vbr.mp3) form=(-c:a libmp3lame -q:a 2) ;;
      noise-bare.mp3) form=(-c:a libmp3lame -q:a 2 -write_xing 0 -id3v2_version 0) ;;
      noise.ogg) form=(-c:a libvorbis -q:a 6) ;;
      noise.opus) form=(-c:a libopus -b:a 128k) ;;
      noise.m4a) form=(-c:a aac -b:a 160k) ;;
    esac
    ffmpeg -v error -i "$scratch/noise.wav" "${form[@]}" "$scratch/$name"
  done
}

# A player folder, $scratch/bin, in which the probe stands beside the plug-ins named.
make_probed_player() { # PLUGIN ...
  local plugin
  mkdir -p "$scratch/bin/plugins"
  cp "$bin"/sonivo* "$bin"/libvesmo_*.so "$scratch/bin/"
  for plugin in "$@"; do cp -r "$plugin" "$scratch/bin/plugins/"; done
  cp "$bin/bench_plugins/gen_ChainProbe.so" "$scratch/bin/plugins/"
}

cpu_ms() { awk -v tick="$(getconf CLK_TCK)" '{ print int(($14 + $15) * 1000 / tick) }' "/proc/$1/stat"; }

# Processor time of the program, in percent of a core, while $scratch/demo.opus plays and LYRICS are open, after KEY was
# pressed in the editor; with new settings.
print_cpu_of_playing() { # NAME SECONDS LYRICS [KEY]
  local before window
  rm -rf "$XDG_CONFIG_HOME"
  mkdir "$XDG_CONFIG_HOME"
  begin "$bin/sonivo" --edit "$3" "$scratch/demo.opus"
  window=$(timeout 60 xdotool search --sync --onlyvisible --name "Vesmo Editor" | head -n 1)
  sleep 2
  xdotool windowfocus --sync "$window"
  [ $# -lt 4 ] || xdotool key "$4"
  sleep 5 # the sound is read for the lane, and following waits for this long after a key
  before=$(cpu_ms "$begun")
  sleep "$2"
  awk -v what="$1" -v s="$2" -v ms="$(($(cpu_ms "$begun") - before))" 'BEGIN { printf "%-14s %6.2f\n", what, ms / s / 10 }'
  end_programs
}
