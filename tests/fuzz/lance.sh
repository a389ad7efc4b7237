#!/bin/sh
# lance.sh TARGET [SECONDS]: runs one fuzz target of build/fuzz on its corpus, ten minutes by default.
set -eu
corpus=build/fuzz/corpus/$1
mkdir -p "$corpus"
export LSAN_OPTIONS="suppressions=tests/lsan.txt"
# The library of statements leaves something of every file: looking for it after each one takes longer than the file.
fuites=1
[ "$1" = ofx ] && fuites=0
exec "build/fuzz/bin/fuzz_$1" -max_total_time="${2:-600}" -max_len=8192 -rss_limit_mb=4096 -print_final_stats=1 -detect_leaks="$fuites" \
  -artifact_prefix="build/fuzz/$1-" "$corpus" >"build/fuzz/$1.log" 2>&1
