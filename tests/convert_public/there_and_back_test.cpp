// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert_public/pairs.h"

namespace zor::test {
namespace {

/// What a picture is after a conversion, and after the way back, as one checksum.
std::uint64_t ThereAndBack(const FormatPair& pair) {
  const SurfaceDescription d = DescribeOriented(108, 60, pair.from, pair.from <= 2 ? 0 : 1);
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
    {0xD0196600E32B671Full, 0xD0196600E32B671Full, 0xD0196600E32B671Full},  // 1 to 2
    {0xD62B84ACE2590869ull, 0xD43C41D37202FC1Bull, 0xD43C41D37202FC1Bull},  // 1 to 4
    {0x66B022368AEEACF6ull, 0x0DB4944193DAABEEull, 0x30C7719AEFD0593Eull},  // 1 to 5
    {0xB47013ECA2FEF567ull, 0xB47013ECA2FEF567ull, 0xB47013ECA2FEF567ull},  // 2 to 1
    {0x20E5EC0B3DA26482ull, 0x9B51DE148ED33758ull, 0xA084411CCFB6D2A5ull},  // 2 to 4
    {0x62B3647E759BD0ECull, 0x3AFD94006A9E7D1Aull, 0xF40E84EA3F606DF1ull},  // 2 to 5
    {0x38667B707DC7278Aull, 0xB6AC52952FF13B8Dull, 0xB6AC52952FF13B8Dull},  // 4 to 1
    {0x6CC088635BE100A9ull, 0x3FA5071530D5B711ull, 0x99383170B5F67C5Bull},  // 4 to 2
    {0xF78246313DCCB636ull, 0x59BF0F7265E67D0Cull, 0xF78246313DCCB636ull},  // 4 to 5
    {0x77D562AC465EF1A5ull, 0x77D562AC465EF1A5ull, 0x77D562AC465EF1A5ull},  // 4 to 6
    {0x1C780BE753A073F0ull, 0x9B5C1279F8E274A9ull, 0xA8615344235D9489ull},  // 5 to 1
    {0x96BDC453C19E29CBull, 0x5FC15DD5B9E8FAA7ull, 0x7AA8DE791685605Full},  // 5 to 2
    {0x943C21313C2D9538ull, 0xC644754C246ADA8Dull, 0x943C21313C2D9538ull},  // 5 to 4
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
    const PinnedVectorLevel pinned(level);
    for (std::size_t i = 0; i < std::size(kPairs); ++i) {
      const WithFeatures features(kAllBits);
      EXPECT_EQ(ThereAndBack(kPairs[i]), kRecorded[i][0])
          << NameOf(kPairs[i]) << ", level " << static_cast<int>(level);
    }
  }
}

}  // namespace
}  // namespace zor::test
