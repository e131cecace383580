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
# make lint    style of the sources, warnings of the C++ files, currency of the stubs
# make stubs   regenerate the typed stubs of _native
# make docs    build the documentation site into build/docs

SHELL := bash
PYTHON := .venv/bin/python
ARGS ?=

build_inputs := CMakeLists.txt pyproject.toml $(shell find cmake src resources python -type f -not -name '*.pyc')

.PHONY: run test test-long test-cpp bench asan assertions clang fuzz bits lint stubs docs clean

run: .venv/installed
	.venv/bin/vkmcore mass 3:1:1 4:1:1

test: .venv/installed
	$(PYTHON) -m pytest -q $(ARGS)

test-long: .venv/installed
	$(PYTHON) -m pytest -q -m "long or not long" $(ARGS)

test-cpp: .venv/tools
	.venv/bin/cmake --preset cpp -DCMAKE_MAKE_PROGRAM="$(CURDIR)/.venv/bin/ninja"
	.venv/bin/cmake --build --preset cpp -j 2
	.venv/bin/ctest --preset cpp -j 2

bench: .venv/installed
	.venv/bin/cmake --preset release -DPython_EXECUTABLE="$(CURDIR)/$(PYTHON)" -DCMAKE_MAKE_PROGRAM="$(CURDIR)/.venv/bin/ninja"
	.venv/bin/cmake --build --preset release -j 2
	PYTHONPATH=build/release:python $(PYTHON) bench/run.py $(ARGS)

asan: .venv/installed
	.venv/bin/cmake --preset asan -DPython_EXECUTABLE="$(CURDIR)/$(PYTHON)" -DCMAKE_MAKE_PROGRAM="$(CURDIR)/.venv/bin/ninja"
	.venv/bin/cmake --build --preset asan -j 2
	LD_PRELOAD="$$($(CXX) -print-file-name=libasan.so) $$($(CXX) -print-file-name=libubsan.so)" \
	  ASAN_OPTIONS=detect_leaks=0 UBSAN_OPTIONS=print_stacktrace=1 PYTHONMALLOC=malloc PYTHONPATH=build/asan:python \
	  $(PYTHON) -m pytest -q -p no:cacheprovider $(ARGS)

assertions: .venv/installed
	.venv/bin/cmake --preset assertions -DPython_EXECUTABLE="$(CURDIR)/$(PYTHON)" -DCMAKE_MAKE_PROGRAM="$(CURDIR)/.venv/bin/ninja"
	.venv/bin/cmake --build --preset assertions -j 2
	PYTHONPATH=build/assertions:python $(PYTHON) -m pytest -q -p no:cacheprovider $(ARGS)

clang: .venv/installed
	@if ! command -v clang++ > /dev/null; then echo "no clang++ here: left out"; else \
	  .venv/bin/cmake --preset clang -DPython_EXECUTABLE="$(CURDIR)/$(PYTHON)" -DCMAKE_MAKE_PROGRAM="$(CURDIR)/.venv/bin/ninja" \
	  && .venv/bin/cmake --build --preset clang -j 2; fi

FUZZ_SECONDS := $(if $(filter command line environment,$(origin SECONDS)),$(SECONDS),60)
SEED ?= 1
fuzz_builds := $(foreach build,$(wildcard build/asan/_native*.so),--build $(dir $(build)))
fuzz: .venv/installed
	PYTHONPATH=tests $(PYTHON) -m fuzz.run --seconds $(FUZZ_SECONDS) --seed $(SEED) --installed $(fuzz_builds)

bits: .venv/installed
	PYTHONPATH=tests $(PYTHON) -m fuzz.bits $(ARGS)

lint: .venv/installed
	.venv/bin/ruff check python tests tools bench examples docs
	.venv/bin/ruff format --check python tests tools bench examples docs
	$(PYTHON) tools/check_elementary.py src
	find src bench tests/cpp -name '*.[ch]pp' | xargs .venv/bin/clang-format --dry-run -Werror
	.venv/bin/cmake --preset dev -DPython_EXECUTABLE="$(CURDIR)/$(PYTHON)" -DCMAKE_MAKE_PROGRAM="$(CURDIR)/.venv/bin/ninja"
	.venv/bin/cmake --build --preset dev -j 2
	PYTHONPATH=build/dev:python $(PYTHON) tools/make_stubs.py --check

stubs: .venv/installed
	$(PYTHON) tools/make_stubs.py

docs: .venv/installed .venv/docs
	$(PYTHON) -m sphinx -b html -q -W --keep-going docs build/docs
	@echo "build/docs/index.html"

clean:
	rm -rf build .venv .tools

.venv/tools: pyproject.toml tools/make_venv.sh tools/requirements.py
	tools/make_venv.sh
	$(PYTHON) -m pip install --quiet "tomli>=2"
	$(PYTHON) tools/requirements.py dev > .venv/requirements.txt
	$(PYTHON) -m pip install --quiet -r .venv/requirements.txt
	touch $@

.venv/docs: .venv/tools
	$(PYTHON) tools/requirements.py docs > .venv/requirements.txt
	$(PYTHON) -m pip install --quiet -r .venv/requirements.txt
	touch $@

# No build isolation: the build folder is kept, and a change rebuilds only what it touches.
.venv/installed: .venv/tools $(build_inputs)
	PATH="$(CURDIR)/.venv/bin:$$PATH" $(PYTHON) -m pip install --quiet --no-build-isolation --no-deps .
	touch $@
