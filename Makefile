# make run  : install what is missing, build, create the demo company, start Velmora there
# make test : install what is missing, build, run every test headless

BUILD   ?= build
JOBS    ?= $(shell nproc)
PKGS    := cmake ninja-build g++ pkg-config ccache qt6-base-dev libqt6sql6-sqlite \
           libxlsxwriter-dev libgtest-dev fonts-ipaexfont-mincho fonts-ipaexfont-gothic \
           fonts-ipafont-mincho fonts-ipafont-gothic \
           sqlite3 xvfb xauth poppler-utils unzip
SUDO    := $(shell [ "$$(id -u)" = 0 ] || echo sudo)

.PHONY: all deps build test run demo clean

all: build

deps:
	@missing=""; for p in $(PKGS); do \
	  dpkg-query -W -f='$${Status}' $$p 2>/dev/null | grep -q "install ok installed" || missing="$$missing $$p"; \
	done; \
	if [ -n "$$missing" ]; then \
	  echo "installing:$$missing"; \
	  $(SUDO) apt-get update -qq && \
	  DEBIAN_FRONTEND=noninteractive $(SUDO) apt-get install -y -qq --no-install-recommends $$missing; \
	fi

$(BUILD)/build.ninja:
	cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo

build: deps $(BUILD)/build.ninja
	cmake --build $(BUILD) -j $(JOBS)

test: build
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

demo: build
	@[ -f demo/MASTER.db ] || $(BUILD)/velmora demo demo

run: demo
	cd demo && ../$(BUILD)/velmora

clean:
	rm -rf $(BUILD)
