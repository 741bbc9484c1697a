// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The library's one exported function.

#include <zorsurface/identifiers.h>
#include <zorsurface/result_codes.h>

#if defined(_WIN32) && !defined(ZORSURFACE_OWN_SYSTEM_TYPES)
#define ZORSURFACE_CALL __cdecl
#else
#define ZORSURFACE_CALL
#endif

/// Makes the object of a class.
/// @param classId `CLSID_SurfaceBuilder`. Neither identifier is tested for null.
/// @param interfaceId `IID_ISurfaceBuilder` or `IID_IVedUnknown`.
/// @param out receives the interface; the caller owns one reference.
/// @return `VED_OK`; `E_FAIL` for another class or without memory; otherwise what
///         `QueryInterface` of the new object answers.
extern "C" std::int32_t ZORSURFACE_CALL CreateObject(const GUID* classId, const GUID* interfaceId,
                                                     void** out);
