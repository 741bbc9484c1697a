// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Whole runs of the program as a user starts it, looked at from outside: exit codes, messages,
/// files. The program stands in the working folder.

#include <cstdlib>
#include <set>
#include <sstream>
#include <string>

#include "scratch_folder.h"
#ifndef _WIN32
#include <sys/wait.h>
#endif

namespace zorhost::test {

struct Result {
  int code;
  std::string out;
  std::string err;
};

inline Result RunHost(const ScratchFolder& folder, const std::string& arguments) {
#ifdef _WIN32
  const std::string program = "zorhost.exe";
#else
  const std::string program = "./zorhost";
#endif
  // The shell of Windows takes a slash in a redirection for a switch.
  const auto native = [&](const char* name) {
    return std::filesystem::path(folder.File(name)).make_preferred().string();
  };
  const int status = std::system(
      (program + " " + arguments + " >" + native("stdout") + " 2>" + native("stderr")).c_str());
#ifdef _WIN32
  const int code = status;
#else
  const int code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
#endif
  return {code, folder.Bytes("stdout"), folder.Bytes("stderr")};
}

#define EXPECT_SAYS(result, wanted) \
  EXPECT_NE((result).err.find(wanted), std::string::npos) << (result).err

/// @return a job with its "%s" replaced by a file.
inline std::string JobOn(std::string job, const std::string& file) {
  return job.replace(job.find("%s"), 2, file);
}

/// @return the hashes that a run printed, each once.
inline std::set<std::string> HashesIn(const std::string& lines) {
  std::set<std::string> hashes;
  std::istringstream in(lines);
  for (std::string frame, size, layout, hash; in >> frame >> size >> layout >> hash;) {
    hashes.insert(hash);
  }
  return hashes;
}

class HostRun : public testing::Test {
 protected:
  Result Run(const std::string& arguments) { return RunHost(folder_, arguments); }
  /// A run that must end well.
  Result RunWell(const std::string& arguments) {
    const Result result = Run(arguments);
    EXPECT_EQ(result.code, 0) << arguments << "\n" << result.err;
    return result;
  }
  /// A run that must end with @p code and say @p words.
  void ExpectRefusal(const std::string& arguments, int code, const std::string& words) {
    const Result result = Run(arguments);
    EXPECT_EQ(result.code, code) << arguments << "\n" << result.err;
    EXPECT_SAYS(result, words);
  }
  std::string File(const std::string& name) { return folder_.File(name); }
  std::string Clip(const std::string& name, int width, int height, int frames) {
    return folder_.Make(name, MakeY4m(width, height, frames));
  }
  ScratchFolder folder_;
};

}  // namespace zorhost::test
