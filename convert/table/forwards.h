// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Forwards: what a vector form of the table holds where a row has no vector kernel of its own.
/// Each passes its arguments on to the plain kernel of its row.

#include <type_traits>
#include <utility>

#include "convert/table/kernel_layouts.h"
#include "convert/table/kernel_table.h"

namespace zor {

/// @return a null pointer of the type of a row's kernels.
template <std::size_t kRow>
constexpr auto NullKernelOf() noexcept {
  constexpr KernelLayouts kOf = LayoutsOfRow(kRow);
  if constexpr (kRow == 0) {
    return static_cast<MemoryKernel*>(nullptr);
  } else if constexpr (kOf.source == Layout::kLumaChroma) {
    return static_cast<FromLumaChromaKernel*>(nullptr);
  } else if constexpr (kOf.target == Layout::kRgb32Keyed) {
    return static_cast<KeyedFromPlanesKernel*>(nullptr);
  } else if constexpr (kOf.source == Layout::kYuv420 &&
                       (kOf.target == Layout::kYuv420 || kOf.target == Layout::kYvu420)) {
    return static_cast<PlanesToPlanesKernel*>(nullptr);
  } else if constexpr (kOf.source == Layout::kYuv420) {
    return static_cast<FromPlanesKernel*>(nullptr);
  } else if constexpr (kOf.target == Layout::kYuv420) {
    return static_cast<ToPlanesKernel*>(nullptr);
  } else if constexpr (kOf.target == Layout::kYuy2 &&
                       (kOf.source == Layout::kRgb32 || kOf.source == Layout::kRgb24)) {
    return static_cast<SourceWritingKernel*>(nullptr);
  } else {
    return static_cast<PackedKernel*>(nullptr);
  }
}

template <std::size_t kRow, bool kSmoothed, class... Arguments>
void ForwardToPlain(Arguments... arguments) noexcept {
  using Kernel = void(Arguments...) noexcept;
  const KernelRow& row = kPlainKernelRows[kRow];
  (*std::get_if<Kernel*>(kSmoothed ? &row.smoothed : &row.straight))(arguments...);
}

template <std::size_t kRow, bool kSmoothed, class... Arguments>
constexpr KernelEntry ForwardOf(void (*)(Arguments...) noexcept) noexcept {
  using Kernel = void(Arguments...) noexcept;
  return static_cast<Kernel*>(ForwardToPlain<kRow, kSmoothed, Arguments...>);
}

/// The forward of an entry; the second one of row 0 is empty.
template <std::size_t kRow, bool kSmoothed>
constexpr KernelEntry Forward() noexcept {
  if constexpr (kRow == 0 && kSmoothed) {
    return {};
  } else {
    return ForwardOf<kRow, kSmoothed>(NullKernelOf<kRow>());
  }
}

/// Forwards for all second entries, and for all first ones unless @p kSecondOnly.
template <bool kSecondOnly>
constexpr KernelRows Forwards() noexcept {
  KernelRows rows = {};
  [&rows]<std::size_t... kRow>(std::index_sequence<kRow...>) {
    ((rows[kRow].smoothed = Forward<kRow, true>()), ...);
    if constexpr (!kSecondOnly) ((rows[kRow].straight = Forward<kRow, false>()), ...);
  }
  (std::make_index_sequence<kKernelRows>());
  return rows;
}

}  // namespace zor
