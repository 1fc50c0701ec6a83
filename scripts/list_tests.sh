#!/bin/bash
# list_tests.sh [lint] [unit] [asan] [desk] [release]: prints a CTest file that holds these tests.
set -euo pipefail
top=$(cd "$(dirname "$(readlink -f "$0")")/.." && pwd)
# Catches what hangs, nothing else: on a busy machine everything may take many times as long.
seconds=1800

# add NAME COST COMMAND...: dearer tests begin first
add() {
  local name=$1 cost=$2
  shift 2
  printf 'add_test([=[%s]=]' "$name"
  printf ' [=[%s]=]' "$@"
  printf ')\nset_tests_properties([=[%s]=] PROPERTIES TIMEOUT %s COST %s SKIP_RETURN_CODE 77 WORKING_DIRECTORY [=[%s]=])\n' \
    "$name" $seconds "$cost" "$top"
}

for what in "$@"; do
  case $what in
  unit) echo "subdirs([=[$top/build/dev]=])" ;;
  asan) echo "subdirs([=[$top/build/asan]=])" ;;
  lint)
    add lint.format 1 "$top/scripts/check_format.sh"
    add lint.desktop-entry 1 "$top/scripts/check_packaging.sh"
    (cd "$top" && find App -name '*.cpp' | sort) | while read -r source; do
      add "lint.tidy.$source" 20 "$top/scripts/tidy.py" "$top/build/dev" "$source"
    done
    ;;
  desk)
    /usr/bin/python3 "$top/tests/desk/list_tests.py" | while read -r name; do
      add "desk.$name" 10 /usr/bin/python3 "$top/tests/desk/run_test.py" "$name"
    done
    ;;
  release)
    other=$top/tests/other_release
    if [ -x "$other" ]; then
      add release.unit 30 "$other" unit
      add release.desk 30 "$other" desk
      # They share one folder.
      echo 'set_tests_properties(release.unit release.desk PROPERTIES RESOURCE_LOCK other_release)'
    fi
    ;;
  esac
done
