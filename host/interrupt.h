// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Ctrl-C: the run ends after the current frame. A second Ctrl-C ends the process at once.

namespace zorhost {

void CatchInterrupts();
bool Interrupted();

}  // namespace zorhost
