// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <emmintrin.h>

#include <cstdint>

#include "convert/fast_mem_copy.h"
#include "convert/streaming.h"

namespace zor {

void StreamBytes(void* destination, const void* source, std::size_t bytes) noexcept {
  auto* to = static_cast<std::uint8_t*>(destination);
  const auto* from = static_cast<const std::uint8_t*>(source);
  // Streaming stores take whole aligned lines.
  const std::size_t ahead = (64 - (reinterpret_cast<std::uintptr_t>(to) & 63)) & 63;
  const std::size_t head = ahead < bytes ? ahead : bytes;
  __builtin_memcpy(to, from, head);
  to += head;
  from += head;
  bytes -= head;
  for (; bytes >= 64; bytes -= 64, to += 64, from += 64) {
    const auto* in = reinterpret_cast<const __m128i*>(from);
    auto* out = reinterpret_cast<__m128i*>(to);
    const __m128i a = _mm_loadu_si128(in);
    const __m128i b = _mm_loadu_si128(in + 1);
    const __m128i c = _mm_loadu_si128(in + 2);
    const __m128i d = _mm_loadu_si128(in + 3);
    _mm_stream_si128(out, a);
    _mm_stream_si128(out + 1, b);
    _mm_stream_si128(out + 2, c);
    _mm_stream_si128(out + 3, d);
  }
  __builtin_memcpy(to, from, bytes);
}

void EndStreaming() noexcept {
  _mm_sfence();
}

void MemCopyStream(void* destination, const void* source, std::size_t bytes) noexcept {
  if (bytes < static_cast<std::size_t>(kStreamingBytes)) {
    __builtin_memcpy(destination, source, bytes);
    return;
  }
  StreamBytes(destination, source, bytes);
  EndStreaming();
}

}  // namespace zor
