// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

#include <cstdint>

namespace zorhost {

/// The most memory that this process has held at once, or 0 where the system doesn't say.
std::uint64_t PeakMemoryBytes();

}  // namespace zorhost
