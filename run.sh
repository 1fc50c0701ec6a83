#!/bin/bash
# Installs what is missing, builds Tollbeam and starts it. Where there is no battery or no desktop,
# it is started on a simulated laptop and a short day is played there (--keep leaves that laptop up).
set -euo pipefail
top=$(cd "$(dirname "$(readlink -f "$0")")" && pwd)
cd "$top"
. scripts/packages.sh
. scripts/machine.sh
for word in "$@"; do
  case $word in
  --keep | --desk) ;;
  *) echo "./run.sh [--desk] [--keep]   (--desk: on the simulated laptop in any case)" >&2; exit 2 ;;
  esac
done

# can_run_here: says what is missing when it cannot.
can_run_here() {
  if [[ " $* " = *" --desk "* ]]; then return 1; fi
  has_battery || { echo "There is no battery here."; return 1; }
  has_screen || { echo "There is no desktop here."; return 1; }
  has_session_bus || { echo "There is no session bus here, over which reminders go."; return 1; }
}

install_packages $packages_build $packages_run
./make_app.sh
if can_run_here "$@" && scripts/start.sh Tollbeam.app build/tollbeam.log; then exit; fi

echo "Tollbeam is started on a simulated laptop."
install_packages $packages_desk
exec tests/desk/short_day.py Tollbeam.app build/desk-day "$@"
