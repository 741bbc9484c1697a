// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/table/kernel_table.h"

#include "convert/feature_word.h"

namespace zor {
namespace {

void WriteEntry(KernelEntry& entry, const KernelEntry& form) noexcept {
  if (form.index() != 0) entry = form;
}

void WritePass(KernelRows& rows, const KernelRows& forms) noexcept {
  for (std::size_t row = 0; row < kKernelRows; ++row) {
    WriteEntry(rows[row].straight, forms[row].straight);
    WriteEntry(rows[row].smoothed, forms[row].smoothed);
  }
}

}  // namespace

void WriteKernelForms(KernelRows& rows, std::uint32_t features) noexcept {
  if ((features & kFeatureMmx) != 0) WritePass(rows, kMmxKernelRows);
  if ((features & kFeatureSse) != 0) WritePass(rows, kSseKernelRows);
  if ((features & kFeatureSse2) != 0) WritePass(rows, kSse2KernelRows);
}

}  // namespace zor
