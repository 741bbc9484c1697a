// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The capability word, which alone chooses among the contract's kernel forms (plain, MMX, SSE2),
/// and the private check of wider instruction sets, which chooses among equal-byte speed-ups.

#include <cstdint>

namespace zor {

inline constexpr std::uint32_t kFeatureMmx = 1u << 23;
inline constexpr std::uint32_t kFeatureSse = 1u << 25;
inline constexpr std::uint32_t kFeatureSse2 = 1u << 26;

/// Processor capability bits as CPUID reports them; filled when the library is loaded. Tests set
/// it to run other forms.
extern std::uint32_t CpuFeatureWord;

/// Fills the colour tables, writes the kernel table's forms, and @return the capability word; a second call returns the first word.
std::uint32_t InitPixelConversion() noexcept;

/// The first result of the initialiser. A word of 0, from a processor that tells nothing, guards
/// nothing: the initialiser would do its work again.
extern std::uint32_t PixelConversionGuard;

/// Asks the processor. @return the capability word.
std::uint32_t DetectCpuFeatures() noexcept;

/// Width of the inner speed-ups that an SSE2 form may use. Same bytes at every level.
enum class VectorLevel { kSse2 = 0, kAvx2 = 1, kAvx512 = 2 };

/// @return the widest level of this processor, or the level that a test or benchmark has pinned.
///         kAvx512 means F, BW, DQ, VL, VBMI and VNNI together.
VectorLevel InnerVectorLevel() noexcept;

/// Test and benchmark hook: no level above @p level is used; never raises it above the processor's.
void LimitInnerVectorLevel(VectorLevel level) noexcept;

}  // namespace zor
