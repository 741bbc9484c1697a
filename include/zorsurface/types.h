// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The system types that cross the library's boundary.
///
/// On Windows `GUID` and `RECT` are the platform's own; elsewhere the same records are declared
/// here. A Windows host without the platform headers defines `ZORSURFACE_OWN_SYSTEM_TYPES` first.

#include <cstddef>
#include <cstdint>

#if defined(_WIN32) && !defined(ZORSURFACE_OWN_SYSTEM_TYPES)
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
#else

/// A 16-byte identifier, as it is written: {Data1-Data2-Data3-Data4}. Two identifiers are equal
/// when their four 32-bit words are.
struct GUID {
  std::uint32_t Data1;    ///< first group of digits
  std::uint16_t Data2;    ///< second
  std::uint16_t Data3;    ///< third
  std::uint8_t Data4[8];  ///< fourth and fifth
};

/// A rectangle in pixels; right and bottom are exclusive.
struct RECT {
  std::int32_t left;    ///< first column
  std::int32_t top;     ///< first row
  std::int32_t right;   ///< column behind the last
  std::int32_t bottom;  ///< row behind the last
};

#endif

static_assert(sizeof(GUID) == 16, "a GUID is four 32-bit words");
static_assert(sizeof(RECT) == 16, "a RECT is four 32-bit words");
