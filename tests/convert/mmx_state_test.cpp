// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "convert/fast_mem_copy.h"
#include "convert/rgb_to_yuv420.h"
#include "convert/yuv420_to_rgb.h"
#include "convert/yuv420_to_yuy2.h"
#include "convert/yuy2_rgb.h"
#include "convert/yuy2_to_yuv420.h"

namespace zor::test {
namespace {

/// Takes all floating-point registers for MMX, as an MMX instruction does.
void TakeRegisters() {
  __asm__ volatile("pxor %%mm0, %%mm0" ::: "mm0");
}

/// @return whether floating point has all its registers; it has them afterwards.
bool RegistersAreFree() {
  struct {
    std::uint32_t control, status, tags, rest[4];
  } environment = {};
  __asm__ volatile("fnstenv %0\n\tfldenv %0\n\temms" : "+m"(environment));
  return (environment.tags & 0xFFFF) == 0xFFFF;
}

TEST(MmxState, IsSeenHere) {
  TakeRegisters();
  EXPECT_FALSE(RegistersAreFree());
  EXPECT_TRUE(RegistersAreFree());
}

TEST(MmxState, TheCopyEndsItWithAndWithoutAWholeBlock) {
  const std::vector<std::uint8_t> from(300, 1);
  std::vector<std::uint8_t> to(300);
  for (const std::size_t bytes : {0u, 1u, 63u, 64u, 65u, 300u}) {
    TakeRegisters();
    MemCopyMmx(to.data(), from.data(), bytes);
    EXPECT_TRUE(RegistersAreFree()) << bytes;
  }
}

constexpr std::int32_t kWidth = 40;
constexpr std::int32_t kHeight = 8;

/// A conversion of planes at `planes` (luma, U and V of 40 x 8, in rows of 40 and 20) and packed
/// pixels at `packed`, in one direction or the other.
using Conversion = std::function<void(std::uint8_t* planes, std::uint8_t* packed,
                                      std::int32_t width, std::int32_t height)>;

struct MmxForm {
  const char* name;
  Conversion convert;
};

template <class Kernel>
Conversion FromPlanes(Kernel* kernel, std::int32_t pixel) {
  return [=](std::uint8_t* planes, std::uint8_t* packed, std::int32_t width, std::int32_t height) {
    kernel(packed, kWidth * pixel, planes, planes + kWidth * kHeight, planes + kWidth * kHeight * 2,
           kWidth, kWidth / 2, width, height);
  };
}
template <class Kernel>
Conversion ToPlanes(Kernel* kernel, std::int32_t pixel) {
  return [=](std::uint8_t* planes, std::uint8_t* packed, std::int32_t width, std::int32_t height) {
    kernel(planes, planes + kWidth * kHeight, planes + kWidth * kHeight * 2, kWidth, kWidth / 2,
           packed, kWidth * pixel, width, height);
  };
}
/// From YUY2, for which the planes' memory serves.
template <class Kernel>
Conversion FromYuy2(Kernel* kernel, std::int32_t pixel) {
  return [=](std::uint8_t* planes, std::uint8_t* packed, std::int32_t width, std::int32_t height) {
    kernel(packed, kWidth * pixel, planes, kWidth * 2, width, height);
  };
}

TEST(MmxState, EveryConversionEndsIt) {
  const MmxForm forms[] = {
      {"YUV420 to RGB32", FromPlanes(ConvertYuv420ToRgb32Mmx, 4)},
      {"YUV420 to YUY2", FromPlanes(ConvertYuv420ToYuy2Mmx, 2)},
      {"YUY2 to YUV420", ToPlanes(ConvertYuy2ToYuv420Mmx, 2)},
      {"RGB32 to YUV420", ToPlanes(ConvertRgb32ToYuv420Mmx, 4)},
      {"RGB24 to YUV420", ToPlanes(ConvertRgb24ToYuv420Mmx, 3)},
      {"YUY2 to RGB32", FromYuy2(ConvertYuy2ToRgb32Mmx, 4)},
      {"YUY2 to RGB24", FromYuy2(ConvertYuy2ToRgb24Mmx, 3)},
  };
  std::vector<std::uint8_t> planes(kWidth * kHeight * 4, 100);
  std::vector<std::uint8_t> packed(kWidth * kHeight * 4 + 64, 100);
  for (const MmxForm& form : forms) {
    // Whole blocks and tails, tails alone, and nothing.
    for (const std::int32_t width : {32, 36, 6, 0}) {
      for (const std::int32_t height : {kHeight, 4, 0}) {
        TakeRegisters();
        form.convert(planes.data(), packed.data(), width, height);
        EXPECT_TRUE(RegistersAreFree()) << form.name << ", " << width << " x " << height;
      }
    }
  }
}

}  // namespace
}  // namespace zor::test
