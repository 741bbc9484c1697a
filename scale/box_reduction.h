// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// How the sum of a box becomes its average: shifts and additions instead of a division.
///
/// Of a lane's sum x (shifted right by one first where the row says so) the result is
/// (x + x >> s1 + x >> s1 >> s2 + ...) >> final, in unsigned 16 bits: every shift truncates and
/// nothing rounds, so most boxes of pure 255 come out as 254.

#include <cstdint>

namespace zor {

/// One reduction. Unused shifts are 0 and stand at the end.
struct BoxReduction {
  bool halve;
  std::uint8_t shifts[6];
  std::uint8_t finalShift;
};

/// The pixel sizes of a route, source then destination.
enum class BoxPair : std::uint8_t { k3To3, k3To4, k4To3, k4To4 };

namespace box_detail {

struct ProductRow {
  std::uint16_t pixels;
  BoxReduction reduction;
};

/// By the number of pixels of a box; every product of two numbers from 1 to 16.
inline constexpr ProductRow kByProduct[] = {
    {1, {false, {}, 0}},
    {2, {false, {}, 1}},
    {3, {false, {2, 2, 2, 2, 2, 2}, 2}},
    {4, {false, {}, 2}},
    {5, {false, {1, 3, 1, 3, 1, 3}, 3}},
    {6, {false, {2, 2, 2, 2, 2, 2}, 3}},
    {7, {false, {3, 3, 3, 3}, 3}},
    {8, {false, {}, 3}},
    {9, {false, {1, 1, 4, 1, 1}, 4}},
    {10, {false, {1, 3, 1, 3, 1}, 4}},
    {11, {false, {2, 1, 1, 2, 4}, 4}},
    {12, {false, {2, 2, 2, 2, 2}, 4}},
    {13, {false, {3, 1, 1, 2, 1}, 4}},
    {14, {false, {3, 3, 3}, 4}},
    {15, {false, {4, 4}, 4}},
    {16, {false, {}, 4}},
    {18, {false, {1, 1, 4, 1, 1}, 5}},
    {20, {false, {1, 3, 1, 3, 1}, 5}},
    {21, {false, {1, 5, 1}, 5}},
    {22, {false, {2, 1, 1, 2, 4}, 5}},
    {24, {false, {2, 2, 2, 2, 2}, 5}},
    {25, {false, {2, 4, 1, 1, 1}, 5}},
    {26, {false, {3, 1, 1, 2, 1}, 5}},
    {27, {false, {3, 2, 1, 1, 1, 2}, 5}},
    {28, {false, {3, 3, 3}, 5}},
    {30, {false, {4, 4}, 5}},
    {32, {false, {}, 5}},
    {33, {false, {1, 1, 1, 1}, 6}},
    {35, {false, {1, 1, 2, 2}, 6}},
    {36, {false, {1, 1, 4, 1, 1}, 6}},
    {39, {false, {1, 2, 3}, 6}},
    {40, {false, {1, 3, 1, 3, 1}, 6}},
    {42, {false, {1, 5, 1}, 6}},
    {44, {false, {2, 1, 1, 2}, 6}},
    {45, {false, {2, 1, 2, 1}, 6}},
    {48, {false, {2, 2, 2, 2}, 6}},
    {49, {false, {2, 3, 1, 1}, 6}},
    {50, {false, {2, 4, 1, 1, 1}, 6}},
    {52, {false, {3, 1, 1, 2, 1}, 6}},
    {54, {false, {3, 2, 1, 1, 1}, 6}},
    {55, {false, {3, 2, 3, 1}, 6}},
    {56, {false, {3, 3, 3}, 6}},
    {60, {false, {4, 4}, 6}},
    {63, {false, {6}, 6}},
    {64, {false, {}, 6}},
    {65, {false, {1, 1, 1, 1, 1}, 7}},
    {66, {false, {1, 1, 1, 1}, 7}},
    {70, {false, {1, 1, 2, 2}, 7}},
    {72, {false, {1, 1, 4, 1, 1}, 7}},
    {75, {false, {1, 2, 1, 2}, 7}},
    {77, {false, {1, 2, 2, 3}, 7}},
    {78, {false, {1, 2, 3}, 7}},
    {80, {false, {1, 3, 1, 3}, 7}},
    {81, {false, {1, 3, 2}, 7}},
    {84, {false, {1, 5, 1}, 7}},
    {88, {false, {2, 1, 1, 2}, 7}},
    {90, {false, {2, 1, 2, 1}, 7}},
    {91, {false, {2, 1, 2}, 7}},
    {96, {false, {2, 2, 2, 2}, 7}},
    {98, {false, {2, 3, 1, 1}, 7}},
    {99, {false, {2, 3, 2}, 7}},
    {100, {false, {2, 4, 1, 1}, 7}},
    {104, {false, {3, 1, 1, 2, 1}, 7}},
    {105, {false, {3, 1, 1}, 7}},
    {108, {false, {3, 2, 1, 1, 1}, 7}},
    {110, {false, {3, 2, 3}, 7}},
    {112, {false, {3, 3}, 7}},
    {117, {false, {4, 1}, 7}},
    {120, {false, {4, 4}, 7}},
    {121, {false, {5, 1, 1}, 7}},
    {126, {false, {6}, 7}},
    {128, {false, {}, 7}},
    {130, {true, {1, 1, 1, 1, 1}, 7}},
    {132, {true, {1, 1, 1, 1}, 7}},
    {135, {true, {1, 1, 1, 3}, 7}},
    {140, {true, {1, 1, 2, 2}, 7}},
    {143, {true, {1, 1, 3, 2}, 7}},
    {144, {true, {1, 1, 4, 1}, 7}},
    {150, {true, {1, 2, 1, 2}, 7}},
    {154, {true, {1, 2, 2}, 7}},
    {156, {true, {1, 2, 3}, 7}},
    {160, {true, {1, 3, 1}, 7}},
    {165, {true, {1, 4, 1}, 7}},
    {168, {true, {1, 5, 1}, 7}},
    {169, {true, {1, 6}, 7}},
    {176, {true, {2, 1, 1, 2}, 7}},
    {180, {true, {2, 1, 2, 1}, 7}},
    {182, {true, {2, 1, 2}, 7}},
    {192, {true, {2, 2, 2}, 7}},
    {195, {true, {2, 2}, 7}},
    {196, {true, {2, 3, 1, 1}, 7}},
    {208, {true, {3, 1, 1, 2}, 7}},
    {210, {true, {3, 1, 1}, 7}},
    {224, {true, {3, 3}, 7}},
    {225, {true, {3, 4}, 7}},
    {240, {true, {4}, 7}},
    {256, {false, {}, 8}},
};

/// The boxes whose sequence differs from that of their number of pixels.
struct PairRow {
  std::uint8_t rows;
  std::uint8_t columns;
  std::uint8_t pairs;  // bits by BoxPair
  BoxReduction reduction;
};

inline constexpr std::uint8_t Bit(BoxPair pair) {
  return static_cast<std::uint8_t>(1 << static_cast<int>(pair));
}
inline constexpr std::uint8_t kAll = 15;
inline constexpr std::uint8_t kBut4To3 = kAll & ~Bit(BoxPair::k4To3);
inline constexpr std::uint8_t kBut4To4 = kAll & ~Bit(BoxPair::k4To4);

inline constexpr PairRow kByShape[] = {
    {5, 7, kAll, {false, {1, 1, 2, 1}, 6}}, {7, 10, kAll, {false, {1, 1, 2, 1}, 7}},
    {3, 13, kBut4To3, {false, {1, 2}, 6}},  {7, 8, Bit(BoxPair::k3To3), {false, {3, 3}, 6}},
    {14, 8, kAll, {false, {3, 3, 3}, 7}},   {12, 16, kBut4To4, {true, {2, 2, 2, 2}, 7}},
};

}  // namespace box_detail

/// @param rows, columns of the box, 1 to 16. @return its reduction on a route.
constexpr BoxReduction BoxReductionFor(std::int32_t rows, std::int32_t columns, BoxPair pair) {
  for (const auto& row : box_detail::kByShape) {
    if (row.rows == rows && row.columns == columns && (row.pairs & box_detail::Bit(pair)) != 0) {
      return row.reduction;
    }
  }
  for (const auto& row : box_detail::kByProduct) {
    if (row.pixels == rows * columns) return row.reduction;
  }
  return {};
}

/// The reductions of one route by the box's rows and columns, 1 to 16 each; a box of no columns has
/// a sum of 0, which its reduction leaves.
struct BoxReductions {
  BoxReduction of[17][17];
};

constexpr BoxReductions BoxReductionsFor(BoxPair pair) {
  BoxReductions all{};
  for (std::int32_t rows = 1; rows <= 16; ++rows) {
    for (std::int32_t columns = 1; columns <= 16; ++columns) {
      all.of[rows][columns] = BoxReductionFor(rows, columns, pair);
    }
  }
  return all;
}

/// @return the average of one lane, before it is narrowed to a byte with saturation.
constexpr std::uint32_t ReduceBoxSum(std::uint32_t sum, const BoxReduction& reduction) {
  std::uint32_t term = reduction.halve ? sum >> 1 : sum;
  std::uint32_t total = term;
  for (const std::uint8_t shift : reduction.shifts) {
    if (shift == 0) break;
    term >>= shift;
    total += term;
  }
  return total >> reduction.finalShift;
}

}  // namespace zor
