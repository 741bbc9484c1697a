// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <cstring>

#include "scale/lerp.h"
#include "scale/rgb_rows.h"

namespace zor {
namespace {

std::int64_t NoPlan(const RgbColumns&) noexcept {
  return 0;
}
void MakeNoPlan(const RgbColumns&, std::uint8_t*) noexcept {}

/// Writes value(column, byte) to every byte of every column that source and target both have.
template <class Value>
void ForEachByte(std::uint8_t* out, const RgbColumns& columns, Value value) noexcept {
  for (std::int32_t i = 0; i < columns.count; ++i, out += columns.targetBytes) {
    for (std::int32_t k = 0; k < columns.targetBytes; ++k) {
      out[k] = k < columns.sourceBytes ? static_cast<std::uint8_t>(value(i, k)) : std::uint8_t{0};
    }
  }
}

std::int32_t LerpAcross(const std::uint8_t* row, const RgbColumns& columns, std::int32_t column,
                        std::int32_t byte) noexcept {
  const std::uint8_t* p = row + columns.offsets[column] + byte;
  return Lerp(p[0], p[columns.sourceBytes], static_cast<std::int32_t>(columns.words[column] & 255));
}

void Pick(std::uint8_t* out, const std::uint8_t* row, const RgbColumns& columns,
          const std::uint8_t*) noexcept {
  ForEachByte(out, columns,
              [&](std::int32_t i, std::int32_t k) { return row[columns.offsets[i] + k]; });
}

void Across(std::uint8_t* out, const std::uint8_t* row, const RgbColumns& columns,
            const std::uint8_t*) noexcept {
  ForEachByte(out, columns,
              [&](std::int32_t i, std::int32_t k) { return LerpAcross(row, columns, i, k); });
}

void Both(std::uint8_t* out, const std::uint8_t* row, const std::uint8_t* nextRow,
          const RgbColumns& columns, const std::uint8_t*, std::int32_t weight) noexcept {
  ForEachByte(out, columns, [&](std::int32_t i, std::int32_t k) {
    return Lerp(LerpAcross(row, columns, i, k), LerpAcross(nextRow, columns, i, k), weight);
  });
}

void Pack(std::uint8_t* out, const std::uint8_t* in, std::int32_t count) noexcept {
  for (std::int32_t i = 0; i < count; ++i, out += 3, in += 4) std::memcpy(out, in, 3);
}

}  // namespace

const RgbRowForm kRgbRowsPlain = {
    "plain", {NoPlan, MakeNoPlan, Pick}, {NoPlan, MakeNoPlan, Across, Both}, Pack};

}  // namespace zor
