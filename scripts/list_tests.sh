#!/bin/bash
# list_tests.sh [lint] [unit] [asan] [desk]: prints a CTest file that holds these tests.
set -euo pipefail
top=$(cd "$(dirname "$(readlink -f "$0")")/.." && pwd)

# add NAME TIMEOUT COST COMMAND...: dearer tests begin first
add() {
  local name=$1 timeout=$2 cost=$3
  shift 3
  printf 'add_test([=[%s]=]' "$name"
  printf ' [=[%s]=]' "$@"
  printf ')\nset_tests_properties([=[%s]=] PROPERTIES TIMEOUT %s COST %s SKIP_RETURN_CODE 77 WORKING_DIRECTORY [=[%s]=])\n' \
    "$name" "$timeout" "$cost" "$top"
}

for what in "$@"; do
  case $what in
  unit) echo "subdirs([=[$top/build/dev]=])" ;;
  asan) echo "subdirs([=[$top/build/asan]=])" ;;
  lint)
    add lint.format 120 1 "$top/scripts/check_format.sh"
    # Takes what the other tests leave of the processor; they wait a good deal.
    add lint.tidy 1500 1000 nice -n 19 "$top/scripts/tidy.py" "$top/build/dev"
    add lint.desktop-entry 60 1 "$top/scripts/check_packaging.sh"
    ;;
  desk)
    /usr/bin/python3 "$top/tests/desk/list_tests.py" | while read -r name; do
      # A laptop of real daemons may be starved once on a busy machine: the time is that of two tries.
      add "desk.$name" 400 10 /usr/bin/python3 "$top/tests/desk/run_test.py" --tries 2 "$name"
    done
    ;;
  esac
done
