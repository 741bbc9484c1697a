# SPDX-License-Identifier: BSD-2-Clause
# The runs, for the fuzzers and for the suite's replay. Relative to the root.
set(ZOR_FUZZ_SOURCES fuzz/compose_run.cpp fuzz/operations_run.cpp fuzz/stage.cpp)
