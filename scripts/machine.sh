# Sourced by run.sh: what this machine has of what Tollbeam needs.

# has_battery [FOLDER]: one of the machine's own and in its bay; that of a mouse or a headset is of
# scope "Device".
has_battery() {
  local supply
  for supply in "${1:-/sys/class/power_supply}"/*; do
    if grep -qsx Battery "$supply/type" && ! grep -qsx Device "$supply/scope" &&
      ! grep -qsx 0 "$supply/present"; then return 0; fi
  done
  return 1
}

has_screen() { [ -n "${WAYLAND_DISPLAY:-}${DISPLAY:-}" ]; }

# ask_bus METHOD [ARGUMENT]: what the session bus itself answers, fails without one.
ask_bus() {
  dbus-send --session --print-reply=literal --reply-timeout=3000 --dest=org.freedesktop.DBus \
    /org/freedesktop/DBus "org.freedesktop.DBus.$1" "${@:2}" 2>/dev/null
}

has_session_bus() { ask_bus GetId >/dev/null; }

# name_owner NAME: the process that owns the name on the session bus; nothing when nobody does.
name_owner() {
  local answer
  answer=$(ask_bus GetConnectionUnixProcessID "string:$1") || return 0
  echo "${answer##* }"
}
