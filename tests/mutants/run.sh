#!/usr/bin/env bash
# Proves that the test suite notices single faults. Each .patch file here is
# one small, deliberate fault a player would notice (a word, a
# number, a colour, a sound, a draw, a bound, a rule). For each, this script
# applies it to a scratch copy of the working tree, rebuilds, runs the tests
# the patch names, and reports whether they caught it; the tests are first
# run on the unchanged copy, so a fault is only counted as caught by tests
# that pass without it.
#
#   tests/mutants/run.sh                 every patch
#   tests/mutants/run.sh a.patch b.patch just these
#
# A patch starts with two lines of its own before the diff:
#   # What: the big button's label reads PUSH instead of PRESS
#   # Tests: ButtonStation.*:TimingBench.*     (a GoogleTest filter)
# Make one with `git diff > tests/mutants/NN-name.patch` and put the working
# tree back. VORN_MUTANT_WORK names the scratch folder (default
# build/mutants); it is kept, so a second run only rebuilds what changed.
# Slow (a rebuild per patch), so it is not part of ./test.sh. Exits 1 when a
# fault survives or a patch no longer applies or builds.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
work=${VORN_MUTANT_WORK:-$root/build/mutants}
patches=("$@")
if [ "${#patches[@]}" -eq 0 ]; then
  patches=("$root"/tests/mutants/*.patch)
fi

mkdir -p "$work"
work=$(cd "$work" && pwd)
# The scratch copy is no repository, but it may sit inside one (build/ is in
# the working tree): git apply would then take it for a subfolder of that
# repository and skip every path outside it without a word. Git looks no
# higher than the scratch folder.
export GIT_CEILING_DIRECTORIES=$work
rm -rf "$work/tree"
mkdir -p "$work/tree"
(cd "$root" && git ls-files -co --exclude-standard -z | tar --null -cf - -T -) | tar -xf - -C "$work/tree"
cmake -S "$work/tree" -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
      -DVORN_BUILD_TESTS=ON -DVORN_WERROR=OFF >/dev/null
echo "mutants: building the unchanged copy"
cmake --build "$work/build" >"$work/build.log" 2>&1 || { tail -30 "$work/build.log"; exit 1; }

# Only what the tests run is rebuilt for each fault: the test program and the
# game (some tests start the real executable).
build_targets() { cmake --build "$work/build" --target vorn_tests vornco >"$work/build.log" 2>&1; }

export SDL_VIDEODRIVER=dummy SDL_AUDIODRIVER=dummy
tests=$work/build/tests/vorn_tests
run_filter() { timeout 900 "$tests" --gtest_filter="$1" >"$work/run.log" 2>&1; }

declare -A baseline=()
caught=0
survived=()
broken=()
for patch in "${patches[@]}"; do
  name=$(basename "$patch" .patch)
  what=$(sed -n 's/^# What: //p' "$patch" | head -n 1)
  filter=$(sed -n 's/^# Tests: //p' "$patch" | head -n 1)
  filter=${filter:-*}
  if [ -z "${baseline[$filter]+set}" ]; then
    # The previous fault was taken out of the sources but not out of the
    # binary: rebuild before judging the unchanged copy.
    build_targets || { tail -30 "$work/build.log"; exit 1; }
    if run_filter "$filter"; then baseline[$filter]=ok; else baseline[$filter]=failing; fi
  fi
  if [ "${baseline[$filter]}" != ok ]; then
    broken+=("$name: its tests ($filter) fail without the fault")
    continue
  fi
  if ! (cd "$work/tree" && git apply "$patch" 2>"$work/apply.log"); then
    broken+=("$name: does not apply ($(head -n 1 "$work/apply.log"))")
    continue
  fi
  if ! build_targets; then
    broken+=("$name: does not build")
  elif run_filter "$filter"; then
    survived+=("$name: $what")
    echo "SURVIVED $name: $what"
  else
    caught=$((caught + 1))
    first=$(grep -m 1 -E '^\[  FAILED  \]' "$work/run.log" | sed 's/^\[  FAILED  \] //' || true)
    echo "caught   $name: $what (${first:-the run failed})"
  fi
  (cd "$work/tree" && git apply -R "$patch")
done
build_targets || true

echo "mutants: ${caught} caught, ${#survived[@]} survived, ${#broken[@]} broken, of ${#patches[@]}"
for line in "${survived[@]}" "${broken[@]}"; do echo "  $line"; done
[ "${#survived[@]}" -eq 0 ] && [ "${#broken[@]}" -eq 0 ]
