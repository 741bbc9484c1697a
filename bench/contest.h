// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// What the benchmarks share: buffers, contestants and rows of the table.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace zor::bench {

/// The bytes of buffers that a row passes: none more than one pair, or more than any cache holds.
inline constexpr std::size_t kHot = 0;
inline constexpr std::size_t kCold = std::size_t{384} << 20;

/// Paints a slope with some grain.
inline void Paint(std::uint8_t* bytes, std::size_t count) {
  std::uint32_t state = 1;
  for (std::size_t i = 0; i < count; ++i) {
    state = state * 1664525 + 1013904223;
    bytes[i] = static_cast<std::uint8_t>((i >> 3) + (state >> 27));
  }
}

/// Bytes at an alignment of 64.
class Pixels {
 public:
  explicit Pixels(std::size_t bytes)
      : data_(static_cast<std::uint8_t*>(std::aligned_alloc(64, (bytes + 127) / 64 * 64))) {
    Paint(data_, bytes);
  }
  ~Pixels() { std::free(data_); }
  Pixels(const Pixels&) = delete;
  Pixels& operator=(const Pixels&) = delete;
  std::uint8_t* data() const { return data_; }

 private:
  std::uint8_t* data_;
};

using Work = std::function<void(std::uint8_t* target, std::uint8_t* source)>;

struct Contestant {
  const char* name;
  Work work;  ///< null where it has none of this kind
};

/// @return a copy of @p bytes bytes, which every case has beside it.
inline Work CopyOf(std::size_t bytes) {
  return [=](std::uint8_t* target, std::uint8_t* source) { std::memcpy(target, source, bytes); };
}

/// Adds a row. It runs over as many pairs of buffers as pass @p spread bytes, so that a large
/// spread comes from and goes to memory. A contestant without work has no row.
inline void Register(const std::string& name, const Work& work, std::size_t sourceBytes,
                     std::size_t targetBytes, std::size_t spread) {
  if (work == nullptr) return;
  benchmark::RegisterBenchmark(
      name.c_str(),
      [=](benchmark::State& state) {
        const std::size_t pair = sourceBytes + targetBytes;
        const std::size_t most = std::max(sourceBytes, targetBytes);
        std::vector<std::unique_ptr<Pixels>> sources;
        std::vector<std::unique_ptr<Pixels>> targets;
        do {
          sources.push_back(std::make_unique<Pixels>(most));
          targets.push_back(std::make_unique<Pixels>(most));
        } while (sources.size() * pair < spread);
        std::size_t turn = 0;
        for (auto _ : state) {
          work(targets[turn]->data(), sources[turn]->data());
          turn = (turn + 1) % sources.size();
        }
        state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                                static_cast<std::int64_t>(pair));
      })
      ->Unit(benchmark::kMicrosecond)
      ->MinTime(0.05);
}

/// Adds a row for each contestant that has work, all over buffers of the same sizes.
inline void RegisterContest(const std::string& name, std::size_t sourceBytes,
                            std::size_t targetBytes, std::size_t spread,
                            const std::vector<Contestant>& contestants) {
  for (const Contestant& contestant : contestants) {
    Register(name + (spread == kHot ? " hot/" : " cold/") + contestant.name, contestant.work,
             sourceBytes, targetBytes, spread);
  }
}

/// Runs what was registered. @return the program's exit code.
inline int Run(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

}  // namespace zor::bench
