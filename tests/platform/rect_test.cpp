// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/rect.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

RECT Rect(int left, int top, int right, int bottom) {
  return {left, top, right, bottom};
}

void ExpectRect(const RECT& rect, int left, int top, int right, int bottom) {
  EXPECT_EQ(rect.left, left);
  EXPECT_EQ(rect.top, top);
  EXPECT_EQ(rect.right, right);
  EXPECT_EQ(rect.bottom, bottom);
}

TEST(IsRectEmpty, IsTrueWhenRightIsNotAboveLeftOrBottomNotAboveTop) {
  const struct {
    RECT rect;
    bool empty;
  } cases[] = {
      {Rect(0, 0, 1, 1), false},
      {Rect(0, 0, 0, 0), true},
      {Rect(5, 5, 5, 9), true},
      {Rect(5, 5, 9, 5), true},
      {Rect(5, 5, 4, 9), true},
      {Rect(5, 5, 9, 4), true},
      {Rect(-3, -3, 0, 0), false},
      {Rect(INT_MIN, INT_MIN, INT_MAX, INT_MAX), false},
      {Rect(INT_MAX, INT_MAX, INT_MIN, INT_MIN), true},
      {Rect(5, 5, 4, 4), true},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(zor::IsRectEmpty(&c.rect), c.empty)
        << c.rect.left << ' ' << c.rect.top << ' ' << c.rect.right << ' ' << c.rect.bottom;
  }
}

TEST(IsRectEmpty, ANullRectangleIsEmpty) {
  EXPECT_TRUE(zor::IsRectEmpty(nullptr));
}

TEST(UnionRect, HoldsBothRectangles) {
  const RECT a = Rect(10, 20, 30, 40);
  const RECT b = Rect(-5, 25, 20, 60);
  RECT out = Rect(1, 1, 1, 1);
  EXPECT_TRUE(zor::UnionRect(&out, &a, &b));
  ExpectRect(out, -5, 20, 30, 60);
}

TEST(UnionRect, HoldsTheGapBetweenRectanglesApart) {
  const RECT a = Rect(0, 0, 1, 1);
  const RECT b = Rect(100, 200, 101, 201);
  RECT out;
  EXPECT_TRUE(zor::UnionRect(&out, &a, &b));
  ExpectRect(out, 0, 0, 101, 201);
}

TEST(UnionRect, AnEmptyArgumentCountsForNothing) {
  const RECT full = Rect(10, 20, 30, 40);
  const RECT empty = Rect(-100, -100, -100, 500);
  RECT out;
  EXPECT_TRUE(zor::UnionRect(&out, &full, &empty));
  ExpectRect(out, 10, 20, 30, 40);
  EXPECT_TRUE(zor::UnionRect(&out, &empty, &full));
  ExpectRect(out, 10, 20, 30, 40);
}

TEST(UnionRect, OfTwoEmptyRectanglesIsFalseAndAllZeros) {
  const RECT a = Rect(5, 5, 5, 9);
  const RECT b = Rect(7, 9, 3, 20);
  RECT out = Rect(1, 2, 3, 4);
  EXPECT_FALSE(zor::UnionRect(&out, &a, &b));
  ExpectRect(out, 0, 0, 0, 0);
}

TEST(UnionRect, MayStoreIntoOneOfItsArguments) {
  RECT a = Rect(10, 20, 30, 40);
  RECT b = Rect(0, 30, 20, 50);
  EXPECT_TRUE(zor::UnionRect(&a, &a, &b));
  ExpectRect(a, 0, 20, 30, 50);
  EXPECT_TRUE(zor::UnionRect(&b, &a, &b));
  ExpectRect(b, 0, 20, 30, 50);
}

TEST(CopyRect, CopiesTheFourWords) {
  const RECT in = Rect(INT_MIN, 2, -3, INT_MAX);
  RECT out = Rect(0, 0, 0, 0);
  zor::CopyRect(&out, &in);
  ExpectRect(out, INT_MIN, 2, -3, INT_MAX);
}

}  // namespace
