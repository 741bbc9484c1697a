// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "byte_stream.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "exit_code.h"
#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace zorhost {
namespace {

// Standard streams of Windows translate line ends until told otherwise.
void MakeBinary([[maybe_unused]] std::FILE* stream) {
#ifdef _WIN32
  _setmode(_fileno(stream), _O_BINARY);
#endif
}

}  // namespace

ByteReader::ByteReader(const std::string& path)
    : name_(path == "-" ? "standard input" : path), file_(nullptr), owned_(path != "-") {
  if (!owned_) {
    MakeBinary(stdin);
    file_ = stdin;
    return;
  }
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) throw InputError(path + ": is a folder");
  file_ = std::fopen(path.c_str(), "rb");
  if (!file_) throw InputError(path + ": " + std::strerror(errno));
}

ByteReader::~ByteReader() {
  if (owned_) std::fclose(file_);
}

std::size_t ByteReader::Read(void* bytes, std::size_t count) {
  return std::fread(bytes, 1, count, file_);
}

int ByteReader::Next() {
  return std::getc(file_);
}

ByteWriter::ByteWriter(const std::string& path) : path_(path), file_(nullptr) {
  if (path == "-") {
    MakeBinary(stdout);
    file_ = stdout;
    return;
  }
  partial_ = path + ".part";
  file_ = std::fopen(partial_.c_str(), "wb");
  if (!file_) throw OutputError(path + ": " + std::strerror(errno));
}

ByteWriter::~ByteWriter() {
  if (partial_.empty() || !file_) return;
  std::fclose(file_);
  std::remove(partial_.c_str());
}

void ByteWriter::Write(const void* bytes, std::size_t count) {
  if (std::fwrite(bytes, 1, count, file_) != count) {
    throw OutputError(path_ + ": " + std::strerror(errno));
  }
}

void ByteWriter::Finish() {
  if (!file_) return;
  if (partial_.empty()) {
    if (std::fflush(file_) != 0) throw OutputError(path_ + ": " + std::strerror(errno));
    return;
  }
  std::FILE* const file = file_;
  file_ = nullptr;
  if (std::fclose(file) != 0) {
    std::remove(partial_.c_str());
    throw OutputError(path_ + ": " + std::strerror(errno));
  }
  std::error_code error;
  std::filesystem::rename(partial_, path_, error);
  if (error) {
    std::remove(partial_.c_str());
    throw OutputError(path_ + ": " + error.message());
  }
}

std::vector<std::uint8_t> ReadWholeFile(const std::string& path) {
  ByteReader reader(path);
  std::vector<std::uint8_t> bytes;
  std::size_t used = 0;
  do {
    bytes.resize(used + (std::size_t{1} << 16) + used / 2);
    used += reader.Read(bytes.data() + used, bytes.size() - used);
  } while (used == bytes.size());
  bytes.resize(used);
  return bytes;
}

}  // namespace zorhost
