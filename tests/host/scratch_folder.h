// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// A folder for the files of one test, below the working folder and gone after it.

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace zorhost::test {

class ScratchFolder {
 public:
  ScratchFolder() {
    const auto* info = testing::UnitTest::GetInstance()->current_test_info();
    path_ = std::string("scratch_") + info->test_suite_name() + "_" + info->name();
    std::filesystem::remove_all(path_);
    std::filesystem::create_directory(path_);
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  std::string File(const std::string& name) const { return path_ + "/" + name; }
  std::string Make(const std::string& name, const std::string& bytes) const {
    std::ofstream(File(name), std::ios::binary) << bytes;
    return File(name);
  }
  std::string Bytes(const std::string& name) const {
    std::ifstream in(File(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  bool Has(const std::string& name) const { return std::filesystem::exists(File(name)); }

 private:
  std::string path_;
};

/// A Y4M stream of the frames given, each with its planes one behind the other.
inline std::string Y4mOf(int width, int height, const std::vector<std::string>& frames,
                         const std::string& words = " F25:1 C420jpeg") {
  std::string bytes =
      "YUV4MPEG2 W" + std::to_string(width) + " H" + std::to_string(height) + words + "\n";
  for (const std::string& frame : frames) bytes += "FRAME\n" + frame;
  return bytes;
}

/// @return @p count bytes of one value.
inline std::string Even(int count, int value) {
  return std::string(static_cast<std::size_t>(count), static_cast<char>(value));
}

/// A Y4M stream of @p frames frames whose bytes count up, so that every plane and row differs.
inline std::string MakeY4m(int width, int height, int frames,
                           const std::string& words = " F25:1 C420jpeg") {
  const int chroma =
      words.find("mono") != std::string::npos ? 0 : 2 * ((width + 1) / 2) * ((height + 1) / 2);
  std::vector<std::string> bytes(static_cast<std::size_t>(frames));
  for (int f = 0; f < frames; ++f) {
    for (int i = 0; i < width * height + chroma; ++i) {
      bytes[static_cast<std::size_t>(f)].push_back(static_cast<char>(16 + (i * 7 + f * 31) % 220));
    }
  }
  return Y4mOf(width, height, bytes, words);
}

}  // namespace zorhost::test
