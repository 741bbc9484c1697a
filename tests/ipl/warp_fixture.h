// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// What every test of the warp starts with: a clean status, and reports that are remembered.

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "ipl/iplborde.h"
#include "ipl/iplwarp.h"
#include "ipl/ownrect.h"
#include "ipl/warp_reference.h"
#include "platform/memory.h"
#include "support/guarded_memory.h"

namespace zor::test {

inline std::vector<std::string> messages;
inline std::vector<std::int32_t> statuses;

inline std::int32_t Remember(std::int32_t status, const char*, const char* message, const char*,
                             std::int32_t) {
  messages.push_back(message);
  statuses.push_back(status);
  return status;
}

/// Reports of the engine are kept in `messages` and `statuses`.
class Warp : public ::testing::Test {
 protected:
  void SetUp() override {
    messages.clear();
    statuses.clear();
    iplSetStatus(0);
    iplRedirectError(Remember);
  }
  void TearDown() override {
    iplRedirectError(nullptr);
    iplSetStatus(0);
  }
};

inline void FillNoise(Picture& p, std::uint64_t seed) {
  Noise noise(seed);
  noise.Fill(p.bytes.data(), p.bytes.size());
}

}  // namespace zor::test
