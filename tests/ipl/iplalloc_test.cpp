// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "ipl/iplalloc.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/memory.h"

namespace zor::test {
namespace {

struct Reported {
  int count = 0;
  std::int32_t status = 0;
  std::string function, message, file;
  std::int32_t line = 0;
};
Reported reported;

std::int32_t Remember(std::int32_t status, const char* function, const char* message,
                      const char* file, std::int32_t line) {
  reported = {reported.count + 1, status, function, message, file, line};
  return status - 1000;
}

class IplHeader : public ::testing::Test {
 protected:
  void SetUp() override {
    reported = {};
    iplSetStatus(0);
    iplRedirectError(Remember);
  }
  void TearDown() override {
    iplRedirectError(nullptr);
    iplSetStatus(0);
  }

  struct Arguments {
    std::int32_t channels = 3, alpha = 0;
    std::uint32_t depth = 8;
    const char* model = "RGB";
    const char* sequence = "BGR";
    std::int32_t order = 0, origin = 0, align = 4, width = 2, height = 2;
    IplImage* mask = nullptr;
  };
  static IplImage* Make(const Arguments& a) {
    return iplCreateImageHeader(a.channels, a.alpha, a.depth, a.model, a.sequence, a.order,
                                a.origin, a.align, a.width, a.height, nullptr, a.mask, nullptr,
                                nullptr);
  }
};

TEST_F(IplHeader, TwoByTwoOfThreeChannelsHasStep8AndSize16) {
  IplImage* image = Make({});
  EXPECT_EQ(8, image->widthStep);
  EXPECT_EQ(16, image->imageSize);
  EXPECT_EQ(112, image->nSize);
  EXPECT_EQ(0, image->ID);
  EXPECT_EQ(nullptr, image->imageData);
  EXPECT_EQ(nullptr, image->imageDataOrigin);
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(0, image->BorderMode[i]);
    EXPECT_EQ(0, image->BorderConst[i]);
  }
  iplReleaseHeader(image);
}

TEST_F(IplHeader, OneBitOfWidthOneHasStep4) {
  Arguments a;
  a.channels = 1, a.depth = 1, a.width = 1;
  IplImage* image = Make(a);
  EXPECT_EQ(4, image->widthStep);
  iplReleaseHeader(image);
}

TEST_F(IplHeader, PlaneOrderCountsOnePlanesRowAndAllPlanesBytes) {
  Arguments a;
  a.order = 1, a.width = 10, a.height = 5, a.align = 8;
  IplImage* image = Make(a);
  EXPECT_EQ(16, image->widthStep);
  EXPECT_EQ(16 * 5 * 3, image->imageSize);
  iplReleaseHeader(image);
}

TEST_F(IplHeader, FourLettersStayAndThreeKeepTheirTerminator) {
  Arguments a;
  a.channels = 4, a.model = "RGBA", a.sequence = "BGR";
  IplImage* image = Make(a);
  EXPECT_EQ(0, std::memcmp(image->colorModel, "RGBA", 4));
  EXPECT_EQ(0, std::memcmp(image->channelSeq, "BGR\0", 4));
  iplReleaseHeader(image);
}

TEST_F(IplHeader, FirstFailingTestDecidesAndIsReported) {
  auto expect = [&](std::int32_t status, auto change) {
    Arguments a;
    change(a);
    reported.count = 0;
    EXPECT_EQ(nullptr, Make(a)) << status;
    EXPECT_EQ(1, reported.count) << status;
    EXPECT_EQ(status, reported.status);
    EXPECT_EQ(status, iplGetStatus());
    EXPECT_EQ("iplCreateImageHeader", reported.function);
    EXPECT_EQ("Incorrect data-ins", reported.message);
    EXPECT_EQ("iplalloc", reported.file);
    EXPECT_EQ(158, reported.line);
  };
  expect(-10, [](Arguments& a) { a.height = 0, a.channels = 0; });
  expect(-10, [](Arguments& a) { a.width = 0; });
  expect(-15, [](Arguments& a) { a.channels = 0, a.depth = 1; });
  expect(-16, [](Arguments& a) { a.depth = 1, a.model = nullptr; });
  expect(-14, [](Arguments& a) { a.model = nullptr, a.depth = 7; });
  expect(-14, [](Arguments& a) { a.sequence = nullptr; });
  expect(-17, [](Arguments& a) { a.depth = 7, a.alpha = 1; });
  expect(-17, [](Arguments& a) { a.depth = 0x80000001u, a.channels = 1; });
  expect(-18, [](Arguments& a) { a.alpha = 2, a.order = 2; });
  expect(-19, [](Arguments& a) { a.order = 2, a.origin = 2; });
  expect(-20, [](Arguments& a) { a.origin = 2, a.align = 5; });
  expect(-21, [](Arguments& a) { a.align = 5; });
  for (const std::uint32_t depth : {8u, 16u, 32u, 0x80000008u, 0x80000010u, 0x80000020u}) {
    Arguments a;
    a.depth = depth, a.alpha = 3, a.origin = 1, a.align = 32;
    IplImage* image = Make(a);
    EXPECT_NE(nullptr, image) << depth;
    iplReleaseHeader(image);
  }
}

TEST_F(IplHeader, MaskMustBeOneBitUntiledAndSoundItself) {
  Arguments one;
  one.channels = 1, one.depth = 1;
  std::uint8_t data[8] = {};
  IplImage* mask = Make(one);
  mask->imageData = data;
  Arguments a;
  a.mask = mask;
  IplImage* image = Make(a);
  EXPECT_NE(nullptr, image);
  iplReleaseHeader(image);
  mask->width = 0;
  EXPECT_EQ(nullptr, Make(a));
  EXPECT_EQ(-110, reported.status);
  mask->width = 2;
  IplTileInfo tile{};
  mask->tileInfo = &tile;
  EXPECT_EQ(nullptr, Make(a));
  EXPECT_EQ(-26, reported.status);
  mask->tileInfo = nullptr;
  mask->depth = 8;
  EXPECT_EQ(nullptr, Make(a));
  EXPECT_EQ(-117, reported.status);
  mask->imageData = nullptr;
  iplReleaseHeader(mask);
}

TEST_F(IplHeader, ChecksStoreTheirStatusWithoutAReportAndAPassLeavesIt) {
  std::uint8_t data[16] = {};
  IplImage* image = Make({});
  EXPECT_EQ(-12, iplCheckHeader(image));  // neither data nor tiles
  EXPECT_EQ(-12, iplGetStatus());
  image->imageData = data;
  EXPECT_EQ(0, iplCheckHeader(image));
  EXPECT_EQ(-12, iplGetStatus());  // a pass doesn't clear
  EXPECT_EQ(-9, iplCheckHeader(nullptr));
  auto expect = [&](std::int32_t status, auto change) {
    const IplImage before = *image;
    change(*image);
    EXPECT_EQ(status, iplCheckHeader(image));
    EXPECT_EQ(status, iplGetStatus());
    *image = before;
  };
  IplTileInfo tile{data, nullptr, nullptr, 8, 8};
  expect(-12, [&](IplImage& i) { i.tileInfo = &tile; });
  expect(-10, [](IplImage& i) { i.imageSize = 0, i.widthStep = 0; });
  expect(-13, [](IplImage& i) { i.widthStep = 0; });
  expect(-10, [](IplImage& i) { i.height = 0; });
  expect(-15, [](IplImage& i) { i.nChannels = 0; });
  auto tiled = [&](IplImage& i) { i.tileInfo = &tile, i.imageData = nullptr; };
  expect(0 - 22, [&](IplImage& i) { tiled(i), tile.callBack = nullptr; });
  tile.callBack = data, tile.width = 0;
  expect(-23, tiled);
  tile.width = 12;
  expect(-23, tiled);
  tile.width = 8, tile.height = 0;
  expect(-23, tiled);
  IplROI roi{4, 0, 0, 1, 1};
  auto region = [&](IplImage& i) { i.roi = &roi; };
  expect(-24, region);
  roi = {-1, 0, 0, 1, 1};
  expect(-24, region);
  roi = {0, -1, 0, 1, 0};
  expect(-25, region);
  roi = {0, -1, 0, 0, 1};
  expect(-25, region);
  roi = {0, -1, 0, 1, 1};
  expect(-11, region);
  roi = {3, 0, -1, 1, 1};
  expect(-11, region);
  EXPECT_EQ(0, reported.count);
  image->imageData = nullptr;
  iplReleaseHeader(image);
}

TEST_F(IplHeader, HeadersOfSurfacesFollowTheirDepth) {
  struct Row {
    std::int32_t bits, channels;
    std::uint32_t depth;
    const char *model, *sequence;
  };
  for (const Row& row : {Row{1, 1, 1, "GRAY", "GRAY"}, Row{8, 1, 8, "GRAY", "GRAY"},
                         Row{24, 3, 8, "RGB", "BGR"}, Row{32, 4, 8, "RGBA", "BGRA"}}) {
    IplImage* image = CreateImageHeader(5, 7, row.bits);
    ASSERT_NE(nullptr, image);
    EXPECT_EQ(row.channels, image->nChannels);
    EXPECT_EQ(row.depth, image->depth);
    EXPECT_EQ(0, std::strncmp(row.model, image->colorModel, 4));
    EXPECT_EQ(0, std::strncmp(row.sequence, image->channelSeq, 4));
    EXPECT_EQ(0, image->alphaChannel);
    EXPECT_EQ(4, image->align);
    iplReleaseHeader(image);
  }
  for (const std::int32_t bits : {0, 7, 12, 16, 33}) {
    EXPECT_EQ(nullptr, CreateImageHeader(5, 7, bits));
  }
  EXPECT_EQ(0, reported.count);
}

TEST_F(IplHeader, BordersAreHeldToTheDepth) {
  struct Row {
    std::uint32_t depth;
    std::int32_t low, high;
  };
  for (const Row& row : {Row{8, 0, 255}, Row{0x80000008u, -128, 127}, Row{16, 0, 65535},
                         Row{0x80000010u, -32768, 32767}}) {
    Arguments a;
    a.depth = row.depth;
    IplImage* image = Make(a);
    iplSetBorders(image, 3, 5, 1000000);
    EXPECT_EQ(row.high, image->BorderConst[0]);
    EXPECT_EQ(0, image->BorderConst[1]);
    EXPECT_EQ(row.high, image->BorderConst[2]);
    EXPECT_EQ(3, image->BorderMode[2]);
    EXPECT_EQ(0, image->BorderMode[3]);
    iplSetBorders(image, 1, 8, -1000000);
    EXPECT_EQ(row.low, image->BorderConst[3]);
    iplReleaseHeader(image);
  }
  Arguments a;
  a.depth = 32;
  IplImage* image = Make(a);
  iplSetBorders(image, 0, 1, -70000);
  EXPECT_EQ(-70000, image->BorderConst[0]);
  iplReleaseHeader(image);
}

TEST_F(IplHeader, AlignedBlocksAreAlignedAndGoBackToTheHeap) {
  const std::int64_t before = LiveAllocations();
  for (const std::int32_t bytes : {1, 31, 32, 1000}) {
    auto* block = static_cast<unsigned char*>(iplAllocAligned(bytes));
    ASSERT_NE(nullptr, block);
    EXPECT_EQ(0u, reinterpret_cast<std::uintptr_t>(block) % 32);
    std::memset(block, 1, static_cast<std::size_t>(bytes));
    iplFreeAligned(block);
  }
  std::int32_t* ints = iplAllocAlignedInts(9);
  ints[8] = 1;
  iplFreeAligned(ints);
  iplFreeAligned(nullptr);
  EXPECT_EQ(before, LiveAllocations());
}

TEST_F(IplHeader, NothingIsAllocatedForNoBytesAndTheStoreStays) {
  iplSetStatus(-5);
  EXPECT_EQ(nullptr, iplAllocAligned(0));
  EXPECT_EQ(nullptr, iplAllocAligned(-3));
  EXPECT_EQ(nullptr, iplAllocAlignedInts(0));
  EXPECT_EQ(nullptr, iplAllocAlignedInts(0x20000000));
  EXPECT_EQ(-5, iplGetStatus());
}

TEST_F(IplHeader, HeaderWithoutMemoryIsNullWithoutAReport) {
  RefuseAllocation(1);
  EXPECT_EQ(nullptr, Make({}));
  RefuseAllocation(0);
  EXPECT_EQ(0, reported.count);
}

TEST_F(IplHeader, PartsAreReleasedByTheirBits) {
  const std::int64_t before = LiveAllocations();
  IplImage* image = Make({});
  image->roi = static_cast<IplROI*>(iplAllocAligned(sizeof(IplROI)));
  image->tileInfo = static_cast<IplTileInfo*>(iplAllocAligned(sizeof(IplTileInfo)));
  Arguments one;
  one.channels = 1, one.depth = 1;
  image->maskROI = Make(one);
  image->imageDataOrigin = image->imageData = static_cast<std::uint8_t*>(std::malloc(10));
  iplReleaseParts(image, 4);
  EXPECT_EQ(nullptr, image->roi);
  EXPECT_NE(nullptr, image->tileInfo);
  iplReleaseParts(image, 8 | 16);
  EXPECT_EQ(nullptr, image->tileInfo);
  EXPECT_EQ(nullptr, image->maskROI);
  iplReleaseParts(image, 2);
  EXPECT_EQ(nullptr, image->imageData);
  EXPECT_EQ(nullptr, image->imageDataOrigin);
  iplReleaseParts(image, 1);
  iplReleaseParts(nullptr, 31);
  EXPECT_EQ(before, LiveAllocations());
}

TEST_F(IplHeader, ReportsCallTheHandlerAndBacktracesKeepTheFirstCause) {
  EXPECT_EQ(-1005, iplReportError(-5, "f", "m", "file", 7));
  EXPECT_EQ(-5, iplGetStatus());
  EXPECT_EQ(7, reported.line);
  EXPECT_EQ(-1001, iplReportError(-1, "g", "", "file", 8));
  EXPECT_EQ(-1008, iplReportError(-8, "g", "", "file", 8));
  EXPECT_EQ(-5, iplGetStatus());
  EXPECT_EQ(3, reported.count);
  EXPECT_EQ(0, iplReportError(0, "h", "", "file", 9));
  EXPECT_EQ(0, iplGetStatus());
  EXPECT_EQ(3, reported.count);  // a report of success is silent
  EXPECT_EQ(0, iplGetErrorMode());
}

TEST_F(IplHeader, DefaultHandlerEndsTheProcess) {
  iplRedirectError(nullptr);
  Arguments a;
  a.depth = 1;  // three channels of one bit
  EXPECT_EXIT(Make(a), ::testing::ExitedWithCode(1), "");
}

TEST_F(IplHeader, StatusTextsKeepTheirSpelling) {
  EXPECT_STREQ("No Error", iplStatusText(0));
  EXPECT_STREQ("Backtrace", iplStatusText(-1));
  EXPECT_STREQ("Bad argument", iplStatusText(-5));
  EXPECT_STREQ("Mask image is taled", iplStatusText(-26));
  EXPECT_STREQ("Incorrect filter ofset value", iplStatusText(-31));
  EXPECT_STREQ("Mask. Incorrect image size", iplStatusText(-110));
  EXPECT_STREQ("Mask. Incorrect number of channels in the image", iplStatusText(-115));
  EXPECT_STREQ("Mask. Incorrect depth value in the image header", iplStatusText(-117));
  EXPECT_STREQ("Mask. Incorrect data alignment value in the image header", iplStatusText(-121));
  EXPECT_STREQ("Mask. Incorrect COI of the image", iplStatusText(-124));
  EXPECT_STREQ("Mask. Incorrect size of ROI in the image header", iplStatusText(-125));
  for (int status = -110; status >= -125; --status) {
    const std::string text = iplStatusText(status);
    if (status == -116 || status == -122 || status == -123) {
      EXPECT_EQ("Unknown error or status code", text);
    } else {
      EXPECT_EQ(std::string("Mask. ") + iplStatusText(status + 100), text);
    }
  }
  for (const int status : {1, -2, -32, -60, -109, -116, -122, -123, -126, -2147483647 - 1}) {
    EXPECT_STREQ("Unknown error or status code", iplStatusText(status)) << status;
  }
}

}  // namespace
}  // namespace zor::test
