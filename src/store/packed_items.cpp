#include "store/packed_items.h"

#include <array>
#include <bit>
#include <cstring>
#include <type_traits>
#include <utility>

namespace store {
namespace {

constexpr std::size_t kWord = sizeof(std::uint64_t);
constexpr std::size_t kWords = sizeof(ItemRecord) / kWord;
using Words = std::array<std::uint64_t, kWords>;

static_assert(std::is_trivially_copyable_v<ItemRecord>);
static_assert(sizeof(Words) == sizeof(ItemRecord) && kWords <= 64);

Words words_of(const ItemRecord& item) {
  Words words;
  std::memcpy(words.data(), &item, sizeof(words));
  return words;
}

std::size_t packed_size(std::uint64_t mask) { return 1 + static_cast<std::size_t>(std::popcount(mask)); }

std::uint64_t mask_of(const Words& words) {
  std::uint64_t mask = 0;
  for (std::size_t i = 0; i < kWords; ++i)
    if (words[i] != 0) mask |= std::uint64_t{1} << i;
  return mask;
}

}  // namespace

ItemRecord PackedItems::operator[](std::size_t index) const {
  auto from = words_.begin() + static_cast<std::ptrdiff_t>(starts_[index]);
  Words words{};
  for (std::uint64_t mask = *from; mask != 0; mask &= mask - 1)
    words[static_cast<std::size_t>(std::countr_zero(mask))] = *++from;
  ItemRecord item;
  std::memcpy(static_cast<void*>(&item), words.data(), sizeof(words));
  return item;
}

void PackedItems::append_words(const ItemRecord& item) {
  const Words words = words_of(item);
  words_.push_back(mask_of(words));
  for (const std::uint64_t word : words)
    if (word != 0) words_.push_back(word);
}

void PackedItems::push_back(const ItemRecord& item) {
  starts_.push_back(static_cast<std::uint32_t>(words_.size()));
  append_words(item);
}

void PackedItems::replace(std::size_t index, const ItemRecord& item) {
  const Words words = words_of(item);
  const std::uint64_t mask = mask_of(words);
  auto to = words_.begin() + static_cast<std::ptrdiff_t>(starts_[index]);
  const std::size_t old_size = packed_size(*to);
  if (packed_size(mask) <= old_size) {
    wasted_ += old_size - packed_size(mask);
    *to = mask;
    for (const std::uint64_t word : words)
      if (word != 0) *++to = word;
  } else {
    wasted_ += old_size;
    starts_[index] = static_cast<std::uint32_t>(words_.size());
    append_words(item);
  }
  if (wasted_ > words_.size() / 2) drop_waste();
}

void PackedItems::drop_waste() {
  PackedItems kept;
  for (std::size_t i = 0; i < size(); ++i) kept.push_back((*this)[i]);
  *this = std::move(kept);
}

void PackedItems::reorder(const std::vector<std::uint32_t>& order) {
  std::vector<std::uint32_t> starts;
  starts.reserve(order.size());
  for (const std::uint32_t index : order) starts.push_back(starts_[index]);
  starts_ = std::move(starts);
}

}  // namespace store
