// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include <cstring>

#include "ipl/forms.h"
#include "ipl/iplalloc.h"
#include "ipl/iplwarp.h"
#include "ipl/warp_rows.h"
#include "ipl/warp_spans.h"
#include "support/guarded_memory.h"

namespace zor::test {
namespace {

using Edge = GuardedMemory::Edge;

/// Pixels of a width x height source that a lattice takes in full.
struct Shape {
  int pixel, width, height;
  int sourceStep, targetStep;
  int turn;  // degrees; one more for the mirrored lattice

  bool Swaps() const { return turn / 90 % 2 == 1; }
  int Columns() const { return Swaps() ? height : width; }
  int Rows() const { return Swaps() ? width : height; }
  /// Source pixel of a target pixel.
  void SourceOf(int x, int y, int* sx, int* sy) const {
    const int right = width - 1, bottom = height - 1;
    switch (turn) {
      case 0:
        *sx = x, *sy = y;
        break;
      case 1:
        *sx = x, *sy = bottom - y;
        break;
      case 90:
        *sx = right - y, *sy = x;
        break;
      case 91:
        *sx = y, *sy = x;
        break;
      case 180:
        *sx = right - x, *sy = bottom - y;
        break;
      case 181:
        *sx = right - x, *sy = y;
        break;
      case 270:
        *sx = y, *sy = bottom - x;
        break;
      default:
        *sx = right - y, *sy = bottom - x;
        break;
    }
  }
  std::int64_t Place(int x, int y) const {
    int sx = 0, sy = 0;
    SourceOf(x, y, &sx, &sy);
    return std::int64_t{sy} * sourceStep + std::int64_t{sx} * pixel;
  }
  LatticeMove Lattice(const std::uint8_t* source, std::uint8_t* target) const {
    return {source,     Place(0, 0), Place(1, 0) - Place(0, 0), Place(0, 1) - Place(0, 0), target,
            targetStep, pixel};
  }
  /// The move pixel by pixel.
  void State(const std::uint8_t* source, std::uint8_t* target) const {
    for (int y = 0; y < Rows(); ++y) {
      for (int x = 0; x < Columns(); ++x) {
        for (int c = 0; c < pixel; ++c) {
          target[std::ptrdiff_t{y} * targetStep + x * pixel + c] = source[Place(x, y) + c];
        }
      }
    }
  }
};

constexpr int kTurns[] = {0, 1, 90, 91, 180, 181, 270, 271};

TEST(Move, EveryFormMovesEverySizeBesidePagesWithoutAccess) {
  const int sizes[] = {1, 2, 3, 4, 5, 7, 8, 9, 15, 16, 17, 23, 33, 64, 65, 131};
  Noise noise(1);
  for (const int width : sizes) {
    for (const int height : sizes) {
      for (const int pixel : {1, 3, 4}) {
        const Edge edge = noise.Byte() % 2 == 0 ? Edge::kStart : Edge::kEnd;
        const auto bytes = static_cast<std::size_t>(width * height * pixel);
        GuardedMemory source(bytes, edge), target(bytes, edge);
        noise.Fill(source.data(), bytes);
        for (const int turn : kTurns) {
          Shape shape{pixel, width, height, width * pixel, 0, turn};
          shape.targetStep = shape.Columns() * pixel;
          std::vector<std::uint8_t> expected(bytes);
          shape.State(source.data(), expected.data());
          for (const PinnedForm::Choice& choice : PinnedForm::kAll) {
            const PinnedForm form(choice);
            std::memset(target.data(), 0x5A, bytes);
            MoveLattice(shape.Lattice(source.data(), target.data()), 0, 0, shape.Columns() - 1,
                        shape.Rows() - 1);
            ASSERT_EQ(expected, target.Copy()) << choice.name << ", " << pixel << " bytes, "
                                               << width << " x " << height << " by " << turn;
            ASSERT_TRUE(target.GuardsIntact());
          }
        }
      }
    }
  }
}

TEST(Move, PartsOfAPictureLeaveTheRest) {
  Noise noise(2);
  for (int round = 0; round < 400; ++round) {
    const int pixel = round % 3 == 0 ? 1 : round % 3 == 1 ? 3 : 4;
    Shape shape{pixel, noise.Range(1, 150), noise.Range(1, 150), 0, 0, kTurns[round % 8]};
    shape.sourceStep = shape.width * pixel + noise.Range(0, 70);
    shape.targetStep = shape.Columns() * pixel + noise.Range(0, 70);
    const auto source = noise.Bytes(static_cast<std::size_t>(shape.sourceStep * shape.height));
    auto whole = noise.Bytes(static_cast<std::size_t>(shape.targetStep * shape.Rows()));
    const int x0 = noise.Range(0, shape.Columns() - 1), x1 = noise.Range(x0, shape.Columns() - 1);
    const int y0 = noise.Range(0, shape.Rows() - 1), y1 = noise.Range(y0, shape.Rows() - 1);
    auto part = whole;
    const auto before = whole;
    shape.State(source.data(), whole.data());
    const PinnedForm form(PinnedForm::kAll[round / 8 % 4]);
    MoveLattice(shape.Lattice(source.data(), part.data()), x0, y0, x1, y1);
    for (int y = 0; y < shape.Rows(); ++y) {
      for (int i = 0; i < shape.targetStep; ++i) {
        const int x = i / pixel;
        const bool inside = x >= x0 && x <= x1 && y >= y0 && y <= y1;
        const auto at = static_cast<std::size_t>(y * shape.targetStep + i);
        ASSERT_EQ(inside ? whole[at] : before[at], part[at])
            << round << ": byte " << i << ", " << y;
      }
    }
  }
}

TEST(Move, PicturesBeyondTheCachesHaveTheSameBytes) {
  for (const int pixel : {1, 3, 4}) {
    // More than 8 MiB, rows off the lines.
    const int width = pixel == 1 ? 3001 : 1501, height = pixel == 1   ? 2901
                                                         : pixel == 3 ? 1903
                                                                      : 1403;
    const int step = width * pixel + 5;
    Noise noise(3);
    const auto source = noise.Bytes(static_cast<std::size_t>(step * height));
    for (const int turn : {0, 90, 180, 270}) {
      Shape shape{pixel, width, height, step, 0, turn};
      shape.targetStep = shape.Columns() * pixel + 3;
      std::vector<std::uint8_t> expected(
          static_cast<std::size_t>(shape.targetStep) * static_cast<std::size_t>(shape.Rows()), 9);
      shape.State(source.data(), expected.data());
      for (const PinnedForm::Choice& choice : PinnedForm::kAll) {
        const PinnedForm form(choice);
        std::vector<std::uint8_t> target(expected.size(), 9);
        MoveLattice(shape.Lattice(source.data(), target.data()), 0, 0, shape.Columns() - 1,
                    shape.Rows() - 1);
        ASSERT_TRUE(expected == target) << choice.name << ", " << pixel << " bytes by " << turn;
      }
    }
  }
}

TEST(Move, APictureMovedOntoItselfGoesRowByRow) {
  for (const int pixel : {1, 3, 4}) {
    for (const int turn : {90, 180, 270}) {
      const Shape shape{pixel, 80, 80, 80 * pixel, 80 * pixel, turn};
      Noise noise(4);
      auto bytes = noise.Bytes(static_cast<std::size_t>(80 * 80 * pixel));
      auto expected = bytes;
      shape.State(expected.data(), expected.data());
      MoveLattice(shape.Lattice(bytes.data(), bytes.data()), 0, 0, 79, 79);
      ASSERT_EQ(expected, bytes) << pixel << " bytes by " << turn;
    }
  }
}

TEST(WarpSpans, EveryFormCopiesThePixelsOfItsPositionsBesidePagesWithoutAccess) {
  Noise noise(5);
  int wide = 0;
  for (int round = 0; round < 1500; ++round) {
    const int pixel = round % 3 == 0 ? 1 : round % 3 == 1 ? 3 : 4;
    const int width = noise.Range(2, 90), height = noise.Range(2, 60), count = noise.Range(1, 70);
    const Edge edge = round % 2 == 0 ? Edge::kStart : Edge::kEnd;
    GuardedMemory source(static_cast<std::size_t>(width * height * pixel), edge);
    GuardedMemory target(static_cast<std::size_t>(count * pixel), edge);
    noise.Fill(source.data(), source.size());
    // From one pixel of the source to another in equal steps.
    const auto along = [&](int size) { return noise.Range(0, size * 65536 - 1); };
    const std::int32_t x = along(width), y = along(height);
    const int steps = count > 1 ? count - 1 : 1;
    const std::int32_t xStep = (along(width) - x) / steps, yStep = (along(height) - y) / steps;
    std::vector<std::uint8_t> expected(target.size());
    bool above = true;
    for (int i = 0; i < count; ++i) {
      const int column = (x + i * xStep) / 65536, row = (y + i * yStep) / 65536;
      above = above && row < height - 1;
      std::memcpy(&expected[static_cast<std::size_t>(i * pixel)],
                  source.data() + (row * width + column) * pixel, static_cast<std::size_t>(pixel));
    }
    wide += pixel == 3 && above;
    for (const PinnedForm::Choice& choice : PinnedForm::kAll) {
      if (!PinnedForm(choice).Runs()) continue;
      const WarpSpanForm& form = *kWarpSpanForms[choice.place];
      for (const WarpSpanKernel kernel : {pixel == 1   ? form.gray
                                          : pixel == 4 ? form.rgb32
                                                       : form.rgb24,
                                          pixel == 3 && above ? form.rgb24Above : nullptr}) {
        if (kernel == nullptr) continue;
        std::memset(target.data(), 0x5A, target.size());
        kernel({source.data(), target.data(), width * pixel, static_cast<std::uint32_t>(x),
                static_cast<std::uint32_t>(y), static_cast<std::uint32_t>(xStep),
                static_cast<std::uint32_t>(yStep), count});
        ASSERT_EQ(expected, target.Copy())
            << form.name << ", " << pixel << " bytes, round " << round;
        ASSERT_TRUE(target.GuardsIntact());
      }
    }
  }
  EXPECT_GT(wide, 100);
}

}  // namespace
}  // namespace zor::test
