// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <zorsurface/result_codes.h>

#include "compositor/blend.h"
#include "convert/feature_word.h"
#include "object/surface_builder.h"
#include "platform/pixel_block.h"
#include "platform/rect.h"
#include "surface/surface_buffer.h"

namespace zor {
namespace {

BlockBytes BytesOf(IZorSurface* surface) {
  std::uint8_t* pixels = nullptr;
  surface->GetPixels(&pixels);
  return {pixels, pixels == nullptr ? 0 : PixelBlockBytes(pixels)};
}

std::int32_t WidthOf(const RECT& rect) {
  return static_cast<std::int32_t>(std::int64_t{rect.right} - rect.left);
}

std::int32_t HeightOf(const RECT& rect) {
  return static_cast<std::int32_t>(std::int64_t{rect.bottom} - rect.top);
}

/// Brings a surface to a format; a failure shows in its description alone.
void BringTo(IZorSurface* surface, std::int32_t format) {
  surface->QueueConvert(format);
  surface->Flush();
}

bool UseSse2() {
  return (CpuFeatureWord & kFeatureSse2) != 0;
}

/// One child on its way onto the target. Owns a reference of the child and one of its mask if it
/// has one.
struct Layer {
  IZorSurface* child;
  IZorSurface* mask;
  RECT dest;
  RECT source;

