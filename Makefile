# Quillon: make demo | make test | make bench | make fuzz [FUZZ_RUNS=N] | make sanitize
#          make windows | make test-windows | make test-32bits
#          make package | make check-packages | make package-windows | make check-packages-windows
BUILD ?= build
JOBS ?= $(shell nproc 2>/dev/null || echo 2)

.PHONY: all deps build demo test bench fuzz sanitize windows test-windows test-32bits clean \
  package check-packages package-windows check-packages-windows

all: build

deps:
	@scripts/install-deps.sh

# cmake's configure step, quiet unless it fails: $(call configurer,ARGS)
configurer = out=$$(cmake $(1) 2>&1) || { printf '%s\n' "$$out" >&2; exit 1; }

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

build:
ifeq ($(PGO),1)
	@$(call configurer,-S . -B $(BUILD)-pgo -DCMAKE_BUILD_TYPE=Release -DQUILLON_UI=OFF -DQUILLON_TESTS=OFF \
	  -DQUILLON_PGO=generate -DQUILLON_PGO_DIR=$(PROFIL))
	@cmake --build $(BUILD)-pgo -j $(JOBS) --target quillon quillon_generer
	@scripts/pgo-train.sh $(BUILD)-pgo $(PROFIL)
endif
	@$(call configurer,-S . -B $(BUILD) -DCMAKE_BUILD_TYPE=Release $(PGO_OPTIONS))
	@cmake --build $(BUILD) -j $(JOBS)

# Converts the bundled samples and shows targets, logs and summaries.
demo: deps
	@$(MAKE) --no-print-directory build
	@scripts/demo.sh $(BUILD)/quillon

test: deps
	@$(MAKE) --no-print-directory build
	@cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

# The whole suite again under AddressSanitizer and UndefinedBehaviorSanitizer.
sanitize: deps
	@$(call configurer,-S . -B $(BUILD)-asan -DCMAKE_BUILD_TYPE=Debug -DQUILLON_SANITIZE=ON)
	@cmake --build $(BUILD)-asan -j $(JOBS)
	@cd $(BUILD)-asan && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

bench: deps
	@$(MAKE) --no-print-directory build
	@bench/run_bench.sh $(BUILD)
	@bench/run_bench_lot.sh $(BUILD)
	@bench/run_bench_exports.sh $(BUILD)
	@bench/run_bench_comparer.sh $(BUILD)
	@bench/run_bench_rapport.sh $(BUILD)
	@bench/run_bench_atelier.sh $(BUILD)

fuzz:
	@scripts/install-deps.sh fuzz
	@export CXX=clang++; $(call configurer,-S . -B $(BUILD)-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQUILLON_FUZZ=ON -DQUILLON_UI=OFF -DQUILLON_TESTS=OFF)
	@cmake --build $(BUILD)-fuzz -j $(JOBS)
	@fuzz/run_fuzz.sh $(BUILD)-fuzz

# quillon.exe for 64-bit and 32-bit Windows, cross-built with mingw-w64 and
# statically linked, in $(BUILD)-win64 and $(BUILD)-win32.
windows:
	@scripts/install-deps.sh windows
	@for arch in 64:x86_64 32:i686; do \
	  $(call configurer,-S . -B $(BUILD)-win$${arch%%:*} -DCMAKE_BUILD_TYPE=Release \
	    -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-$${arch#*:}.cmake) && \
	  cmake --build $(BUILD)-win$${arch%%:*} -j $(JOBS) || exit 1; \
	done

# The Windows builds' tests under wine; the e2e cases are driven by the
# Linux e2e program, and the exports compared on a file that the Linux
# generator writes: both built here if need be.
test-windows: windows
	@test -f $(BUILD)/CMakeCache.txt || { $(call configurer,-S . -B $(BUILD) -DCMAKE_BUILD_TYPE=Release -DQUILLON_PGO=); }
	@cmake --build $(BUILD) -j $(JOBS) --target quillon_e2e_tests quillon_generer
	@tests/windows/run-tests.sh $(BUILD) $(BUILD)-win64 $(BUILD)-win32

# The 32-bit Linux build (g++ -m32, SSE2 arithmetic as the i686 Windows
# build), in $(BUILD)-32bits, against the 64-bit build: the e2e cases, the
# sweep of the value lookups and number conversions, and generated files
# (tests/32bits/run-tests.sh); the 64-bit programs built here if need be.
test-32bits:
	@scripts/install-deps.sh 32bits
	@$(call configurer,-S . -B $(BUILD)-32bits -DCMAKE_BUILD_TYPE=Release \
	  -DCMAKE_TOOLCHAIN_FILE=cmake/linux-i686.cmake -DQUILLON_UI=OFF -DQUILLON_TESTS=OFF)
	@cmake --build $(BUILD)-32bits -j $(JOBS) --target quillon quillon-lot quillon_balayage
	@test -f $(BUILD)/CMakeCache.txt || { $(call configurer,-S . -B $(BUILD) -DCMAKE_BUILD_TYPE=Release -DQUILLON_PGO=); }
	@cmake --build $(BUILD) -j $(JOBS) --target quillon_e2e_tests quillon_generer quillon_balayage
	@tests/32bits/run-tests.sh $(BUILD) $(BUILD)-32bits

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
	@test -f $(BUILD)/CMakeCache.txt || { $(call configurer,-S . -B $(BUILD) -DCMAKE_BUILD_TYPE=Release -DQUILLON_PGO=); }
	@cmake --build $(BUILD) -j $(JOBS) --target quillon
	@scripts/check-packages.sh windows $(BUILD)-windows $(BUILD)

clean:
	rm -rf $(BUILD) $(BUILD)-pgo $(BUILD)-asan $(BUILD)-fuzz $(BUILD)-win64 $(BUILD)-win32 $(BUILD)-windows \
	  $(BUILD)-32bits
