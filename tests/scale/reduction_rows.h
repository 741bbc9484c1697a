// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Every reduction of a box, written down as text, with what it gives.

#include <string_view>

namespace zor::test {

struct ReductionRow {
  int pixels;          ///< of the box
  bool halve;          ///< whether the sum is halved first
  const char* shifts;  ///< separated by blanks
  int finalShift;
  int gainMillionths;  ///< the multiplier times the number of pixels
  int white;           ///< of a box of pure 255
};

inline constexpr ReductionRow kReductionRows[] = {
    {1, false, "", 0, 1000000, 255},           {2, false, "", 1, 1000000, 255},
    {3, false, "2 2 2 2 2 2", 2, 999939, 254}, {4, false, "", 2, 1000000, 255},
    {5, false, "1 3 1 3 1 3", 3, 999908, 254}, {6, false, "2 2 2 2 2 2", 3, 999939, 254},
    {7, false, "3 3 3 3", 3, 999969, 254},     {8, false, "", 3, 1000000, 255},
    {9, false, "1 1 4 1 1", 4, 999756, 254},   {10, false, "1 3 1 3 1", 4, 999756, 254},
    {11, false, "2 1 1 2 4", 4, 999695, 254},  {12, false, "2 2 2 2 2", 4, 999756, 254},
    {13, false, "3 1 1 2 1", 4, 999756, 254},  {14, false, "3 3 3", 4, 999756, 254},
    {15, false, "4 4", 4, 999756, 254},        {16, false, "", 4, 1000000, 255},
    {18, false, "1 1 4 1 1", 5, 999756, 254},  {20, false, "1 3 1 3 1", 5, 999756, 254},
    {21, false, "1 5 1", 5, 999756, 254},      {22, false, "2 1 1 2 4", 5, 999695, 254},
    {24, false, "2 2 2 2 2", 5, 999756, 254},  {25, false, "2 4 1 1 1", 5, 999451, 254},
    {26, false, "3 1 1 2 1", 5, 999756, 254},  {27, false, "3 2 1 1 1 2", 5, 999481, 254},
    {28, false, "3 3 3", 5, 999756, 254},      {30, false, "4 4", 5, 999756, 254},
    {32, false, "", 5, 1000000, 255},          {33, false, "1 1 1 1", 6, 999023, 254},
    {35, false, "1 1 2 2", 6, 999756, 254},    {36, false, "1 1 4 1 1", 6, 999756, 254},
    {39, false, "1 2 3", 6, 999756, 254},      {40, false, "1 3 1 3 1", 6, 999756, 254},
    {42, false, "1 5 1", 6, 999756, 254},      {44, false, "2 1 1 2", 6, 999023, 254},
    {45, false, "2 1 2 1", 6, 999756, 254},    {48, false, "2 2 2 2", 6, 999023, 254},
    {49, false, "2 3 1 1", 6, 998901, 254},    {50, false, "2 4 1 1 1", 6, 999451, 254},
    {52, false, "3 1 1 2 1", 6, 999756, 254},  {54, false, "3 2 1 1 1", 6, 998657, 254},
    {55, false, "3 2 3 1", 6, 998688, 254},    {56, false, "3 3 3", 6, 999756, 254},
    {60, false, "4 4", 6, 999756, 254},        {63, false, "6", 6, 999756, 254},
    {64, false, "", 6, 1000000, 255},          {65, false, "1 1 1 1 1", 7, 999756, 254},
    {66, false, "1 1 1 1", 7, 999023, 254},    {70, false, "1 1 2 2", 7, 999756, 254},
    {72, false, "1 1 4 1 1", 7, 999756, 254},  {75, false, "1 2 1 2", 7, 997925, 254},
    {77, false, "1 2 2 3", 7, 998688, 254},    {78, false, "1 2 3", 7, 999756, 254},
    {80, false, "1 3 1 3", 7, 998535, 254},    {81, false, "1 3 2", 7, 998657, 254},
    {84, false, "1 5 1", 7, 999756, 254},      {88, false, "2 1 1 2", 7, 999023, 254},
    {90, false, "2 1 2 1", 7, 999756, 254},    {91, false, "2 1 2", 7, 999756, 254},
    {96, false, "2 2 2 2", 7, 999023, 254},    {98, false, "2 3 1 1", 7, 998901, 254},
    {99, false, "2 3 2", 7, 997009, 254},      {100, false, "2 4 1 1", 7, 997925, 254},
    {104, false, "3 1 1 2 1", 7, 999756, 254}, {105, false, "3 1 1", 7, 999756, 254},
    {108, false, "3 2 1 1 1", 7, 998657, 254}, {110, false, "3 2 3", 7, 997009, 254},
    {112, false, "3 3", 7, 998047, 254},       {117, false, "4 1", 7, 999756, 254},
    {120, false, "4 4", 7, 999756, 254},       {121, false, "5 1 1", 7, 997009, 254},
    {126, false, "6", 7, 999756, 254},         {128, false, "", 7, 1000000, 255},
    {130, true, "1 1 1 1 1", 7, 999756, 254},  {132, true, "1 1 1 1", 7, 999023, 254},
    {135, true, "1 1 1 3", 7, 997009, 254},    {140, true, "1 1 2 2", 7, 999756, 254},
    {143, true, "1 1 3 2", 7, 999359, 254},    {144, true, "1 1 4 1", 7, 997559, 254},
    {150, true, "1 2 1 2", 7, 997925, 254},    {154, true, "1 2 2", 7, 996338, 254},
    {156, true, "1 2 3", 7, 999756, 254},      {160, true, "1 3 1", 7, 996094, 254},
    {165, true, "1 4 1", 7, 997009, 254},      {168, true, "1 5 1", 7, 999756, 254},
    {169, true, "1 6", 7, 995392, 253},        {176, true, "2 1 1 2", 7, 999023, 254},
    {180, true, "2 1 2 1", 7, 999756, 254},    {182, true, "2 1 2", 7, 999756, 254},
    {192, true, "2 2 2", 7, 996094, 254},      {195, true, "2 2", 7, 999756, 254},
    {196, true, "2 3 1 1", 7, 998901, 254},    {208, true, "3 1 1 2", 7, 996582, 254},
    {210, true, "3 1 1", 7, 999756, 254},      {224, true, "3 3", 7, 998047, 254},
    {225, true, "3 4", 7, 995636, 253},        {240, true, "4", 7, 996094, 254},
    {256, false, "", 8, 1000000, 255},
};

/// A box whose sequence isn't that of its number of pixels.
struct ReductionException {
  int rows;
  int columns;
  const char* routes;  ///< bytes of the source's and the target's pixels, separated by blanks
  ReductionRow row;
};

inline constexpr ReductionException kReductionExceptions[] = {
    {5, 7, "33 34 43 44", {35, false, "1 1 2 1", 6, 1008301, 255}},
    {7, 10, "33 34 43 44", {70, false, "1 1 2 1", 7, 1008301, 255}},
    {3, 13, "33 34 44", {39, false, "1 2", 6, 990234, 252}},
    {7, 8, "33", {56, false, "3 3", 6, 998047, 254}},
    {14, 8, "33 34 43 44", {112, false, "3 3 3", 7, 999756, 254}},
    {12, 16, "33 34 43", {192, true, "2 2 2 2", 7, 999023, 254}},
};

/// @return the row of a box on a route.
inline const ReductionRow& ReductionOf(int rows, int columns, int sourceBytes, int targetBytes) {
  const char route[] = {static_cast<char>('0' + sourceBytes), static_cast<char>('0' + targetBytes),
                        0};
  for (const ReductionException& e : kReductionExceptions) {
    if (e.rows == rows && e.columns == columns &&
        std::string_view(e.routes).find(route) != std::string_view::npos) {
      return e.row;
    }
  }
  for (const ReductionRow& row : kReductionRows) {
    if (row.pixels == rows * columns) return row;
  }
  return kReductionRows[0];
}

}  // namespace zor::test
