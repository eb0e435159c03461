// A list of records held without their zeros: a track point takes 60 bytes and a plain waypoint about 100 of the
// 496 that a record has, so 100,000 of them fit where a tenth would.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <iterator>
#include <vector>

#include "store/item_record.h"

namespace store {

class PackedItems {
 public:
  // Walks over the records by value.
  class Iterator {
   public:
    using iterator_category = std::input_iterator_tag;
    using value_type = ItemRecord;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = ItemRecord;

    Iterator() = default;
    Iterator(const PackedItems* items, std::size_t index) : items_(items), index_(index) {}
    ItemRecord operator*() const { return (*items_)[index_]; }
    Iterator& operator++() {
      ++index_;
      return *this;
    }
    Iterator operator++(int) { return {items_, index_++}; }
    friend bool operator==(const Iterator& left, const Iterator& right) { return left.index_ == right.index_; }

   private:
    const PackedItems* items_ = nullptr;
    std::size_t index_ = 0;
  };

  [[nodiscard]] std::size_t size() const { return starts_.size(); }
  [[nodiscard]] bool empty() const { return starts_.empty(); }
  // Counted from 0, and below size().
  [[nodiscard]] ItemRecord operator[](std::size_t index) const;
  [[nodiscard]] Iterator begin() const { return {this, 0}; }
  [[nodiscard]] Iterator end() const { return {this, size()}; }

  void push_back(const ItemRecord& item);
  void replace(std::size_t index, const ItemRecord& item);
  // The record that was at order[i] comes to place i; every index must be there once.
  void reorder(const std::vector<std::uint32_t>& order);

 private:
  void append_words(const ItemRecord& item);
  void drop_waste();

  // Each record: one word that tells which words of the record are not zero, then those.
  std::deque<std::uint64_t> words_;
  std::vector<std::uint32_t> starts_;
  std::size_t wasted_ = 0;  // words that no record uses any longer
};

}  // namespace store
