// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "stage.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "convert/feature_word.h"

namespace zor::fuzz {
namespace {

constexpr std::size_t kSurfaces = 5;

bool IsPlanar(std::int32_t format) {
  return format == FORMAT_YUV420 || format == FORMAT_YVU420;
}

}  // namespace

void Demand(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "broken: %s\n", what);
  std::abort();
}

SurfaceDescription DescriptionOf(IZorSurface* surface) {
  SurfaceDescription d{};
  d.size = sizeof d;
  Demand(surface->GetDescription(&d) == VED_OK, "a surface has a description");
  return d;
}

std::size_t PictureBytes(std::int32_t format, std::int32_t stride, std::int32_t height) {
  const auto rows = static_cast<std::size_t>(stride) * static_cast<std::size_t>(height);
  return IsPlanar(format) ? rows * 3 / 2 : rows;
}

Stage::Stage(ByteReader* bytes)
    : bytes_(*bytes),
      featuresBefore_(CpuFeatureWord),
      builder_(LoadBuilder()),
      trace_(test::Fnv1a(nullptr, 0)) {
  static constexpr std::uint32_t kForms[] = {kFeatureSse2 | kFeatureSse | kFeatureMmx,
                                             kFeatureSse | kFeatureMmx, 0};
  CpuFeatureWord = bytes_.Of(kForms);
  Demand(static_cast<bool>(builder_), "there is a builder");
  while (surfaces_.size() < kSurfaces) Make();
}

Stage::~Stage() {
  TakeMasks();
  Ref<IZorSurface> plug;
  const SurfaceDescription d = MakeDescription(FORMAT_GRAY8, 4, 4);
  std::int32_t blockBytes = 0;
  Demand(builder_->CreateBlank(&d, &blockBytes, plug.put()) == VED_OK, "a mask can be made");
  for (IZorSurface* surface : surfaces_) {
    while (surface->GetChildCount() > 0) surface->RemoveChild(0);
    surface->SetMask(plug.get());
  }
  for (IZorSurface* surface : surfaces_) {
    while (surface->Release() > 0) {
    }
  }
  plug->AddRef();
  Demand(plug->Release() == 1, "every surface gives its mask back");
  CpuFeatureWord = featuresBefore_;
}

IZorSurface* Stage::Any() {
  return surfaces_[static_cast<std::size_t>(
      bytes_.Range(0, static_cast<std::int32_t>(surfaces_.size()) - 1))];
}

void Stage::Take(IZorSurface* surface) {
  Demand(surface != nullptr, "success comes with a surface");
  if (std::find(surfaces_.begin(), surfaces_.end(), surface) != surfaces_.end()) {
    surface->Release();  // one reference of each is enough
  } else {
    surfaces_.push_back(surface);
  }
}

void Stage::TakeMasks() {
  for (std::size_t i = 0; i < surfaces_.size(); ++i) {
    IZorSurface* mask = nullptr;
    surfaces_[i]->GetMask(&mask);
    if (mask != nullptr) Take(mask);
  }
}

void Stage::Make() {
  static constexpr std::int32_t kFormats[] = {FORMAT_YUV420, FORMAT_RGB24, FORMAT_RGB32,
                                              FORMAT_GRAY8,  FORMAT_YUY2,  FORMAT_YVU420};
  const std::int32_t format = bytes_.Of(kFormats);
  const std::int32_t width = bytes_.OneIn(8) ? bytes_.Range(4, 300) : bytes_.Range(4, 48);
  const std::int32_t height = bytes_.Range(4, 48);
  SurfaceDescription d = MakeDescription(format, width, height);
  d.Orientation = bytes_.Byte() & 1;
  d.ComposeInPlace = bytes_.Byte() & 1;
  const bool planar = IsPlanar(format);
  if (!planar && bytes_.OneIn(4)) d.stride += bytes_.Range(0, 13);
  if (format == FORMAT_GRAY8 || (format != FORMAT_YVU420 && bytes_.OneIn(2))) {
    // A blank picture's stride may be any, and then its rows overlap.
    if (!planar && bytes_.OneIn(8)) d.stride = bytes_.Range(1, d.stride);
    MakeBlank(d);
  } else {
    MakeFromMemory(d);
  }
}

