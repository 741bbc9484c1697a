// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// A host compiled for another compiler's ABI: it drives the tables through `CreateObject`.

/// @return 0, or the number of the step that went wrong.
extern "C" int RunForeignHost();

/// Steps that the host went through when it ended well.
inline constexpr int kForeignSteps = 24;
extern "C" int foreignSteps;
/// Where within 16 bytes the host's frame stood.
extern "C" unsigned foreignStackOffset;
