#!/bin/bash
# The metadata that desktops and software centres read must be valid.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
appstreamcli validate --no-net packaging/org.tollbeam.Tollbeam.metainfo.xml
filled=$(mktemp -d)/org.tollbeam.Tollbeam.desktop
trap 'rm -r "$(dirname "$filled")"' EXIT
sed 's,@EXEC@,"/usr/bin/true",; s,@TRYEXEC@,/usr/bin/true,' packaging/org.tollbeam.Tollbeam.desktop.in >"$filled"
desktop-file-validate "$filled"
