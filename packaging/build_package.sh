#!/usr/bin/env bash
# Makes the Debian package of a build folder and examines it: build_package.sh BUILD-FOLDER
# The package lands in BUILD-FOLDER/package; its path is the last line.
set -euo pipefail
build=$(realpath "$1")
cd "$(dirname "$0")/.."
out=$build/package
rm -rf "$out"
# What is packed is readable to everybody, whatever the user's own files are.
umask 022
(cd "$build" && cpack -G DEB -B "$out" >"$build/package.log" 2>&1) || { cat "$build/package.log" >&2; exit 1; }
package=$(ls "$out"/*.deb)
lintian --allow-root --fail-on error --tag-display-limit 0 "$package"
rm -rf "$out/_CPack_Packages"

unpacked=$(mktemp -d)
trap 'rm -rf "$unpacked"' EXIT
dpkg-deb -x "$package" "$unpacked"
share=$unpacked/usr/share
appstreamcli validate --no-net "$share"/metainfo/*.xml >&2
desktop-file-validate "$share"/applications/*.desktop
# The links in bin lead to programs that are there, and these find their libraries beside them.
for command in "$unpacked"/usr/bin/*; do "$command" --version >/dev/null; done
python3 scripts/check_runpaths.py "$unpacked" >&2
# Debian's start files lack the marks of control flow protection, so no linked image has them; and in the platform's
# library no call is left for the checked functions: the sizes are known when it is built, or not even when it runs.
images() { find "$unpacked" -type f \( -perm -u+x -o -name '*.so' \) "$@"; }
images ! -name libvesmo_platform.so -exec hardening-check --quiet --nocfprotection {} + >&2
images -name libvesmo_platform.so -exec hardening-check --quiet --nocfprotection --nofortify {} + >&2
echo "$package"