void Stage::MakeBlank(const SurfaceDescription& description) {
  IZorSurface* surface = nullptr;
  std::int32_t blockBytes = 0;
  Demand(builder_->CreateBlank(&description, &blockBytes, &surface) == VED_OK,
         "a blank surface can be made");
  std::uint8_t* pixels = nullptr;
  surface->GetPixels(&pixels);
  Demand(pixels != nullptr && blockBytes > 0, "a new surface has pixels");
  test::Noise(bytes_.Byte()).Fill(pixels, static_cast<std::size_t>(blockBytes));
  Take(surface);
}

void Stage::MakeFromMemory(const SurfaceDescription& description) {
  test::GuardedMemory memory(
      PictureBytes(description.format, description.stride, description.height),
      test::GuardedMemory::Edge::kEnd);
  test::Noise(bytes_.Byte()).Fill(memory.data(), memory.size());
  LentPixels source(memory.data());
  IZorSurface* surface = nullptr;
  Demand(builder_->CreateFromMemory(&description, &source, &surface) == VED_OK,
         "a surface can be made from memory");
  Take(surface);
}

RECT Stage::AnyRect() {
  static constexpr std::int32_t kExtremes[] = {INT32_MIN, INT32_MIN + 1, -1,       0,
                                               1,         INT32_MAX - 1, INT32_MAX};
  auto edge = [&] { return bytes_.OneIn(16) ? bytes_.Of(kExtremes) : bytes_.Range(-30, 120); };
  RECT rect{};
  rect.left = edge();
  rect.top = edge();
  rect.right = edge();
  rect.bottom = edge();
  return rect;
}

RECT Stage::AnyRect(std::int32_t width, std::int32_t height) {
  // A negative angle leaves a picture of no size.
  if (width < 1 || height < 1 || bytes_.OneIn(6)) return AnyRect();
  RECT rect{};
  rect.left = bytes_.Range(0, width - 1);
  rect.top = bytes_.Range(0, height - 1);
  rect.right = bytes_.Range(rect.left + 1, width);
  rect.bottom = bytes_.Range(rect.top + 1, height);
  return rect;
}

std::int32_t Stage::Note(std::int32_t result) {
  // A picture of no size finds no memory either.
  static constexpr std::int32_t kCodes[] = {VED_E_UNSUPPORTED, VED_E_INVALIDARG, VED_E_COMPOSE,
                                            VED_E_OUTOFMEMORY, VED_E_KERNEL,     E_FAIL};
  if (result < 0 && std::find(std::begin(kCodes), std::end(kCodes), result) == std::end(kCodes)) {
    std::fprintf(stderr, "result %08X\n", static_cast<unsigned>(result));
    Demand(false, "a failure has a code of its own");
  }
  Note(reinterpret_cast<const std::uint8_t*>(&result), sizeof result);
  return result;
}

void Stage::Note(const std::uint8_t* bytes, std::size_t count) {
  trace_ = test::Fnv1a(bytes, count, trace_);
}

void Stage::Note(IZorSurface* surface) {
  Note(surface->Flush());
  const SurfaceDescription d = DescriptionOf(surface);
  Note(reinterpret_cast<const std::uint8_t*>(&d), sizeof d);
  Read(surface, PictureBytes(d.format, d.stride, d.height), d.stride, d.Orientation, true);
}

std::int32_t Stage::Read(IZorSurface* surface, std::size_t bytes, std::int32_t stride,
                         std::uint32_t orientation, bool apart) {
  using Edge = test::GuardedMemory::Edge;
  test::GuardedMemory memory(bytes, bytes_.OneIn(2) ? Edge::kStart : Edge::kEnd);
  const std::int32_t result = Note(surface->ReadPixels(memory.data(), stride, orientation));
  Demand(memory.GuardsIntact(), "a read-out stays in its memory");
  if (apart) Note(memory.data(), memory.size());
  return result;
}

Trace Stage::End() {
  for (std::size_t i = 0; i < surfaces_.size(); ++i) Note(surfaces_[i]);
  return trace_;
}

}  // namespace zor::fuzz
