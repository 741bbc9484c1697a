// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// What compilers spell differently.

#if defined(__GNUC__) || defined(__clang__)
#define ZOR_ALWAYS_INLINE inline __attribute__((always_inline))
#define ZOR_NO_INLINE __attribute__((noinline))
#define ZOR_RESTRICT __restrict__
#else
#error "ZorSurface is built with GCC or Clang (MinGW-w64 on Windows)."
#endif

/// Marks what the shared library exports; on Windows the export definition file names it.
#if defined(_WIN32)
#define ZOR_EXPORT
#else
#define ZOR_EXPORT __attribute__((visibility("default")))
#endif
