# Set-up, build, test and demo of Kesto on Debian 12.
BUILD      ?= build
ASAN_BUILD ?= build-asan
JOBS       ?= 2
# CI sets KESTO_WERROR=ON: warnings fail the build there.
KESTO_WERROR ?= OFF
PACKAGES   := cmake g++ make libgtest-dev libgmock-dev libbenchmark-dev \
              qt6-base-dev qt6-qpa-plugins libgl1-mesa-dev fonts-dejavu-core fonts-noto-cjk \
              clang libclang-rt-14-dev
# make fuzz: the libFuzzer harnesses of fuzz/, built with clang; each runs FUZZ_SECONDS.
FUZZ_BUILD   ?= build-fuzz
FUZZ_SECONDS ?= 60

.PHONY: deps build test test-asan fuzz demo bench screenshot format clean

deps:
	@missing=""; for p in $(PACKAGES); do \
	  dpkg -s $$p >/dev/null 2>&1 || missing="$$missing $$p"; done; \
	if [ -z "$$missing" ]; then echo "deps: all packages present"; \
	elif [ "$$(id -u)" = 0 ]; then \
	  echo "deps: installing$$missing"; \
	  apt-get update -qq && DEBIAN_FRONTEND=noninteractive apt-get install -y -qq $$missing; \
	else echo "deps: missing$$missing; run: sudo apt-get install -y$$missing"; exit 1; fi

$(BUILD)/CMakeCache.txt:
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKESTO_WERROR=$(KESTO_WERROR)

build: deps $(BUILD)/CMakeCache.txt
	cmake --build $(BUILD) -j $(JOBS)

test: build
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

test-asan: deps
	cmake -S . -B $(ASAN_BUILD) -DCMAKE_BUILD_TYPE=Debug -DKESTO_SANITIZE=ON
	cmake --build $(ASAN_BUILD) -j $(JOBS)
	cd $(ASAN_BUILD) && QT_QPA_PLATFORM=offscreen LSAN_OPTIONS=suppressions=$(CURDIR)/tests/lsan.supp \
	  KESTO_MONKEY_STEPS=10000 ctest --output-on-failure -j $(JOBS)

fuzz: deps
	CC=clang CXX=clang++ cmake -S . -B $(FUZZ_BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	  -DKESTO_FUZZ=ON -DKESTO_WITH_UI=OFF -DKESTO_WITH_BENCH=OFF
	cmake --build $(FUZZ_BUILD) --target kesto-fuzzers -j $(JOBS)
	sh fuzz/run.sh $(FUZZ_BUILD) $(FUZZ_SECONDS) $(FUZZ_RUNS)

demo: build
	@sh examples/demo.sh $(BUILD)

bench: build
	$(BUILD)/kesto-bench
	QT_QPA_PLATFORM=offscreen $(BUILD)/kesto-draw-bench

screenshot: build
	@mkdir -p $(BUILD)/screenshots
	sh examples/screenshot.sh $(BUILD)

format:
	find src tests bench \( -name '*.cpp' -o -name '*.h' \) -print | xargs clang-format -i

clean:
	rm -rf $(BUILD) $(ASAN_BUILD)
