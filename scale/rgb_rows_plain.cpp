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

void Pick(std::uint8_t* out, const std::uint8_t* row, const RgbColumns& columns,
          const std::uint8_t*) noexcept {
  for (std::int32_t i = 0; i < columns.count; ++i, out += 4) {
    const std::uint8_t* p = row + columns.offsets[i];
    out[0] = p[0];
    out[1] = p[1];
    out[2] = p[2];
    out[3] = columns.pixelBytes == 4 ? p[3] : 0;
  }
}

void Across(std::uint8_t* out, const std::uint8_t* row, const RgbColumns& columns,
            const std::uint8_t*) noexcept {
  const std::int32_t bytes = columns.pixelBytes;
  for (std::int32_t i = 0; i < columns.count; ++i, out += 4) {
    const std::uint8_t* p = row + columns.offsets[i];
    const auto weight = static_cast<std::int32_t>(columns.words[i] & 255);
    out[3] = 0;
    for (std::int32_t k = 0; k < bytes; ++k) {
      out[k] = static_cast<std::uint8_t>(Lerp(p[k], p[k + bytes], weight));
    }
  }
}

void Pack(std::uint8_t* out, const std::uint8_t* in, std::int32_t count) noexcept {
  for (std::int32_t i = 0; i < count; ++i, out += 3, in += 4) std::memcpy(out, in, 3);
}

}  // namespace

const RgbRowForm kRgbRowsPlain = {
    "plain", {NoPlan, MakeNoPlan, Pick}, {NoPlan, MakeNoPlan, Across}, Pack};

}  // namespace zor
