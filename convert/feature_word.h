// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The capability word, which alone chooses among the contract's kernel forms (plain, MMX, SSE2),
/// and the private check of wider instruction sets, which chooses among equal-byte speed-ups.

#include <cstddef>
#include <cstdint>

namespace zor {

inline constexpr std::uint32_t kFeatureMmx = 1u << 23;
inline constexpr std::uint32_t kFeatureSse = 1u << 25;
inline constexpr std::uint32_t kFeatureSse2 = 1u << 26;

/// The capability word: feature bits as CPUID reports them, found when the library is loaded. Tests
/// set it to run other forms.
extern std::uint32_t CpuFeatureWord;

/// Fills the colour tables and writes the kernel table's forms, once: a later call does nothing.
/// @return the capability word of the first call.
std::uint32_t InitPixelConversion() noexcept;

/// The result of the first `InitPixelConversion`, by which later calls know that the work is done.
/// Where a processor reports no feature at all it is 0, and the work is done again.
extern std::uint32_t PixelConversionGuard;

/// What CPUID says of a processor.
struct CpuidReplies {
  std::uint32_t leaf1;          ///< EDX of leaf 1
  std::uint32_t lastExtended;   ///< EAX of leaf 0x80000000: the number of the last extended leaf
  std::uint32_t extendedLeaf1;  ///< EDX of leaf 0x80000001
};

/// @return the capability word of a processor that replies so.
std::uint32_t FeatureWordOf(const CpuidReplies& replies) noexcept;

/// Asks the processor. @return the capability word; 0 where CPUID tells nothing.
std::uint32_t DetectCpuFeatures() noexcept;

/// Width of the inner speed-ups that an SSE2 form may use. The bytes are the same at every level.
enum class VectorLevel { kSse2 = 0, kAvx2 = 1, kAvx512 = 2 };

/// What CPUID and the operating system say of wider instruction sets.
struct VectorReplies {
  std::uint64_t savedState;  ///< the registers that the system saves: XCR0; 0 if it doesn't tell
  std::uint32_t leaf7Ebx;    ///< EBX of leaf 7, 0 where there is none
  std::uint32_t leaf7Ecx;    ///< ECX of the same
};

/// @return the widest level that may be used where the replies are these.
VectorLevel VectorLevelOf(const VectorReplies& replies) noexcept;

/// @return the widest level of this processor, or the level that a test or benchmark has pinned.
///         `kAvx512` means F, BW, DQ, VL, VBMI and VNNI together.
VectorLevel InnerVectorLevel() noexcept;

/// @return the place of the widest form at hand in a family's table of forms, whose last two are
///         those of AVX2 and AVX-512; the one before them serves where the processor has neither.
template <class Form, std::size_t kForms>
int WidestForm(const Form* const (&)[kForms]) noexcept {
  static_assert(kForms >= 3);
  return static_cast<int>(InnerVectorLevel()) + static_cast<int>(kForms) - 3;
}

/// Test and benchmark hook: no level above @p level is used; never raises it above the processor's.
void LimitInnerVectorLevel(VectorLevel level) noexcept;

}  // namespace zor
