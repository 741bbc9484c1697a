// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/table/kernel_table.h"

#include <gtest/gtest.h>

#include "convert/table_statement.h"

namespace zor::test {
namespace {

constexpr std::uint32_t kPlainWord = 0;
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

/// Kernels of the wrappers with an arithmetic of their own, which their families' tests cover. That
/// the table holds them is told by the passes.
bool HasItsOwnStatement(const Entry& entry, std::uint32_t word) {
  if (word == kSse2Word) {
    return entry.Is(11, false) || entry.Is(54, false) || entry.Is(63, false);
  }
  return word == kMmxWord && (entry.Is(6, true) || entry.Is(10, true) || entry.Is(17, true));
}

/// Whether a word's own pass writes an entry: others hold what the words before it tested.
bool IsWritten(const Entry& entry, std::uint32_t word) {
  return word != kSseWord || entry.smoothed || entry.row == 1;
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

/// An entry as it stands under a capability word.
struct EntryForm {
  const char* name;
  std::uint32_t word;
  Entry entry;
};

void PrintTo(const EntryForm& form, std::ostream* out) {
  *out << form.name << ", row " << form.entry.row
       << (form.entry.smoothed ? " smoothed" : " straight");
}

class KernelTable : public testing::TestWithParam<EntryForm> {};

/// Every width to 70 at a few heights and the other heights at a few widths.
TEST_P(KernelTable, EntryGivesTheStatedBytesAndTouchesNoOthers) {
  const Entry& entry = GetParam().entry;
  const std::uint32_t word = GetParam().word;
  const KernelEntry kernel = entry.In(RowsFor(word));
  ASSERT_NE(kernel.index(), 0u);
  const KernelLayouts layouts = LayoutsOfRow(entry.row);
  TableOperands operands;
  OperandSet set({&operands.to[0], &operands.to[1], &operands.to[2], &operands.from[0],
                  &operands.from[1], &operands.from[2]});
  const auto check = [&](std::int32_t width, std::int32_t height) {
    const std::int32_t threshold = width % 4 == 3 ? -1 : width % 4 == 2 ? 255 : 7 * width % 250;
    const TableRun run = {layouts.source, layouts.target, entry.smoothed, ColourBlock(entry, word),
                          width,          height,         threshold};
    set.Reset();
    TableStatement(run, operands).State();
    const std::ptrdiff_t shift = (width + height + 20) % 5;
    const std::string wrong = set.Check(shift, [&](const Pointers& pointers) {
      std::visit(Call{run, pointers}, kernel);
    });
    EXPECT_EQ(wrong, "") << width << " x " << height;
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

std::vector<EntryForm> AllForms() {
  std::vector<EntryForm> forms;
  for (std::size_t row = 1; row < kKernelRows; ++row) {
    for (const bool smoothed : {false, true}) {
      const Entry entry = {row, smoothed};
      for (const auto& [name, word] : {std::pair("Plain", kPlainWord), std::pair("Mmx", kMmxWord),
                                       std::pair("Sse", kSseWord), std::pair("Sse2", kSse2Word)}) {
        if (IsWritten(entry, word) && !HasItsOwnStatement(entry, word)) {
          forms.push_back({name, word, entry});
        }
      }
    }
  }
  return forms;
}

INSTANTIATE_TEST_SUITE_P(Of, KernelTable, testing::ValuesIn(AllForms()),
                         [](const testing::TestParamInfo<EntryForm>& info) {
                           const Entry& entry = info.param.entry;
                           return "Row" + std::to_string(entry.row) +
                                  (entry.smoothed ? "Smoothed" : "Straight") + info.param.name;
                         });

TEST(KernelTableRow0, EveryFormCopiesItsBytesAndNoOthers) {
  using Edge = GuardedMemory::Edge;
  Noise noise(3);
  for (const std::uint32_t word : {kPlainWord, kMmxWord, kSseWord, kSse2Word}) {
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
