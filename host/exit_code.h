// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// How zorhost ends, and the exceptions that carry an ending to `main`.

#include <stdexcept>
#include <string>

namespace zorhost {

/// The process's exit codes; part of the command line's contract.
enum class ExitCode {
  kOk = 0,
  kUsage = 2,         ///< the command line asks for something that can't be
  kInput = 3,         ///< a source is missing, truncated or of an unknown kind
  kOutput = 4,        ///< a result couldn't be written
  kLibrary = 5,       ///< the library answered with a failure, or two ways gave different pictures
  kInterrupted = 130  ///< Ctrl-C; what was written is whole
};

/// An ending with a message for the user.
class HostError : public std::runtime_error {
 public:
  HostError(ExitCode code, const std::string& message) : std::runtime_error(message), code_(code) {}
  ExitCode code() const { return code_; }

 private:
  ExitCode code_;
};

struct UsageError : HostError {
  explicit UsageError(const std::string& m) : HostError(ExitCode::kUsage, m) {}
};
struct InputError : HostError {
  explicit InputError(const std::string& m) : HostError(ExitCode::kInput, m) {}
};
struct OutputError : HostError {
  explicit OutputError(const std::string& m) : HostError(ExitCode::kOutput, m) {}
};

}  // namespace zorhost
