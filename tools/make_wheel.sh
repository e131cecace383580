#!/usr/bin/env bash
# Write a source archive and a wheel into dist/, and pass the tests on the wheel in an environment without a compiler.
# The wheel is built from the archive, for the interpreter of .venv. Its manylinux tag is the oldest that its symbols
# allow; a newer one than $NEWEST is refused.
set -euo pipefail
cd "$(dirname "$0")/.."
NEWEST=${NEWEST:-manylinux_2_28}
export PATH="$PWD/.venv/bin:$PATH"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

rm -rf dist
python -m build --no-isolation --skip-dependency-check -C cmake.define.VKM_PORTABLE=ON --outdir "$work/built" .
mkdir dist
mv "$work"/built/*.tar.gz dist
auditwheel repair --wheel-dir dist "$work"/built/*.whl
wheel=$(ls dist/*.whl)
# The oldest tag comes last but for the legacy name: manylinux_2_27_x86_64, manylinux_2_17_x86_64.manylinux2014_x86_64.
minor=$(sed -E 's/.*manylinux_2_([0-9]+)_.*/\1/' <<<"$wheel")
if ! [[ $minor =~ ^[0-9]+$ ]] || (( minor > ${NEWEST##*_} )); then
  auditwheel show "$wheel"
  echo "$wheel needs a system newer than $NEWEST" >&2
  exit 1
fi

# Everything of this system but what compiles.
mkdir "$work/bin"
ln -s /usr/bin/* /bin/* "$work/bin" 2>/dev/null || true
(cd "$work/bin" && rm -f -- *gcc* *g++* *cpp* *clang* cc c++ c89* c99* as ld *-as *-ld* ld.* cmake ninja make ccache)

"$(python -c 'import sys; print(sys._base_executable)')" -m venv "$work/venv" || python -m virtualenv "$work/venv"
export PATH="$work/venv/bin:$work/bin"
python -m pip install --quiet --only-binary :all: "$wheel[test]"
mkdir "$work/sources"
tar xzf dist/*.tar.gz -C "$work/sources" --strip-components 1
cd "$work/sources"
python -m pytest -q -p no:cacheprovider "$@"
echo "passed: $wheel"
