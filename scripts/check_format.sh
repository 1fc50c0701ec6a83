#!/bin/bash
# Fails when a C++ file is not as clang-format would have it. Looks for the files itself: an unpacked
# archive knows no git, and git does not speak of a tree that belongs to somebody else.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
find App cmake tests \( -name '*.cpp' -o -name '*.h' \) -print0 | xargs -0 clang-format --dry-run -Werror
