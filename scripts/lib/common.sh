# Shared by the scripts, which source it.
# shellcheck shell=bash

set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/../.." && pwd)
cd "$root"

say() {
  printf '%s: %s\n' "$(basename -- "$0")" "$*"
}

fail() {
  say "$*" >&2
  exit 1
}

# help_and_exit_if_asked "$1" "what the script does": the one line of --help.
help_and_exit_if_asked() {
  if [[ "${1:-}" == "--help" || "${1:-}" == "-h" ]]; then
    printf '%s: %s\n' "$(basename -- "$0")" "$2"
    exit 0
  fi
}

# configure_and_build PRESET [TARGET...]
configure_and_build() {
  local preset=$1
  shift
  say "building $preset${*:+ ($*)}"
  cmake --preset "$preset" -Wno-dev >"build/$preset-configure.log" 2>&1 ||
    { cat "build/$preset-configure.log" >&2; fail "configuring $preset failed"; }
  cmake --build --preset "$preset" ${*:+--target "$@"}
}
mkdir -p build
