// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Libraries that are found at run time.

namespace zor {

/// Loads a library by its name on the system's search path and keeps it loaded.
/// @return its handle, or null.
void* OpenSharedLibrary(const char* name) noexcept;

/// @return the address of a function of the library, or null.
void* FindFunction(void* library, const char* name) noexcept;

}  // namespace zor
