// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The DirectDraw surface that `IZorSurface::ExportImage` kind 1 hands out and that
/// `ISurfaceBuilder::CreateFromSource` takes as `SOURCE_DIRECT_DRAW`.
///
/// On Windows it is the platform's own `IDirectDrawSurface7` of <ddraw.h>. Elsewhere it is the
/// interface declared here, with the same names and the same behaviour for what it offers:
///
/// - to read an export: `Lock`, read `dwHeight` rows in steps of `lPitch` from `lpSurface`, then
///   `Unlock`, and in the end `Release`, which frees it;
/// - to lend a picture to `CreateFromSource`: implement the interface. The builder calls
///   `GetSurfaceDesc`, `Lock` and `Unlock` and keeps nothing afterwards. It reads `dwHeight`,
///   `dwWidth`, `lPitch`, `lpSurface` and `ddpfPixelFormat.dwRGBBitCount`.
///
/// A planar picture of height H travels in a 24-bit surface of height H / 2, whose first bytes are
/// the three planes one behind the other; its pitch means nothing.

#include <zorsurface/types.h>

#if defined(_WIN32)
#if !defined(ZORSURFACE_OWN_SYSTEM_TYPES)
#include <ddraw.h>
#endif
#else

/// How the bits of a pixel make up its colour.
struct DDPIXELFORMAT {
  std::uint32_t dwSize;             ///< 32
  std::uint32_t dwFlags;            ///< `DDPF_RGB`
  std::uint32_t dwFourCC;           ///< not used
  std::uint32_t dwRGBBitCount;      ///< bits of a pixel: 24 or 32
  std::uint32_t dwRBitMask;         ///< where red stands in a pixel
  std::uint32_t dwGBitMask;         ///< where green stands
  std::uint32_t dwBBitMask;         ///< where blue stands
  std::uint32_t dwRGBAlphaBitMask;  ///< not used
};

/// What a surface can do and where it lies.
struct DDSCAPS2 {
  std::uint32_t dwCaps;  ///< `DDSCAPS_` bits
};

/// The description of a surface.
struct DDSURFACEDESC2 {
  std::uint32_t dwSize;           ///< 124, the mark of this record, whatever its size in memory is
  std::uint32_t dwFlags;          ///< `DDSD_` bits: which of the members below hold something
  std::uint32_t dwHeight;         ///< rows
  std::uint32_t dwWidth;          ///< pixels per row
  std::int32_t lPitch;            ///< bytes from one row to the next
  void* lpSurface;                ///< first byte of the first row; set by `Lock` only
  DDPIXELFORMAT ddpfPixelFormat;  ///< the form of a pixel
  DDSCAPS2 ddsCaps;               ///< what it is to be
};

inline constexpr std::uint32_t DDSD_CAPS = 0x1;                ///< `ddsCaps` holds
inline constexpr std::uint32_t DDSD_HEIGHT = 0x2;              ///< `dwHeight` holds
inline constexpr std::uint32_t DDSD_WIDTH = 0x4;               ///< `dwWidth` holds
inline constexpr std::uint32_t DDSD_PITCH = 0x8;               ///< `lPitch` holds
inline constexpr std::uint32_t DDSD_LPSURFACE = 0x800;         ///< `lpSurface` holds
inline constexpr std::uint32_t DDSD_PIXELFORMAT = 0x1000;      ///< `ddpfPixelFormat` holds
inline constexpr std::uint32_t DDPF_RGB = 0x40;                ///< bit count and masks hold
inline constexpr std::uint32_t DDSCAPS_OFFSCREENPLAIN = 0x40;  ///< never shown itself
inline constexpr std::uint32_t DDSCAPS_SYSTEMMEMORY = 0x800;   ///< in system memory
inline constexpr std::uint32_t DDSCL_NORMAL = 0x8;             ///< shares the screen
inline constexpr std::uint32_t DDLOCK_WAIT = 0x1;              ///< waits for its turn

inline constexpr std::int32_t DD_OK = 0;  ///< success
/// A record of another size, or a null pointer.
inline constexpr std::int32_t DDERR_INVALIDPARAMS = static_cast<std::int32_t>(0x80070057u);
/// No memory for the surface.
inline constexpr std::int32_t DDERR_OUTOFMEMORY = static_cast<std::int32_t>(0x8007000Eu);
/// Neither 24 nor 32 bits, or other masks.
inline constexpr std::int32_t DDERR_INVALIDPIXELFORMAT = static_cast<std::int32_t>(0x88760091u);
/// The cooperative level comes before surfaces.
inline constexpr std::int32_t DDERR_NOCOOPERATIVELEVELSET = static_cast<std::int32_t>(0x887600D4u);
/// Somebody else has it locked.
inline constexpr std::int32_t DDERR_SURFACEBUSY = static_cast<std::int32_t>(0x887601AEu);
/// There is no DirectDraw.
inline constexpr std::int32_t DDERR_NODIRECTDRAWHW = static_cast<std::int32_t>(0x88760233u);
/// An unlock without a lock.
inline constexpr std::int32_t DDERR_NOTLOCKED = static_cast<std::int32_t>(0x88760248u);

/// A picture that shows its memory while it is locked.
struct IDirectDrawSurface7 {
  /// Takes one more reference. @return the count after it.
  virtual std::uint32_t AddRef() = 0;
  /// Gives one reference back; the last one destroys the surface. @return the count after it.
  virtual std::uint32_t Release() = 0;
  /// Describes the surface. @param desc its `dwSize` is 124.
  /// @return `DD_OK`, or `DDERR_INVALIDPARAMS`.
  virtual std::int32_t GetSurfaceDesc(DDSURFACEDESC2* desc) = 0;
  /// Describes the surface and gives the address of its memory, for one user at a time.
  /// @param rect the part wanted, or null for all. @param desc its `dwSize` is 124.
  /// @param flags `DDLOCK_WAIT`. @param event null.
  /// @return `DD_OK`; `DDERR_SURFACEBUSY` while it is locked; `DDERR_INVALIDPARAMS`.
  virtual std::int32_t Lock(RECT* rect, DDSURFACEDESC2* desc, std::uint32_t flags, void* event) = 0;
  /// Ends a lock. @param rect as given to `Lock`, or null.
  /// @return `DD_OK`, or `DDERR_NOTLOCKED`.
  virtual std::int32_t Unlock(RECT* rect) = 0;

 protected:
  ~IDirectDrawSurface7() = default;
};

#endif
