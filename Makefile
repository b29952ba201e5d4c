# Set-up, build, test and demo of Kesto on Debian 12.
BUILD      ?= build
ASAN_BUILD ?= build-asan
TSAN_BUILD ?= build-tsan
JOBS       ?= 2
# CI sets KESTO_WERROR=ON: warnings fail the build there.
KESTO_WERROR ?= OFF
PACKAGES   := cmake g++ make libgtest-dev libgmock-dev libbenchmark-dev \
              qt6-base-dev qt6-qpa-plugins libgl1-mesa-dev fonts-dejavu-core fonts-noto-cjk \
              clang libclang-rt-14-dev \
              xvfb openbox libx11-dev libxtst-dev clang-format \
              dpkg-dev file lintian desktop-file-utils appstream man-db groff-base \
              poppler-utils
# make fuzz: the libFuzzer harnesses of fuzz/, built with clang; each runs FUZZ_SECONDS.
FUZZ_BUILD   ?= build-fuzz
FUZZ_SECONDS ?= 60

# make test-windows: the core, kesto-batch and their tests cross-built with MinGW-w64 into
# WINDOWS_BUILD and run under Wine, in a Wine prefix of the build folder's own.
WINDOWS_BUILD    ?= build-windows
# The Linux kesto-batch that the Windows files are compared with is built too (Qt-free).
WINDOWS_PACKAGES := cmake g++ make googletest g++-mingw-w64-x86-64-posix wine64 wine
WINDOWS_CONFIGURE = cmake -S . -B $(WINDOWS_BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo \
                    -DCMAKE_TOOLCHAIN_FILE=$(CURDIR)/cmake/mingw-w64-x86_64.cmake \
                    -DKESTO_GTEST_SOURCE_DIR=/usr/src/googletest -DKESTO_WITH_UI=OFF \
                    -DKESTO_WITH_BENCH=OFF -DKESTO_WERROR=$(KESTO_WERROR)
WINDOWS_ENV       = WINEPREFIX=$(CURDIR)/$(WINDOWS_BUILD)/wineprefix WINEDEBUG=-all \
                    WINEDLLOVERRIDES="mscoree,mshtml=" DISPLAY=

.PHONY: deps build test test-asan test-tsan soak fuzz demo bench screenshot format clean deps-windows test-windows demo-ja screenshot-ja package package-windows

# $(call install,STEP,PACKAGES): installs the missing Debian packages with apt-get (as root),
# or names the command that would.
install = @missing=""; for p in $(2); do \
	  dpkg -s $$p >/dev/null 2>&1 || missing="$$missing $$p"; done; \
	if [ -z "$$missing" ]; then echo "$(1): all packages present"; \
	elif [ "$$(id -u)" = 0 ]; then \
	  echo "$(1): installing$$missing"; \
	  apt-get update -qq && DEBIAN_FRONTEND=noninteractive apt-get install -y -qq $$missing; \
	else echo "$(1): missing$$missing; run: sudo apt-get install -y$$missing"; exit 1; fi

deps:
	$(call install,deps,$(PACKAGES))

deps-windows:
	$(call install,deps-windows,$(WINDOWS_PACKAGES))

# Configured again whenever the build folder was made with another KESTO_WERROR, so that
# warnings-as-errors holds on a build folder that already exists.
build: deps
	@grep -qx 'KESTO_WERROR:BOOL=$(KESTO_WERROR)' $(BUILD)/CMakeCache.txt 2>/dev/null || \
	  cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKESTO_WERROR=$(KESTO_WERROR)
	cmake --build $(BUILD) -j $(JOBS)

test: build
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

test-asan: deps
	cmake -S . -B $(ASAN_BUILD) -DCMAKE_BUILD_TYPE=Debug -DKESTO_SANITIZE=ON
	cmake --build $(ASAN_BUILD) -j $(JOBS)
	cd $(ASAN_BUILD) && QT_QPA_PLATFORM=offscreen LSAN_OPTIONS=suppressions=$(CURDIR)/tests/lsan.supp \
	  KESTO_MONKEY_STEPS=10000 ctest --output-on-failure -j $(JOBS)

# make test-tsan: the core, kesto-batch and their tests under ThreadSanitizer (without the window,
# whose Qt libraries are not built with it): the report, outline and journal threads. A race
# found fails the test that ran into it.
test-tsan: deps
	cmake -S . -B $(TSAN_BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKESTO_WITH_UI=OFF \
	  -DKESTO_WITH_BENCH=OFF -DCMAKE_CXX_FLAGS=-fsanitize=thread \
	  -DCMAKE_EXE_LINKER_FLAGS=-fsanitize=thread
	cmake --build $(TSAN_BUILD) -j $(JOBS)
	cd $(TSAN_BUILD) && TSAN_OPTIONS=second_deadlock_stack=1 ctest --output-on-failure -j $(JOBS)

# make soak: the random operator of the window as a process on Xvfb for KESTO_SOAK_SECONDS
# (default 600), its memory sampled every second; not part of make test, which runs 30 s.
KESTO_SOAK_SECONDS ?= 600
soak: build
	cd $(BUILD) && KESTO_SOAK_SECONDS=$(KESTO_SOAK_SECONDS) ./test_process --gtest_filter='MonkeySoak.*'

test-windows: deps-windows
	cmake -S . -B $(WINDOWS_BUILD)/linux -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	  -DKESTO_GTEST_SOURCE_DIR=/usr/src/googletest -DKESTO_WITH_UI=OFF -DKESTO_WITH_BENCH=OFF \
	  -DKESTO_WERROR=$(KESTO_WERROR) >/dev/null
	cmake --build $(WINDOWS_BUILD)/linux --target kesto-batch -j $(JOBS)
	$(WINDOWS_CONFIGURE) -DKESTO_LINUX_BATCH=$(CURDIR)/$(WINDOWS_BUILD)/linux/kesto-batch
	cmake --build $(WINDOWS_BUILD) -j $(JOBS)
# Wine's background programs (desktop, services) started once, away from ctest's output, and
# kept up by a persistent server: started by a test instead, they would inherit its output and
# hold its ctest entry open until they quit. The server is stopped whatever the result. A
# prefix that starts no program (its making was cut short: "could not load kernel32.dll") is
# made again, once.
	@for attempt in 1 2; do \
	  test -f $(WINDOWS_BUILD)/wineprefix/system.reg || \
	    { echo "test-windows: making the Wine prefix"; $(WINDOWS_ENV) wineboot -i >/dev/null 2>&1; \
	      $(WINDOWS_ENV) wineserver -w; }; \
	  $(WINDOWS_ENV) wineserver -k >/dev/null 2>&1 || true; $(WINDOWS_ENV) wineserver -w; \
	  $(WINDOWS_ENV) wineserver -p </dev/null >/dev/null 2>&1; \
	  if $(WINDOWS_ENV) wine cmd /c exit </dev/null >/dev/null 2>&1; then exit 0; fi; \
	  echo "test-windows: the Wine prefix starts no program; making it again"; \
	  $(WINDOWS_ENV) wineserver -k >/dev/null 2>&1 || true; $(WINDOWS_ENV) wineserver -w; \
	  rm -rf $(WINDOWS_BUILD)/wineprefix; \
	done; exit 1
	cd $(WINDOWS_BUILD) && status=0; $(WINDOWS_ENV) ctest --output-on-failure -j $(JOBS) || status=$$?; \
	  $(WINDOWS_ENV) wineserver -k || true; exit $$status

# make package: the Debian package of the build, build/kesto_VERSION_ARCH.deb (CPack).
package: build
	cd $(BUILD) && cpack -G DEB

# make package-windows: the cross-built kesto-batch.exe with the sample installation and a
# readme, build-windows/kesto-VERSION-windows-x86_64.zip (CPack).
package-windows: deps-windows
	$(WINDOWS_CONFIGURE)
	cmake --build $(WINDOWS_BUILD) --target kesto-batch -j $(JOBS)
	cd $(WINDOWS_BUILD) && cpack -G ZIP

fuzz: deps
	CC=clang CXX=clang++ cmake -S . -B $(FUZZ_BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	  -DKESTO_FUZZ=ON -DKESTO_WITH_UI=OFF -DKESTO_WITH_BENCH=OFF
	cmake --build $(FUZZ_BUILD) --target kesto-fuzzers -j $(JOBS)
	sh fuzz/run.sh $(FUZZ_BUILD) $(FUZZ_SECONDS) $(FUZZ_RUNS)

demo: build
	@sh examples/demo.sh $(BUILD)

# The Japanese sample: examples/ja (Shift_JIS settings and job) over the English sample.
demo-ja: build
	@sh examples/demo.sh $(BUILD) ja

bench: build
	$(BUILD)/kesto-bench
	$(BUILD)/kesto-journal-bench
	QT_QPA_PLATFORM=offscreen $(BUILD)/kesto-draw-bench
	$(BUILD)/kesto-start-bench

screenshot: build
	@mkdir -p $(BUILD)/screenshots
	sh examples/screenshot.sh $(BUILD)

screenshot-ja: build
	sh examples/screenshot.sh $(BUILD) ja

format:
	find src tests bench fuzz \( -name '*.cpp' -o -name '*.h' \) -print | xargs clang-format -i

clean:
	rm -rf $(BUILD) $(ASAN_BUILD) $(TSAN_BUILD) $(FUZZ_BUILD) $(WINDOWS_BUILD)
