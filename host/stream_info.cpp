// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "stream_info.h"

namespace zorhost {

const char* RangeName(Range range) {
  switch (range) {
    case Range::kLimited:
      return "limited";
    case Range::kFull:
      return "full";
    default:
      return "unknown";
  }
}

const char* MatrixName(const StreamInfo& info) {
  switch (info.matrix) {
    case Matrix::kBt601:
      return "BT.601";
    case Matrix::kBt709:
      return "BT.709";
    case Matrix::kOther:
      return info.matrixName.c_str();
    default:
      return "unknown";
  }
}

std::vector<std::string> ColourNotes(const StreamInfo& info) {
  std::vector<std::string> notes;
  if (Traits(info.layout).rgb || info.layout == Layout::kGray8) return notes;
  if (info.matrix == Matrix::kUnknown) {
    notes.push_back("matrix not stated: taken as BT.601");
  } else if (info.matrix != Matrix::kBt601) {
    notes.push_back(std::string("warning: the source says ") + MatrixName(info) +
                    ", the library's one matrix is BT.601: greens and reds will shift a little");
  }
  if (info.range == Range::kUnknown) {
    notes.push_back("range not stated: taken as video range (16 to 235)");
  } else if (info.range == Range::kFull) {
    notes.push_back(
        "warning: the source is full range, the library's one range is video range "
        "(16 to 235): contrast will rise and extremes will clip");
  }
  return notes;
}

}  // namespace zorhost
