// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>
#include <zorsurface/ref.hpp>

// Through the shared library, as a host sees it.
namespace {

TEST(Ref, OwnsOneReferenceAndGivesItBack) {
  const zor::Ref<ISurfaceBuilder> builder = zor::LoadBuilder();
  ASSERT_TRUE(builder);
  EXPECT_EQ(2u, builder->AddRef());
  EXPECT_EQ(1u, builder->Release());
  {
    const zor::Ref<ISurfaceBuilder> copy = builder;
    EXPECT_EQ(3u, builder->AddRef());
    EXPECT_EQ(2u, builder->Release());
  }
  EXPECT_EQ(2u, builder->AddRef());
  EXPECT_EQ(1u, builder->Release());
  zor::Ref<ISurfaceBuilder> moved = builder;
  zor::Ref<ISurfaceBuilder> last = std::move(moved);
  EXPECT_FALSE(moved);
  last = zor::Ref<ISurfaceBuilder>();
  EXPECT_EQ(2u, builder->AddRef());
  EXPECT_EQ(1u, builder->Release());
}

TEST(MakeDescription, GivesEveryFormatItsBitsAndStride) {
  struct Row {
    std::int32_t format, bits, stride;
  };
  for (const Row& row :
       {Row{FORMAT_RGB24, 24, 32}, Row{FORMAT_RGB32, 32, 40}, Row{FORMAT_GRAY8, 8, 12},
        Row{FORMAT_YUV420, 12, 10}, Row{FORMAT_YUY2, 16, 20}, Row{FORMAT_YVU420, 12, 10}}) {
    const SurfaceDescription d = zor::MakeDescription(row.format, 10, 6);
    EXPECT_EQ(row.bits, d.bitsPerPixel);
    EXPECT_EQ(row.stride, d.stride) << row.format;
    EXPECT_EQ(52u, d.size);
    EXPECT_EQ(1u, d.Orientation);
  }
}

TEST(LentPixels, FeedTheBuilder) {
  const zor::Ref<ISurfaceBuilder> builder = zor::LoadBuilder();
  std::uint8_t pixels[96];
  for (int i = 0; i < 96; ++i) pixels[i] = static_cast<std::uint8_t>(i);
  zor::LentPixels source(pixels);
  const SurfaceDescription d = zor::MakeDescription(FORMAT_YUV420, 8, 8);
  zor::Ref<IZorSurface> surface;
  ASSERT_EQ(VED_OK, builder->CreateFromMemory(&d, &source, surface.put()));
  std::uint8_t* copy = nullptr;
  ASSERT_EQ(VED_OK, surface->GetPixels(&copy));
  EXPECT_NE(pixels, copy);
  EXPECT_TRUE(std::equal(pixels, pixels + 96, copy));
}

}  // namespace
