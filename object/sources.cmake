# SPDX-License-Identifier: BSD-2-Clause
list(APPEND ZOR_CORE_SOURCES
)
