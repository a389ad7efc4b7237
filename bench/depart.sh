#!/bin/sh
# Start of the program with the demo practice beside an empty Qt window: processor
# time and memory. Builds what it needs; brings a display of its own.
#   bench/depart.sh [RUNS]
set -eu
cd "$(dirname "$0")/.."
. cmake/paquets.sh
paquets $paquets_programme $paquets_tests xvfb
cmake --preset release -DFENLOR_BENCH=ON >/dev/null
cmake --build --preset release --target fenlor fenlorctl fenetrevide bench_depart
bin="$PWD/build/release/bin"

travail="$(mktemp -d)"
trap 'rm -rf "$travail"' EXIT
"$bin/fenlorctl" --cabinet "$travail/demo" demo >/dev/null
export XDG_CONFIG_HOME="$travail/config" XDG_RUNTIME_DIR="$travail/run" XDG_DATA_HOME="$travail/data" LC_ALL=C.UTF-8
mkdir -p "$XDG_CONFIG_HOME/Orvelia" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"
# A first start, unmeasured: the settings get their defaults.
xvfb-run -a -s "-screen 0 1280x1024x24" sh -c '
  timeout 4 "$1/fenlor" /D "$2" >/dev/null 2>&1 || true
  exec "$1/bench_depart" "$3" -- "$1/fenetrevide" -- "$1/fenlor" /D "$2"' sh "$bin" "$travail/demo" "${1:-7}"
