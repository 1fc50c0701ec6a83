#!/bin/bash
# Installs what is missing, builds, and runs the tests. ./test.sh [unit|asan|desk|lint|all]...
set -euo pipefail
top=$(cd "$(dirname "$(readlink -f "$0")")" && pwd)
cd "$top"
. scripts/packages.sh

for word in "${@:-all}"; do
  case $word in
  unit | asan | desk | lint | all) ;;
  *) echo "./test.sh [unit|asan|desk|lint|all]..." >&2; exit 2 ;;
  esac
done
asked=" ${*:-all} "
wants() { [[ $asked = *" $1 "* || $asked = *" all "* ]]; }
kinds=()
for kind in lint unit asan desk; do
  if wants $kind; then kinds+=("$kind"); fi
done

install_packages $packages_build $packages_run $packages_test
if wants desk; then install_packages $packages_desk; fi

# build PRESET: configured quietly; everything that has a test or a rule.
build() {
  echo "Building: $1"
  cmake --preset "$1" >/dev/null
  cmake --build --preset "$1" -- --quiet
}
if wants unit || wants lint; then build dev; fi
if wants asan; then build asan; fi
if wants desk; then ./make_app.sh; fi

# One list of everything, so that one runner counts it and its summary is the last word.
rm -rf build/tests
mkdir -p build/tests
scripts/list_tests.sh "${kinds[@]}" >build/tests/CTestTestfile.cmake
# No unit test may open a window on the screen of whoever runs this (the desk has its own).
export QT_QPA_PLATFORM=offscreen
status=0
# The runner shows no output of what passes; a desk test that needed a second try says so here.
DESK_TELL=3 ctest --test-dir build/tests --parallel 3 --no-tests=error --output-on-failure --no-label-summary \
  --output-junit results.xml 3>&2 || status=$?
if [ -s build/tests/results.xml ]; then
  scripts/check_skipped.py build/tests/results.xml scripts/allowed_skips.txt || status=1
fi
exit $status
