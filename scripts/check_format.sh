#!/bin/bash
# Fails when a C++ file is not as clang-format would have it.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
git ls-files -z -- '*.cpp' '*.h' | xargs -0 -r clang-format --dry-run -Werror
