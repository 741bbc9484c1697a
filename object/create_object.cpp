// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <zorsurface/create_object.h>

#include "object/surface_builder.h"
#include "platform/compiler.h"

ZOR_EXPORT std::int32_t ZORSURFACE_CALL CreateObject(const GUID* classId, const GUID* interfaceId,
                                                     void** out) {
  if (!VideoEdit::SameIdentifier(*classId, CLSID_SurfaceBuilder)) return E_FAIL;
  zor::CSurfaceBuilder* builder = zor::CSurfaceBuilder::Create();
  if (builder == nullptr) return E_FAIL;
  builder->AddRef();
  const std::int32_t result = builder->QueryInterface(interfaceId, out);
  builder->Release();
  return result;
}
