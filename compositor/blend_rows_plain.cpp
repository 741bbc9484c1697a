// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "compositor/blend_rows.h"
#include "compositor/blend_statement.h"

namespace zor {
namespace {

void Masked(std::uint8_t* target, const std::uint8_t* child, const std::uint8_t* mask,
            std::size_t count) noexcept {
  for (std::size_t i = 0; i < count; ++i) target[i] = BlendSample(child[i], target[i], mask[i]);
}

void MaskedChroma(const ChromaRow& row, const std::uint8_t* mask, std::size_t grouped,
                  std::size_t count) noexcept {
  for (int plane = 0; plane < 2; ++plane) {
    std::uint8_t* const target = row.target[plane];
    for (std::size_t i = 0; i < count; ++i) {
      const std::uint8_t weight = mask[2 * i + (i < grouped ? 0 : 1)];
      target[i] = BlendSample(row.child[plane][i], target[i], weight);
    }
  }
}

void MaskedByPairs(std::uint8_t* target, const std::uint8_t* child, const std::uint8_t* mask,
                   std::size_t count) noexcept {
  for (std::size_t i = 0; i < 2 * count; ++i) {
    target[i] = BlendSample(child[i], target[i], mask[i / 2]);
  }
}

void ConstantRow(std::uint8_t* target, const std::uint8_t* child, std::uint32_t weight,
                 std::size_t count) noexcept {
  for (std::size_t i = 0; i < count; ++i) target[i] = BlendSample(child[i], target[i], weight);
}

void Constant(const BlendRun& run, std::uint32_t weight) noexcept {
  for (std::int64_t row = 0; row < run.rows; ++row) {
    ConstantRow(run.target + row * run.targetStride, run.child + row * run.childStride, weight,
                run.count);
  }
}

void ConstantTwice(const BlendRun& run, std::uint32_t weight) noexcept {
  Constant(run, weight);
  Constant(run, weight);
}

void LeftOver(std::uint8_t* target, const std::uint8_t* child, const ChromaRow& chroma,
              std::uint32_t weight, std::size_t columns, bool followed) noexcept {
  if (followed) ConstantRow(target + 8 - columns, child + 8 - columns, weight, columns);
  const std::size_t pairs = columns / 2;
  const std::size_t first = 4 - columns % 2 - pairs;
  for (int plane = 0; plane < 2; ++plane) {
    for (int time = followed ? 2 : 1; time > 0; --time) {
      ConstantRow(chroma.target[plane] + first, chroma.child[plane] + first, weight, pairs);
    }
  }
}

std::uint64_t Passing(const std::uint8_t* y, const std::uint8_t* u, const std::uint8_t* v,
                      const KeySamples& key, std::size_t count) noexcept {
  std::uint64_t passing = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const bool differs = y[i] != key.y || u[i / 2] != key.u || v[i / 2] != key.v;
    passing |= std::uint64_t{differs} << i;
  }
  return passing;
}

}  // namespace

const BlendRows kBlendRowsPlain = {Masked,        MaskedChroma, MaskedByPairs, Constant,
                                   ConstantTwice, LeftOver,     Passing};

}  // namespace zor
