#!/usr/bin/env bash
# The command line tool on many files, beside cat reading them and cp writing them: bench/lrc_many.sh BIN-FOLDER [FILES] [RUNS]
# Each round measures all of them, one after another; the medians and their ratios to cat and cp together are printed,
# for cp to new files, to files that are there already, and to those with the bytes safe on the disk, which is what the
# tool leaves. TMPDIR chooses the disk. On it root is given a file system of its own, made as a system's installer makes
# it: what a replaced file costs depends much on how the disk was set up. Without a journal ext4 steps around every inode
# freed within the last minutes, and with "discard" it then waits for the disk at each removal. LRC_DISK=as-it-is
# measures on the disk itself, as it is done for other users.
set -euo pipefail
tool=$1/vesmo-lrc
files=${2:-10000}
runs=${3:-5}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export LC_ALL=C TIMEFORMAT=%R

disk=$scratch
give_it_a_file_system() {
  truncate -s "$((512 + files * 80 / 1024))M" "$disk/image"
  mkfs.ext4 -q "$disk/image"
  scratch=$disk/mounted
  mkdir "$scratch"
  mount -o loop "$disk/image" "$scratch"
  trap 'umount "$scratch"; rm -rf "$disk"' EXIT
}
if [ "$(id -u)" = 0 ] && [ "${LRC_DISK:-}" != as-it-is ]; then give_it_a_file_system; fi

python3 - "$scratch/songs" "$files" <<'EOF'
import pathlib, sys
root, count = pathlib.Path(sys.argv[1]), int(sys.argv[2])
text = "".join(f"[{s // 60:02d}:{s % 60:02d}:{s % 100:02d}]{word} of line {s}\n"
               for s, word in zip(range(0, 160, 4), ["words", "言葉", "more", "歌詞"] * 10))
for number in range(count):
    folder = root / f"{number % 100:02d}"
    folder.mkdir(parents=True, exist_ok=True)
    (folder / f"{number}.lrc").write_text(text, encoding="utf-8")
EOF

# Everything measured works on a copy whose bytes lie on the disk, as those of a user's files do.
fresh_copy() {
  rm -rf "$scratch/work"
  cp -r "$scratch/songs" "$scratch/work"
  sync -f "$scratch"
}
cat_all() { find "$scratch/songs" -type f -print0 | xargs -0 cat >/dev/null; }
cp_all() { cp -r "$scratch/songs" "$scratch/copy"; }
cp_all_over() { cp -rT --remove-destination "$scratch/songs" "$scratch/copy"; }
cp_all_safe() { cp_all_over && sync -f "$scratch"; }
run_tool() { "$tool" "$@" -q >/dev/null || [ "$1" = check ]; }
measure() { # NAME COMMAND...
  local name=$1
  shift
  { time "$@" 2>"$scratch/said"; } 2>>"$scratch/$name.times" || { cat "$scratch/said" >&2; exit 1; }
}

for _ in $(seq "$runs"); do
  fresh_copy
  measure cat cat_all
  measure cp cp_all
  sync -f "$scratch"
  measure cp_over cp_all_over
  sync -f "$scratch"
  measure cp_safe cp_all_safe
  rm -rf "$scratch/copy"
  sync -f "$scratch"
  measure info run_tool info "$scratch/work"
  measure check run_tool check "$scratch/work"
  measure shift run_tool shift --by 1230 "$scratch/work"
  fresh_copy
  measure encode run_tool encode --to sjis --eol crlf "$scratch/work"
  fresh_copy
  measure export run_tool export -o "$scratch/exported/" "$scratch/work"
  rm -rf "$scratch/exported"
done

median() { sort -n "$scratch/$1.times" | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }
ratio() { awk -v a="$(median "$1")" -v b="$(median cat)" -v c="$(median "$2")" 'BEGIN { printf "%.2f", a / (b + c) }'; }
echo "on $(findmnt -no FSTYPE,OPTIONS -T "$scratch")$([ "$scratch" = "$disk" ] || echo ", made for this")"
printf '%-24s %9s %10s %10s %10s\n' "$files files, $runs runs" "s" "cat + cp" "… over" "… safe"
for name in cat cp cp_over cp_safe; do printf '%-24s %9.3f\n' "$name" "$(median "$name")"; done
for name in info check shift encode export; do
  printf '%-24s %9.3f %10s %10s %10s\n' "vesmo-lrc $name" "$(median "$name")" "$(ratio "$name" cp)" \
    "$(ratio "$name" cp_over)" "$(ratio "$name" cp_safe)"
done
