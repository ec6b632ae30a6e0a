# make run  - installs what is missing, builds, opens the sample project in the application
# make test - installs what is missing, builds, runs every test
BUILD ?= build
CMAKE_FLAGS ?=
ifeq ($(CI),true)
CMAKE_FLAGS += -DWERROR=ON
endif

.PHONY: run test bench build deps clean

deps:
	@scripts/install-deps

build: deps
	@cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_FLAGS) >/dev/null
	@cmake --build $(BUILD) -j2

run: build
	@scripts/run-app $(BUILD)

test: build
	@cd $(BUILD) && ctest --output-on-failure -j2

# Speed and memory of the explorer on generated projects of up to a million objects.
bench: build
	@$(BUILD)/bench/explorer_bench --benchmark_counters_tabular=true
	@QT_QPA_PLATFORM=offscreen $(BUILD)/bench/find_bench --benchmark_counters_tabular=true
	@$(BUILD)/bench/compare_bench --benchmark_counters_tabular=true

clean:
	rm -rf $(BUILD)
