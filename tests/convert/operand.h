// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Operands of kernel tests: a statement runs on an operand first and leaves behind which bytes the
/// kernel may touch and what they must be afterwards; then the kernel runs on exactly those bytes,
/// next to pages without access.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "convert/feature_word.h"
#include "support/guarded_memory.h"
#include "support/with_features.h"

namespace zor::test {

/// A run of bytes around offset 0, which is where the kernel's pointer stands.
class Operand {
 public:
  static constexpr std::ptrdiff_t kReach = 12000;

  explicit Operand(std::uint64_t seed) : before_(Noise(seed).Bytes(2 * kReach)), after_(before_) {}

  /// Forgets what the last statement did.
  void Reset() {
    if (low_ < high_) {
      std::copy(before_.begin() + kReach + low_, before_.begin() + kReach + high_,
                after_.begin() + kReach + low_);
    }
    low_ = kReach;
    high_ = -kReach;
  }

  std::uint8_t Get(std::ptrdiff_t offset) {
    Touch(offset);
    return after_[static_cast<std::size_t>(kReach + offset)];
  }
  void Put(std::ptrdiff_t offset, int value) {
    Touch(offset);
    after_[static_cast<std::size_t>(kReach + offset)] = static_cast<std::uint8_t>(value);
  }

  std::ptrdiff_t low() const { return low_ < high_ ? low_ : 0; }
  std::size_t size() const { return low_ < high_ ? static_cast<std::size_t>(high_ - low_) : 0; }
  const std::uint8_t* before() const { return before_.data() + kReach + low(); }
  const std::uint8_t* after() const { return after_.data() + kReach + low(); }

 private:
  void Touch(std::ptrdiff_t offset) {
    if (offset < -kReach || offset >= kReach) {
      ADD_FAILURE() << "operand too short for offset " << offset;
      offset = 0;
    }
    low_ = std::min(low_, offset);
    high_ = std::max(high_, offset + 1);
  }

  std::vector<std::uint8_t> before_;
  std::vector<std::uint8_t> after_;
  std::ptrdiff_t low_ = kReach;
  std::ptrdiff_t high_ = -kReach;
};

/// Guarded memory that one operand after the other is laid into, flush with one of its edges.
class Bench {
 public:
  explicit Bench(GuardedMemory::Edge edge)
      : edge_(edge), memory_(2 * Operand::kReach + 2 * kMargin, edge, kFill) {}

  /// Copies the bytes that a kernel may touch. @return the pointer for the kernel.
  std::uint8_t* Lay(const Operand& operand, std::ptrdiff_t shift) {
    size_ = operand.size();
    start_ = edge_ == GuardedMemory::Edge::kStart ? memory_.data() + shift
                                                  : memory_.data() + memory_.size() - size_ - shift;
    std::memset(start_ - (edge_ == GuardedMemory::Edge::kStart ? shift : kMargin), kFill,
                size_ + kMargin + static_cast<std::size_t>(shift));
    if (size_ != 0) std::memcpy(start_, operand.before(), size_);
    return start_ - operand.low();
  }

  /// @return the offset from the kernel's pointer of the first byte that isn't as the statement
  ///         left it, or "" if all are, neighbours included.
  std::string Compare(const Operand& operand, std::ptrdiff_t shift) const {
    const bool same = size_ == 0 || std::memcmp(start_, operand.after(), size_) == 0;
    for (std::size_t i = 0; !same && i < size_; ++i) {
      if (start_[i] != operand.after()[i]) {
        return "offset " + std::to_string(operand.low() + static_cast<std::ptrdiff_t>(i)) + ": " +
               std::to_string(start_[i]) + ", not " + std::to_string(operand.after()[i]);
      }
    }
    const bool atStart = edge_ == GuardedMemory::Edge::kStart;
    const std::ptrdiff_t front = atStart ? shift : kMargin;
    const std::ptrdiff_t rear = atStart ? kMargin : shift;
    for (std::ptrdiff_t i = 1; i <= front; ++i) {
      if (start_[-i] != kFill) return "a byte in front is written";
    }
    for (std::ptrdiff_t i = 0; i < rear; ++i) {
      if (start_[size_ + static_cast<std::size_t>(i)] != kFill) return "a byte behind is written";
    }
    return "";
  }

 private:
  static constexpr std::uint8_t kFill = 0x5A;
  static constexpr std::ptrdiff_t kMargin = 128;

  GuardedMemory::Edge edge_;
  GuardedMemory memory_;
  std::uint8_t* start_ = nullptr;
  std::size_t size_ = 0;
};

/// A kernel in one of its forms; the level means something for SSE2 forms only.
template <class Kernel>
struct Form {
  const char* name;
  Kernel* kernel;
  VectorLevel level = VectorLevel::kSse2;
};

/// A statement's operands, laid out and compared together.
class OperandSet {
 public:
  explicit OperandSet(std::vector<Operand*> operands) : operands_(std::move(operands)) {
    for (std::size_t i = 0; i < operands_.size(); ++i) {
      benches_[0].emplace_back(new Bench(GuardedMemory::Edge::kStart));
      benches_[1].emplace_back(new Bench(GuardedMemory::Edge::kEnd));
    }
  }
  ~OperandSet() {
    for (auto& side : benches_) {
      for (Bench* bench : side) delete bench;
    }
  }
  OperandSet(const OperandSet&) = delete;
  OperandSet& operator=(const OperandSet&) = delete;

  void Reset() {
    for (Operand* operand : operands_) operand->Reset();
  }

  /// Runs `kernel(pointers)` with the operands against either edge, `shift` bytes away from it.
  /// @return what is wrong, or "".
  template <class Run>
  std::string Check(std::ptrdiff_t shift, const Run& run) {
    for (auto& side : benches_) {
      std::vector<std::uint8_t*> pointers;
      for (std::size_t i = 0; i < operands_.size(); ++i) {
        pointers.push_back(side[i]->Lay(*operands_[i], shift));
      }
      run(pointers);
      for (std::size_t i = 0; i < operands_.size(); ++i) {
        const std::string wrong = side[i]->Compare(*operands_[i], shift);
        if (!wrong.empty()) {
          return "operand " + std::to_string(i) +
                 (&side == &benches_[0] ? " at start" : " at end") + ", " + wrong;
        }
      }
    }
    return "";
  }

 private:
  std::vector<Operand*> operands_;
  std::vector<Bench*> benches_[2];
};

/// Sizes and shifts that every form is run over: widths 0 to 100 and heights 0 to 20 of both signs,
/// and one of them at every offset within a vector.
template <class Check>
void ForEachShape(const Check& check) {
  for (std::int32_t height = -20; height <= 20; ++height) {
    for (std::int32_t width = 0; width <= 100; ++width) {
      if (!check(width, height, (width * 7 + height + 20) % 3)) return;
    }
  }
  // Wide enough for whole and overlapping blocks of every width.
  for (std::int32_t width : {127, 128, 130, 191, 200}) {
    if (!check(width, 4, 0) || !check(width, -6, 1)) return;
  }
  for (std::ptrdiff_t shift = 0; shift < 64; ++shift) {
    if (!check(150, 4, shift)) return;
  }
}

}  // namespace zor::test
