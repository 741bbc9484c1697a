// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

/// @file
/// zorkernels: shows the kernel table of the library and converts raw pictures through it.

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <fstream>
#include <functional>
#include <iterator>

#include "convert/feature_word.h"
#include "route.h"
#include "timing.h"

namespace zorkernels {
namespace {

struct Options {
  std::string form = "here";
  std::string from;
  std::string to;
  std::string input;
  std::string output;
  std::int32_t width = 0;
  std::int32_t height = 0;
  int row = -1;
  Conversion conversion;
};

/// The table as it was loaded, or as a processor with fewer instructions would hold it.
zor::KernelRows TableFor(const std::string& form) {
  if (form == "here") return zor::ConversionKernelTable;
  std::uint32_t features = 0;
  if (form != "plain") features |= zor::kFeatureMmx;
  if (form == "sse" || form == "sse2") features |= zor::kFeatureSse;
  if (form == "sse2") features |= zor::kFeatureSse2;
  if ((features & ~zor::CpuFeatureWord) != 0) {
    throw Refusal("this processor hasn't what the form '" + form + "' needs");
  }
  zor::KernelRows rows = zor::kPlainKernelRows;
  zor::WriteKernelForms(rows, features);
  return rows;
}

int List(const Options& options) {
  const zor::KernelRows table = TableFor(options.form);
  std::printf("%3s  %-14s%-16s%-18s%s\n", "row", "source", "destination", "straight", "smoothed");
  for (std::size_t row = 0; row < zor::kKernelRows; ++row) {
    const zor::KernelLayouts layouts = zor::LayoutsOfRow(row);
    std::printf("%3zu  %-14s%-16s%-18s%s\n", row, NameOf(layouts.source), NameOf(layouts.target),
                FormOf(table, row, false), FormOf(table, row, true));
  }
  return 0;
}

/// One line a row: milliseconds of each entry in its plain form and in the chosen one.
int Time(const Options& options) {
  const zor::KernelRows table = TableFor(options.form);
  std::printf("%3s  %-14s%-16s%24s%24s\n", "row", "source", "destination", "straight: plain, here",
              "smoothed: plain, here");
  for (std::size_t row = 0; row < zor::kKernelRows; ++row) {
    const zor::KernelLayouts layouts = zor::LayoutsOfRow(row);
    std::printf("%3zu  %-14s%-16s", row, NameOf(layouts.source), NameOf(layouts.target));
    for (const bool smoothed : {false, true}) {
      if (FormOf(table, row, smoothed) == std::string("-")) continue;
      std::printf("%15.3f %8.3f",
                  TimeEntry(zor::kPlainKernelRows, row, smoothed, options.width, options.height),
                  TimeEntry(table, row, smoothed, options.width, options.height));
    }
    std::printf("\n");
  }
  return 0;
}

int Layouts() {
  for (const LayoutName& name : LayoutNames()) std::printf("%-15s%s\n", name.name, name.bytes);
  return 0;
}

std::vector<std::uint8_t> ReadAll(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw Refusal(path + ": can't be opened");
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void WriteAll(const std::string& path, const std::vector<std::uint8_t>& bytes) {
  std::ofstream out(path, std::ios::binary);
  out.write(reinterpret_cast<const char*>(bytes.data()),
            static_cast<std::streamsize>(bytes.size()));
  out.close();
  if (!out) throw Refusal(path + ": can't be written");
}

int Convert(const Options& options) {
  const bool byRow = options.row >= 0;
  if (byRow == !(options.from.empty() && options.to.empty()) ||
      options.from.empty() != options.to.empty()) {
    throw Refusal("a conversion is told by --row, or by --from and --to");
  }
  const zor::KernelLayouts layouts =
      byRow ? zor::LayoutsOfRow(static_cast<std::size_t>(options.row))
            : zor::KernelLayouts{LayoutFromName(options.from), LayoutFromName(options.to)};
  const std::vector<std::size_t> route =
      byRow ? std::vector<std::size_t>{static_cast<std::size_t>(options.row)}
            : FindRoute(layouts.source, layouts.target);
  RawPicture source(layouts.source, options.width, options.height);
  source.FromFile(ReadAll(options.input));
  RawPicture result = ConvertBy(TableFor(options.form), route, std::move(source), layouts.target,
                                options.conversion);
  WriteAll(options.output, result.ToFile());
  for (const std::size_t row : route) std::printf("row %zu\n", row);
  return 0;
}

int Main(int argc, char** argv) {
  CLI::App app("zorkernels: the table of all conversion kernels");
  app.require_subcommand(1);
  // Otherwise a path that begins with a slash counts as an option on Windows.
  app.allow_windows_style_options(false);
  Options options;
  std::function<int()> action;
  const auto addForm = [&options](CLI::App* command) {
    command
        ->add_option("--form", options.form,
                     "The best form to take: plain, mmx, sse, sse2, or what this processor has")
        ->check(CLI::IsMember({"here", "plain", "mmx", "sse", "sse2"}))
        ->capture_default_str();
  };

  CLI::App* list = app.add_subcommand("list", "Show the rows and the form of each entry");
  addForm(list);
  list->callback([&] { action = [&] { return List(options); }; });

  CLI::App* layouts = app.add_subcommand("layouts", "Show the layouts and their bytes in a file");
  layouts->callback([&] { action = Layouts; });

  CLI::App* time = app.add_subcommand("time", "Show how many milliseconds each entry takes");
  options.width = 1920;
  options.height = 1080;
  time->add_option("--width", options.width, "Pixels of a row")
      ->check(CLI::Range(1, 32768))
      ->capture_default_str();
  time->add_option("--height", options.height, "Rows")
      ->check(CLI::Range(1, 32768))
      ->capture_default_str();
  addForm(time);
  time->callback([&] { action = [&] { return Time(options); }; });

  CLI::App* convert = app.add_subcommand("convert", "Convert a raw picture");
  convert->add_option("input", options.input, "A file of one picture")->required();
  convert->add_option("output", options.output, "The file to write")->required();
  convert->add_option("--width", options.width, "Pixels of a row")
      ->required()
      ->check(CLI::Range(1, 32768));
  convert->add_option("--height", options.height, "Rows")->required()->check(CLI::Range(1, 32768));
  convert->add_option("--row", options.row, "Through this row of the table")
      ->check(CLI::Range(0, static_cast<int>(zor::kKernelRows) - 1));
  convert->add_option("--from", options.from, "Layout of the input, or");
  convert->add_option("--to", options.to, "to this layout, by the fewest rows");
  convert->add_flag("--smooth", options.conversion.smoothed, "Take the entry with the row filter");
  convert
      ->add_option("--threshold", options.conversion.threshold,
                   "rgb32-keyed: luma above it has 255 in the fourth byte")
      ->capture_default_str();
  addForm(convert);
  convert->callback([&] { action = [&] { return Convert(options); }; });

  CLI11_PARSE(app, argc, argv);
  return action();
}

}  // namespace
}  // namespace zorkernels

int main(int argc, char** argv) {
  try {
    return zorkernels::Main(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "zorkernels: %s\n", error.what());
    return 2;
  }
}
