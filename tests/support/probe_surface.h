// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// A surface without pixels that writes down what its queue asks of it.

#include <zorsurface/result_codes.h>

#include <deque>
#include <string>
#include <vector>

#include "surface/surface.h"

namespace zor::test {

/// Lives on the stack or in another object; its count means nothing.
class ProbeSurface final : public CZorSurface {
 public:
  explicit ProbeSurface(const SurfaceDescription& description) : CZorSurface(description) {}
  ~ProbeSurface() = default;

  /// One line for each call of a `Now` slot, such as "resize 8x6 fit 1 mode 3 direct 0".
  std::vector<std::string> calls;
  /// What the next `Now` slots answer; `VED_OK` when it has run out.
  std::deque<std::int32_t> results;

  SurfaceDescription& description() { return description_; }
  DirectOutput& direct() { return direct_; }
  auto& queue() { return operationQueue_; }
  auto& children() { return childList_; }
  using CZorSurface::FlushQueue;
  using CZorSurface::RunQueuedOperations;

  void* ScalarDeletingDestructor(std::uint32_t) override { return this; }
  std::int32_t ReadPixels(std::uint8_t*, std::int32_t, std::uint32_t) override { return VED_OK; }
  std::int32_t ExportImage(std::uint32_t, void**, std::uint32_t*) override { return VED_OK; }
  std::int32_t GetPixels(std::uint8_t**) override { return VED_OK; }
  std::int32_t Compose(IZorSurface**) override { return VED_OK; }
  std::int32_t ResizeNow(std::int32_t width, std::int32_t height, std::int32_t fit,
                         std::uint32_t quality) override {
    const std::int32_t result =
        Answer("resize " + std::to_string(width) + "x" + std::to_string(height) + " fit " +
               std::to_string(fit) + " mode " + std::to_string(quality) + " direct " +
               std::to_string(direct_.active));
    if (result >= 0 && direct_.active == 0) {
      description_.width = width;
      description_.height = height;
    }
    return result;
  }
  std::int32_t RotateNow(std::int32_t degrees) override {
    return Answer("rotate " + std::to_string(degrees));
  }
  std::int32_t ConvertNow(std::int32_t format) override {
    const std::int32_t result =
        Answer("convert " + std::to_string(format) + " direct " + std::to_string(direct_.active));
    if (result >= 0 && direct_.active == 0) description_.format = format;
    return result;
  }
  std::int32_t StretchFromSurfaceNow(RECT*, IZorSurface*, RECT*, std::uint32_t mode) override {
    return Answer("stretch from " + std::to_string(mode));
  }
  std::int32_t StretchToMemoryNow(RECT*, RECT*, std::uint8_t*, std::int32_t, std::int32_t,
                                  std::int32_t, std::uint32_t mode) override {
    return Answer("stretch to " + std::to_string(mode));
  }
  std::int32_t WarpRegionNow(std::int32_t handle, std::uint32_t, double, double, double, double,
                             std::int32_t) override {
    return Answer("warp " + std::to_string(handle));
  }
  std::int32_t FillNow(RECT*, std::uint32_t colour) override {
    return Answer("fill " + std::to_string(colour));
  }

 private:
  std::int32_t Answer(std::string call) {
    calls.push_back(std::move(call));
    if (results.empty()) return VED_OK;
    const std::int32_t result = results.front();
    results.pop_front();
    return result;
  }
};

}  // namespace zor::test
