#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs scripts/run of a small tree of its own, with stand-ins for the building tools: from any folder, through links and
# with an exported CDPATH it must build that tree and start that tree's program in the folder where it was called.
set -euo pipefail
scripts=$(cd "$(dirname "$0")/../../scripts" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
tree="$work/the house"
mkdir -p "$tree/scripts" "$tree/packaging" "$tree/build/release/bin" "$work/tools" "$work/elsewhere/scripts"
cp "$scripts"/{run,build,lib.sh} "$tree/scripts"
: >"$tree/packaging/debian-packages.txt"
printf '#!/bin/sh\npwd >>"%s/built"\n' "$work" >"$work/tools/cmake"
printf '#!/bin/sh\nprintf "%%s|" "$PWD" "$@"\n' >"$tree/build/release/bin/quorvell"
chmod +x "$work/tools/cmake" "$tree/build/release/bin/quorvell"
ln -s "$tree/scripts/run" "$work/linked"
ln -s "$work/linked" "$work/elsewhere/twice"
ln -s "$tree" "$work/tree"

export PATH="$work/tools:$PATH"
failed=0
# Where it is called, and how. A path that begins with neither "/" nor "." is one that CDPATH counts for.
while read -r folder script; do
    for path in "" ".:/" "$tree:$work"; do
        rm -f "$work/built"
        cd "$work/$folder"
        said=$(env ${path:+CDPATH="$path"} "$script" notes "two words" 2>&1) || said="exit code $?: $said"
        built=$(sort -u "$work/built" 2>/dev/null || true)
        [ "$said" = "$PWD|notes|two words|" ] && [ "$(realpath "${built:-/}")" = "$(realpath "$tree")" ] && continue
        failed=1
        echo "In $folder, $script with CDPATH=\"$path\": built in \"$built\", said: $said"
    done
done <<ROWS
tree scripts/run
. tree/scripts/run
elsewhere ../tree/scripts/run
elsewhere $work/tree/scripts/run
elsewhere ../linked
elsewhere ./twice
. elsewhere/twice
ROWS
exit $failed
