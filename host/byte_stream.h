// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Files and pipes as streams of bytes, never translated as text.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace zorhost {

/// Bytes from a file, or from standard input for "-".
class ByteReader {
 public:
  /// @throws InputError if the file can't be opened.
  explicit ByteReader(const std::string& path);
  ~ByteReader();
  ByteReader(const ByteReader&) = delete;
  ByteReader& operator=(const ByteReader&) = delete;

  /// @return how many bytes came before the end.
  std::size_t Read(void* bytes, std::size_t count);
  /// The next byte, or -1 at the end.
  int Next();
  const std::string& name() const { return name_; }

 private:
  std::string name_;
  std::FILE* file_;
  bool owned_;
};

/// Bytes to a file, or to standard output for "-". A file grows under a neighbouring name and takes
/// its own name in `Finish`, so that nobody finds half a file under it.
class ByteWriter {
 public:
  /// @throws OutputError
  explicit ByteWriter(const std::string& path);
  /// Without `Finish` the unfinished file is removed.
  ~ByteWriter();
  ByteWriter(const ByteWriter&) = delete;
  ByteWriter& operator=(const ByteWriter&) = delete;

  void Write(const void* bytes, std::size_t count);
  void Write(const std::string& text) { Write(text.data(), text.size()); }
  void Finish();

 private:
  std::string path_;
  std::string partial_;
  std::FILE* file_;
};

/// A whole file. @throws InputError
std::vector<std::uint8_t> ReadWholeFile(const std::string& path);

}  // namespace zorhost
