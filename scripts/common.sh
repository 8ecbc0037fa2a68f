# Shared by the scripts: where the repository is, and how to build one preset.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"

# build PRESET [TARGET...]: configures once, then builds what changed of the targets, or of everything.
build() {
    [ -f "build/$1/build.ninja" ] || cmake --preset "$1" >/dev/null
    cmake --build --preset "$1" ${2:+--target "${@:2}"}
}
