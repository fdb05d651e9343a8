#!/usr/bin/env bash
# Tries the package on a fresh Debian 12: try_in_clean_root.sh PACKAGE BIN-FOLDER [BASE-FOLDER]
# In a root of its own apt installs the package, the demo runs there from the installed files, apt purges it, and every
# file that was not there before is named. BIN-FOLDER lends "sing", which listens and presses the keys. BASE-FOLDER is
# a root made by "debootstrap --variant=minbase bookworm" to copy; without it one is made. Needs root and the network.
set -euo pipefail
[ "$(id -u)" -eq 0 ] || { echo "try_in_clean_root.sh: needs root, to install into a root folder of its own." >&2; exit 1; }
# In name spaces of its own whatever is mounted or left running goes away with this script.
if [ -z "${VESMO_ROOT_IS_OURS:-}" ]; then
  exec env VESMO_ROOT_IS_OURS=1 unshare --mount --pid --fork --kill-child "$0" "$@"
fi
package=$(realpath "$1")
bin=$(realpath "$2")
base=${3:+$(realpath "$3")}
cd "$(dirname "$0")/.."
step() { printf '\n== %s\n' "$1"; }

root=$(mktemp -d)
finish() {
  umount -l "$root/proc" 2>/dev/null || true
  rm -rf --one-file-system "$root"
}
trap finish EXIT
inside() {
  env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive chroot "$root" "$@"
}
quiet_apt() { inside apt-get -qq -y -o Dpkg::Use-Pty=0 "$@" >"$root/tmp/apt.log" 2>&1 || { cat "$root/tmp/apt.log" >&2; return 1; }; }
# All that a package could leave; caches, logs and the package lists are the system's.
files() {
  inside find / -xdev \( -path /proc -o -path /tmp -o -path /run -o -path /var/cache -o -path /var/log \
    -o -path /var/lib/apt \) -prune -o -printf '%y %p %l\n' | sort
}

step "A fresh root"
if [ -n "$base" ]; then cp -a "$base/." "$root"; else debootstrap --variant=minbase bookworm "$root" >/dev/null; fi
chmod 755 "$root"
mount -t proc proc "$root/proc"
cp /etc/resolv.conf "$root/etc/"
# The network is reached as it is here.
apt-config dump | grep '^Acquire::\(http\|https\|Check-\)' >"$root/etc/apt/apt.conf.d/90network" || true
quiet_apt update
# What hears the demo, and what a desktop has to take in menu entries and types.
quiet_apt install --no-install-recommends xvfb xauth pulseaudio libxtst6 libpulse0 shared-mime-info desktop-file-utils \
  hicolor-icon-theme
files >"$root/tmp/before"

step "Install"
mkdir "$root/tmp/try"
cp "$package" "$root/tmp/try/"
# The package's own dependencies must do.
quiet_apt install --no-install-recommends "/tmp/try/$(basename "$package")"
inside dpkg -L vesmo-editor | while read -r file; do inside test -e "$file" || { echo "$file is not there" >&2; exit 1; }; done
inside sonivo --version
inside grep -q 'text/x-lrc' /usr/share/mime/globs2 || { echo "The type of lyrics files is not known." >&2; exit 1; }

step "The demo, from the installed files"
cp -a scripts demo "$root/tmp/try/"
mkdir "$root/tmp/try/bin"
cp "$bin/sing" "$root/tmp/try/bin/"
ln -s /usr/bin/sonivo "$root/tmp/try/bin/sonivo"
inside /tmp/try/scripts/headless_demo.sh /tmp/try/bin

step "Remove"
quiet_apt purge vesmo-editor
quiet_apt autoremove --purge
files >"$root/tmp/after"
if ! diff "$root/tmp/before" "$root/tmp/after" >"$root/tmp/difference"; then
  echo "These files differ from before:" >&2
  cat "$root/tmp/difference" >&2
  exit 1
fi
echo "Nothing is left of $(basename "$package"): $(wc -l <"$root/tmp/after") files as before."
