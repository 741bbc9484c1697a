// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// JPEG files that ask viewers to turn them.

#include <cstdint>
#include <string>
#include <vector>

namespace zorhost::test {

/// The start of a JPEG whose EXIF block holds nothing but an orientation.
inline std::vector<std::uint8_t> JpegStart(bool bigEndian, char orientation) {
  const char little[] = "II*\0\x8\0\0\0\x1\0\x12\x1\x3\0\x1\0\0\0?\0\0\0\0\0\0\0";
  const char big[] = "MM\0*\0\0\0\x8\0\x1\x1\x12\0\x3\0\0\0\x1\0?\0\0\0\0\0\0";
  std::string tiff = bigEndian ? std::string(big, 26) : std::string(little, 26);
  tiff[tiff.find('?')] = orientation;
  // Another segment stands first.
  const std::string jpeg = std::string(
                               "\xFF\xD8\xFF\xE0\0\x4\0\0\xFF\xE1\0\x22"
                               "Exif\0\0",
                               18) +
                           tiff;
  return {jpeg.begin(), jpeg.end()};
}

}  // namespace zorhost::test
