// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/table/kernel_table.h"

#include <gtest/gtest.h>

#include "convert/table_statement.h"

namespace zor::test {
namespace {

constexpr std::uint32_t kMmxWord = kFeatureMmx;
constexpr std::uint32_t kSseWord = kFeatureMmx | kFeatureSse;
constexpr std::uint32_t kSse2Word = kFeatureMmx | kFeatureSse | kFeatureSse2;

KernelRows RowsFor(std::uint32_t word) {
  KernelRows rows = kPlainKernelRows;
  WriteKernelForms(rows, word);
  return rows;
}

using Pointers = std::vector<std::uint8_t*>;

/// Calls an entry by its argument list.
struct Call {
  const TableRun& r;
  const Pointers& p;  ///< three of the target, three of the source

  void operator()(std::monostate) const { ADD_FAILURE() << "an empty entry"; }
  void operator()(MemoryKernel*) const { ADD_FAILURE() << "tested by itself"; }
  void operator()(PackedKernel* kernel) const {
    kernel(p[0], r.targetStride(), p[3], r.sourceStride(), r.width, r.height);
  }
  void operator()(SourceWritingKernel* kernel) const {
    kernel(p[0], r.targetStride(), p[3], r.sourceStride(), r.width, r.height);
  }
  void operator()(FromPlanesKernel* kernel) const {
    kernel(p[0], r.targetStride(), p[3], p[4], p[5], r.sourceStride(), r.sourceChroma(), r.width,
           r.height);
  }
  void operator()(KeyedFromPlanesKernel* kernel) const {
    kernel(p[0], r.targetStride(), p[3], p[4], p[5], r.sourceStride(), r.sourceChroma(), r.width,
           r.height, r.threshold);
  }
  void operator()(FromLumaChromaKernel* kernel) const {
    kernel(p[0], r.targetStride(), p[3], p[4], r.sourceStride(), r.sourceChroma(), r.width,
           r.height);
  }
  void operator()(ToPlanesKernel* kernel) const {
    kernel(p[0], p[1], p[2], r.targetStride(), r.targetChroma(), p[3], r.sourceStride(), r.width,
           r.height);
  }
  void operator()(PlanesToPlanesKernel* kernel) const {
    kernel(p[0], p[1], p[2], r.targetStride(), r.targetChroma(), p[3], p[4], p[5], r.sourceStride(),
           r.sourceChroma(), r.width, r.height);
  }
};

/// A row, and whether its entry with the filter is meant.
struct Entry {
  std::size_t row;
  bool smoothed;

