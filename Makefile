# Quillon: make demo | make test | make bench | make fuzz | make sanitize
BUILD ?= build
JOBS ?= $(shell nproc 2>/dev/null || echo 2)

.PHONY: all deps build demo test bench fuzz sanitize clean

all: build

deps:
	@scripts/install-deps.sh

build: deps
	@cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=Release >/dev/null
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

fuzz:
	@scripts/install-deps.sh fuzz
	@CXX=clang++ cmake -S . -B $(BUILD)-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQUILLON_FUZZ=ON -DQUILLON_UI=OFF -DQUILLON_TESTS=OFF >/dev/null
	@cmake --build $(BUILD)-fuzz -j $(JOBS)
	@fuzz/run_fuzz.sh $(BUILD)-fuzz

clean:
	rm -rf $(BUILD) $(BUILD)-asan $(BUILD)-fuzz
