#!/usr/bin/env bash
# Installs the missing Debian packages for the given purposes (build, run, headless, scenario,
# window-managers, test, song-readers, package, bench).
# Without apt, or without the right to use it, it prints what is needed and stops.
set -euo pipefail

packages_for() {
  case "$1" in
    build) echo g++ cmake ninja-build ccache pkg-config qt6-base-dev qt6-base-dev-tools python3 libgl1-mesa-dev libxcb1-dev libfontconfig-dev libicu-dev libuchardet-dev libmpv-dev libpulse-dev libseccomp-dev libtag1-dev zlib1g-dev libavformat-dev libavcodec-dev libavutil-dev libswresample-dev libswscale-dev ;;
    run) echo qt6-translations-l10n qt6-qpa-plugins fonts-dejavu-core fonts-noto-cjk xdg-utils ;;
    headless) echo xvfb xauth pulseaudio pulseaudio-utils imagemagick libx11-dev libxtst-dev ;;
    scenario) echo xdotool openbox playerctl libglib2.0-bin dbus-daemon at-spi2-core gir1.2-atspi-2.0 python3-gi python3-xlib util-linux mpv mpv-mpris weston qt6-wayland ;;
    window-managers) echo openbox metacity xfwm4 xfconf icewm fluxbox ;;
    test) echo git dbus-daemon dbus-bin playerctl libgtest-dev libgmock-dev clang libclang-rt-dev clang-format clang-tidy binutils python3 attr ffmpeg python3-mutagen opus-tools vorbis-tools atomicparsley ;;
    song-readers) echo kid3-cli ;;
    package) echo binutils devscripts dpkg-dev file gzip lintian appstream desktop-file-utils ;;
    bench) echo libbenchmark-dev libdbus-1-dev dbus-daemon pulseaudio-utils ffmpeg sox lame mpg123 libx11-dev python3 xdotool featherpad kwrite mpv audacious mpv-mpris audacious-plugins ;;
    *) echo "install_packages.sh: no purpose named '$1'" >&2; exit 2 ;;
  esac
}

missing=()
for purpose in "$@"; do
  for package in $(packages_for "$purpose"); do
    # dpkg-query fails for unknown packages, which are missing as well.
    status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$status" = installed ] || missing+=("$package")
  done
done
[ ${#missing[@]} -eq 0 ] && exit 0

if ! command -v apt-get >/dev/null; then
  printf 'These are needed (named as Debian 12 names them), and there is no apt here to install them:\n' >&2
  printf '  %s\n' "${missing[@]}" >&2
  exit 1
fi
sudo=()
if [ "$(id -u)" -ne 0 ]; then
  if ! command -v sudo >/dev/null; then
    printf 'Please install, as root: apt-get install %s\n' "${missing[*]}" >&2
    exit 1
  fi
  sudo=(sudo)
fi
echo "Installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${sudo[@]}" apt-get update -qq
"${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
