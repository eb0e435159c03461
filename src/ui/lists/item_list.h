// The list of all items of a kind, as rows and columns of texts in the order that the user wants to see them in. The
// store keeps its own order. Fast for as many items as the store takes: only what is shown is looked at.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "session/session.h"
#include "ui/item_texts.h"

namespace ui::lists {

enum class Field {
  Place,  // index in the store
  Number,
  Name,
  Symbol,  // the picture alone
  SymbolName,
  Latitude,   // or the zone
  Longitude,  // or easting and northing
  Comment,
  Time,
  Altitude,
  Depth,
  Distance,  // from the reference position
  Bearing,   // from there
  Proximity,
  Track,  // where a track or a segment begins
  Leg,    // from the point before
};

struct Column {
  Field field;
  int width;  // pixels of a plain screen, where the settings say nothing
};

// Where the settings keep the widths of the list's columns; empty for a list without.
[[nodiscard]] std::span<int> saved_widths(store::Settings& settings, char kind);

class ItemList {
 public:
  // The session must outlive the list. A kind is 'W', 'T', 'I' or 'P'.
  ItemList(const session::Session& session, char kind);

  // To be called when items have changed: takes all of them, in the chosen order. The same when settings have changed.
  void rebuild();

  // The same, and where the items of these indices are now, in the same order; 0 for those that have gone.
  [[nodiscard]] std::vector<int> rebuild_and_follow(const std::vector<int>& indices);

  [[nodiscard]] std::span<const Column> columns() const { return columns_; }
  [[nodiscard]] std::string title(int column) const;
  [[nodiscard]] bool is_number(int column) const;

  [[nodiscard]] int row_count() const { return static_cast<int>(order_.size()); }
  // The store's index of what a row shows, and the row of an index; -1 when it is in none.
  [[nodiscard]] int item_of(int row) const { return order_[static_cast<std::size_t>(row)]; }
  [[nodiscard]] int row_of(int index) const;

  // Rows whose item has gone since rebuild() are empty, in use and not selected.
  [[nodiscard]] std::string text(int row, int column) const;
  [[nodiscard]] std::optional<int> symbol(int row) const;
  [[nodiscard]] bool is_selected(int row) const;
  [[nodiscard]] bool is_in_use(int row) const;

  // By a column; when it is by that already, the other way round. Values not known are last either way, equal ones keep
  // the order of the store.
  void sort(int column);
  [[nodiscard]] int sort_column() const { return sort_column_; }  // -1: in the order of the store
  [[nodiscard]] bool is_ascending() const { return ascending_; }

 private:
  [[nodiscard]] Field field_of(int column) const { return columns_[static_cast<std::size_t>(column)].field; }
  [[nodiscard]] std::optional<store::ItemRecord> record(int row) const;
  [[nodiscard]] double number(Field field, const store::ItemRecord& item, int index) const;
  [[nodiscard]] std::string text_of(Field field, const store::ItemRecord& item, int index) const;
  [[nodiscard]] double leg(const store::ItemRecord& item, int index) const;
  [[nodiscard]] bool sorts_as_number(Field field) const;
  void sort_rows();

  const session::Session& session_;
  char kind_;
  std::span<const Column> columns_;
  std::optional<ItemTexts> texts_;
  std::optional<geodesy::Position> reference_;
  std::vector<int> order_;              // indices of the store by row
  std::vector<std::uint32_t> numbers_;  // of the items by index, as they were at rebuild(); none for track points
  int sort_column_ = -1;
  bool ascending_ = true;
};

}  // namespace ui::lists
