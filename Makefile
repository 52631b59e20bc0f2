# A thin face over CMakePresets.json; `make help` lists what there is.
.DEFAULT_GOAL := help
SHELL := /bin/bash
.SHELLFLAGS := -o pipefail -c
PREFIX ?= /usr/local
FUZZ_SECONDS ?= 60
JOBS := $(shell nproc)
CHECKS := tests/checks

# $(call build,CONFIGURE_PRESET,BUILD_PRESET); the configuration is shown only when it fails.
define build
@mkdir -p build && cmake --preset $(1) >build/$(1).configure.log 2>&1 || { cat build/$(1).configure.log; exit 1; }
@cmake --build --preset $(2)
endef

.PHONY: help
help: ## list the targets
	@awk -F ':.*## ' '/^[a-z-]+:.*## /{printf "%-12s %s\n", $$1, $$2}' $(MAKEFILE_LIST)

.PHONY: deps
deps: ## install what is missing on Debian 12
	@packaging/debian12/install_deps.sh

.PHONY: build
build: deps ## build the programs: build/release/orvel
	$(call build,release,release)

.PHONY: run
run: build ## start in this session, or in an embedded desktop when there is none
	@tools/run.sh build/release

.PHONY: replay steps-file
replay: steps-file build ## replay FILE=steps.jsonl on the in-memory desktop
	@build/release/orvel replay "$(FILE)"

steps-file:
	@test -n "$(FILE)" || { echo "usage: make replay FILE=steps.jsonl" >&2; exit 2; }

# Real sessions run beside each other and beside a compiler on few processors. What failed runs once
# more, alone: it fails again when it is broken, and is named in the output when it was only late.
.PHONY: test
test: deps ## build and run every test
	$(call build,debug,debug)
	@ctest --preset debug --parallel $(JOBS) || { \
		echo "== once more, alone: what failed beside the others"; ctest --preset debug --rerun-failed; }

.PHONY: asan
asan: deps ## every test that needs no X server, under the address and undefined-behaviour sanitizers
	$(call build,asan,asan)
	@ctest --preset asan --parallel $(JOBS)

.PHONY: coverage
coverage: deps ## which lines the tests run: build/coverage/summary.txt
	$(call build,coverage,coverage)
	@ctest --preset coverage --parallel $(JOBS)
	@python3 $(CHECKS)/coverage.py build/coverage | tee build/coverage/summary.txt

.PHONY: fuzz
fuzz: deps ## run every fuzz target for FUZZ_SECONDS
	$(call build,fuzz,fuzz)
	@$(CHECKS)/run_fuzzers.sh build/fuzz $(FUZZ_SECONDS)

.PHONY: bench
bench: deps ## run the benchmarks
	$(call build,release,bench)
	@shopt -s nullglob; for bench in build/release/benches/*; do "$$bench" || exit 1; done

.PHONY: accept
accept: deps ## rewrite the expected transcripts and the table of rules; review them in the diff
	$(call build,debug,debug)
	@ORVEL_ACCEPT=1 ctest --preset debug -R 'TranscriptTest|RuleTable' >build/accept.log 2>&1; status=$$?; \
		git status --short -- tests/replay docs/rules.md; \
		[ $$status = 0 ] || { cat build/accept.log; echo "accept: what still fails was not rewritten" >&2; exit 1; }

.PHONY: fmt
fmt: deps ## format the sources
	@$(CHECKS)/format.sh --fix

.PHONY: lint
lint: deps ## formatting, layering, banned calls, lengths, clang-tidy
	@$(CHECKS)/lint.sh

.PHONY: check-macos
check-macos: deps ## type-check, analyse, link and fake-run the macOS back end
	@if [ -x tests/macos/check.sh ]; then tests/macos/check.sh; else echo "no macOS back end to check"; fi

.PHONY: install
install: build ## install under PREFIX (/usr/local), below DESTDIR if set
	@cmake --install build/release --prefix "$(PREFIX)"

.PHONY: uninstall
uninstall: ## remove what `make install` put in place
	@packaging/linux/uninstall.sh build/release/install_manifest.txt

.PHONY: clean
clean: ## remove every build
	@rm -rf build
