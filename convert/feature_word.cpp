// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/feature_word.h"

#include <cpuid.h>

#include <atomic>

#include "convert/colour_tables.h"
#include "convert/table/kernel_table.h"

namespace zor {
namespace {

constexpr std::uint32_t kLeaf1Bits = 0x17808010;
constexpr std::uint32_t kExtendedLeaf = 0x80000000;
constexpr std::uint32_t kExtendedBits = 1u << 22 | 1u << 30 | 1u << 31;

/// The vector state that the operating system saves: XCR0.
std::uint64_t SavedState() noexcept {
  std::uint32_t low = 0;
  std::uint32_t high = 0;
  __asm__ volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
  return std::uint64_t{high} << 32 | low;
}

VectorLevel DetectVectorLevel() noexcept {
  constexpr std::uint32_t kOsxsave = 1u << 27;
  std::uint32_t eax = 0;
  std::uint32_t ebx = 0;
  std::uint32_t ecx = 0;
  std::uint32_t edx = 0;
  VectorReplies replies = {};
  if (__get_cpuid(1, &eax, &ebx, &ecx, &edx) != 0 && (ecx & kOsxsave) != 0) {
    replies.savedState = SavedState();
  }
  __get_cpuid_count(7, 0, &eax, &replies.leaf7Ebx, &replies.leaf7Ecx, &edx);
  return VectorLevelOf(replies);
}

std::atomic<VectorLevel> levelLimit{VectorLevel::kAvx512};

}  // namespace

std::uint32_t FeatureWordOf(const CpuidReplies& replies) noexcept {
  const std::uint32_t word = replies.leaf1 & kLeaf1Bits;
  // Extended bits count only where the extended leaves end right at their first one.
  if (replies.lastExtended != kExtendedLeaf) return word;
  return word | (replies.extendedLeaf1 & kExtendedBits);
}

std::uint32_t DetectCpuFeatures() noexcept {
  std::uint32_t eax = 0;
  std::uint32_t ebx = 0;
  std::uint32_t ecx = 0;
  std::uint32_t edx = 0;
  CpuidReplies replies = {};
  if (__get_cpuid_max(0, nullptr) < 1) return 0;
  __cpuid(1, eax, ebx, ecx, replies.leaf1);
  __cpuid(kExtendedLeaf, replies.lastExtended, ebx, ecx, edx);
  __cpuid(kExtendedLeaf + 1, eax, ebx, ecx, replies.extendedLeaf1);
  return FeatureWordOf(replies);
}

std::uint32_t PixelConversionGuard = 0;

std::uint32_t InitPixelConversion() noexcept {
  if (PixelConversionGuard != 0) return PixelConversionGuard;
  PixelConversionGuard = DetectCpuFeatures();
  FillColourTables();
  WriteKernelForms(ConversionKernelTable, PixelConversionGuard);
  return PixelConversionGuard;
}

std::uint32_t CpuFeatureWord = InitPixelConversion();

VectorLevel VectorLevelOf(const VectorReplies& replies) noexcept {
  constexpr std::uint32_t kAvx2 = 1u << 5;
  constexpr std::uint64_t kAvxState = 0x06;
  constexpr std::uint32_t kAvx512FDqBwVl = 1u << 16 | 1u << 17 | 1u << 30 | 1u << 31;
  constexpr std::uint32_t kVbmiVnni = 1u << 1 | 1u << 11;
  constexpr std::uint64_t kAvx512State = 0xE6;
  const auto has = [](auto word, auto bits) { return (word & bits) == bits; };
  if (!has(replies.leaf7Ebx, kAvx2) || !has(replies.savedState, kAvxState)) {
    return VectorLevel::kSse2;
  }
  const bool wide = has(replies.leaf7Ebx, kAvx512FDqBwVl) && has(replies.leaf7Ecx, kVbmiVnni) &&
                    has(replies.savedState, kAvx512State);
  return wide ? VectorLevel::kAvx512 : VectorLevel::kAvx2;
}

VectorLevel InnerVectorLevel() noexcept {
  static const VectorLevel detected = DetectVectorLevel();
  const VectorLevel limit = levelLimit.load(std::memory_order_relaxed);
  return detected < limit ? detected : limit;
}

void LimitInnerVectorLevel(VectorLevel level) noexcept {
  levelLimit.store(level, std::memory_order_relaxed);
}

}  // namespace zor
