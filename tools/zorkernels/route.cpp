// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "route.h"

#include <map>
#include <utility>

#include "convert/table/forwards.h"

namespace zorkernels {
namespace {

bool IsThreePlanes(Layout layout) {
  return layout == Layout::kYuv420 || layout == Layout::kYvu420;
}

/// As which layout of the table a picture is read: what differs is the place of its planes, or a
/// fourth byte that is ignored.
Layout AsSource(Layout layout) {
  switch (layout) {
    case Layout::kYvu420:
      return Layout::kYuv420;
    case Layout::kLumaChroma16:
      return Layout::kLumaChroma;
    case Layout::kRgb32Luma:
    case Layout::kRgb32Keyed:
      return Layout::kRgb32;
    default:
      return layout;
  }
}

/// As which layout it is written.
Layout AsTarget(Layout layout) {
  switch (layout) {
    case Layout::kYvu420:
      return Layout::kYuv420;
    case Layout::kLumaChroma:
      return Layout::kLumaChroma16;
    default:
      return layout;
  }
}

/// Calls an entry by its argument list.
struct Call {
  RawPicture& to;
  RawPicture& from;
  const Conversion& conversion;

  void operator()(std::monostate) const { throw Refusal("the row has no entry with the filter"); }
  void operator()(zor::MemoryKernel* kernel) const {
    kernel(to.pixels(), from.pixels(), from.fileBytes());
  }
  void operator()(zor::PackedKernel* kernel) const {
    kernel(to.pixels(), to.stride(), from.pixels(), from.stride(), from.width(), from.height());
  }
  void operator()(zor::SourceWritingKernel* kernel) const {
    kernel(to.pixels(), to.stride(), from.pixels(), from.stride(), from.width(), from.height());
  }
  void operator()(zor::FromPlanesKernel* kernel) const {
    kernel(to.pixels(), to.stride(), from.pixels(), from.u(), from.v(), from.stride(),
           from.chromaStride(), from.width(), from.height());
  }
  void operator()(zor::KeyedFromPlanesKernel* kernel) const {
    kernel(to.pixels(), to.stride(), from.pixels(), from.u(), from.v(), from.stride(),
           from.chromaStride(), from.width(), from.height(), conversion.threshold);
  }
  void operator()(zor::FromLumaChromaKernel* kernel) const {
    kernel(to.pixels(), to.stride(), from.pixels(), from.chroma(), from.stride(),
           from.chromaStride(), from.width(), from.height());
  }
  void operator()(zor::ToPlanesKernel* kernel) const {
    kernel(to.pixels(), to.u(), to.v(), to.stride(), to.chromaStride(), from.pixels(),
           from.stride(), from.width(), from.height());
  }
  /// Addresses of the target stand in the source's order: the exchange is the kernel's.
  void operator()(zor::PlanesToPlanesKernel* kernel) const {
    RawPicture order(from.layout(), from.width(), from.height());
    const std::ptrdiff_t u = order.u() - order.pixels();
    const std::ptrdiff_t v = order.v() - order.pixels();
    kernel(to.pixels(), to.pixels() + u, to.pixels() + v, to.stride(), to.chromaStride(),
           from.pixels(), from.u(), from.v(), from.stride(), from.chromaStride(), from.width(),
           from.height());
  }
};

}  // namespace

std::vector<std::size_t> FindRoute(Layout source, Layout target) {
  if (IsThreePlanes(source) && IsThreePlanes(target)) {
    return {source == target ? std::size_t{4} : std::size_t{5}};
  }
  // Breadth first: for every layout that is reached, the rows that lead there.
  std::vector<Layout> next = {AsSource(source)};
  std::map<Layout, std::vector<std::size_t>> reached = {{next.front(), {}}};
  const Layout goal = AsTarget(target);
  while (!next.empty()) {
    const Layout at = next.front();
    next.erase(next.begin());
    for (std::size_t row = 0; row < zor::kKernelRows; ++row) {
      const zor::KernelLayouts layouts = zor::LayoutsOfRow(row);
      if (layouts.source != at) continue;
      std::vector<std::size_t> rows = reached[at];
      rows.push_back(row);
      if (layouts.target == goal) return rows;
      if (reached.try_emplace(layouts.target, std::move(rows)).second) {
        next.push_back(layouts.target);
      }
    }
  }
  throw Refusal(std::string("no rows lead from ") + NameOf(source) + " to " + NameOf(target));
}

void RunEntry(const zor::KernelRows& table, std::size_t row, const Conversion& conversion,
              RawPicture& source, RawPicture& target) {
  std::visit(Call{target, source, conversion},
             conversion.smoothed ? table[row].smoothed : table[row].straight);
}

RawPicture ConvertBy(const zor::KernelRows& table, const std::vector<std::size_t>& route,
                     RawPicture source, Layout target, const Conversion& conversion) {
  for (std::size_t step = 0; step < route.size(); ++step) {
    const std::size_t row = route[step];
    const bool last = step + 1 == route.size();
    RawPicture to(last ? target : zor::LayoutsOfRow(row).target, source.width(), source.height());
    RunEntry(table, row, {conversion.smoothed && step == 0, conversion.threshold}, source, to);
    source = std::move(to);
  }
  return source;
}

const char* FormOf(const zor::KernelRows& table, std::size_t row, bool smoothed) {
  static constexpr zor::KernelRows kForwards = zor::Forwards<false>();
  const auto entry = [row, smoothed](const zor::KernelRows& rows) -> const zor::KernelEntry& {
    return smoothed ? rows[row].smoothed : rows[row].straight;
  };
  const zor::KernelEntry& form = entry(table);
  if (form.index() == 0) return "-";
  if (form == entry(zor::kPlainKernelRows)) return "plain";
  if (form == entry(kForwards)) return "forward to plain";
  if (form == entry(zor::kSse2KernelRows)) return "sse2";
  return form == entry(zor::kSseKernelRows) ? "sse" : "mmx";
}

}  // namespace zorkernels
