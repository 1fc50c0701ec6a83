#!/bin/bash
# Brings the language files up to date with the texts in the code; a file for a new language is made
# with: scripts/update_translations.sh LANGUAGE
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
PATH=$PATH:/usr/lib/qt6/bin
folder=App/resources/translations
shopt -s nullglob
files=("$folder"/*.ts)
for language in "$@"; do
  files+=("$folder/tollbeam_$language.ts")
done
lupdate -silent -locations none -no-obsolete App -ts "${files[@]}"
