// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <stb/stb_image_write.h>

#include <algorithm>

#include "exif_jpeg.h"
#include "host_run.h"
#include "still.h"

namespace zorhost {
namespace {

using test::HostRun;
using test::Result;

TEST_F(HostRun, TurnsPlanarClipsClockwiseSampleBySample) {
  const std::string clip = Clip("in.y4m", 32, 16, 1);
  const std::string in = folder_.Bytes("in.y4m");
  const std::string luma = in.substr(in.find("FRAME\n") + 6);
  for (const int by : {90, 180, -90, 450}) {
    RunWell("rotate " + clip + " -o " + File("o.raw") + " --by " + std::to_string(by) +
            " --verify");
    const std::string out = folder_.Bytes("o.raw");
    ASSERT_EQ(out.size(), 32u * 16 * 3 / 2);
    const int width = by == 180 ? 32 : 16;
    for (int y = 0; y < 16; ++y) {
      for (int x = 0; x < 32; ++x) {
        const int at = by == 180   ? (15 - y) * width + 31 - x
                       : by == -90 ? (31 - x) * width + y
                                   : x * width + 15 - y;
        ASSERT_EQ(luma[y * 32 + x], out[at]) << by << " " << x << " " << y;
      }
    }
  }
}

TEST_F(HostRun, GrayAndRgbTurnTheSameWay) {
  std::string gray(32 * 16, '\0');
  for (int y = 2; y < 6; ++y) gray.replace(y * 32 + 2, 4, 4, '\xFF');  // in the left upper corner
  folder_.Make("in.pgm", "P5 32 16 255\n" + gray);
  for (const char* to : {"gray", "rgb24", "rgb32", "yuv420"}) {
    const bool isGray = std::string(to) == "gray";
    RunWell("rotate " + File("in.pgm") + " -o " + File(isGray ? "o.pgm" : "o.raw") +
            " --by 90 -q --to " + to);
    const std::string out = folder_.Bytes(isGray ? "o.pgm" : "o.raw");
    const int bytes = std::string(to) == "rgb24" ? 3 : std::string(to) == "rgb32" ? 4 : 1;
    const char* first = out.data() + (isGray ? out.size() - 16 * 32 : 0);
    // The corner is the right upper one of the turned picture, of 16 x 32.
    EXPECT_GT(static_cast<std::uint8_t>(first[(3 * 16 + 12) * bytes]), 200) << to;
    EXPECT_LT(static_cast<std::uint8_t>(first[(3 * 16 + 4) * bytes]), 40) << to;
    EXPECT_LT(static_cast<std::uint8_t>(first[(28 * 16 + 12) * bytes]), 40) << to;
  }
}

TEST_F(HostRun, AutoObeysEveryOrientationOfExif) {
  Picture white(Layout::kRgb24, 32, 16);
  for (int y = 0; y < 8; ++y) std::fill_n(white.row(0, y), 3 * 8, 255);
  std::string jpeg;
  const auto append = [](void* to, void* data, int size) {
    static_cast<std::string*>(to)->append(static_cast<const char*>(data), size);
  };
  ASSERT_TRUE(stbi_write_jpg_to_func(append, &jpeg, 32, 16, 3, white.data(), 95));
  // Where the left upper corner of what is stored stands in what is seen.
  struct Seen {
    char exif;
    bool right, bottom, turned;
  };
  for (const Seen seen :
       {Seen{1, false, false, false}, Seen{2, true, false, false}, Seen{3, true, true, false},
        Seen{4, false, true, false}, Seen{5, false, false, true}, Seen{6, true, false, true},
        Seen{7, true, true, true}, Seen{8, false, true, true}}) {
    const std::vector<std::uint8_t> start = test::JpegStart(true, seen.exif);
    folder_.Make("in.jpg", std::string(start.begin(), start.end()) + jpeg.substr(2));
    RunWell("rotate " + File("in.jpg") + " -o " + File("o.png") + " --auto");
    const Still still = ReadStill(File("o.png"));
    ASSERT_EQ(still.info.width, seen.turned ? 16 : 32) << int{seen.exif};
    const int right = still.info.width - 5;
    const int bottom = still.info.height - 5;
    for (const bool r : {false, true}) {
      for (const bool b : {false, true}) {
        const int value = still.picture.row(0, b ? bottom : 4)[3 * (r ? right : 4)];
        const bool lit = r == seen.right && b == seen.bottom;
        EXPECT_TRUE(lit ? value > 200 : value < 60) << int{seen.exif} << r << b << " " << value;
      }
    }
  }
}

TEST_F(HostRun, RotateSaysWhatItNeeds) {
  const std::string clip = Clip("in.y4m", 32, 16, 1);
  const std::string out = " -o " + File("o.y4m");
  ExpectRefusal("rotate " + clip + out, 2, "give --by DEGREES, --auto or --flip");
  EXPECT_EQ(Run("rotate " + clip + out + " --auto --by 90").code, 2);
  EXPECT_EQ(Run("rotate " + clip + out + " --flip x").code, 2);
  EXPECT_EQ(Run("rotate " + clip + out + " --by 1.5").code, 2);
  // Turned as planar.
  Result result = RunWell("rotate " + clip + " -o " + File("o.png") + " --by 90 --to rgb24");
  EXPECT_EQ(result.err.find("unpainted"), std::string::npos) << result.err;
  result = RunWell("rotate " + File("o.png") + " -o " + File("p.png") + " --by 90");
  EXPECT_SAYS(result, "unpainted");
}

}  // namespace
}  // namespace zorhost
