#!/usr/bin/env bash
# Build the package and install it into .venv, with a line of progress. The whole output goes to build/install.log and
# is shown if the build fails. No build isolation: the build folder is kept, and a change rebuilds only what it touches.
set -euo pipefail
cd "$(dirname "$0")/.."
mkdir -p build
export PATH="$PWD/.venv/bin:$PATH"

# Of the builder's lines "[37/153] ..." a terminal sees the last one, a file every tenth part.
show_progress() {
  local line part=-1
  while IFS= read -r line; do
    [[ $line =~ \[([0-9]+)/([0-9]+)\]\ ([A-Za-z].*) ]] || continue
    if [ -t 1 ]; then
      printf '\r\033[K%.79s' "[${BASH_REMATCH[1]}/${BASH_REMATCH[2]}] ${BASH_REMATCH[3]}"
    elif (( 10 * BASH_REMATCH[1] / BASH_REMATCH[2] > part )); then
      part=$((10 * BASH_REMATCH[1] / BASH_REMATCH[2]))
      echo "building: ${BASH_REMATCH[1]} of ${BASH_REMATCH[2]} steps"
    fi
  done
  [ ! -t 1 ] || printf '\r\033[K'
}

echo "building the extension modules (the first time takes some minutes)"
if ! python -m pip install -v --no-build-isolation --no-deps . 2>&1 | tee build/install.log | show_progress; then
  cat build/install.log >&2
  exit 1
fi
