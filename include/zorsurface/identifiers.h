// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Identifiers of the object that `CreateObject` makes and of the interfaces.

#include <zorsurface/types.h>

/// {49BE0814-4606-4468-A9D3-95736EDC910B}: the class of the surface builder.
inline constexpr GUID CLSID_SurfaceBuilder = {
    0x49BE0814, 0x4606, 0x4468, {0xA9, 0xD3, 0x95, 0x73, 0x6E, 0xDC, 0x91, 0x0B}};
/// {30C98E58-ABA6-448F-8835-2F54C4A543CD}: `ISurfaceBuilder`.
inline constexpr GUID IID_ISurfaceBuilder = {
    0x30C98E58, 0xABA6, 0x448F, {0x88, 0x35, 0x2F, 0x54, 0xC4, 0xA5, 0x43, 0xCD}};
/// {704FC983-A9B8-4FCC-B29A-AA5F973CAD99}: `IZorSurface`.
inline constexpr GUID IID_IZorSurface = {
    0x704FC983, 0xA9B8, 0x4FCC, {0xB2, 0x9A, 0xAA, 0x5F, 0x97, 0x3C, 0xAD, 0x99}};
/// {C9339D5D-AEFF-4970-B0FA-F9D6842E9D8D}: `VideoEdit::IVedUnknown`.
inline constexpr GUID IID_IVedUnknown = {
    0xC9339D5D, 0xAEFF, 0x4970, {0xB0, 0xFA, 0xF9, 0xD6, 0x84, 0x2E, 0x9D, 0x8D}};
