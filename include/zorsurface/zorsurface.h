// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// All of the public contract.

#include <zorsurface/create_object.h>
#include <zorsurface/identifiers.h>
#include <zorsurface/memory_source.h>
#include <zorsurface/result_codes.h>
#include <zorsurface/scale_mode.h>
#include <zorsurface/surface.h>
#include <zorsurface/surface_builder.h>
#include <zorsurface/surface_description.h>
#include <zorsurface/types.h>
#include <zorsurface/ved_unknown.h>
