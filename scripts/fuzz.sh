#!/usr/bin/env bash
# Builds the libFuzzer targets for the catalogue scanner and the save loader
# with clang and runs each for a bounded time (VORN_FUZZ_SECONDS, default 20)
# from the seed corpus in tests/fuzz/corpus. Installs clang and libFuzzer
# first when they are missing. New inputs go to a scratch folder, never into
# the repo.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh fuzz

seconds="${VORN_FUZZ_SECONDS:-20}"
out=build/fuzz
mkdir -p "$out"
flags=(-std=c++17 -g -O1 -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=all -Isrc)

clang++ "${flags[@]}" tests/fuzz/catalogue_fuzzer.cpp src/data/level_catalogue.cpp -o "$out/catalogue_fuzzer"
clang++ "${flags[@]}" tests/fuzz/save_fuzzer.cpp src/data/save_data.cpp src/data/file_paths.cpp -o "$out/save_fuzzer"

for target in catalogue save; do
  scratch="$out/corpus-$target"
  rm -rf "$scratch"
  mkdir -p "$scratch"
  echo "fuzz: $target for ${seconds}s"
  "$out/${target}_fuzzer" -max_total_time="$seconds" -timeout=5 -rss_limit_mb=2048 \
    -print_final_stats=1 "$scratch" "tests/fuzz/corpus/$target" 2>"$out/$target.log" ||
    { tail -40 "$out/$target.log"; echo "fuzz: $target FAILED"; exit 1; }
  grep -E "stat::number_of_executed_units" "$out/$target.log" || true
done
echo "fuzz: both targets ran clean"
