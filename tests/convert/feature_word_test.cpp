// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/feature_word.h"

#include <cpuid.h>
#include <gtest/gtest.h>

#include "convert/colour_tables.h"
#include "convert/fast_mem_copy.h"
#include "convert/form_choice.h"
#include "support/guarded_memory.h"

namespace zor::test {
namespace {

/// The word as static construction left it: asked for once the program runs, before a test sets it.
std::uint32_t WordAtLoad() {
  static const std::uint32_t word = CpuFeatureWord;
  return word;
}

TEST(FeatureWord, IsFilledBeforeAnythingRunsAndHoldsTheKnownBitsOnly) {
  EXPECT_NE(0u, WordAtLoad());
  EXPECT_EQ(0u, WordAtLoad() & ~(0x17808010u | 1u << 22 | 1u << 30 | 1u << 31));
  EXPECT_NE(0u, WordAtLoad() & kFeatureSse2);  // every processor that runs the suite
  EXPECT_NE(0u, WordAtLoad() & kFeatureMmx);
  EXPECT_EQ(WordAtLoad(), DetectCpuFeatures());
}

TEST(FeatureWord, OfLeafOneKeepsSevenBitsAtTheirPlaces) {
  // Time stamp, conditional move, MMX, FXSAVE, SSE, SSE2, hyper-threading.
  std::uint32_t kept = 0;
  for (const int bit : {4, 15, 23, 24, 25, 26, 28}) kept |= 1u << bit;
  EXPECT_EQ(FeatureWordOf({0xFFFFFFFFu, 0, 0}), kept);
  EXPECT_EQ(FeatureWordOf({~kept, 0, 0}), 0u);
}

TEST(FeatureWord, AProcessorWithMoreThanOneExtendedLeafGetsNoneOfTheirBits) {
  for (const std::uint32_t last : {0u, 1u, 0x7FFFFFFFu, 0x80000001u, 0x80000028u, 0xFFFFFFFFu}) {
    EXPECT_EQ(FeatureWordOf({1u << 26, last, 0xFFFFFFFFu}), 1u << 26) << last;
  }
  EXPECT_EQ(FeatureWordOf({1u << 26, 0x80000000u, 0xFFFFFFFFu}),
            1u << 26 | 1u << 22 | 1u << 30 | 1u << 31);
  EXPECT_EQ(FeatureWordOf({0, 0x80000000u, ~(1u << 22 | 1u << 30 | 1u << 31)}), 0u);
}

TEST(FeatureWord, OfThisProcessorIsThatOfItsReplies) {
  std::uint32_t leaf1[4] = {}, first[4] = {}, second[4] = {};
  const auto ask = [](std::uint32_t leaf, std::uint32_t(&reply)[4]) {
    __cpuid(leaf, reply[0], reply[1], reply[2], reply[3]);
  };
  ask(1, leaf1);
  ask(0x80000000u, first);
  ask(0x80000001u, second);
  EXPECT_EQ(DetectCpuFeatures(), FeatureWordOf({leaf1[3], first[0], second[3]}));
}

TEST(FormChoice, Bit26IsAskedFirstThenBit23AndBit25Never) {
  const FormChoice<const char> forms = {"SSE2", "MMX", "plain"};
  const std::uint32_t mmx = 1u << 23, sse = 1u << 25, sse2 = 1u << 26;
  for (const std::uint32_t word : {sse2, sse2 | sse, sse2 | mmx, sse2 | sse | mmx}) {
    EXPECT_STREQ(forms.For(word), "SSE2") << word;
  }
  for (const std::uint32_t word : {0u, sse, ~(mmx | sse2)}) {
    EXPECT_STREQ(forms.For(word), "plain") << word;
  }
  EXPECT_STREQ(forms.For(mmx), "MMX");
}

TEST(FormChoice, WithBit26ClearAndBit25SetTheMmxFormRuns) {
  const FormChoice<const char> forms = {"SSE2", "MMX", "plain"};
  EXPECT_STREQ(forms.For(1u << 23 | 1u << 25), "MMX");
  EXPECT_STREQ(forms.For(~(1u << 26)), "MMX");
}

TEST(FormChoice, DepthsOtherThan24And32HaveNoForm) {
  const RgbFormChoice<const char> forms = {{"a", "b", "c"}, {"d", "e", "f"}};
  EXPECT_STREQ(forms.For(24, 1u << 23), "b");
  EXPECT_STREQ(forms.For(32, 0), "f");
  for (const std::int32_t depth : {0, 8, 16, 23, 25, 33, -24}) {
    EXPECT_EQ(forms.For(depth, ~0u), nullptr) << depth;
  }
}

TEST(FeatureWord, SecondInitialisationGivesTheFirstWordAndLeavesTheTables) {
  const std::int32_t kept = LumaScaleTable[77];
  LumaScaleTable[77] = 1;
  EXPECT_EQ(WordAtLoad(), InitPixelConversion());
  EXPECT_EQ(1, LumaScaleTable[77]);
  LumaScaleTable[77] = kept;
}

TEST(FeatureWord, WordOfZeroGuardsNothingAndTheInitialiserDoesItsWorkAgain) {
  const std::int32_t kept = LumaScaleTable[77];
  PixelConversionGuard = 0;
  LumaScaleTable[77] = 1;
  EXPECT_EQ(WordAtLoad(), InitPixelConversion());
  EXPECT_EQ(kept, LumaScaleTable[77]);
  EXPECT_EQ(WordAtLoad(), PixelConversionGuard);
}

TEST(FeatureWord, InnerLevelNeverPassesItsLimitNorTheProcessor) {
  const VectorLevel widest = InnerVectorLevel();
  for (const VectorLevel limit : {VectorLevel::kSse2, VectorLevel::kAvx2, VectorLevel::kAvx512}) {
    LimitInnerVectorLevel(limit);
    EXPECT_EQ(std::min(widest, limit), InnerVectorLevel());
  }
  EXPECT_EQ(widest, InnerVectorLevel());
}

// AVX2: EBX bit 5, and XCR0 bits 1 and 2. AVX-512 F, DQ, BW, VL: EBX 16, 17, 30, 31; VBMI and VNNI:
// ECX 1 and 11; XCR0 bits 5 to 7 as well.
constexpr VectorReplies kAllReplies = {~std::uint64_t{0}, ~0u, ~0u};

TEST(VectorLevels, Avx2NeedsItsBitAndTheSystemToSaveItsRegisters) {
  EXPECT_EQ(VectorLevelOf({0x6, 1u << 5, 0}), VectorLevel::kAvx2);
  VectorReplies replies = kAllReplies;
  replies.leaf7Ebx &= ~(1u << 5);
  EXPECT_EQ(VectorLevelOf(replies), VectorLevel::kSse2);
  for (const int bit : {1, 2}) {
    replies = kAllReplies;
    replies.savedState &= ~(std::uint64_t{1} << bit);
    EXPECT_EQ(VectorLevelOf(replies), VectorLevel::kSse2) << bit;
  }
  EXPECT_EQ(VectorLevelOf({}), VectorLevel::kSse2);
}

TEST(VectorLevels, Avx512NeedsAllItsSetsAndTheSystemToSaveItsRegisters) {
  EXPECT_EQ(VectorLevelOf(kAllReplies), VectorLevel::kAvx512);
  EXPECT_EQ(VectorLevelOf(
                {0xE6, 1u << 5 | 1u << 16 | 1u << 17 | 1u << 30 | 1u << 31, 1u << 1 | 1u << 11}),
            VectorLevel::kAvx512);
  for (const int bit : {16, 17, 30, 31}) {
    VectorReplies replies = kAllReplies;
    replies.leaf7Ebx &= ~(1u << bit);
    EXPECT_EQ(VectorLevelOf(replies), VectorLevel::kAvx2) << bit;
  }
  for (const int bit : {1, 11}) {
    VectorReplies replies = kAllReplies;
    replies.leaf7Ecx &= ~(1u << bit);
    EXPECT_EQ(VectorLevelOf(replies), VectorLevel::kAvx2) << bit;
  }
  for (const int bit : {5, 6, 7}) {
    VectorReplies replies = kAllReplies;
    replies.savedState &= ~(std::uint64_t{1} << bit);
    EXPECT_EQ(VectorLevelOf(replies), VectorLevel::kAvx2) << bit;
  }
}

TEST(VectorLevels, OfThisProcessorIsWhatTheCompilersOwnCheckSays) {
  __builtin_cpu_init();
  const bool avx2 = __builtin_cpu_supports("avx2") != 0;
  const bool wide =
      __builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512dq") != 0 &&
      __builtin_cpu_supports("avx512bw") != 0 && __builtin_cpu_supports("avx512vl") != 0 &&
      __builtin_cpu_supports("avx512vbmi") != 0 && __builtin_cpu_supports("avx512vnni") != 0;
  EXPECT_EQ(InnerVectorLevel(), !avx2  ? VectorLevel::kSse2
                                : wide ? VectorLevel::kAvx512
                                       : VectorLevel::kAvx2);
}

TEST(ColourTables, EveryEntryIsItsExactProduct) {
  for (std::int32_t i = 0; i < 256; ++i) {
    EXPECT_EQ(9535 * (i - 16), LumaScaleTable[i]);
    EXPECT_EQ(16531 * (i - 128), BlueFromUTable[i]);
    EXPECT_EQ(3203 * (i - 128), GreenFromUTable[i]);
    EXPECT_EQ(6660 * (i - 128), GreenFromVTable[i]);
    EXPECT_EQ(13074 * (i - 128), RedFromVTable[i]);
  }
}

TEST(ColourTables, ZerosStandAtTheOffsetsAndTheTopEntryShiftsTo278) {
  EXPECT_EQ(0, LumaScaleTable[16]);
  for (const std::int32_t* table :
       {BlueFromUTable, GreenFromUTable, GreenFromVTable, RedFromVTable}) {
    EXPECT_EQ(0, table[128]);
  }
  EXPECT_EQ(2278865, LumaScaleTable[255]);
  EXPECT_EQ(278, LumaScaleTable[255] >> 13);
}

class FastCopy : public ::testing::Test {
 protected:
  void SetUp() override { WordAtLoad(); }
  void TearDown() override { CpuFeatureWord = WordAtLoad(); }
};

TEST_F(FastCopy, EveryFormCopiesTheBytesAndNoOthersAtEverySizeAndAlignment) {
  using Edge = GuardedMemory::Edge;
  Noise noise(5);
  for (const std::uint32_t word : {0u, kFeatureMmx, kFeatureMmx | kFeatureSse2, kFeatureSse}) {
    CpuFeatureWord = word;
    for (const Edge edge : {Edge::kStart, Edge::kEnd}) {
      for (std::size_t bytes = 0; bytes <= 300; ++bytes) {
        GuardedMemory from(bytes, edge), to(bytes, edge, 0x11);
        noise.Fill(from.data(), bytes);
        FastMemCopy(to.data(), from.data(), bytes);
        ASSERT_EQ(from.Copy(), to.Copy()) << bytes;
        ASSERT_TRUE(to.GuardsIntact());
      }
    }
    for (std::size_t shift = 0; shift < 64; ++shift) {
      const std::vector<std::uint8_t> from = noise.Bytes(500);
      std::vector<std::uint8_t> to(600, 3), expected = to;
      std::copy(from.begin() + 7, from.begin() + 407, expected.begin() + static_cast<long>(shift));
      FastMemCopy(to.data() + shift, from.data() + 7, 400);
      ASSERT_EQ(expected, to) << shift;
    }
  }
}

TEST_F(FastCopy, BelowAndAtOneBlockOf64BytesTheBytesAreCopiedAndNoOthers) {
  for (const std::size_t bytes : {63u, 64u}) {
    const std::vector<std::uint8_t> from = Noise(bytes).Bytes(bytes);
    for (auto* copy : {MemCopyMmx, MemCopyStream}) {
      std::vector<std::uint8_t> to(bytes + 1, 9);
      copy(to.data(), from.data(), bytes);
      EXPECT_TRUE(std::equal(from.begin(), from.end(), to.begin()));
      EXPECT_EQ(9, to[bytes]);
    }
  }
}

TEST_F(FastCopy, LargeBlocksAtOddAddressesAreCopiedPastTheCaches) {
  const std::size_t bytes = (std::size_t{8} << 20) + 77;
  const std::vector<std::uint8_t> from = Noise(3).Bytes(bytes);
  for (const std::size_t shift : {0u, 1u, 63u}) {
    std::vector<std::uint8_t> to(bytes + 128, 9);
    MemCopyStream(to.data() + shift, from.data(), bytes);
    EXPECT_TRUE(std::equal(from.begin(), from.end(), to.begin() + static_cast<long>(shift)));
    EXPECT_EQ(9, to[bytes + shift]);
    if (shift > 0) {
      EXPECT_EQ(9, to[shift - 1]);
    }
  }
}

}  // namespace
}  // namespace zor::test
