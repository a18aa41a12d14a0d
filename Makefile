# SPDX-License-Identifier: GPL-3.0-or-later
#
#   make run    install what is missing, build (release) and start Tonbrook
#   make test   install what is missing, build (dev) and run every test
#   make        build the release preset into build/release/bin/
#   make bench  build (release) and run the benchmarks in bench/, printing one table
#
# make test TEST_PRESET=asan  runs the tests under AddressSanitizer and UBSan.

PRESET ?= release
TEST_PRESET ?= dev

.PHONY: all build deps run test bench clean format

all: build

deps:
	@scripts/install-deps.sh

build:
	@cmake --preset $(PRESET) --log-level=WARNING
	@cmake --build --preset $(PRESET)

run: deps
	@$(MAKE) --no-print-directory build PRESET=release
	@build/release/bin/tonbrook $(ARGS)

test: deps
	@cmake --preset $(TEST_PRESET) --log-level=WARNING
	@cmake --build --preset $(TEST_PRESET)
	@ctest --preset $(TEST_PRESET)

bench:
	@scripts/install-deps.sh --bench
	@$(MAKE) --no-print-directory build PRESET=release
	@bench/run $(ARGS)

format:
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf build
