# The two commands of the README: `make demo` and `make test`.
# Each first installs what is missing, then configures and builds what it needs.

JOBS     ?= $(shell nproc)
MAKEFLAGS += --no-print-directory
NATIVE   := build/native
ASAN     := build/asan
WIN64    := build/win64
CTEST    := ctest --output-on-failure -j $(JOBS)

.PHONY: all deps photos native asan win64 test test-native test-asan test-win64 demo art format clean

all: native win64

deps:
	@bash tools/install-deps.sh

# Real photographs for the end-to-end tests and the demo (a test card stands in without).
photos:
	@bash tools/fetch-photos.sh build/photos

native: deps
	@cmake -S . -B $(NATIVE) -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
	@cmake --build $(NATIVE) -j $(JOBS)

asan: deps
	@cmake -S . -B $(ASAN) -DCMAKE_BUILD_TYPE=Debug -DQZ_SANITIZE=ON -DQZ_DATA=OFF >/dev/null
	@cmake --build $(ASAN) -j $(JOBS)

# The cross build takes its resource generator from the native build.
win64: native
	@cmake -S . -B $(WIN64) -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	  -DCMAKE_TOOLCHAIN_FILE=$(CURDIR)/cmake/mingw-w64-x86_64.cmake \
	  -DQZ_NATIVE_BUILD=$(CURDIR)/$(NATIVE) >/dev/null
	@cmake --build $(WIN64) -j $(JOBS)

test-native: native
	@echo "== native unit tests"
	@$(CTEST) --test-dir $(NATIVE)

test-asan: asan
	@echo "== native unit tests under AddressSanitizer and UndefinedBehaviorSanitizer"
	@ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1 $(CTEST) --test-dir $(ASAN)

test-win64: win64 photos
	@echo "== Win64 tests under wine"
	@$(CTEST) --test-dir $(WIN64)

test: test-native test-asan test-win64

# One sheet of the dialog's art (pictures, cursors, icon, sound), to judge the skin by eye.
art: native
	@mkdir -p out
	@$(NATIVE)/bin/qz-artsheet out/art-contact.png
	@echo "Drew out/art-contact.png"

demo: win64 photos art
	@bash tools/stage-dist.sh $(WIN64)/bin $(NATIVE)/data/Quenzit dist/Quenzit-win64
	@echo "Staged dist/Quenzit-win64/"
	@bash tools/demo-renders.sh $(NATIVE)/bin $(NATIVE)/data/Quenzit build/photos out/demo
	@echo "Pictures of the dialog:"
	@bash tools/demo-ui.sh $(WIN64) $(NATIVE)/bin build/photos out/demo/ui

# Every source as .clang-format says; a test of the native build checks it stays so.
format: deps
	@bash tools/format.sh

clean:
	rm -rf build dist out
