#!/bin/bash
# start.sh BUNDLE LOG: starts Tollbeam on this desktop, waits until it is really there and says so;
# fails, with what it printed, when it does not come. What it prints later goes to LOG, too.
set -euo pipefail
. "$(dirname "$(readlink -f "$0")")/machine.sh"
bundle=$1 log=$2 name=org.tollbeam.Tollbeam

: >"$log"
# Out of this terminal's session, so that it stays when the terminal goes.
setsid "$bundle/bin/tollbeam" </dev/null >"$log" 2>&1 &
pid=$!

for ((tenths = 0; tenths < 150; tenths++)); do
  owner=$(name_owner $name)
  if [ "$owner" = $pid ]; then
    echo "Tollbeam runs: look for it in the panel. ./make_app.sh --install adds it to your programs."
    exit
  fi
  if ! kill -0 $pid 2>/dev/null; then
    # A second start asks the first one to show itself, and ends.
    if wait $pid && [ -n "$owner" ]; then
      echo "A Tollbeam ran already (process $owner) and shows itself. Quit it, and ./run.sh starts this one."
      exit
    fi
    echo "Tollbeam could not run on this desktop:" >&2
    cat "$log" >&2
    exit 1
  fi
  sleep 0.1
done
kill $pid
echo "Tollbeam did not come up on this desktop." >&2
cat "$log" >&2
exit 1
