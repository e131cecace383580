# make run     set up everything, print the masses of the trefoil and the figure-eight
# make test    set up everything, run the tests
# make test-long  run the tests that take minutes, too
# make test-cpp  run the tests of the C++ library alone
# make bench   time the kernels against NumPy and plain loops
# make asan    run the tests under the address and undefined-behaviour sanitizers
# make assertions  run the tests with the standard library's assertions
# make clang   compile everything with Clang, where it is installed
# make fuzz    random calls for SECONDS=60, on the sanitizer build too where there is one
# make bits    the same calls on emulated processors: equal bits
# make lint    style of the sources, types, warnings of the C++ files, currency of the stubs, machine code
# make stubs   regenerate the typed stubs of _native
# make docs    build the documentation site into build/docs
# make wheel   write a source archive and a wheel into dist, and test the wheel without a compiler

SHELL := bash
# PYTHON=... chooses the interpreter that .venv is made from; else it is 3.10 or the newest one found.
export PYTHON
python := .venv/bin/python
ARGS ?=

# Another interpreter than before: .venv is made anew.
identity := -c 'import sys; print(sys.version, sys.base_prefix)'
ifneq ($(PYTHON),)
ifneq ($(shell "$(PYTHON)" $(identity)),$(shell [ -x $(python) ] && $(python) $(identity)))
$(shell rm -f .venv/tools)
endif
endif

# Programs of .venv, for a build by CMake; a folder's name may hold a space.
use_venv := -DPython_EXECUTABLE="$(CURDIR)/$(python)" -DCMAKE_MAKE_PROGRAM="$(CURDIR)/.venv/bin/ninja"

build_inputs := CMakeLists.txt pyproject.toml $(shell find cmake src resources python -type f -not -name '*.pyc')

.PHONY: run test test-long test-cpp bench asan assertions clang fuzz bits lint stubs docs wheel clean

run: .venv/installed
	.venv/bin/vkmcore mass 3:1:1 4:1:1

test: .venv/installed
	$(python) -m pytest -q $(ARGS)

test-long: .venv/installed
	$(python) -m pytest -q -m "long or not long" $(ARGS)

test-cpp: .venv/tools
	.venv/bin/cmake --preset cpp $(use_venv)
	.venv/bin/cmake --build --preset cpp -j 2
	.venv/bin/ctest --preset cpp -j 2

bench: .venv/installed
	.venv/bin/cmake --preset release $(use_venv)
	.venv/bin/cmake --build --preset release -j 2
	PYTHONPATH=build/release:python $(python) bench/run.py $(ARGS)

asan: .venv/installed
	.venv/bin/cmake --preset asan $(use_venv)
	.venv/bin/cmake --build --preset asan -j 2
	LD_PRELOAD="$$($(CXX) -print-file-name=libasan.so) $$($(CXX) -print-file-name=libubsan.so)" \
	  ASAN_OPTIONS=detect_leaks=0 UBSAN_OPTIONS=print_stacktrace=1 PYTHONMALLOC=malloc PYTHONPATH=build/asan:python \
	  $(python) -m pytest -q -p no:cacheprovider $(ARGS)

assertions: .venv/installed
	.venv/bin/cmake --preset assertions $(use_venv)
	.venv/bin/cmake --build --preset assertions -j 2
	PYTHONPATH=build/assertions:python $(python) -m pytest -q -p no:cacheprovider $(ARGS)

clang: .venv/installed
	@if ! command -v clang++ > /dev/null; then echo "no clang++ here: left out"; else \
	  .venv/bin/cmake --preset clang $(use_venv) && .venv/bin/cmake --build --preset clang -j 2; fi

fuzz_seconds := $(if $(filter command line environment,$(origin SECONDS)),$(SECONDS),60)
SEED ?= 1
fuzz_builds := $(foreach build,$(wildcard build/asan/_native*.so),--build $(dir $(build)))
fuzz: .venv/installed
	PYTHONPATH=tests $(python) -m fuzz.run --seconds $(fuzz_seconds) --seed $(SEED) --installed $(fuzz_builds)

bits: .venv/installed
	PYTHONPATH=tests $(python) -m fuzz.bits $(ARGS)

lint: .venv/installed .venv/docs
	.venv/bin/ruff check python tests tools bench examples docs
	.venv/bin/ruff format --check python tests tools bench examples docs
	$(python) tools/check_elementary.py src
	.venv/bin/mypy
	find src bench tests/cpp -name '*.[ch]pp' | xargs .venv/bin/clang-format --dry-run -Werror
	.venv/bin/cmake --preset dev $(use_venv)
	.venv/bin/cmake --build --preset dev -j 2
	PYTHONPATH=build/dev:python $(python) tools/make_stubs.py --check
	$(python) tools/check_instructions.py build/dev

stubs: .venv/installed
	$(python) tools/make_stubs.py

docs: .venv/installed .venv/docs
	$(python) -m sphinx -b html -q -W --keep-going docs build/docs
	@echo "build/docs/index.html"

wheel: .venv/tools
	$(python) tools/requirements.py wheel > .venv/requirements.txt
	$(python) -m pip install --quiet -r .venv/requirements.txt
	tools/make_wheel.sh $(ARGS)

clean:
	rm -rf build .venv .tools

.venv/tools: pyproject.toml tools/make_venv.sh tools/requirements.py
	tools/make_venv.sh
	@echo "installing the tools of the build into .venv"
	$(python) -m pip install --quiet "tomli>=2"
	$(python) tools/requirements.py dev > .venv/requirements.txt
	$(python) -m pip install --quiet -r .venv/requirements.txt
	touch $@

.venv/docs: .venv/tools
	$(python) tools/requirements.py docs > .venv/requirements.txt
	$(python) -m pip install --quiet -r .venv/requirements.txt
	touch $@

.venv/installed: .venv/tools $(build_inputs)
	tools/install.sh
	touch $@
