// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>
#include <zorsurface/zorsurface.h>
#include <zorsurface/ref.hpp>

#include <cstring>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#include <malloc.h>
#endif

// The library loaded and unloaded by a host that isn't linked to it.
namespace {

#ifdef _WIN32

HMODULE Load() {
  return LoadLibraryA("ZorSurface.dll");
}
void Unload(HMODULE library) {
  FreeLibrary(library);
}
FARPROC Find(HMODULE library, const char* name) {
  return GetProcAddress(library, name);
}

/// @return the bytes of memory that the process has for itself, the program's image not counted.
std::size_t PrivateBytes() {
  std::size_t bytes = 0;
  MEMORY_BASIC_INFORMATION region;
  for (const char* at = nullptr; VirtualQuery(at, &region, sizeof region) != 0;
       at = static_cast<const char*>(region.BaseAddress) + region.RegionSize) {
    if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) bytes += region.RegionSize;
  }
  return bytes;
}

#else

void* Load() {
  return dlopen("libZorSurface.so.1", RTLD_NOW);
}
void Unload(void* library) {
  dlclose(library);
}
void* Find(void* library, const char* name) {
  return dlsym(library, name);
}

/// @return the bytes of the heap's large blocks, each of which the heap maps by itself.
std::size_t PrivateBytes() {
  return mallinfo2().hblkhd;
}

#endif

TEST(Unload, GivesBackTheBlocksThatWaitedForTheNextTaker) {
#ifndef _WIN32
  ASSERT_EQ(mallopt(M_MMAP_THRESHOLD, 128 << 10), 1);  // it would move up by itself otherwise
#endif
  constexpr std::int32_t kWidth = 2048;
  constexpr std::int32_t kHeight = 1024;
  std::vector<std::uint8_t> frame(kWidth * kHeight * 4, 99);
  for (int round = 0; round < 3; ++round) {
    const auto library = Load();
    ASSERT_NE(library, nullptr);
    decltype(&CreateObject) create;
    const auto address = Find(library, "CreateObject");
    std::memcpy(&create, &address, sizeof create);
    const std::size_t before = PrivateBytes();
    {
      zor::Ref<ISurfaceBuilder> builder;
      ASSERT_EQ(create(&CLSID_SurfaceBuilder, &IID_ISurfaceBuilder,
                       reinterpret_cast<void**>(builder.put())),
                VED_OK);
      zor::LentPixels pixels(frame.data());
      const SurfaceDescription description = zor::MakeDescription(FORMAT_RGB32, kWidth, kHeight);
      zor::Ref<IZorSurface> surface;
      ASSERT_EQ(builder->CreateFromMemory(&description, &pixels, surface.put()), VED_OK);
      EXPECT_GE(PrivateBytes(), before + frame.size());
    }
    EXPECT_GE(PrivateBytes(), before + frame.size()) << "the picture's block waits";
    Unload(library);
    EXPECT_LT(PrivateBytes(), before + frame.size()) << "round " << round;
  }
}

}  // namespace
