// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The library's block copy.

#include <cstddef>

namespace zor {

/// Copies @p bytes bytes; the areas don't overlap. The form follows the capability word; every
/// form gives the same bytes.
void FastMemCopy(void* destination, const void* source, std::size_t bytes) noexcept;

/// The MMX form: blocks of 64 bytes, then the rest.
void MemCopyMmx(void* destination, const void* source, std::size_t bytes) noexcept;

/// The streaming form: past the caches from `kStreamingBytes` (convert/streaming.h) on.
void MemCopyStream(void* destination, const void* source, std::size_t bytes) noexcept;

/// Copies past the caches, however little it is; what other threads see is in place after
/// `EndStreaming`.
void StreamBytes(void* destination, const void* source, std::size_t bytes) noexcept;
/// Waits until what was streamed is in memory.
void EndStreaming() noexcept;

}  // namespace zor
