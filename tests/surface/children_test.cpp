// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <array>
#include <stdexcept>
#include <vector>

#include "platform/memory.h"
#include "support/probe_surface.h"
#include "surface/attribute_cases.h"

namespace zor::test {
namespace {

struct Family {
  HeldSurface parent = Small();
  std::array<HeldSurface, 4> children = {Small(), Small(), Small(), Small()};
  IZorSurface* operator[](std::size_t i) const { return children[i].get(); }
  void AddAll() {
    for (const HeldSurface& child : children) EXPECT_EQ(parent->AddChild(child.get()), VED_OK);
  }
  /// @return the children's places in this family, in the order of the list.
  std::vector<int> Order() {
    std::vector<int> order;
    for (std::int32_t i = 0; i < parent->GetChildCount(); ++i) {
      IZorSurface* child = parent->GetChild(i);
      for (int k = 0; k < 4; ++k) {
        if (child == children[static_cast<std::size_t>(k)].get()) order.push_back(k);
      }
      child->Release();
    }
    return order;
  }
};
using Order = std::vector<int>;

TEST(Children, AreAppendedEachWithAReference) {
  Family family;
  EXPECT_EQ(family.parent->AddChild(nullptr), VED_E_INVALIDARG);
  family.AddAll();
  EXPECT_EQ(family.parent->GetChildCount(), 4);
  EXPECT_EQ(family.Order(), (Order{0, 1, 2, 3}));
  EXPECT_EQ(CountOf(family[0]), 2u);
  EXPECT_EQ(family.parent->AddChild(family[0]), VED_OK);
  EXPECT_EQ(family.Order(), (Order{0, 1, 2, 3, 0}));
  EXPECT_EQ(CountOf(family[0]), 3u);
  family.parent.Reset();
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(CountOf(family[i]), 1u);
}

TEST(Children, RemovingChecksTheIndexAndReleases) {
  Family family;
  EXPECT_EQ(family.parent->RemoveChild(0), VED_E_INVALIDARG);
  family.AddAll();
  EXPECT_EQ(family.parent->RemoveChild(-1), VED_E_INVALIDARG);
  EXPECT_EQ(family.parent->RemoveChild(4), VED_E_INVALIDARG);
  EXPECT_EQ(family.parent->RemoveChild(1), VED_OK);
  EXPECT_EQ(family.Order(), (Order{0, 2, 3}));
  EXPECT_EQ(CountOf(family[1]), 1u);
  EXPECT_EQ(family.parent->RemoveChild(2), VED_OK);
  EXPECT_EQ(family.Order(), (Order{0, 2}));
}

TEST(Children, FindGivesTheFirstOccurrence) {
  Family family;
  EXPECT_EQ(family.parent->FindChild(family[0]), -1);
  EXPECT_EQ(family.parent->FindChild(nullptr), -1);
  family.AddAll();
  family.parent->AddChild(family[2]);
  EXPECT_EQ(family.parent->FindChild(family[2]), 2);
  EXPECT_EQ(family.parent->FindChild(family.parent.get()), -1);
  EXPECT_EQ(family.parent->FindChild(nullptr), -1);
}

TEST(Children, GetGivesAReferenceOrNull) {
  Family family;
  EXPECT_EQ(family.parent->GetChild(0), nullptr);
  family.AddAll();
  EXPECT_EQ(family.parent->GetChild(-1), nullptr);
  EXPECT_EQ(family.parent->GetChild(4), nullptr);
  IZorSurface* child = family.parent->GetChild(3);
  EXPECT_EQ(child, family[3]);
  EXPECT_EQ(child->Release(), 2u);
}

TEST(Children, MovingChecksItsArguments) {
  Family family;
  EXPECT_EQ(family.parent->MoveChild(family[0], 0), E_FAIL);
  family.AddAll();
  EXPECT_EQ(family.parent->MoveChild(nullptr, 0), VED_E_INVALIDARG);
  EXPECT_EQ(family.parent->MoveChild(family[0], -1), VED_E_INVALIDARG);
  EXPECT_EQ(family.parent->MoveChild(family.parent.get(), 0), E_FAIL);
}

TEST(Children, MovingCountsInTheListWithoutTheChild) {
  const struct {
    std::size_t child;
    std::int32_t index;
    Order order;
  } kMoves[] = {
      {0, 0, {0, 1, 2, 3}},       {0, 1, {1, 0, 2, 3}}, {0, 2, {1, 2, 0, 3}}, {0, 3, {1, 2, 3, 0}},
      {3, 0, {3, 0, 1, 2}},       {3, 1, {0, 3, 1, 2}}, {2, 1, {0, 2, 1, 3}}, {1, 4, {0, 2, 3, 1}},
      {1, 1000000, {0, 2, 3, 1}}, {3, 3, {0, 1, 2, 3}}, {3, 9, {0, 1, 2, 3}},
  };
  for (const auto& move : kMoves) {
    Family family;
    family.AddAll();
    EXPECT_EQ(family.parent->MoveChild(family[move.child], move.index), VED_OK);
    EXPECT_EQ(family.Order(), move.order) << move.child << " to " << move.index;
    EXPECT_EQ(CountOf(family[move.child]), 2u);
  }
}

TEST(Children, MovingTakesTheFirstOccurrence) {
  Family family;
  family.AddAll();
  family.parent->AddChild(family[1]);
  EXPECT_EQ(family.parent->MoveChild(family[1], 3), VED_OK);
  EXPECT_EQ(family.Order(), (Order{0, 2, 3, 1, 1}));
}

TEST(Children, MovingTakesNoMemory) {
  Family family;
  family.AddAll();
  RefuseAllocation(1);
  EXPECT_EQ(family.parent->MoveChild(family[0], 3), VED_OK);
  RefuseAllocation(0);
  EXPECT_EQ(family.Order(), (Order{1, 2, 3, 0}));
}

TEST(Children, WithoutMemoryTheListAndTheChildStayAsTheyAre) {
  Family family;
  RefuseAllocation(1);
  EXPECT_EQ(family.parent->AddChild(family[0]), VED_E_OUTOFMEMORY);
  RefuseAllocation(0);
  EXPECT_EQ(family.parent->GetChildCount(), 0);
  EXPECT_EQ(CountOf(family[0]), 1u);
}

TEST(Children, AFullListThrowsAndKeepsNoReference) {
  ProbeSurface parent(Describe(8, 8, FORMAT_RGB24));
  const HeldSurface child = Small();
  EXPECT_EQ(parent.children().kBound, 0x3FFFFFFFu);
  parent.children().LowerBound(2);
  parent.AddChild(child.get());
  parent.AddChild(child.get());
  try {
    parent.AddChild(child.get());
    FAIL() << "no exception";
  } catch (const std::length_error& error) {
    EXPECT_STREQ(error.what(), "list<T> too long");
  }
  EXPECT_EQ(parent.GetChildCount(), 2);
  EXPECT_EQ(CountOf(child.get()), 3u);
}

TEST(Children, GoWithTheirParentAndSoDoMaskAndQueue) {
  const std::int64_t before = LiveAllocations();
  {
    Family family;
    family.AddAll();
    family.parent->SetMask(family[0]);
    family.parent->QueueConvert(99);
    family.parent->QueueResize(8, 8, 0, 0);
  }
  EXPECT_EQ(LiveAllocations(), before);
}

}  // namespace
}  // namespace zor::test
