// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "text.h"

#include <charconv>
#include <cstdio>

#include "exit_code.h"

namespace zorhost {

std::vector<std::string> SplitWords(std::string_view text, char separator) {
  std::vector<std::string> words;
  while (!text.empty()) {
    const std::size_t end = text.find(separator);
    if (end != 0) words.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + 1);
  }
  return words;
}

std::optional<std::int64_t> ParseWhole(std::string_view text) {
  std::int64_t value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end || value < 0) return std::nullopt;
  return value;
}

std::string Extension(const std::string& path) {
  const std::size_t dot = path.rfind('.');
  if (dot == std::string::npos || path.find_first_of("/\\", dot) != std::string::npos) return {};
  std::string extension = path.substr(dot);
  for (char& c : extension) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return extension;
}

std::string FixedText(double value, int decimals) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", decimals, value);
  return text;
}

Size ParseSize(const std::string& text, const std::string& option) {
  const std::size_t x = text.find('x');
  if (x != std::string::npos) {
    const auto width = ParseWhole(std::string_view(text).substr(0, x));
    const auto height = ParseWhole(std::string_view(text).substr(x + 1));
    if (width && height && *width > 0 && *height > 0 && *width <= 65535 && *height <= 65535) {
      return {static_cast<int>(*width), static_cast<int>(*height)};
    }
  }
  throw UsageError(option + ": '" + text + "' is no size; write WxH, each side 1 to 65535");
}

std::uint32_t ParseColour(const std::string& text, const std::string& option) {
  std::uint32_t colour = 0;
  const char* end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data(), end, colour, 16);
  if (text.size() != 6 || error != std::errc() || stopped != end) {
    throw UsageError(option + ": '" + text + "' is no colour; write RRGGBB, such as ff8000");
  }
  return colour;
}

FrameRange ParseFrames(const std::string& text) {
  FrameRange range;
  if (text.empty()) return range;
  const std::size_t dash = text.find('-');
  const auto first = ParseWhole(std::string_view(text).substr(0, dash));
  const auto last = dash == std::string::npos ? first
                    : dash + 1 == text.size() ? std::optional<std::int64_t>(-1)
                                              : ParseWhole(std::string_view(text).substr(dash + 1));
  if (!first || !last || (*last >= 0 && *last < *first)) {
    throw UsageError("--frames " + text + ": write A-B, A- or A, counted from 0");
  }
  return {*first, *last};
}

std::optional<NumberedName> NumberedName::Parse(const std::string& path) {
  const std::size_t percent = path.find('%');
  if (percent == std::string::npos) return std::nullopt;
  std::size_t end = percent + 1;
  while (end < path.size() && path[end] >= '0' && path[end] <= '9') ++end;
  if (end == path.size() || path[end] != 'd') return std::nullopt;
  NumberedName name;
  name.before_ = path.substr(0, percent);
  name.after_ = path.substr(end + 1);
  name.digits_ = static_cast<int>(
      ParseWhole(std::string_view(path).substr(percent + 1, end - percent - 1)).value_or(0));
  if (name.digits_ > 18) return std::nullopt;
  return name;
}

std::string NumberedName::At(std::int64_t number) const {
  std::string digits = std::to_string(number);
  while (static_cast<int>(digits.size()) < digits_) digits.insert(digits.begin(), '0');
  return before_ + digits + after_;
}

}  // namespace zorhost
