#!/bin/bash
# Installs what is missing, builds, and runs the tests. ./test.sh [unit|asan|desk|lint|all]
set -euo pipefail
top=$(cd "$(dirname "$(readlink -f "$0")")" && pwd)
cd "$top"
. scripts/packages.sh

case ${1:-all} in
unit | asan | desk | lint) what=$1 ;;
all) what="lint unit asan desk" ;;
*) echo "./test.sh [unit|asan|desk|lint|all]" >&2; exit 2 ;;
esac
wants() { [[ " $what " = *" $1 "* ]]; }

install_packages $packages_build $packages_run $packages_test
wants desk && install_packages $packages_desk

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
scripts/list_tests.sh $what >build/tests/CTestTestfile.cmake
# No unit test may open a window on the screen of whoever runs this (the desk has its own).
export QT_QPA_PLATFORM=offscreen
status=0
# Real daemons on a busy machine may be starved once; what fails is printed and gets one more try.
ctest --test-dir build/tests --parallel 3 --no-tests=error --output-on-failure --no-label-summary \
  --repeat until-pass:2 \
  --output-junit results.xml || status=$?
if [ -s build/tests/results.xml ]; then
  scripts/check_skipped.py build/tests/results.xml scripts/allowed_skips.txt || status=1
fi
exit $status
