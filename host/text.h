// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Small text helpers: words, whole numbers, sizes, numbered file names.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zorhost {

std::vector<std::string> SplitWords(std::string_view text, char separator = ' ');
/// A decimal number that fills the whole text and is not negative.
std::optional<std::int64_t> ParseWhole(std::string_view text);
/// The part behind the last dot of the file name, in lower case and with its dot; or empty.
std::string Extension(const std::string& path);
std::string FixedText(double value, int decimals);

struct Size {
  int width = 0;
  int height = 0;
};
/// "640x360". @throws UsageError naming @p option.
Size ParseSize(const std::string& text, const std::string& option);

/// "ff8000" as 0xFF8000. @throws UsageError naming @p option.
std::uint32_t ParseColour(const std::string& text, const std::string& option);

/// Inclusive first and last frame; last is -1 for "to the end".
struct FrameRange {
  std::int64_t first = 0;
  std::int64_t last = -1;
};
/// "", "7", "3-9", "3-". @throws UsageError
FrameRange ParseFrames(const std::string& text);

/// A name such as "img%04d.png" with one number in it.
class NumberedName {
 public:
  /// @return nothing where the name holds no "%d" or "%0Nd".
  static std::optional<NumberedName> Parse(const std::string& path);
  std::string At(std::int64_t number) const;

 private:
  std::string before_;
  std::string after_;
  int digits_ = 0;
};

}  // namespace zorhost
