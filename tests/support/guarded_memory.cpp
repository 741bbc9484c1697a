// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "support/guarded_memory.h"

#include <cstring>
#include <stdexcept>

#ifdef _WIN32
#include <zorsurface/types.h>  // and with it <windows.h>, without its macros min and max
#else
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace zor::test {
namespace {

constexpr std::uint8_t kGuardByte = 0xC3;

#ifdef _WIN32
std::size_t PageBytes() {
  SYSTEM_INFO info;
  GetSystemInfo(&info);
  return info.dwPageSize;
}
std::uint8_t* Map(std::size_t bytes, std::size_t page) {
  auto* base = static_cast<std::uint8_t*>(VirtualAlloc(nullptr, bytes, MEM_RESERVE, PAGE_NOACCESS));
  if (base == nullptr ||
      VirtualAlloc(base + page, bytes - 2 * page, MEM_COMMIT, PAGE_READWRITE) == nullptr) {
    throw std::runtime_error("no guarded memory");
  }
  return base;
}
void Unmap(std::uint8_t* base, std::size_t) {
  VirtualFree(base, 0, MEM_RELEASE);
}
#else
std::size_t PageBytes() {
  return static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}
std::uint8_t* Map(std::size_t bytes, std::size_t page) {
  void* base = mmap(nullptr, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (base == MAP_FAILED) throw std::runtime_error("no guarded memory");
  auto* first = static_cast<std::uint8_t*>(base);
  if (mprotect(first + page, bytes - 2 * page, PROT_READ | PROT_WRITE) != 0) {
    throw std::runtime_error("no guarded memory");
  }
  return first;
}
void Unmap(std::uint8_t* base, std::size_t bytes) {
  munmap(base, bytes);
}
#endif

}  // namespace

GuardedMemory::GuardedMemory(std::size_t bytes, Edge edge, std::uint8_t fill)
    : pageBytes_(PageBytes()), bytes_(bytes) {
  const std::size_t pages = bytes / pageBytes_ + 1;
  mappingBytes_ = (pages + 2) * pageBytes_;
  mapping_ = Map(mappingBytes_, pageBytes_);
  std::uint8_t* first = mapping_ + pageBytes_;
  std::memset(first, kGuardByte, pages * pageBytes_);
  data_ = edge == Edge::kStart ? first : first + pages * pageBytes_ - bytes;
  std::memset(data_, fill, bytes);
}

GuardedMemory::~GuardedMemory() {
  Unmap(mapping_, mappingBytes_);
}

bool GuardedMemory::GuardsIntact() const {
  for (const std::uint8_t* p = mapping_ + pageBytes_; p < data_; ++p) {
    if (*p != kGuardByte) return false;
  }
  const std::uint8_t* end = mapping_ + mappingBytes_ - pageBytes_;
  for (const std::uint8_t* p = data_ + bytes_; p < end; ++p) {
    if (*p != kGuardByte) return false;
  }
  return true;
}

std::uint32_t Noise::Next() {
  state_ = state_ * 6364136223846793005ull + 1442695040888963407ull;
  const auto mixed = static_cast<std::uint32_t>(((state_ >> 18) ^ state_) >> 27);
  const auto turn = static_cast<std::uint32_t>(state_ >> 59);
  return (mixed >> turn) | (mixed << ((32 - turn) & 31));
}

std::uint8_t Noise::Byte() {
  static constexpr std::uint8_t kExtremes[] = {0, 1, 254, 255};
  const std::uint32_t word = Next();
  return (word >> 8) % 16 == 0 ? kExtremes[word & 3] : static_cast<std::uint8_t>(word >> 24);
}

void Noise::Fill(std::uint8_t* bytes, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) bytes[i] = Byte();
}

std::vector<std::uint8_t> Noise::Bytes(std::size_t count) {
  std::vector<std::uint8_t> bytes(count);
  Fill(bytes.data(), count);
  return bytes;
}

std::uint64_t Fnv1a(const std::uint8_t* bytes, std::size_t count, std::uint64_t hash) {
  for (std::size_t i = 0; i < count; ++i) hash = (hash ^ bytes[i]) * 0x100000001B3ull;
  return hash;
}

}  // namespace zor::test
