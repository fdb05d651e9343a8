# Sourced: start_display FOLDER starts a virtual X display with a free number and sets the environment for programs
# started later, detached from the user's session; stop_display ends it.
start_display() {
  # Without -noreset the display resets after its last client, and refuses connections meanwhile.
  mkfifo "$1/display"
  Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp -noreset 3>"$1/display" 2>"$1/xvfb.log" &
  DISPLAY_PID=$!
  local number
  read -r -t 20 number <"$1/display" || { cat "$1/xvfb.log" >&2; return 1; }
  export DISPLAY=:$number QT_QPA_PLATFORM=xcb
  unset WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS
}

stop_display() {
  [ -n "${DISPLAY_PID:-}" ] && kill "$DISPLAY_PID" 2>/dev/null && wait "$DISPLAY_PID" 2>/dev/null
  DISPLAY_PID=
  return 0
}
