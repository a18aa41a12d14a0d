# SPDX-License-Identifier: GPL-3.0-or-later
#
#   make run    install what is missing, build (release) and start Tonbrook
#   make test   install what is missing, build (dev) and run every test
#   make        build the release preset into build/release/bin/
#   make bench  build (release) and run the benchmarks in bench/, printing one table
#   make stress the reliability suite with its long cases and many seeded iterations
#   make fuzz   build the libFuzzer targets with clang and run each for FUZZ_SECONDS (60)
#   make install PREFIX=/usr/local [DESTDIR=...]  build (release) and install
#   make package  build (release, for /usr) the .deb into build/release/deb/
#   make package-check  install that .deb on a fresh minimal Debian 12 (debootstrap, root) and run it
#
# make test TEST_PRESET=asan  runs the tests under AddressSanitizer and UBSan.

PRESET ?= release
TEST_PRESET ?= dev
FUZZ_SECONDS ?= 60
PREFIX ?= /usr/local

.PHONY: all build deps run test stress fuzz bench install package package-check clean format

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
	@cmake --build --preset release --target benchmarks
	@bench/run $(ARGS)

stress: deps
	@cmake --preset $(TEST_PRESET) --log-level=WARNING
	@cmake --build --preset $(TEST_PRESET)
	@TONBROOK_STRESS=1 ctest --preset $(TEST_PRESET) -L reliability --timeout 3600

# Twice: clang and the libFuzzer runtime for it are only known once clang is there.
fuzz:
	@scripts/install-deps.sh --fuzz && scripts/install-deps.sh --fuzz
	@cmake --preset fuzz --log-level=WARNING
	@cmake --build --preset fuzz
	@tests/fuzz/run $(FUZZ_SECONDS)

# The prefix is configured as well as installed to: the manual pages name it.
# Desktop caches are refreshed for a real install (not a staged DESTDIR one).
install: deps
	@cmake --preset release --log-level=WARNING -DCMAKE_INSTALL_PREFIX=$(PREFIX)
	@cmake --build --preset release
	@DESTDIR=$(DESTDIR) cmake --install build/release --strip
	@if [ -z "$(DESTDIR)" ]; then \
	    command -v update-desktop-database >/dev/null && update-desktop-database -q $(PREFIX)/share/applications || true; \
	    command -v gtk-update-icon-cache >/dev/null && gtk-update-icon-cache -qtf $(PREFIX)/share/icons/hicolor || true; \
	fi

package: deps
	@cmake --preset release --log-level=WARNING -DCMAKE_INSTALL_PREFIX=/usr
	@cmake --build --preset release
	@cd build/release && cpack --config CPackConfig.cmake
	@ls build/release/deb/*.deb

package-check: package
	@packaging/check-on-clean-debian

format:
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf build
