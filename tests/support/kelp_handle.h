// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Video-DIB handles of the suite's `uKelpTool`.

#include <cstddef>
#include <cstdint>

namespace zor::test {

/// A handle for the length of a scope.
class KelpHandle {
 public:
  /// @param pixels copied. @throws std::runtime_error if the library isn't found.
  KelpHandle(std::int32_t width, std::int32_t height, std::int32_t bitCount, std::int32_t stride,
             const std::uint8_t* pixels, std::size_t bytes);
  ~KelpHandle();
  KelpHandle(const KelpHandle&) = delete;
  KelpHandle& operator=(const KelpHandle&) = delete;

  void* get() const { return handle_; }
  /// @return the locks that are held.
  int Locks() const;
  /// @return the locks that were taken so far.
  int LockCalls() const;

 private:
  void* handle_;
};

}  // namespace zor::test
