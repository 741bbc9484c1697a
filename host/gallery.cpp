// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "gallery.h"

#include <algorithm>
#include <filesystem>

#include "frame_hash.h"
#include "picture_sink.h"
#include "text.h"

namespace zorhost {
namespace {

// Small results are shown enlarged, pixel by pixel.
constexpr int kSmallWidth = 160;
constexpr int kRuns = 3;

constexpr char kStyle[] = R"(
body { background: #d8d8d8; color: #222; font: 14px/1.4 sans-serif; margin: 24px; }
section { margin-bottom: 32px; }
h1, h2 { font-weight: 600; }
.row { display: flex; flex-wrap: wrap; gap: 16px; align-items: flex-start; }
figure { margin: 0; background: #fff; padding: 8px; border-radius: 4px; }
img { display: block; max-width: 420px; background: #888; }
img.small { width: 160px; image-rendering: pixelated; }
figcaption { margin-top: 6px; max-width: 420px; }
code { color: #555; font-size: 12px; }
)";

std::string Escaped(const std::string& text) {
  std::string out;
  for (const char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        out += c;
    }
  }
  return out;
}

}  // namespace

std::string GalleryPage(const std::string& heading, const std::vector<ExhibitRow>& rows) {
  std::string html =
      "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>" +
      Escaped(heading) + "</title>\n<style>" + kStyle + "</style>\n</head>\n<body>\n<h1>" +
      Escaped(heading) + "</h1>\n";
  for (const ExhibitRow& row : rows) {
    html += "<section>\n<h2>" + Escaped(row.title) + "</h2>\n";
    if (!row.note.empty()) html += "<p>" + Escaped(row.note) + "</p>\n";
    html += "<div class=\"row\">\n";
    for (const Exhibit& exhibit : row.exhibits) {
      const std::string file = Escaped(exhibit.file);
      html += "<figure><a href=\"" + file + "\"><img src=\"" + file + "\" alt=\"" +
              Escaped(exhibit.title) + "\"" +
              (exhibit.width < kSmallWidth ? " class=\"small\"" : "") + "></a><figcaption>" +
              Escaped(exhibit.title) + "<br><code>" + Escaped(exhibit.facts) +
              "</code></figcaption></figure>\n";
    }
    html += "</div>\n</section>\n";
  }
  return html + "</body>\n</html>\n";
}

Exhibitor::Exhibitor(const Library& library, std::string page) : library_(library) {
  const std::filesystem::path path(page);
  relative_ = path.stem().string();
  folder_ = (path.parent_path() / relative_).string();
  std::error_code error;
  std::filesystem::create_directories(folder_, error);
  if (error) throw OutputError(folder_ + ": " + error.message());
}

Exhibit Exhibitor::Show(const Picture& picture, const Plan& plan, const std::string& name,
                        const std::string& title) const {
  Plan timed = plan;
  timed.ReadAs(false, 0);
  Executor executor(library_, timed);
  Picture result;
  double best = 0.0;
  for (int i = 0; i < kRuns; ++i) {
    const double before = executor.timing().process;
    executor.Run(picture, Way::kDeferred, result);
    const double taken = executor.timing().process - before;
    best = i == 0 ? taken : std::min(best, taken);
  }
  Exhibit exhibit;
  exhibit.file = relative_ + "/" + name + ".png";
  exhibit.title = title;
  exhibit.facts = std::to_string(result.width()) + "x" + std::to_string(result.height()) + " " +
                  Traits(result.layout()).name + " " + HashText(HashPicture(result)) + " " +
                  FixedText(best * 1000.0, 2) + " ms";
  exhibit.width = result.width();
  if (!SinkTakes(SinkKind::kPng, result.layout())) {
    Plan shown = plan;
    shown.Convert(Layout::kRgb32);
    shown.ReadAs(false, 0);
    Executor(library_, shown).Run(picture, Way::kDeferred, result);
  }
  WritePicture(result, folder_ + "/" + name + ".png");
  return exhibit;
}

}  // namespace zorhost