  void Release() const {
    if (mask != nullptr) mask->Release();
    child->Release();
  }
};

/// Makes a scratch surface of the destination's size.
std::int32_t CreateScratch(CSurfaceBuilder* builder, SurfaceDescription description,
                           const RECT& dest, std::int32_t stride, IZorSurface** out) {
  description.width = WidthOf(dest);
  description.height = HeightOf(dest);
  description.stride = stride;
  std::int32_t bytes = 0;
  return builder->CreateBlank(&description, &bytes, out);
}

/// The kernels work sample for sample, so a child whose rectangles differ in size is stretched into
/// a scratch surface first, and its mask with it; the scratch surfaces take their places. Every
/// scratch child has the width as its stride, a packed one too.
/// @return a failure of the builder, with all but a child's finished scratch surface let go.
std::int32_t StretchLayer(Layer* layer, std::uint32_t backColour) {
  CSurfaceBuilder builder;
  const std::int32_t width = WidthOf(layer->dest);
  IZorSurface* child = nullptr;
  std::int32_t result =
      CreateScratch(&builder, DescriptionOf(layer->child), layer->dest, width, &child);
  if (result < 0) {
    layer->Release();
    return result;
  }
  IZorSurface* mask = nullptr;
  if (layer->mask != nullptr) {
    const std::int32_t stride = static_cast<std::int32_t>((std::int64_t{width} * 8 + 31) >> 5) * 4;
    result = CreateScratch(&builder, DescriptionOf(layer->mask), layer->dest, stride, &mask);
    if (result < 0) {
      layer->Release();
      return result;
    }
  }
  child->StretchFromSurface(nullptr, layer->child, &layer->source, 0);
  if (mask != nullptr) mask->StretchFromSurface(nullptr, layer->mask, &layer->source, 0);
  layer->Release();
  layer->child = child;
  layer->mask = mask;
  layer->source = {0, 0, width, HeightOf(layer->dest)};
  child->SetSourceRect(0, 0, width, HeightOf(layer->dest));
  if (mask != nullptr) {
    child->SetDestRect(layer->dest.left, layer->dest.top, layer->dest.right, layer->dest.bottom);
  } else {
    child->SetBackColor(backColour);
  }
  return VED_OK;
}

bool SameSize(const RECT& a, const RECT& b) {
  return WidthOf(a) == WidthOf(b) && HeightOf(a) == HeightOf(b);
}

/// Blends a child through its mask. Takes over the child's reference, except where the mask or the
/// target's format is missing.
std::int32_t BlendChildWithMask(IZorSurface* target, IZorSurface* child) {
  if (target == nullptr || child == nullptr) return VED_E_INVALIDARG;
  Layer layer{child, nullptr, {}, {}};
  child->GetMask(&layer.mask);
  if (layer.mask == nullptr) return E_FAIL;
  child->GetDestRect(&layer.dest);
  child->GetSourceRect(&layer.source);
  const std::int32_t format = DescriptionOf(target).format;
  if (format != FORMAT_YUV420 && format != FORMAT_YUY2) return VED_E_COMPOSE;
  BringTo(child, format);
  if (zor::IsRectEmpty(&layer.dest)) {
    layer.Release();
    return VED_E_INVALIDARG;
  }
  if (!SameSize(layer.dest, layer.source)) {
    const std::int32_t result = StretchLayer(&layer, 0);
    if (result < 0) return result;
  }
  const BlockBytes maskBytes = BytesOf(layer.mask);
  const BlockBytes targetBytes = BytesOf(target);
  const BlockBytes childBytes = BytesOf(layer.child);
  layer.child->GetDestRect(&layer.dest);
  layer.child->GetSourceRect(&layer.source);
  const SurfaceDescription on = DescriptionOf(target);
  const SurfaceDescription from = DescriptionOf(layer.child);
  auto word = [](std::int32_t value) { return static_cast<std::uint32_t>(value); };
  const std::int32_t result =
      format == FORMAT_YUV420
          ? BlendYuv420Masked(targetBytes, childBytes, maskBytes, word(on.stride), word(on.height),
                              word(from.stride), word(from.height), &layer.dest, &layer.source,
                              UseSse2())
          : BlendYuy2Masked(targetBytes, childBytes, maskBytes, word(on.width), word(on.height),
                            word(from.width), word(from.height), word(on.stride), word(from.stride),
                            &layer.dest, &layer.source, UseSse2());
  layer.Release();
  return result;
}

/// Blends a child without a mask by its opacity and key colour. Takes over the child's reference.
/// @param geometry gives the target's stride and height: the surface that `Compose` was called on,
///        also where the target is a clone of it that has been converted.
std::int32_t BlendChildWithKey(const SurfaceDescription& geometry, IZorSurface* target,
                               IZorSurface* child) {
  if (target == nullptr || child == nullptr) return VED_E_INVALIDARG;
  Layer layer{child, nullptr, {}, {}};
  child->GetDestRect(&layer.dest);
  child->GetSourceRect(&layer.source);
  if (zor::IsRectEmpty(&layer.dest)) {
    layer.Release();
    return VED_E_INVALIDARG;
  }
  std::uint32_t opacity = 0;
  std::uint32_t backColour = 0;
  child->GetOpacity(&opacity);
  child->GetBackColor(&backColour);
  if (opacity >= 256) {
    layer.Release();
    return VED_OK;
  }
  if (!SameSize(layer.dest, layer.source)) {
    const std::int32_t result = StretchLayer(&layer, backColour);
    if (result < 0) return result;
  }
  const SurfaceDescription from = DescriptionOf(layer.child);
  const BlockBytes targetBytes = BytesOf(target);
  const BlockBytes childBytes = BytesOf(layer.child);
  layer.child->GetBackColor(&backColour);
  BlendYuv420Keyed({targetBytes, static_cast<std::uint32_t>(geometry.stride),
                    static_cast<std::uint32_t>(geometry.height)},
                   {childBytes, static_cast<std::uint32_t>(from.stride),
                    static_cast<std::uint32_t>(from.height)},
                   layer.dest, layer.source, opacity, KeyColourOf(backColour), UseSse2());
  layer.Release();
  return VED_OK;
}

/// Draws one child and takes over its reference. A packed target has no path for a child without a
/// mask: that child is skipped, its reference kept.
/// @return the blend's result, or @p previous where nothing was blended.
std::int32_t DrawChild(const SurfaceDescription& geometry, IZorSurface* target, IZorSurface* child,
                       std::int32_t previous) {
  std::int32_t format = DescriptionOf(target).format;
  if (format != FORMAT_YUV420 && format != FORMAT_YUY2) {
    BringTo(target, FORMAT_YUV420);
    format = FORMAT_YUV420;
  }
  BringTo(child, format);
  IZorSurface* mask = nullptr;
  child->GetMask(&mask);
  if (mask != nullptr) {
    mask->Release();
    return BlendChildWithMask(target, child);
  }
  return format == FORMAT_YUY2 ? previous : BlendChildWithKey(geometry, target, child);
}

}  // namespace

std::int32_t CZorSurfaceBuffer::Compose(IZorSurface** out) {
  if (out == nullptr) return VED_E_INVALIDARG;
  std::int32_t result = FlushQueue(0);
  if (result < 0) return result;
  AddRef();
  if (childList_.empty()) {
    *out = this;
    return result;
  }
  // The reference taken above keeps this surface alive until the children are gone: it may be held
  // by one of them alone.
  IZorSurface* target = this;
  if (description_.ComposeInPlace == 0) {
    target = nullptr;
    const std::int32_t cloned = Clone(&target);
    if (cloned < 0 || target == nullptr) {
      if (target != nullptr) target->Release();
      Release();
      return E_FAIL;
    }
  }
  for (std::int32_t index = 0; index < GetChildCount(); ++index) {
    IZorSurface* child = GetChild(index);
    if (child == nullptr) break;
    result = DrawChild(description_, target, child, result);
  }
  for (IZorSurface* child : childList_) child->Release();
  childList_.clear();
  if (target == this) {
    *out = this;  // with the reference from above
    return result;
  }
  *out = target;
  Release();
  return result;
}

}  // namespace zor
