#pragma once
// What the measurements by Google Benchmark share.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <functional>
#include <string>

#include "core/ReadingRules.h"

namespace vendrel::bench {

const ReadingRules& Preset(bool classic);

/// Registers one measurement, to be repeated.
void Register(const std::string& name, int runs, std::function<void(benchmark::State&)> body);

/// Runs what has been registered; gives the exit code.
int RunRegistered();

/// Items and bytes that each iteration has handled.
void CountItems(benchmark::State& state, std::int64_t items, std::int64_t bytes);

}  // namespace vendrel::bench
