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

void MaskedByEvens(std::uint8_t* target, const std::uint8_t* child, const std::uint8_t* mask,
                   std::size_t count) noexcept {
  for (std::size_t i = 0; i < count; ++i) target[i] = BlendSample(child[i], target[i], mask[2 * i]);
}

void MaskedByPairs(std::uint8_t* target, const std::uint8_t* child, const std::uint8_t* mask,
                   std::size_t count) noexcept {
  for (std::size_t i = 0; i < 2 * count; ++i) {
    target[i] = BlendSample(child[i], target[i], mask[i / 2]);
  }
}

void Constant(std::uint8_t* target, const std::uint8_t* child, std::uint32_t weight,
              std::size_t count) noexcept {
  for (std::size_t i = 0; i < count; ++i) target[i] = BlendSample(child[i], target[i], weight);
}

void ConstantTwice(std::uint8_t* target, const std::uint8_t* child, std::uint32_t weight,
                   std::size_t count) noexcept {
  Constant(target, child, weight, count);
  Constant(target, child, weight, count);
}

}  // namespace

const BlendRows kBlendRowsPlain = {Masked, MaskedByEvens, MaskedByPairs, Constant, ConstantTwice};

}  // namespace zor
