#!/bin/bash
# Makes the self-contained folder Tollbeam.app/, and puts it into the user's folders or takes it out.
set -euo pipefail
top=$(cd "$(dirname "$(readlink -f "$0")")" && pwd)
. "$top/scripts/packages.sh"
id=org.tollbeam.Tollbeam
data=${XDG_DATA_HOME:-$HOME/.local/share}
config=${XDG_CONFIG_HOME:-$HOME/.config}
installed=$HOME/.local/lib/Tollbeam.app
entry=$data/applications/$id.desktop
icon=$data/icons/hicolor/scalable/apps/$id.svg
sounds=$data/sounds/tollbeam
autostart=$config/autostart/$id.desktop

usage() {
  cat <<TXT
./make_app.sh               builds the release and makes Tollbeam.app/ here
./make_app.sh --preset dev  the same from another build, for tests
./make_app.sh --install     the same, then puts it into your folders (no root needed):
                              $installed
                              $entry
                              $icon
                              $sounds
./make_app.sh --uninstall   removes these again, and the start at login; settings and history stay
TXT
}

# swap NEW PLACE: the finished folder takes the place of the old one, which a running program may
# still use; at no time is there half a bundle. What was there stays when there is no new one.
swap() {
  [ -d "$1" ] || { echo "$1 was not made" >&2; return 1; }
  rm -rf "$2.old"
  if [ -e "$2" ]; then mv "$2" "$2.old"; fi
  mv "$1" "$2"
  rm -rf "$2.old"
}

# build PRESET
build() {
  install_packages $packages_build
  cd "$top"
  cmake --preset "$1" >/dev/null
  cmake --build --preset "$1" --target tollbeam tollbeam_translations
  new=$(mktemp -d "$top/build/bundle.XXXXXX")
  trap 'rm -rf "$new"' EXIT
  cmake --install "build/$1" --component bundle --strip --prefix "$new/Tollbeam.app" >/dev/null
  swap "$new/Tollbeam.app" "$top/Tollbeam.app"
  echo "Made $top/Tollbeam.app"
}

# A text as a value: backslashes and line ends escaped.
value() {
  local text=${1//\\/\\\\}
  printf '%s' "${text//$'\n'/\\n}"
}

# A text inside the quotes of an Exec line: its own escapes, then those of every value.
exec_quoted() { value "\"$(sed -e 's/[\\"`$]/\\&/g' -e 's/%/%%/g' <<<"$1")\""; }

# A program as an Exec line. A program's name may not hold these two, but a word of the shell may.
exec_line() {
  local apostrophe=\'\"\'\"\'
  case $1 in
  *[=%]*) printf '/bin/sh -c %s' "$(exec_quoted "exec '${1//\'/$apostrophe}'")" ;;
  *) exec_quoted "$1" ;;
  esac
}

write_entry() {
  local program=$installed/bin/tollbeam text
  text=$(<"$top/packaging/$id.desktop.in")
  text=${text//@EXEC@/"$(exec_line "$program")"}
  text=${text//@TRYEXEC@/"$(value "$program")"}
  mkdir -p "$(dirname "$entry")"
  printf '%s\n' "$text" >"$entry.new"
  mv "$entry.new" "$entry"
}

install_app() {
  mkdir -p "$(dirname "$installed")" "$(dirname "$icon")"
  rm -rf "$installed.new"
  cp -r "$top/Tollbeam.app" "$installed.new"
  swap "$installed.new" "$installed"
  cp "$top/App/resources/$id.svg" "$icon"
  mkdir -p "$(dirname "$sounds")"
  rm -rf "$sounds"
  cp -r "$top/Tollbeam.app/resources/sounds/tollbeam" "$sounds"
  write_entry
  printf 'Installed:\n  %s\n  %s\n  %s\n  %s\n' "$installed" "$entry" "$icon" "$sounds"
}

uninstall_app() {
  local found=no place
  for place in "$installed" "$entry" "$icon" "$sounds" "$autostart"; do
    [ -e "$place" ] || continue
    rm -rf "$place"
    echo "Removed $place"
    found=yes
  done
  [ $found = yes ] || echo "Nothing was installed."
  echo "Your settings and the history stay (in $config and $data/Tollbeam)."
}

# In a list (build && install_app) bash would go on after an error within build.
case "$*" in
'') build release ;;
'--preset dev') build dev ;;
--install)
  build release
  install_app
  ;;
--uninstall) uninstall_app ;;
-h | --help) usage ;;
*) usage >&2; exit 2 ;;
esac
