// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "object/source_cases.h"

namespace zor::test {
namespace {

TEST(CreateFromSource, OtherKindsAreUnsupportedWhateverElseIsWrong) {
  int image = 0;
  for (const std::int32_t kind : {3, -1, 100, INT32_MIN, INT32_MAX}) {
    EXPECT_EQ(Fail(&image, kind, FORMAT_RGB24), VED_E_UNSUPPORTED);
    EXPECT_EQ(Fail(nullptr, kind, 0, 0), VED_E_UNSUPPORTED);
  }
}

TEST(CreateFromSource, NullHandlesAndResultsAreInvalid) {
  int image = 0;
  for (const std::int32_t kind : {SOURCE_KELP, SOURCE_DIRECT_DRAW, SOURCE_GLOBAL_DIB}) {
    EXPECT_EQ(Fail(nullptr, kind, 99), VED_E_INVALIDARG);
    EXPECT_EQ(MakeBuilder()->CreateFromSource(&image, kind, FORMAT_RGB24, kCopy, nullptr),
              VED_E_INVALIDARG);
  }
}

}  // namespace
}  // namespace zor::test
