# A thin face over CMakePresets.json.
.PHONY: build run test
deps:
	@packaging/debian12/install_deps.sh
build: deps
	cmake --preset release && cmake --build --preset release
run: build
	build/release/orvel run
test: deps
	cmake --preset debug && cmake --build --preset debug && ctest --preset debug
