// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

// How runs of the program end: exit codes, messages, and what is left on the disk.
#include "host_run.h"
#ifndef _WIN32
#include <fcntl.h>
#include <signal.h>
#include <unistd.h>
#endif

namespace zorhost {
namespace {

using test::HostRun;
using test::MakeY4m;
using test::Result;

TEST_F(HostRun, HelpAndVersionEndWell) {
  EXPECT_EQ(Run("--help").code, 0);
  EXPECT_EQ(Run("resize --help").code, 0);
  EXPECT_EQ(Run("--version").code, 0);
}

TEST_F(HostRun, UsageErrorsEndWithTwo) {
  EXPECT_EQ(Run("").code, 2);
  EXPECT_EQ(Run("nonsense").code, 2);
  EXPECT_EQ(Run("convert").code, 2);
  const std::string convert = "convert " + Clip("in.y4m", 16, 16, 1);
  const std::string resize = "resize " + File("in.y4m") + " -o " + File("o.y4m");
  ExpectRefusal(convert + " -o " + File("o.png") + " --to rgb48", 2,
                "unknown format 'rgb48'; known: rgb24");
  ExpectRefusal(convert + " -o " + File("o.mov") + " --to rgb24", 2,
                "the ending decides the kind of output");
  ExpectRefusal(convert + " -o " + File("o.png") + " --to yuv420", 2,
                "can't hold yuv420; add --to rgb24");
  ExpectRefusal(convert + " --to rgb24", 2, "nothing to do");
  ExpectRefusal(resize + " --size 9x8", 2, "even width and height");
  ExpectRefusal(resize, 2, "either --size WxH or --scale N/M");
}

TEST_F(HostRun, MissingInputEndsWithThreeAndLeavesNothing) {
  ExpectRefusal("convert " + File("absent.y4m") + " -o " + File("o.png") + " --to rgb24", 3,
                "absent.y4m: No such file");
  EXPECT_FALSE(folder_.Has("o.png"));
}

TEST_F(HostRun, TinyInputEndsWithThree) {
  ExpectRefusal("convert " + Clip("in.y4m", 2, 2, 1) + " -o " + File("o.png") + " --to rgb24", 3,
                "2x2 is too small");
}

TEST_F(HostRun, ForeignChromaEndsWithThree) {
  ExpectRefusal("info " + folder_.Make("in.y4m", "YUV4MPEG2 W16 H16 C444\nFRAME\n"), 3,
                "Y4M chroma form C444 is not one the host reads");
}

TEST_F(HostRun, UnwritableOutputEndsWithFour) {
  ExpectRefusal("convert " + Clip("in.y4m", 16, 16, 1) + " -o " + File("no/such/folder/o.y4m") +
                    " --to yuv420",
                4, "o.y4m");
}

TEST_F(HostRun, SecondFrameIntoOnePictureEndsWithFour) {
  ExpectRefusal("convert " + Clip("in.y4m", 16, 16, 2) + " -o " + File("o.png") + " --to rgb24", 4,
                "holds one picture; write a run of them as out%04d.png");
}

TEST_F(HostRun, LibraryErrorsEndWithFiveCodeAndText) {
  const std::string convert = "convert " + Clip("in.y4m", 16, 16, 1) + " --to gray -o ";
  for (const char* output : {"o.png", "o.y4m"}) {
    ExpectRefusal(convert + File(output), 5, "yuv420 to gray: VED_E_UNSUPPORTED (0x81000001)");
    EXPECT_FALSE(folder_.Has(output));
    EXPECT_FALSE(folder_.Has(std::string(output) + ".part"));
  }
}

TEST_F(HostRun, TruncatedClipEndsWithThreeAndKeepsWholeFrames) {
  const std::string whole = MakeY4m(16, 16, 3);
  folder_.Make("in.y4m", whole.substr(0, whole.size() - 1));
  const Result result = Run("convert " + File("in.y4m") + " -o " + File("o.y4m") + " --to yuv420");
  EXPECT_EQ(result.code, 3);
  EXPECT_SAYS(result, "truncated in frame 2 (383 of 384 bytes)");
  EXPECT_SAYS(result, "the 2 whole frames before it were kept");
  const Result check = RunWell("info --frames " + File("o.y4m"));
  EXPECT_NE(check.out.find("frames         2"), std::string::npos) << check.out;
}

TEST_F(HostRun, InterruptEndsAfterTheFrameWithAWholeFile) {
#ifdef _WIN32
  GTEST_SKIP() << "a console's Ctrl-C can't be sent to one program";
#else
  int in[2];
  int err[2];
  ASSERT_EQ(pipe(in), 0);
  ASSERT_EQ(pipe(err), 0);
  const std::string output = File("o.y4m");
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    dup2(in[0], 0);
    dup2(err[1], 2);
    for (const int end : {in[0], in[1], err[0], err[1]}) close(end);
    execl("./zorhost", "zorhost", "convert", "-", "-o", output.c_str(), "--to", "yuv420",
          "--progress", "json", static_cast<char*>(nullptr));
    _exit(99);
  }
  close(in[0]);
  close(err[1]);
  // One frame and a half; the program then waits for the rest.
  const std::string clip = MakeY4m(16, 16, 2);
  const std::string part = clip.substr(0, clip.size() - 100);
  ASSERT_EQ(write(in[1], part.data(), part.size()), static_cast<ssize_t>(part.size()));
  std::string told;
  char c = 0;
  while (told.find("\"done\":1,") == std::string::npos && read(err[0], &c, 1) == 1) told += c;
  usleep(20000);
  EXPECT_EQ(kill(child, SIGINT), 0);
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  close(in[1]);
  while (read(err[0], &c, 1) == 1) told += c;
  close(err[0]);
  ASSERT_TRUE(WIFEXITED(status)) << told;
  EXPECT_EQ(WEXITSTATUS(status), 130) << told;
  EXPECT_NE(told.find("ended by interrupt"), std::string::npos) << told;
  EXPECT_FALSE(folder_.Has("o.y4m.part"));
  EXPECT_NE(Run("info --frames " + output).out.find("frames         1\n"), std::string::npos);
#endif
}

}  // namespace
}  // namespace zorhost
