# Set-up, build and the two everyday commands. Each target installs what is
# missing, configures and builds first, so any of them works on a fresh
# Debian 12 machine.

BUILD_DIR ?= build
BUILD_TYPE ?= RelWithDebInfo
JOBS ?= $(shell nproc 2>/dev/null || echo 2)

.PHONY: all deps configure build run test bench format clean

all: build

deps:
	@scripts/install-deps.sh

configure: deps
	cmake -S . -B $(BUILD_DIR) -DCMAKE_BUILD_TYPE=$(BUILD_TYPE)

build: configure
	cmake --build $(BUILD_DIR) -j $(JOBS)

# The main job: the command-line host with the plug-in, on the default profile.
run: build
	$(BUILD_DIR)/bin/authinfo

test: build
	cd $(BUILD_DIR) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

bench: build
	@for b in $(BUILD_DIR)/bin/bench_*; do echo "== $$b"; QT_QPA_PLATFORM=offscreen $$b; done

format:
	clang-format -i $$(git ls-files '*.cpp' '*.h')

clean:
	rm -rf $(BUILD_DIR)
