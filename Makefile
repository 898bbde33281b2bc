# Quillon: make demo | make test | make bench | make fuzz [FUZZ_RUNS=N] | make sanitize
#          make windows | make test-windows
#          make package | make check-packages | make package-windows | make check-packages-windows
BUILD ?= build
JOBS ?= $(shell nproc 2>/dev/null || echo 2)

.PHONY: all deps build demo test bench fuzz sanitize windows test-windows clean \
  package check-packages package-windows check-packages-windows

all: build

deps:
	@scripts/install-deps.sh

# The console program is built twice: instrumented in $(BUILD)-pgo, trained
# on generated files, then optimised from that profile in $(BUILD). PGO=0
# builds it once, without a profile.
PGO ?= 1
PROFIL = $(abspath $(BUILD)-pgo/profil)
ifeq ($(PGO),1)
PGO_OPTIONS = -DQUILLON_PGO=use -DQUILLON_PGO_DIR=$(PROFIL)
else
PGO_OPTIONS = -DQUILLON_PGO=
endif

build: deps
ifeq ($(PGO),1)
	@cmake -S . -B $(BUILD)-pgo -DCMAKE_BUILD_TYPE=Release -DQUILLON_UI=OFF -DQUILLON_TESTS=OFF \
	  -DQUILLON_PGO=generate -DQUILLON_PGO_DIR=$(PROFIL) >/dev/null
	@cmake --build $(BUILD)-pgo -j $(JOBS) --target quillon quillon_generer
	@scripts/pgo-train.sh $(BUILD)-pgo $(PROFIL)
endif
	@cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=Release $(PGO_OPTIONS) >/dev/null
	@cmake --build $(BUILD) -j $(JOBS)

# Converts the bundled samples and shows targets, logs and summaries.
demo: build
	@scripts/demo.sh $(BUILD)/quillon

test: build
	@cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

# The whole suite again under AddressSanitizer and UndefinedBehaviorSanitizer.
sanitize: deps
	@cmake -S . -B $(BUILD)-asan -DCMAKE_BUILD_TYPE=Debug -DQUILLON_SANITIZE=ON >/dev/null
	@cmake --build $(BUILD)-asan -j $(JOBS)
	@cd $(BUILD)-asan && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

bench: build
	@bench/run_bench.sh $(BUILD)
	@bench/run_bench_lot.sh $(BUILD)

fuzz:
	@scripts/install-deps.sh fuzz
	@CXX=clang++ cmake -S . -B $(BUILD)-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQUILLON_FUZZ=ON -DQUILLON_UI=OFF -DQUILLON_TESTS=OFF >/dev/null
	@cmake --build $(BUILD)-fuzz -j $(JOBS)
	@fuzz/run_fuzz.sh $(BUILD)-fuzz

# quillon.exe for 64-bit and 32-bit Windows, cross-built with mingw-w64 and
# statically linked, in $(BUILD)-win64 and $(BUILD)-win32.
windows:
	@scripts/install-deps.sh windows
	@for arch in 64:x86_64 32:i686; do \
	  cmake -S . -B $(BUILD)-win$${arch%%:*} -DCMAKE_BUILD_TYPE=Release \
	    -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-$${arch#*:}.cmake >/dev/null && \
	  cmake --build $(BUILD)-win$${arch%%:*} -j $(JOBS) || exit 1; \
	done

# The Windows builds' tests under wine; the e2e cases are driven by the
# Linux e2e program, built here if need be.
test-windows: windows
	@test -f $(BUILD)/CMakeCache.txt || cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=Release -DQUILLON_PGO= >/dev/null
	@cmake --build $(BUILD) -j $(JOBS) --target quillon_e2e_tests
	@tests/windows/run-tests.sh $(BUILD) $(BUILD)-win64 $(BUILD)-win32

# The Debian packages of the build, quillon (the command-line programs) and
# quillon-fenetres (the windowed program), in $(BUILD)/paquets.
package: build
	@scripts/install-deps.sh package
	@cd $(BUILD) && { cpack -G DEB >paquets.log 2>&1 || { cat paquets.log; exit 1; }; } && ls -l paquets/*.deb

# The packages' fields, files and programs once extracted; lintian, the
# desktop entry and the AppStream metainfo.
check-packages: package
	@scripts/check-packages.sh deb $(BUILD)

# The Windows zips (both builds) and installer (x86-64), in $(BUILD)-windows.
package-windows: windows
	@scripts/install-deps.sh package
	@packaging/windows/package.sh $(BUILD)-win64 $(BUILD)-win32 $(BUILD)-windows

# The installer under wine: silent install, a conversion, uninstall.
check-packages-windows: package-windows
	@test -f $(BUILD)/CMakeCache.txt || cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=Release -DQUILLON_PGO= >/dev/null
	@cmake --build $(BUILD) -j $(JOBS) --target quillon
	@scripts/check-packages.sh windows $(BUILD)-windows $(BUILD)

clean:
	rm -rf $(BUILD) $(BUILD)-pgo $(BUILD)-asan $(BUILD)-fuzz $(BUILD)-win64 $(BUILD)-win32 $(BUILD)-windows
