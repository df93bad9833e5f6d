#!/usr/bin/env bash
# Runs clang-tidy over the program's sources, as they are compiled in build/dev. With names of files, over these only.
set -euo pipefail
cd "$(dirname "$0")/.."
if [ $# -eq 0 ]; then
    mapfile -t files < <(git ls-files -- 'src/*.cpp')
    set -- "${files[@]}"
fi
printf '%s\n' "$@" | xargs -P "$(nproc)" -n 4 clang-tidy --quiet -p build/dev --warnings-as-errors='*' 2> >(grep -v 'warnings generated' >&2)
