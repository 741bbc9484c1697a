// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Result codes. A negative code is a failure, zero or above is success.

#include <zorsurface/types.h>

/// Success; also the silent success of a rectangle too small to act on.
inline constexpr std::int32_t VED_OK = 0;
/// An unknown interface, source kind, format or bit depth, or one that the operation doesn't serve.
inline constexpr std::int32_t VED_E_UNSUPPORTED = static_cast<std::int32_t>(0x81000001u);
/// A null pointer, a size below the minimum, a rectangle outside of the picture, a value out of
/// range, or a surface without pixels.
inline constexpr std::int32_t VED_E_INVALIDARG = static_cast<std::int32_t>(0x81000002u);
/// The composition was given a target that it can't draw on.
inline constexpr std::int32_t VED_E_COMPOSE = static_cast<std::int32_t>(0x81000003u);
/// The memory of an object or of a pixel block could not be had.
inline constexpr std::int32_t VED_E_OUTOFMEMORY = static_cast<std::int32_t>(0x81000004u);
/// The exchange of two chroma planes reported a failure.
inline constexpr std::int32_t VED_E_KERNEL = static_cast<std::int32_t>(0x82000002u);
#ifndef E_FAIL
/// The platform's general failure.
#define E_FAIL static_cast<std::int32_t>(0x80004005u)
#endif
