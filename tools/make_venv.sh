#!/usr/bin/env bash
# Make .venv from CPython 3.10, wherever one can be had: as python3.10, among pyenv's versions, through uv; failing
# these, uv is brought with pip into a private folder and asked for 3.10.
set -euo pipefail
cd "$(dirname "$0")/.."

# CPython 3.10 with what an extension needs: pip's bootstrap, venv and the C headers.
is_310() {
  "$1" - <<'PYTHON' >/dev/null 2>&1
import ensurepip, os, sys, sysconfig, venv
assert (sys.implementation.name, *sys.version_info[:2]) == ("cpython", 3, 10)
assert os.path.exists(os.path.join(sysconfig.get_path("include"), "Python.h"))
PYTHON
}

# Folders that hold one folder a Python version: pyenv's, and the one that the Python on the path comes from.
version_folders() {
  echo "${PYENV_ROOT:-${HOME:-}/.pyenv}/versions"
  pyenv root 2>/dev/null | sed 's,$,/versions,' || true
  python3 -c 'import os, sys; print(os.path.dirname(sys.base_prefix))' 2>/dev/null || true
}

# A command that exists may still not run: pyenv's shims answer for versions that are not switched on.
find_python() {
  local candidate candidates=("${PYTHON310:-}" python3.10 /usr/bin/python3.10 /usr/local/bin/python3.10)
  local folder
  while read -r folder; do
    candidates+=("$folder"/3.10*/bin/python3.10)
  done < <(version_folders)
  candidates+=(/opt/python/cp310-cp310/bin/python3.10)
  for candidate in "${candidates[@]}"; do
    if [ -n "$candidate" ] && is_310 "$candidate"; then
      echo "$candidate"
      return
    fi
  done
  if command -v uv >/dev/null 2>&1; then
    python_from_uv uv && return
  fi
  local python
  for python in python3 python; do
    if command -v "$python" >/dev/null 2>&1 && bring_uv "$python"; then
      python_from_uv .tools/bin/uv
      return
    fi
  done
  return 1
}

python_from_uv() {
  local found
  found=$("$1" python find 3.10 2>/dev/null) || {
    echo "CPython 3.10: asking uv for it" >&2
    "$1" python install 3.10 >&2 || return 1
    found=$("$1" python find 3.10 2>/dev/null) || return 1
  }
  is_310 "$found" && echo "$found"
}

bring_uv() {
  [ -x .tools/bin/uv ] && return 0
  echo "CPython 3.10 is not on this machine: bringing uv into .tools" >&2
  "$1" -m pip install --quiet --target .tools uv >&2
}

if [ -x .venv/bin/python ] && is_310 .venv/bin/python; then
  exit 0
fi

python=$(find_python) || {
  cat >&2 <<'TEXT'
VKMcore needs CPython 3.10, and none could be found or brought. Any one of these gives it:
  - a package of your system:  apt install python3.10 python3.10-venv python3.10-dev
  - pyenv:                     pyenv install 3.10
  - uv:                        uv python install 3.10
  - an interpreter elsewhere:  PYTHON310=/path/to/python3.10 make run
TEXT
  exit 1
}
echo "CPython 3.10: $python"
rm -rf .venv
"$python" -m venv .venv
.venv/bin/python -m pip install --quiet --upgrade pip
