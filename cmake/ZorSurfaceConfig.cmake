# SPDX-License-Identifier: BSD-2-Clause
include(${CMAKE_CURRENT_LIST_DIR}/ZorSurfaceTargets.cmake)
