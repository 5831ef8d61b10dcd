# `make run` and `make test` work on a fresh Debian 12 machine: they install missing packages first.

JOBS ?= $(shell nproc)
NBSCORE := build/release/bin/nbscore

.PHONY: help
help:
	@echo 'make run                install missing packages, build, and score the bundled example'
	@echo 'make build              build the command: $(NBSCORE)'
	@echo 'make test               install missing packages, build and run every test'
	@echo 'make test-peers         hold the answers by the standard'"'"'s rule to those of R and scikit-learn, which are'
	@echo '                        installed for it'
	@echo 'make python             build the Python package: build/wheels/nbscore-*.whl'
	@echo 'make test-python        test it, installed in an environment of its own'
	@echo 'make test-foreign       send columns from a database through the C interface and back, and hold them to the'
	@echo '                        command; the database is fetched by npm'
	@echo 'make test-all           all four'
	@echo 'make windows            cross-build for 64-bit Windows and pack build/nbscore-*-windows-x64.zip'
	@echo 'make test-windows       test that build under Wine (three minutes once everything is built)'
	@echo 'make test-windows-core  test only its built plug-in and command'
	@echo 'make sanitize           run the tests under the address, leak and undefined-behaviour sanitizers, and count the'
	@echo '                        lines of src/ that they run; fails below 95 %'
	@echo 'make tsan               run the tests under the thread sanitizer'
	@echo 'make fuzz               fuzz each kind of input for FUZZ_SECONDS=600'
	@echo 'make fuzz-regressions   fuzz with all earlier findings and some new inputs (two minutes)'
	@echo 'make coverage           show by file what make sanitize counted'
	@echo 'make bench              measure scoring against tight and plain loops (five minutes on an idle machine)'
	@echo 'make bench-peers        measure it against scikit-learn and pandas, which are installed for it'
	@echo 'make bench-page         write docs/benchmarks.md from the last measurements'
	@echo 'make bench-load         measure loading documents against parsing alone (ten minutes)'
	@echo 'make bench-growth       measure how time grows with documents and tables; fails if it grows too fast'
	@echo 'make lint               check formatting and the rules of the source tree'
	@echo 'make format             format every source file'
	@echo 'make install            install the built command and libraries (PREFIX=/usr/local)'
	@echo 'make clean              remove everything built'

.PHONY: packages-build packages-test packages-bench packages-lint
packages-build:
	@scripts/install-packages.sh build
packages-test:
	@scripts/install-packages.sh build test
packages-bench:
	@scripts/install-packages.sh build bench
packages-lint:
	@scripts/install-packages.sh build test lint

.PHONY: build
build: packages-build
	cmake --preset release
	cmake --build --preset release -j $(JOBS)

.PHONY: run
run: build
	@echo
	@echo '$$ $(NBSCORE) score examples/titanic/titanic.pmml examples/titanic/people.csv'
	@echo
	@$(NBSCORE) score examples/titanic/titanic.pmml examples/titanic/people.csv -o build/people-scored.csv
	@awk -f scripts/show-table.awk build/people-scored.csv

.PHONY: test
test: packages-test
	cmake --preset test
	cmake --build --preset test -j $(JOBS)
	ctest --preset test -j $(JOBS)

# As the interpreter of Debian's packages, whatever else is installed.
.PHONY: test-peers test-all
test-peers:
	@scripts/install-packages.sh build test test-peers
	cmake --preset test
	cmake --build --preset test -j $(JOBS) --target nbscore_command naivebayes
	/usr/bin/python3 tests/peers/peers.py build/test/bin/nbscore

# For Debian's own interpreter, whatever others the path has.
PYTHON := /usr/bin/python3
WHEEL := $(PYTHON) -m pip --isolated wheel --quiet --no-index --no-deps ./python
.PHONY: python test-python
python: build
	@scripts/install-packages.sh build python
	JOBS=$(JOBS) $(WHEEL) --wheel-dir build/wheels --config-settings build-dir=build/release
