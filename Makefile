# A thin face over CMakePresets.json; `make help` lists what there is.
.DEFAULT_GOAL := build
SHELL := /bin/bash
PREFIX ?= /usr/local
CPP_SOURCES = git ls-files -z --cached --others --exclude-standard '*.cpp' '*.hpp' '*.mm'

.PHONY: help deps build run test bench fmt lint asan coverage fuzz accept replay check-macos \
	install uninstall clean

help: ## list the targets
	@awk -F ':.*## ' '/^[a-z-]+:.*## /{printf "%-12s %s\n", $$1, $$2}' $(MAKEFILE_LIST)

deps: ## install the packages that are missing (Debian 12)
	@packaging/debian12/install_deps.sh

build: deps ## release programs: build/release/orvel
	@cmake --preset release >build/release.configure.log 2>&1 || { cat build/release.configure.log; exit 1; }
	cmake --build --preset release