  const KernelEntry& In(const KernelRows& rows) const {
    return smoothed ? rows[row].smoothed : rows[row].straight;
  }
  bool Is(std::size_t r, bool s) const { return row == r && smoothed == s; }
};

void PrintTo(const Entry& entry, std::ostream* out) {
  *out << "row " << entry.row << (entry.smoothed ? " smoothed" : " straight");
}

/// Kernels of the wrappers with an arithmetic of their own, which their families' tests cover.
bool HasItsOwnStatement(const Entry& entry, std::uint32_t word) {
  if (word == kSse2Word) {
    return entry.Is(11, false) || entry.Is(54, false) || entry.Is(63, false);
  }
  return word == kMmxWord && (entry.Is(6, true) || entry.Is(10, true) || entry.Is(17, true));
}

/// Columns of a block with 6-bit colours.
int ColourBlock(const Entry& entry, std::uint32_t word) {
  const KernelLayouts layouts = LayoutsOfRow(entry.row);
  const bool fromYuv = layouts.source != Layout::kRgb32 && layouts.source != Layout::kRgb24 &&
                       layouts.source != Layout::kRgb565 && layouts.source != Layout::kRgb555;
  if (!fromYuv || PixelBytes(layouts.target) == 1 || IsPacking(layouts.target)) return 0;
  if (word == kSse2Word) return 16;
  return word == kMmxWord && (entry.Is(22, false) || entry.Is(23, false)) ? 8 : 0;
}

class KernelTableEntry : public testing::TestWithParam<Entry> {
 protected:
  /// Runs the entry over every width to 70 at a few heights and the other heights at a few widths.
  void Run(std::uint32_t word) {
    const Entry entry = GetParam();
    if (HasItsOwnStatement(entry, word)) return;
    const KernelEntry kernel = entry.In(RowsFor(word));
    ASSERT_NE(kernel.index(), 0u);
    const KernelLayouts layouts = LayoutsOfRow(entry.row);
    TableOperands operands;
    OperandSet set({&operands.to[0], &operands.to[1], &operands.to[2], &operands.from[0],
                    &operands.from[1], &operands.from[2]});
    const auto check = [&](std::int32_t width, std::int32_t height) {
      const std::int32_t threshold = width % 4 == 3 ? -1 : width % 4 == 2 ? 255 : 7 * width % 250;
      const TableRun run = {
          layouts.source, layouts.target, entry.smoothed, ColourBlock(entry, word),
          width,          height,         threshold};
      set.Reset();
      TableStatement(run, operands).State();
      const std::ptrdiff_t shift = (width + height + 20) % 5;
      const std::string wrong = set.Check(shift, [&](const Pointers& pointers) {
        std::visit(Call{run, pointers}, kernel);
      });
      EXPECT_EQ(wrong, "") << width << " x " << height << ", word " << word;
      return wrong.empty();
    };
    for (std::int32_t width = 0; width <= 70; ++width) {
      if (!check(width, 5) || !check(width, -6)) return;
    }
    for (std::int32_t height : {-16, -9, -3, -2, -1, 0, 1, 2, 3, 4, 7, 16, 17}) {
      for (std::int32_t width : {2, 33, 48, 70}) {
        if (!check(width, height)) return;
      }
    }
  }
};

TEST_P(KernelTableEntry, PlainFormGivesTheStatedBytesAndTouchesNoOthers) {
  Run(0);
}
TEST_P(KernelTableEntry, MmxFormGivesTheStatedBytesAndTouchesNoOthers) {
  Run(kMmxWord);
}
TEST_P(KernelTableEntry, SseFormGivesTheStatedBytesAndTouchesNoOthers) {
  if (!GetParam().smoothed && GetParam().row != 1) return;  // as under MMX, told by the passes
  Run(kSseWord);
}
TEST_P(KernelTableEntry, Sse2FormGivesTheStatedBytesAndTouchesNoOthers) {
  Run(kSse2Word);
}

std::vector<Entry> AllEntries() {
  std::vector<Entry> entries;
  for (std::size_t row = 1; row < kKernelRows; ++row) {
    entries.push_back({row, false});
    entries.push_back({row, true});
  }
  return entries;
}

INSTANTIATE_TEST_SUITE_P(Of, KernelTableEntry, testing::ValuesIn(AllEntries()),
                         [](const testing::TestParamInfo<Entry>& info) {
                           return "Row" + std::to_string(info.param.row) +
                                  (info.param.smoothed ? "Smoothed" : "Straight");
                         });

TEST(KernelTableRow0, EveryFormCopiesItsBytesAndNoOthers) {
  using Edge = GuardedMemory::Edge;
  Noise noise(3);
  for (const std::uint32_t word : {0u, kMmxWord, kSseWord, kSse2Word}) {
    const KernelRows rows = RowsFor(word);
    MemoryKernel* const* copy = std::get_if<MemoryKernel*>(&rows[0].straight);
    ASSERT_NE(copy, nullptr);
    for (const Edge edge : {Edge::kStart, Edge::kEnd}) {
      for (std::size_t bytes = 0; bytes <= 400; ++bytes) {
        GuardedMemory from(bytes, edge);
        GuardedMemory to(bytes, edge, 0x11);
        noise.Fill(from.data(), bytes);
        (*copy)(to.data(), from.data(), bytes);
        ASSERT_EQ(from.Copy(), to.Copy()) << word << ", " << bytes;
        ASSERT_TRUE(to.GuardsIntact());
      }
    }
  }
}

}  // namespace
}  // namespace zor::test
