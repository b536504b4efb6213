# The two commands of every day: make demo, make test. make help names the others.

JOBS ?= $(shell nproc)
PACKAGES := g++ cmake ninja-build libsqlite3-dev nlohmann-json3-dev libzip-dev libpugixml-dev libgtest-dev libbenchmark-dev \
  unixodbc-dev tdsodbc libsqliteodbc qt6-base-dev xvfb xauth fonts-dejavu-core
PACKAGES_WINDOWS := g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix mingw-w64-tools wine wine64 libwine-dev \
  googletest locales dpkg-dev tcl
PACKAGES_CHECKS := clang-format clang-tidy
PACKAGES_FUZZ := clang libclang-rt-dev
PACKAGES_PACKAGE := dpkg-dev file
FUZZ_SECONDS ?= 30
TORTURE_ROUNDS ?= 12
SUDO := $(shell [ "$$(id -u)" = 0 ] || command -v sudo)

.PHONY: help deps build demo test windows windows32 bench fuzz torture walls rooms format check-format tidy tidy-changed \
  package screenshots layouts clean

help:
	@echo "make demo    creates the demo clinic, exports a month and a quarter, imports a patient list"
	@echo "make test    builds and runs every test under the sanitizers"
	@echo "make windows builds the Windows library for both word sizes and tests the 64-bit one under Wine"
	@echo "make windows32 tests the 32-bit one too, where 32-bit programs can be run"
	@echo "make build   build/release/aslhost, optimised"
	@echo "make bench   measures the export of 1,000,000 services and the import of 1,000,000 patients"
	@echo "make fuzz    feeds broken files to the readers, FUZZ_SECONDS=30 for each target"
	@echo "make torture two clerks at once on one clinic, TORTURE_ROUNDS=12"
	@echo "make walls   checks that rooms see only what they name; make rooms renews docs/rooms.md"
	@echo "make format  formats the sources; make check-format only looks"
	@echo "make tidy    looks for faults with clang-tidy; make tidy-changed in what the last commits wrote"
	@echo "make package build/release/*.deb: library, headers for hosts, aslhost"
	@echo "make layouts writes the pages of the layouts, docs/layouts"
	@echo "make screenshots  pictures of every dialog, into docs/images"
	@echo "make clean   removes everything that was built"

# Installs what is missing with the system's package manager, and says so; does nothing when all is there.
deps:
	@missing=""; for package in $(PACKAGES); do \
	  dpkg-query -W -f '$${Status}' $$package 2>/dev/null | grep -q 'ok installed' || missing="$$missing $$package"; \
	done; \
	if [ -n "$$missing" ]; then \
	  echo "Installing:$$missing"; \
	  $(SUDO) apt-get update -qq && $(SUDO) env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq \
	    --no-install-recommends $$missing; \
	fi

build: deps
	@cmake --preset release > build-release.log 2>&1 || { cat build-release.log; rm -f build-release.log; exit 1; }
	@rm -f build-release.log
	@cmake --build --preset release -j $(JOBS)

demo: build
	@host/demo.sh build/release/aslhost

test: deps
	cmake --preset dev
	cmake --build --preset dev -j $(JOBS)
	ctest --test-dir build/dev --no-tests=error --output-on-failure -j $(JOBS)

windows windows32: PACKAGES += $(PACKAGES_WINDOWS)
windows: deps
	windows/build-engine.sh build/engine x86_64-w64-mingw32 i686-w64-mingw32
	cmake --preset windows64
	cmake --build --preset windows64 -j $(JOBS)
	cmake --preset windows32
	cmake --build --preset windows32 -j $(JOBS) --target VlmASLServicesLib vlm_odbc vlm_sqlite
	windows/check-exports.sh x86_64-w64-mingw32 build/windows64/VlmASLServicesLib.dll
	windows/check-exports.sh i686-w64-mingw32 build/windows32/VlmASLServicesLib.dll
	windows/with-wine.sh build/wine ctest --test-dir build/windows64 --no-tests=error --output-on-failure

windows32: deps
	windows/build-engine.sh build/engine i686-w64-mingw32
	cmake --preset windows32
	cmake --build --preset windows32 -j $(JOBS)
	windows/check-exports.sh i686-w64-mingw32 build/windows32/VlmASLServicesLib.dll
	windows/with-wine32.sh build/wine32 ctest --test-dir build/windows32 --no-tests=error --output-on-failure

bench: build
	@bench/run.sh build/release

# Seeds are read, never written; what a run finds new stays in the build folder, a crash's input too.
fuzz: PACKAGES += $(PACKAGES_FUZZ)
fuzz: deps
	cmake --preset fuzz
	cmake --build --preset fuzz -j $(JOBS)
	@for target in build/fuzz/fuzz/*_fuzz; do \
	  name=$$(basename $$target _fuzz); mkdir -p build/fuzz/found/$$name; \
	  echo "$$name: $(FUZZ_SECONDS) seconds"; \
	  $$target -max_total_time=$(FUZZ_SECONDS) -rss_limit_mb=2048 -timeout=20 -print_final_stats=1 -print_funcs=0 -verbosity=0 \
	    -artifact_prefix=build/fuzz/$$name- build/fuzz/found/$$name fuzz/corpus/$$name || exit 1; \
	done

# Two clerks at once, again and again; not part of the check, because what it finds depends on the moment.
torture: PACKAGES += sqlite3
torture: build
	tools/torture/two-clerks.sh build/release/aslhost $(TORTURE_ROUNDS)
	tools/torture/two-clerks.sh build/release/aslhost $(TORTURE_ROUNDS) build/release/asltds

walls:
	tools/walls.sh

rooms:
	tools/walls.sh --write

format check-format tidy tidy-changed: PACKAGES += $(PACKAGES_CHECKS)

format: deps
	clang-format -i $$(git ls-files '*.cpp' '*.h')

# The pages of the layouts, from the tables that write the lines; a test tells when they are stale.
layouts: deps
	cmake --preset dev
	cmake --build --preset dev -j $(JOBS) --target layouts_tests
	VLM_WRITE_LAYOUTS=1 build/dev/tests/layouts_tests --gtest_brief=1

check-format: deps
	clang-format --dry-run -Werror $$(git ls-files '*.cpp' '*.h')

tidy: deps
	tools/tidy.sh $(JOBS)

tidy-changed: deps
	tools/tidy.sh --changed $(JOBS)

package: PACKAGES += $(PACKAGES_PACKAGE)
package: build
	cd build/release && cpack

screenshots: deps
	cmake --preset dev
	cmake --build --preset dev -j $(JOBS) --target vlm_screenshots
	LSAN_OPTIONS=suppressions=libs/dialogs/qt/tests/leaks.supp:print_suppressions=0 build/dev/tests/vlm_screenshots docs/images

clean:
	rm -rf build
