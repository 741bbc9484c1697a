// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The table of all conversion kernels: 89 pairs of formats, each straight and through the row
/// filter, in the best form that the processor has.
///
/// The conversion wrappers call their kernels directly and nothing of the library reads the table;
/// it is the whole vocabulary of the conversions in one place. docs/kernel-table.md lists the rows.

#include <array>
#include <cstddef>
#include <cstdint>
#include <variant>

namespace zor {

// Strides are in bytes, width in pixels, height in rows. At a negative height its magnitude counts,
// and one side is walked from its last row upward: the target where the source is planar, else the
// source. From planes to planes it is the source too.

/// Copies a block of memory.
using MemoryKernel = void(void* destination, const void* source, std::size_t bytes) noexcept;
/// Between packed pictures; also a single plane, whose width is in bytes.
using PackedKernel = void(std::uint8_t* target, std::int32_t targetStride,
                          const std::uint8_t* source, std::int32_t sourceStride, std::int32_t width,
                          std::int32_t height) noexcept;
/// The same for RGB32 and RGB24 to YUY2, where one form writes into its source.
using SourceWritingKernel = void(std::uint8_t* target, std::int32_t targetStride,
                                 std::uint8_t* source, std::int32_t sourceStride,
                                 std::int32_t width, std::int32_t height) noexcept;
/// From YUV 4:2:0 to a packed picture, or to luma and interleaved chroma in one block.
using FromPlanesKernel = void(std::uint8_t* target, std::int32_t targetStride,
                              const std::uint8_t* luma, const std::uint8_t* u,
                              const std::uint8_t* v, std::int32_t lumaStride,
                              std::int32_t chromaStride, std::int32_t width,
                              std::int32_t height) noexcept;
/// @param threshold the fourth byte is 255 where luma is greater than it, and 0 elsewhere
using KeyedFromPlanesKernel = void(std::uint8_t* target, std::int32_t targetStride,
                                   const std::uint8_t* luma, const std::uint8_t* u,
                                   const std::uint8_t* v, std::int32_t lumaStride,
                                   std::int32_t chromaStride, std::int32_t width,
                                   std::int32_t height, std::int32_t threshold) noexcept;
/// From luma and one plane of interleaved chroma, U in front of V.
using FromLumaChromaKernel = void(std::uint8_t* target, std::int32_t targetStride,
                                  const std::uint8_t* luma, const std::uint8_t* chroma,
                                  std::int32_t lumaStride, std::int32_t chromaStride,
                                  std::int32_t width, std::int32_t height) noexcept;
using ToPlanesKernel = void(std::uint8_t* luma, std::uint8_t* u, std::uint8_t* v,
                            std::int32_t lumaStride, std::int32_t chromaStride,
                            const std::uint8_t* source, std::int32_t sourceStride,
                            std::int32_t width, std::int32_t height) noexcept;
using PlanesToPlanesKernel = void(std::uint8_t* luma, std::uint8_t* u, std::uint8_t* v,
                                  std::int32_t lumaStride, std::int32_t chromaStride,
                                  const std::uint8_t* sourceLuma, const std::uint8_t* sourceU,
                                  const std::uint8_t* sourceV, std::int32_t sourceLumaStride,
                                  std::int32_t sourceChromaStride, std::int32_t width,
                                  std::int32_t height) noexcept;

/// A kernel in its argument list; an empty entry holds the first alternative.
using KernelEntry = std::variant<std::monostate, MemoryKernel*, PackedKernel*, SourceWritingKernel*,
                                 FromPlanesKernel*, KeyedFromPlanesKernel*, FromLumaChromaKernel*,
                                 ToPlanesKernel*, PlanesToPlanesKernel*>;

struct KernelRow {
  KernelEntry straight;
  KernelEntry smoothed;  ///< with the row filter
};

inline constexpr std::size_t kKernelRows = 89;
using KernelRows = std::array<KernelRow, kKernelRows>;

/// What the passes write. An empty entry leaves what stands there.
extern const KernelRows kPlainKernelRows;
extern const KernelRows kMmxKernelRows;
extern const KernelRows kSseKernelRows;  ///< smoothed entries, and the copies of rows 0 and 1
extern const KernelRows kSse2KernelRows;

/// Written by `InitPixelConversion` while the library is loaded, never changed afterwards.
extern KernelRows ConversionKernelTable;

/// Writes over the entries of @p rows with the forms of the capability word @p features: MMX by bit
/// 23, then SSE by bit 25, then SSE2 by bit 26.
void WriteKernelForms(KernelRows& rows, std::uint32_t features) noexcept;

}  // namespace zor
