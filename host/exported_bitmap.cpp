// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "exported_bitmap.h"

#include <cstdlib>
#include <cstring>

#include "library.h"

namespace zorhost {
namespace {

constexpr std::uint32_t kKindBitmap = 2;
constexpr std::size_t kHeaderBytes = 40;

/// The global-memory block of a bitmap. Elsewhere than on Windows the handle is the block.
class GlobalBlock {
 public:
  explicit GlobalBlock(void* handle) : handle_(handle) {
#ifdef _WIN32
    bytes_ = static_cast<const std::uint8_t*>(GlobalLock(handle_));
#else
    bytes_ = static_cast<const std::uint8_t*>(handle_);
#endif
  }
  ~GlobalBlock() {
#ifdef _WIN32
    if (bytes_) GlobalUnlock(handle_);
    GlobalFree(handle_);
#else
    std::free(handle_);
#endif
  }
  GlobalBlock(const GlobalBlock&) = delete;
  GlobalBlock& operator=(const GlobalBlock&) = delete;
  const std::uint8_t* bytes() const {
    return bytes_;
  }

 private:
  void* handle_;
  const std::uint8_t* bytes_;
};

std::int32_t Word(const std::uint8_t* at) {
  std::int32_t value;
  std::memcpy(&value, at, sizeof value);
  return value;
}

void CheckHeader(const std::uint8_t* header, const Picture& expected) {
  const int bits = header[14] | header[15] << 8;
  if (Word(header) == static_cast<std::int32_t>(kHeaderBytes) &&
      Word(header + 4) == expected.width() && Word(header + 8) == expected.height() &&
      bits == Traits(expected.layout()).bitsPerPixel) {
    return;
  }
  throw HostError(ExitCode::kLibrary, "library: the exported bitmap's header tells of " +
                                          std::to_string(Word(header + 4)) + "x" +
                                          std::to_string(Word(header + 8)) + " with " +
                                          std::to_string(bits) + " bits a pixel");
}

}  // namespace

void ReadExportedBitmap(IZorSurface& surface, bool turnedOver, Picture& out) {
  void* handle = nullptr;
  std::uint32_t made = 0;
  Check(surface.ExportImage(kKindBitmap, &handle, &made), "export as a bitmap");
  const GlobalBlock block(handle);
  if (!block.bytes()) throw HostError(ExitCode::kLibrary, "the exported bitmap can't be locked");
  CheckHeader(block.bytes(), out);
  const bool bottomUp = Traits(out.layout()).rgb != turnedOver;
  const std::uint8_t* from = block.bytes() + kHeaderBytes;
  const int stride = NaturalStride(out.layout(), out.width());
  for (int p = 0; p < out.planeCount(); ++p) {
    const Plane& plane = out.plane(p);
    const std::size_t step = static_cast<std::size_t>(p == 0 ? stride : stride / 2);
    for (int y = 0; y < plane.rows; ++y, from += step) {
      std::memcpy(out.row(p, bottomUp ? plane.rows - 1 - y : y), from,
                  static_cast<std::size_t>(plane.rowBytes));
    }
  }
}

}  // namespace zorhost
