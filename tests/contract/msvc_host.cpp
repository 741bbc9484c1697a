// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

// Compiled by clang for i686-pc-windows-msvc, without that compiler's headers, and linked by mingw.
#include <zorsurface/zorsurface.h>

#include "contract/msvc_host.h"

extern "C" int foreignSteps = 0;
extern "C" unsigned foreignStackOffset = 0;

namespace {

/// A lender whose table the library calls.
struct Lender : IZorMemorySource {
  std::uint32_t AddRef() override { return 2; }
  std::uint32_t Release() override { return 1; }
  std::int32_t QueryInterface(const GUID*, void**) override { return VED_E_UNSUPPORTED; }
  void* GetData() override {
    ++calls;
    return pixels;
  }
  int calls = 0;
  std::uint8_t pixels[16 * 8 * 3] = {};
};

std::uint8_t memory[64 * 64 * 4 * 3 / 2];

}  // namespace

#define STEP(condition)                    \
  do {                                     \
    ++foreignSteps;                        \
    if (!(condition)) return foreignSteps; \
  } while (false)

extern "C" int RunForeignHost() {
  foreignSteps = 0;
  foreignStackOffset = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)) % 16;
  void* object = nullptr;
  STEP(CreateObject(&CLSID_SurfaceBuilder, &IID_ISurfaceBuilder, &object) == VED_OK);
  ISurfaceBuilder* builder = static_cast<ISurfaceBuilder*>(object);
  STEP(builder->AddRef() == 2);
  STEP(builder->Release() == 1);
  STEP(builder->QueryInterface(&IID_IZorSurface, &object) == VED_E_UNSUPPORTED);

  SurfaceDescription d = {};
  d.size = sizeof d;
  d.width = 16;
  d.height = 8;
  d.format = FORMAT_RGB24;
  d.bitsPerPixel = 24;
  d.stride = 48;
  d.Orientation = 1;
  std::int32_t bytes = 0;
  IZorSurface* blank = nullptr;
  STEP(builder->CreateBlank(&d, &bytes, &blank) == VED_OK && bytes == 48 * 8);
  Lender lender;
  for (int i = 0; i < 16 * 8 * 3; ++i) lender.pixels[i] = static_cast<std::uint8_t>(i);
  IZorSurface* copied = nullptr;
  STEP(builder->CreateFromMemory(&d, &lender, &copied) == VED_OK && lender.calls == 1);
  SurfaceDescription seen = {};
  STEP(copied->GetDescription(&seen) == VED_OK && seen.stride == 48 && seen.StorageKind == 4);

  // Doubles among words, with both refusals.
  STEP(copied->WarpRegion(0, 1, 1.5, 2.5, 3.5, 4.5, 7) == VED_E_INVALIDARG);
  STEP(copied->WarpRegion(1, 1, -1.5, 2.5, 3.5, 4.5, 7) == VED_E_INVALIDARG);
  STEP(copied->WarpRegion(1, 1, 1.5, -2.5, -3.5, 4.5, 7) == VED_E_INVALIDARG);
  STEP(copied->WarpRegion(1, 1, 1.5, -2.5, 3.5, -4.5, 7) == VED_E_UNSUPPORTED);

  RECT rect = {2, 2, 6, 6};
  STEP(blank->Fill(&rect, 0x0000FF) == VED_OK);
  STEP(blank->ReadPixels(memory, 48, 1) == VED_OK);
  STEP(memory[2 * 48 + 6] == 0 && memory[2 * 48 + 8] == 255 && memory[2 * 48 + 5] == 0);
  STEP(blank->QueueResize(32, 16, 0, 1) == VED_OK && blank->QueueConvert(FORMAT_RGB32) == VED_OK);
  STEP(blank->ReadPixels(memory, 128, 1) == VED_OK);
  STEP(blank->GetDescription(&seen) == VED_OK && seen.width == 32 && seen.format == FORMAT_RGB24);
  STEP(blank->SetOpacity(257) == VED_E_INVALIDARG && blank->SetOpacity(256) == VED_OK);
  STEP(blank->AddChild(copied) == VED_OK && blank->GetChildCount() == 1);
  STEP(blank->GetChild(0) == copied && copied->Release() == 2);
  STEP(blank->RemoveChild(0) == VED_OK);
  STEP(blank->Release() == 0);
  STEP(copied->Release() == 0);
  STEP(builder->Release() == 0);
  return 0;
}
