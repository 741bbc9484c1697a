// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>
#include <windows.h>
#include <zorsurface/zorsurface.h>

#include <cstring>
#include <vector>

// The DLL as a host loads it at run time.
namespace {

/// @return the DLL's version resource.
std::vector<char> VersionResource() {
  DWORD unused = 0;
  const DWORD size = GetFileVersionInfoSizeA("ZorSurface.dll", &unused);
  std::vector<char> block(size);
  if (size != 0 && !GetFileVersionInfoA("ZorSurface.dll", 0, size, block.data())) block.clear();
  return block;
}

TEST(Dll, GivesItsFunctionUndecoratedAndByLoadLibraryToo) {
  const HMODULE dll = LoadLibraryA("ZorSurface.dll");
  ASSERT_NE(nullptr, dll);
  const FARPROC address = GetProcAddress(dll, "CreateObject");
  ASSERT_NE(nullptr, address);
  decltype(&CreateObject) create;
  std::memcpy(&create, &address, sizeof create);
  void* object = nullptr;
  ASSERT_EQ(VED_OK, create(&CLSID_SurfaceBuilder, &IID_ISurfaceBuilder, &object));
  EXPECT_EQ(0u, static_cast<ISurfaceBuilder*>(object)->Release());
  FreeLibrary(dll);
}

TEST(Dll, ResourceTellsTheProjectsVersion) {
  const std::vector<char> block = VersionResource();
  ASSERT_FALSE(block.empty());
  void* found = nullptr;
  UINT size = 0;
  ASSERT_TRUE(VerQueryValueA(block.data(), "\\", &found, &size));
  VS_FIXEDFILEINFO info;
  ASSERT_EQ(sizeof info, size);
  std::memcpy(&info, found, sizeof info);
  EXPECT_EQ(MAKELONG(ZOR_MINOR, ZOR_MAJOR), static_cast<LONG>(info.dwFileVersionMS));
  EXPECT_EQ(MAKELONG(0, ZOR_PATCH), static_cast<LONG>(info.dwFileVersionLS));
  EXPECT_EQ(static_cast<DWORD>(VFT_DLL), info.dwFileType);
  ASSERT_TRUE(
      VerQueryValueA(block.data(), "\\StringFileInfo\\040904b0\\OriginalFilename", &found, &size));
  EXPECT_STREQ("ZorSurface.dll", static_cast<const char*>(found));
}

}  // namespace
