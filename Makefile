# Set-up, build and the everyday commands. Each target installs what is
# missing, configures and builds first, so any of them works on a fresh
# Debian 12 machine.

# QT=5 (the default) or QT=6: the Qt to build with, each in build
# directories of its own (build-qt6, build-check-qt6 for Qt 6). WEB=webkit,
# webengine or none: the web dialog's engine, when not the Qt's default
# (QtWebKit on Qt 5, QtWebEngine on Qt 6), in directories named after it
# too (build-webengine for Qt 5 with QtWebEngine).
QT ?= 5
WEB ?=
WEB_SUFFIX = $(if $(WEB),-$(WEB))
ifeq ($(QT),5)
BUILD_DIR ?= build$(WEB_SUFFIX)
CHECK_DIR ?= build-check$(WEB_SUFFIX)
else ifeq ($(QT),6)
BUILD_DIR ?= build-qt6$(WEB_SUFFIX)
CHECK_DIR ?= build-check-qt6$(WEB_SUFFIX)
else
$(error QT is 5 or 6, not "$(QT)")
endif
CMAKE_QT = -DAUTH_QT_MAJOR=$(QT) $(if $(WEB),-DAUTH_WEB_ENGINE=$(WEB))
# Qt 5's offscreen platform has no OpenGL, which QtWebEngine 5 draws with
# unless Qt Quick renders in software.
OFFSCREEN_QUICK = $(if $(filter 5,$(QT)),QT_QUICK_BACKEND=software)
# Chromium's sandbox (QtWebEngine) does not start as root; the library never
# turns it off, only the targets that start the host or the benchmarks do,
# for root: a shell line to put in front of them.
NO_SANDBOX_AS_ROOT = if [ "$$(id -u)" = 0 ]; then export QTWEBENGINE_DISABLE_SANDBOX=1; fi;
BUILD_TYPE ?= RelWithDebInfo
JOBS ?= $(shell nproc 2>/dev/null || echo 2)
SOURCES = $(shell git ls-files '*.cpp' '*.h')

.PHONY: all deps configure build run test check check-build check-format bench lint format translations clean

all: build

deps:
	@scripts/install-deps.sh

configure: deps
	cmake -S . -B $(BUILD_DIR) -DCMAKE_BUILD_TYPE=$(BUILD_TYPE) $(CMAKE_QT)

build: configure
	cmake --build $(BUILD_DIR) -j $(JOBS)

# The main job: the reference host with the plug-in, on the default profile,
# the cloud simulator signed in. Without a display it walks through the
# states instead, under Xvfb (offscreen when there is no Xvfb either), and
# says where the pictures are.
SCREENSHOT_DIR ?= $(BUILD_DIR)/screenshots
XVFB_SCREEN ?= -screen 0 1280x1024x24 -dpi 96
run: build
	@$(NO_SANDBOX_AS_ROOT) \
	if [ -n "$$DISPLAY" ] || [ -n "$$WAYLAND_DISPLAY" ]; then \
	    $(BUILD_DIR)/bin/zentooffice --signed-in; \
	else \
	    walk="$(BUILD_DIR)/bin/zentooffice --screenshots $(SCREENSHOT_DIR)"; \
	    if command -v xvfb-run >/dev/null 2>&1; then \
	        echo "run: no display; taking the host window's screenshots under Xvfb"; \
	        xvfb-run -a -s "$(XVFB_SCREEN)" $$walk; \
	    else \
	        echo "run: no display and no Xvfb; taking the host window's screenshots offscreen"; \
	        QT_QPA_PLATFORM=offscreen $(OFFSCREEN_QUICK) $$walk; \
	    fi && echo "run: screenshots of the host window are in $(SCREENSHOT_DIR)/"; \
	fi

test: build
	cd $(BUILD_DIR) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

# The second compiler under AddressSanitizer and UndefinedBehaviorSanitizer,
# in a build directory of its own, every target (the benchmarks too, so a
# Clang-only break shows); any finding fails its suite. Then the format of
# every tracked source.
check: check-build check-format

check-build: deps
	CC=clang CXX=clang++ cmake -S . -B $(CHECK_DIR) -DCMAKE_BUILD_TYPE=Debug \
	    -DAUTH_SANITIZE=address,undefined $(CMAKE_QT)
	cmake --build $(CHECK_DIR) -j $(JOBS)
	cd $(CHECK_DIR) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

check-format: deps
	@clang-format --dry-run --Werror $(SOURCES) && echo "check-format: $(words $(SOURCES)) files formatted"

# The libFuzzer targets (fuzz/) in a Clang build of their own, each run for
# FUZZ_SECONDS on a scratch copy of its seed corpus (or, with FUZZ_RUNS, for
# that many inputs from a fixed seed); a finding fails the target and names
# the input that reproduces it. CI runs a fixed, repeatable pass.
FUZZ_DIR ?= $(if $(filter 6,$(QT)),build-fuzz-qt6,build-fuzz)$(WEB_SUFFIX)
FUZZ_SECONDS ?= 60
.PHONY: fuzz
fuzz: deps
	CC=clang CXX=clang++ cmake -S . -B $(FUZZ_DIR) -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	    -DAUTH_SANITIZE=address,undefined -DAUTH_BUILD_FUZZERS=ON $(CMAKE_QT) \
	    -DAUTH_BUILD_TESTS=OFF -DAUTH_BUILD_BENCHMARKS=OFF
	cmake --build $(FUZZ_DIR) -j $(JOBS) --target fuzzers
	FUZZ_RUNS=$(FUZZ_RUNS) fuzz/run.sh $(FUZZ_DIR) $(FUZZ_SECONDS)

# Static analysis with the checks in .clang-tidy, over the ordinary build's
# compile commands: the sources and headers of src/, sdk/ and apps/. Any
# finding is an error and fails the target.
lint: configure
	run-clang-tidy -quiet -p $(BUILD_DIR) -j $(JOBS) \
	    -header-filter='^$(CURDIR)/(src|sdk|apps)/' '^$(CURDIR)/(src|sdk|apps)/'

bench: build
	@$(NO_SANDBOX_AS_ROOT) \
	for b in $(BUILD_DIR)/bin/bench_*; do echo "== $$b"; QT_QPA_PLATFORM=offscreen $(OFFSCREEN_QUICK) $$b; done

format:
	clang-format -i $(SOURCES)

# The plug-in's translation sources (src/resources/translations/*.ts) brought
# up to date with the texts in src/; new texts then need their translations.
translations: configure
	cmake --build $(BUILD_DIR) --target authplugin_lupdate

clean:
	rm -rf $(BUILD_DIR) $(CHECK_DIR)
