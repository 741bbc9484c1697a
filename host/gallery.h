// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// A page of pictures: HTML that needs nothing but the PNG files in the folder beside it.

#include <string>
#include <vector>

#include "executor.h"

namespace zorhost {

/// One picture of the page.
struct Exhibit {
  std::string file;   ///< relative to the page
  std::string title;  ///< what was done
  std::string facts;  ///< size, format, hash, milliseconds
  int width = 0;
};

struct ExhibitRow {
  std::string title;
  std::string note;
  std::vector<Exhibit> exhibits;
};

/// The whole page as text. @param heading stands above all, such as the input's name.
std::string GalleryPage(const std::string& heading, const std::vector<ExhibitRow>& rows);

/// Runs plans on one picture, writes what comes out beside the page and tells about it.
class Exhibitor {
 public:
  /// @param page the HTML file; pictures go into a folder named as it is, without its ending.
  Exhibitor(const Library& library, std::string page);

  /// @param name of the picture's file, without an ending. The plan's result is hashed and timed;
  /// planar and packed results are shown as RGB32 that they are converted to.
  Exhibit Show(const Picture& picture, const Plan& plan, const std::string& name,
               const std::string& title) const;

 private:
  const Library& library_;
  std::string folder_;
  std::string relative_;
};

}  // namespace zorhost