test-python:
	@scripts/install-packages.sh build test python test-python
	cmake --preset test
	rm -rf build/wheels-test
	JOBS=$(JOBS) $(WHEEL) --wheel-dir build/wheels-test --config-settings build-dir=build/test
	PYTHON=$(PYTHON) scripts/test-python.sh build/wheels-test/nbscore-*.whl
# The database that columns come from and go to is a package of npm's, which checks what it fetches.
DATABASE := @duckdb/node-bindings-linux-x64@1.5.6-r.1
.PHONY: test-foreign
build/foreign/package/libduckdb.so:
	@command -v npm >/dev/null || scripts/install-packages.sh foreign
	mkdir -p build/foreign
	cd build/foreign && tar xzf "$$(npm pack --silent $(DATABASE))"
	touch $@
test-foreign: packages-test build/foreign/package/libduckdb.so
	cmake --preset test
	cmake --build --preset test -j $(JOBS) --target nbscore_command naivebayes nbscore_c
	/usr/bin/python3 tests/foreign/columns.py build/test/lib/libnbscore.so build/test/bin/nbscore \
	    build/foreign/package/libduckdb.so examples
test-all: test test-peers test-foreign test-python

.PHONY: windows windows-configured test-windows test-windows-core
windows-configured:
	@scripts/install-packages.sh build test windows
	JOBS=$(JOBS) scripts/windows-prefix.sh
	cmake --preset windows
windows: windows-configured
	cmake --build --preset windows -j $(JOBS)
	scripts/pack-windows.sh
test-windows: windows-configured
	cmake --build --preset windows -j $(JOBS)
	JOBS=$(JOBS) scripts/test-windows.sh
# The tests that load the built plug-in or run the built command, with all case files.
WINDOWS_CORE := plugin_test cases_test command_test
test-windows-core: windows-configured
	cmake --build --preset windows -j $(JOBS) --target nbscore_runtime write_random_answers $(WINDOWS_CORE)
	JOBS=$(JOBS) scripts/test-windows.sh $(WINDOWS_CORE)

.PHONY: sanitize tsan
sanitize: packages-lint
	cmake --preset asan
	cmake --build --preset asan -j $(JOBS)
	rm -rf build/asan/coverage
	ctest --preset asan -j $(JOBS)
	scripts/coverage.sh
tsan: packages-lint
	cmake --preset tsan
	cmake --build --preset tsan -j $(JOBS)
	ctest --preset tsan -j $(JOBS)

FUZZ_SECONDS ?= 600
.PHONY: fuzz fuzz-regressions fuzz-build
fuzz-build: packages-lint
	cmake --preset asan
	cmake --build --preset fuzz -j $(JOBS)
fuzz: fuzz-build
	fuzz/run.sh $(FUZZ_SECONDS)
fuzz-regressions: fuzz-build
	fuzz/run.sh regressions

.PHONY: bench-build bench bench-peers bench-page bench-load bench-growth
bench-build: packages-bench
	cmake --preset bench
	cmake --build --preset bench -j $(JOBS)
bench: bench-build
	bench/run.sh
bench-peers: bench-build
	-@scripts/install-packages.sh peers
	bench/run.sh peers
bench-page:
	python3 bench/report/report.py page build/bench/results docs
bench-load: bench-build
	build/bench/bin/load_benchmark
bench-growth: bench-build
	build/bench/bin/growth_benchmark

.PHONY: coverage
coverage:
	scripts/coverage.sh files

.PHONY: lint
lint: packages-lint
	scripts/lint.sh

.PHONY: format
format:
	git ls-files 'src/*.h' 'src/*.cpp' 'tests/*.h' 'tests/*.cpp' 'fuzz/*.h' 'fuzz/*.cpp' \
	    'bench/*.h' 'bench/*.cpp' 'examples/*.cpp' 'python/*.h' 'python/*.cpp' | xargs clang-format -i

PREFIX ?= /usr/local
.PHONY: install
install: build
	cmake --install build/release --prefix $(DESTDIR)$(PREFIX)

.PHONY: clean
clean:
	rm -rf build
