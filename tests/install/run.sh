#!/usr/bin/env bash
# Installs the build into an empty folder, builds an application against that copy, and has the
# installed host show it. Arguments: the build folder, the C++ compiler's flags.
set -euo pipefail
build=$1
flags=${2:-}
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/installed" >/dev/null
cmake -S "$here/app" -B "$work/app" -G Ninja -DCMAKE_CXX_STANDARD=20 -DCMAKE_CXX_FLAGS="$flags" \
    -DCMAKE_PREFIX_PATH="$work/installed" >/dev/null
cmake --build "$work/app" >/dev/null
"$work/installed/bin/orvane-host" --offscreen --size 80x60 --dump-tree \
    --snapshot "$work/a.png" "$work/app" | tee "$work/tree"
grep -q QuartzRect "$work/tree"
[ -s "$work/a.png" ]
! ldd "$work"/installed/lib/*/liborvane.so | grep -qi gtk
