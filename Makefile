# SPDX-License-Identifier: MIT
# The usual tasks. Everything is built in build/<preset>/; CMake does the work.

PRESET ?= release
PREFIX ?= /usr/local
JOBS ?= $(shell nproc)
BUILD = build/$(PRESET)
# "no" keeps make from installing packages.
export PACKAGES ?=
# ON treats warnings as errors, as the presets do for people who develop Orvane. Others may have a compiler that warns
# of more.
WERROR ?= OFF
CONFIGURE = cmake --preset $(PRESET) -DORVANE_WERROR=$(WERROR)

.PHONY: all demo test bench judge fuzz coverage soak install format lint clean packages

all: packages
	@tools/install-packages test
	$(CONFIGURE)
	cmake --build --preset $(PRESET) -j $(JOBS)

packages:
	@tools/install-packages build run

demo: packages
	$(CONFIGURE) -DORVANE_BUILD_TESTS=OFF
	cmake --build --preset $(PRESET) -j $(JOBS) --target orvane_cli
	@mkdir -p out
	@$(BUILD)/bin/orvane showcase -o out/orvane.png
	@echo "$(CURDIR)/out/orvane.png"

test: packages
	@tools/install-packages test
	$(CONFIGURE) -DORVANE_BUILD_TESTS=ON
	cmake --build --preset $(PRESET) -j $(JOBS)
	@tools/run-tests $(PRESET)

bench: packages
	@tools/install-packages bench
	$(CONFIGURE) -DORVANE_BUILD_BENCH=ON
	cmake --build --preset $(PRESET) -j $(JOBS) --target orvane_bench
	$(BUILD)/bin/orvane_bench

# Other programs judge what is written: every script in tools/judge, each of which says what it needs.
judge: packages
	@tools/install-packages judge
	$(CONFIGURE) -DORVANE_BUILD_TOOLS=ON
	cmake --build --preset $(PRESET) -j $(JOBS) --target orvane_cli judge-solids judge-svg
	@failed=; for judge in tools/judge/*; do \
	  if [ -f $$judge ] && [ -x $$judge ]; then echo "$$judge:"; $$judge $(BUILD) || failed="$$failed $$judge"; fi; \
	done; [ -z "$$failed" ] || { echo "failed:$$failed"; exit 1; }

# Runs every fuzz target, all of them together for SECONDS, or each with as many changed inputs as RUNS says.
SECONDS ?= 60
fuzz: packages
	@tools/install-packages lint fuzz
	cmake --preset fuzz
	cmake --build --preset fuzz -j $(JOBS)
	tools/fuzz build/fuzz $(if $(RUNS),runs $(RUNS),seconds $(SECONDS))

# Says which lines of the readers of foreign bytes no test runs.
coverage: packages
	@tools/install-packages test
	tools/coverage

# Mixed work in one process for MINUTES; fails when its memory grows.
MINUTES ?= 10
soak: packages
	$(CONFIGURE) -DORVANE_BUILD_TOOLS=ON
	cmake --build --preset $(PRESET) -j $(JOBS) --target soak
	$(BUILD)/bin/soak $(MINUTES)

install: packages
	$(CONFIGURE) -DORVANE_BUILD_TESTS=OFF -DCMAKE_INSTALL_PREFIX="$(PREFIX)"
	cmake --build --preset $(PRESET) -j $(JOBS) --target orvane orvane_cli
	cmake --install $(BUILD)
	@# So that programs find a library in a folder of the system.
	@if [ "$$(id -u)" -eq 0 ] && [ -z "$(DESTDIR)" ]; then ldconfig; fi

format:
	@tools/install-packages lint
	tools/format --write

lint: packages
	@tools/install-packages test bench lint
	tools/format --check
	tools/check-includes
	tools/check-tree
	$(CONFIGURE) -DORVANE_BUILD_TESTS=ON -DORVANE_BUILD_BENCH=ON
	tools/lint $(BUILD)

clean:
	rm -rf build out
