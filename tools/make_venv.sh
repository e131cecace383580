#!/usr/bin/env bash
# Make .venv from a CPython that an extension can be built for. PYTHON=... names one; else it is CPython 3.10 where
# that is found (as python3.10, among pyenv's versions, through uv), else the newest one found. If there is none at
# all, uv is brought with pip into a private folder and asked for 3.10.
set -euo pipefail
cd "$(dirname "$0")/.."
versions=(3.10 3.14 3.13 3.12 3.11)

# CPython of the version $2, with the C headers and something to make an environment with.
is_usable() {
  "$1" - "$2" <<'PYTHON' >/dev/null 2>&1
import os, sys, sysconfig
from importlib.util import find_spec
assert sys.implementation.name == "cpython" and "%d.%d" % sys.version_info[:2] == sys.argv[1]
assert os.path.exists(os.path.join(sysconfig.get_path("include"), "Python.h"))
assert find_spec("venv") and find_spec("ensurepip") or find_spec("pip")
PYTHON
}

# Folders that hold one folder a Python version: pyenv's, and the one that the Python on the path comes from.
version_folders() {
  echo "${PYENV_ROOT:-${HOME:-}/.pyenv}/versions"
  pyenv root 2>/dev/null | sed 's,$,/versions,' || true
  python3 -c 'import os, sys; print(os.path.dirname(sys.base_prefix))' 2>/dev/null || true
}

# A command that exists may still not run: pyenv's shims answer for versions that are not switched on.
find_version() {
  local version=$1 candidate folder
  local candidates=("python$version" "/usr/bin/python$version" "/usr/local/bin/python$version" python3)
  while read -r folder; do
    candidates+=("$folder/$version"*/bin/"python$version")
  done < <(version_folders)
  candidates+=(/opt/python/cp"${version/./}-cp${version/./}/bin/python$version")
  if command -v uv >/dev/null 2>&1; then
    candidates+=("$(uv python find "$version" 2>/dev/null || true)")
  fi
  for candidate in "${candidates[@]}"; do
    if [ -n "$candidate" ] && is_usable "$candidate" "$version"; then
      echo "$candidate"
      return
    fi
  done
  return 1
}

find_python() {
  local version python
  if [ -n "${PYTHON:-}" ]; then
    for version in "${versions[@]}"; do
      is_usable "$PYTHON" "$version" && echo "$PYTHON" && return
    done
    echo "PYTHON=$PYTHON is no CPython 3.10 to 3.14 with its C headers and pip" >&2
    return 1
  fi
  for version in "${versions[@]}"; do
    find_version "$version" && return
  done
  for python in python3 python; do
    if command -v "$python" >/dev/null 2>&1 && bring_uv "$python"; then
      .tools/bin/uv python install 3.10 >&2 && .tools/bin/uv python find 3.10 && return
    fi
  done
  return 1
}

bring_uv() {
  [ -x .tools/bin/uv ] && return
  echo "No CPython 3.10 to 3.14 with C headers and pip on this machine: bringing uv into .tools" >&2
  "$1" -m pip install --quiet --target .tools uv >&2
}

# Where an installation leaves out ensurepip, as Debian's does without python3-venv, virtualenv does venv's work.
make_environment() {
  if "$1" -c 'import ensurepip, venv' 2>/dev/null; then
    "$1" -m venv .venv
  else
    "$1" -m pip install --quiet --target .tools virtualenv
    PYTHONPATH=.tools "$1" -m virtualenv --quiet .venv
  fi
}

identity() { "$1" -c 'import sys; print(sys.version, sys.base_prefix)' 2>/dev/null; }

if [ -z "${PYTHON:-}" ] || [ "$(identity "$PYTHON")" = "$(identity .venv/bin/python)" ]; then
  for version in "${versions[@]}"; do
    is_usable .venv/bin/python "$version" && exit 0
  done
fi

python=$(find_python) || {
  cat >&2 <<'TEXT'
VKMcore needs CPython 3.10 to 3.14 with its C headers, and none could be found or brought. Any one of these gives it:
  - a package of your system:  apt install python3-dev python3-venv    (Debian 12, Ubuntu 24.04)
  - pyenv:                     pyenv install 3.10
  - uv:                        uv python install 3.10
  - an interpreter elsewhere:  make run PYTHON=/path/to/python3
TEXT
  exit 1
}
echo "$("$python" --version): $python"
rm -rf .venv
make_environment "$python"
.venv/bin/python -m pip install --quiet --upgrade pip
