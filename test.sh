#!/bin/bash
# Installs what is missing, builds, and runs the tests. Without a word: unit and desk, which is what a
# change needs; all is what a release needs.
set -euo pipefail
top=$(cd "$(dirname "$(readlink -f "$0")")" && pwd)
cd "$top"
. scripts/packages.sh

usage='./test.sh [unit|desk|asan|lint|release|all]...'
for word in "$@"; do
  case $word in
  unit | desk | asan | lint | release | all) ;;
  *) echo "$usage" >&2; exit 2 ;;
  esac
done
asked=" ${*:-unit desk} "
wants() { [[ $asked = *" $1 "* || $asked = *" all "* ]]; }

kinds=()
for kind in lint unit asan desk release; do
  if wants $kind; then kinds+=("$kind"); fi
done
# Rough: the sum of parts that were measured one by one on two cores, with all packages installed.
echo "Building and running: ${kinds[*]}. On two cores, unit and desk take about 15 minutes together, and all about 50."

packages="$packages_build $packages_run $packages_test"
if wants desk; then packages+=" $packages_desk"; fi
install_packages $packages

# build PRESET: everything that has a test or a rule.
build() {
  echo "Building: $1"
  cmake --preset "$1" >/dev/null
  cmake --build --preset "$1"
}
if wants unit || wants lint; then build dev; fi
if wants asan; then build asan; fi
# The desk runs what is shipped, or without "all" and beside the unit tests, what is built already.
if wants desk; then
  if wants unit && ! wants release; then ./make_app.sh --preset dev; else ./make_app.sh; fi
fi
other=tests/other_release
# What goes wrong there fails its own tests, or skips them, and keeps none of the others from running.
if wants release && [ -x $other ]; then $other build || true; fi

# One list of everything, so that one runner counts it and its summary is the last word.
rm -rf build/tests
mkdir -p build/tests
scripts/list_tests.sh "${kinds[@]}" >build/tests/CTestTestfile.cmake
# No unit test may open a window on the screen of whoever runs this (the desk has its own).
export QT_QPA_PLATFORM=offscreen
status=0
# Most tests wait for services most of the time.
ctest --test-dir build/tests --parallel $((3 * $(nproc))) --no-tests=error --output-on-failure \
  --no-label-summary --output-junit results.xml || status=$?
if [ -s build/tests/results.xml ]; then
  scripts/check_skipped.py build/tests/results.xml scripts/allowed_skips.txt || status=1
fi
exit $status
