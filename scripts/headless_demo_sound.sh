# Sourced: start_sound FOLDER starts a private sound server whose only output, "heard", is a null sink in
# real time, and exports the environment for its clients. stop_sound ends it. The monitor "heard.monitor" carries the sound.
start_sound() {
  export XDG_RUNTIME_DIR="$1"
  export PULSE_RUNTIME_PATH="$1/pulse" PULSE_STATE_PATH="$1/pulse-state"
  export PULSE_SERVER="unix:$1/pulse.socket" PULSE_COOKIE="$1/cookie"
  mkdir -p "$PULSE_RUNTIME_PATH" "$PULSE_STATE_PATH"
  chmod 700 "$1" "$PULSE_RUNTIME_PATH"
  pulseaudio -n --daemonize=no --exit-idle-time=-1 --use-pid-file=no --disable-shm=yes --realtime=no --log-level=error \
    --load="module-null-sink sink_name=heard rate=48000 channels=2" \
    --load="module-native-protocol-unix socket=$1/pulse.socket auth-cookie=$1/cookie" >"$1/pulse.log" 2>&1 &
  SOUND_PID=$!
  for _ in $(seq 100); do
    [ -S "$1/pulse.socket" ] && return 0
    kill -0 "$SOUND_PID" 2>/dev/null || break
    sleep 0.05
  done
  echo "The sound server did not start; its log: $1/pulse.log" >&2
  stop_sound
  return 1
}

stop_sound() {
  [ -n "${SOUND_PID:-}" ] && kill "$SOUND_PID" 2>/dev/null && wait "$SOUND_PID" 2>/dev/null
  SOUND_PID=
  return 0
}
