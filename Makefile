# make run   installs what is missing, builds, and shows the tool on its virtual device
# make test  installs what is missing, builds, and runs every test, then again under
#            AddressSanitizer and UndefinedBehaviorSanitizer
# make package builds the Debian package mq27diag_<version>_<arch>.deb in the build folder
#            and checks it with lintian
# make bench builds and runs the benchmarks: the core library, the main view, then the
#            running tool, and a soak of it on a bad line (30 min; MQ27_SOAK_SECONDS=600
#            shortens it)
# make fuzz  builds the fuzz targets with clang and runs each under ASan and UBSan
# make manual remakes the service manual's PDFs (docs/manual) whose sources changed

BUILD      ?= build
ASAN_BUILD ?= build-asan
JOBS       ?= $(shell nproc)
CMAKE_GEN  := -G Ninja

.PHONY: all deps build build-asan run test test-main test-asan bench fuzz package manual format clean

all: build

deps:
	@sh scripts/install-deps.sh

# Line tables are enough for a backtrace with file and line; the full debug information of
# -g made every compile a fifth slower.
$(BUILD)/build.ninja: | deps
	cmake -S . -B $(BUILD) $(CMAKE_GEN) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DMQ27_WERROR=ON \
	      -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O2 -g1 -DNDEBUG"

build: deps $(BUILD)/build.ninja
	cmake --build $(BUILD) -j $(JOBS)

$(ASAN_BUILD)/build.ninja: | deps
	cmake -S . -B $(ASAN_BUILD) $(CMAKE_GEN) -DCMAKE_BUILD_TYPE=Debug -DMQ27_SANITIZE=ON -DMQ27_WERROR=ON \
	      -DMQ27_BENCH=OFF

build-asan: deps $(ASAN_BUILD)/build.ninja
	cmake --build $(ASAN_BUILD) -j $(JOBS)

run: build
	@sh scripts/run-demo.sh $(BUILD)

test: test-main test-asan

test-main: build
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS)

test-asan: build-asan
	cd $(ASAN_BUILD) && \
	ASAN_OPTIONS=detect_leaks=0:abort_on_error=1 \
	UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
	ctest --output-on-failure -j $(JOBS)

bench: build
	cmake --build $(BUILD) -j $(JOBS) --target mq27benches
	$(BUILD)/bin/mq27bench
	QT_QPA_PLATFORM=offscreen $(BUILD)/bin/mq27benchview
	QT_QPA_PLATFORM=offscreen $(BUILD)/bin/mq27benchwrite
	QT_QPA_PLATFORM=offscreen $(BUILD)/bin/mq27benchext
	QT_QPA_PLATFORM=offscreen $(BUILD)/bin/mq27benchloc
	QT_QPA_PLATFORM=offscreen $(BUILD)/bin/mq27benchlogger
	sh scripts/measure-live.sh $(BUILD)
	QT_QPA_PLATFORM=offscreen $(BUILD)/bin/mq27benchsoak

# make fuzz  builds the libFuzzer targets with clang and runs each under ASan and UBSan
#            (MQ27_FUZZ_SECONDS each, default 120, or MQ27_FUZZ_RUNS inputs each), printing
#            executions per second
fuzz:
	@sh scripts/install-deps.sh fuzz
	JOBS=$(JOBS) sh scripts/fuzz.sh

package: build
	@sh scripts/install-deps.sh package
	cd $(BUILD) && cpack -G DEB
	lintian --fail-on error $(BUILD)/mq27diag_*.deb

# The PDFs are kept in the repository, so that a build needs no converter; the test
# "manual" fails when one was not made from its present source.
manual:
	@sh scripts/install-deps.sh manual
	sh scripts/make-manual.sh

format:
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf $(BUILD) $(ASAN_BUILD)
