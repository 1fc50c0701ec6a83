#!/bin/bash
# Installs what is missing, builds Tollbeam and starts it. Where there is no battery or no desktop,
# it is started on a simulated laptop and a short day is played there (--keep leaves that laptop up).
set -euo pipefail
top=$(cd "$(dirname "$(readlink -f "$0")")" && pwd)
cd "$top"
. scripts/packages.sh
case ${1:-} in
'' | --keep | --desk) ;;
*) echo "./run.sh [--desk] [--keep]   (--desk: on the simulated laptop in any case)" >&2; exit 2 ;;
esac

has_battery() { grep -qsx Battery /sys/class/power_supply/*/type; }
has_desktop() { [ -n "${WAYLAND_DISPLAY:-}${DISPLAY:-}" ]; }

install_packages $packages_build $packages_run
if [[ " $* " != *" --desk "* ]] && has_battery && has_desktop; then
  ./make_app.sh
  setsid -f Tollbeam.app/bin/tollbeam </dev/null >/dev/null 2>&1
  echo "Tollbeam runs: look for it in the panel. ./make_app.sh --install adds it to your programs."
  exit
fi

has_battery && echo "There is no desktop here." || echo "There is no battery here."
echo "Tollbeam is started on a simulated laptop instead."
install_packages $packages_desk
./make_app.sh
exec tests/desk/short_day.py Tollbeam.app build/desk-day "$@"
