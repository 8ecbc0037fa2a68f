# Shared by the scripts: goes to the root of the repository, and builds presets.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"

# build PRESET [TARGET...]: configures once, then builds the targets, or everything.
build() {
    [ -f "build/$1/build.ninja" ] || cmake --preset "$1" >/dev/null
    cmake --build --preset "$1" ${2:+--target "${@:2}"}
}
