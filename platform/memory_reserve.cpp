// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/memory_reserve.h"

#include <cstdint>
#include <new>

namespace zor {

void* MemoryReserve::Allocate(std::size_t bytes) noexcept {
  if (bytes > SIZE_MAX - sizeof(Header)) return nullptr;
  if (Header* const waiting = TakeWaiting(bytes)) return waiting + 1;
  void* place = behind_.allocate(sizeof(Header) + bytes);
  if (place == nullptr && EmptyAllPlaces()) place = behind_.allocate(sizeof(Header) + bytes);
  return place != nullptr ? new (place) Header{bytes} + 1 : nullptr;
}

void MemoryReserve::Free(void* block) noexcept {
  Header* const header = static_cast<Header*>(block) - 1;
  if (header->bytes < kLeastBytes || header->bytes > kMostBytes || closed_) {
    behind_.free(header);
  } else {
    KeepWaiting(header);
  }
}

void MemoryReserve::Close() noexcept {
  closed_ = true;
  EmptyAllPlaces();
}

/// @return the first block in waiting that is large enough and at most an eighth larger, or null.
MemoryReserve::Header* MemoryReserve::TakeWaiting(std::size_t bytes) noexcept {
  if (bytes < kLeastBytes) return nullptr;
  for (std::atomic<Header*>& place : places_) {
    // Only who has taken a block out may look at it: another thread could free it meanwhile.
    Header* const block = place.load() != nullptr ? place.exchange(nullptr) : nullptr;
    if (block == nullptr) continue;
    if (block->bytes >= bytes && block->bytes - bytes <= bytes / 8) {
      waitingBytes_ -= block->bytes;
      return block;
    }
    Header* none = nullptr;
    if (!place.compare_exchange_strong(none, block)) {
      waitingBytes_ -= block->bytes;
      behind_.free(block);
    }
  }
  return nullptr;
}

void MemoryReserve::KeepWaiting(Header* block) noexcept {
  const std::size_t place = nextPlace_++ % kPlaces;
  waitingBytes_ += block->bytes;
  if (Header* const displaced = places_[place].exchange(block)) {
    waitingBytes_ -= displaced->bytes;
    behind_.free(displaced);
  }
  for (std::size_t i = 1; i < kPlaces && waitingBytes_ > kMostBytes; ++i) {
    EmptyPlace((place + i) % kPlaces);  // from the one that has waited longest on
  }
}

/// @return whether a block waited there.
bool MemoryReserve::EmptyPlace(std::size_t place) noexcept {
  Header* const block = places_[place].exchange(nullptr);
  if (block == nullptr) return false;
  waitingBytes_ -= block->bytes;
  behind_.free(block);
  return true;
}

/// @return whether any block waited.
bool MemoryReserve::EmptyAllPlaces() noexcept {
  bool any = false;
  for (std::size_t place = 0; place < kPlaces; ++place) any |= EmptyPlace(place);
  return any;
}

#ifdef __SANITIZE_ADDRESS__

// The sanitizer sees every block come and go, so that it finds uses after that, and accesses in
// front of a block.
MemoryCalls ReservedMemoryCalls() noexcept {
  return NativeMemoryCalls();
}

#else

namespace {

/// Outlasts every static object: a host may let go of surfaces at its very end. They are given back
/// to the heap then at once.
MemoryReserve& Reserve() noexcept {
  alignas(MemoryReserve) static unsigned char storage[sizeof(MemoryReserve)];
  static MemoryReserve& reserve = *new (storage) MemoryReserve(NativeMemoryCalls());
  static const struct ClosedAtEnd {
    ~ClosedAtEnd() { reserve.Close(); }
  } closedAtEnd;
  return reserve;
}

}  // namespace

MemoryCalls ReservedMemoryCalls() noexcept {
  return {[](std::size_t bytes) { return Reserve().Allocate(bytes); },
          [](void* block) { Reserve().Free(block); }};
}

#endif

}  // namespace zor
