#include "ui/lists/item_list.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <unordered_map>

#include "base/text.h"
#include "ui/stored_items.h"

namespace ui::lists {
namespace {

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

constexpr std::array kWaypointColumns{
    Column{Field::Name, 120},      Column{Field::Symbol, 40},   Column{Field::Latitude, 88},
    Column{Field::Longitude, 95},  Column{Field::Comment, 145}, Column{Field::Time, 155},
    Column{Field::Distance, 82},   Column{Field::Altitude, 70}, Column{Field::Depth, 70},
    Column{Field::SymbolName, 95}, Column{Field::Bearing, 67},  Column{Field::Number, 67},
};
// The first is hardly wider than its check box.
constexpr std::array kTrackColumns{
    Column{Field::Place, 30},    Column{Field::Latitude, 88}, Column{Field::Longitude, 95}, Column{Field::Time, 146},
    Column{Field::Altitude, 65}, Column{Field::Depth, 67},    Column{Field::Track, 130},    Column{Field::Leg, 60},
};
constexpr std::array kEventColumns{Column{Field::Symbol, 60}, Column{Field::Latitude, 88}, Column{Field::Longitude, 95},
                                   Column{Field::SymbolName, 82}};
constexpr std::array kProximityColumns{
    Column{Field::Name, 120},     Column{Field::Symbol, 40},    Column{Field::Latitude, 88},
    Column{Field::Longitude, 95}, Column{Field::Proximity, 82}, Column{Field::Comment, 145},
    Column{Field::Time, 155},     Column{Field::Distance, 82},  Column{Field::Bearing, 67},
};

std::span<const Column> columns_of(char kind) {
  switch (kind) {
    case 'W':
      return kWaypointColumns;
    case 'T':
      return kTrackColumns;
    case 'I':
      return kEventColumns;
    default:
      return kProximityColumns;
  }
}

std::string with_unit(std::string_view title, std::string_view unit) {
  return std::string(title) + " (" + std::string(unit) + ")";
}

double known(float metres) { return store::is_known(metres) ? static_cast<double>(metres) : kUnknown; }

bool is_unknown(double value) { return std::isnan(value); }
bool is_unknown(const std::string& text) { return text.empty(); }

// `keys` are those of the store's indices from 1.
template <typename Key>
void sort_by(std::vector<int>& order, const std::vector<Key>& keys, bool ascending) {
  std::ranges::stable_sort(order, [&](int left_index, int right_index) {
    const Key& left = keys[static_cast<std::size_t>(left_index) - 1];
    const Key& right = keys[static_cast<std::size_t>(right_index) - 1];
    if (is_unknown(left) || is_unknown(right)) return !is_unknown(left) && is_unknown(right);
    return ascending ? left < right : right < left;
  });
}

}  // namespace

std::span<int> saved_widths(store::Settings& settings, char kind) {
  switch (kind) {
    case 'W':
      return settings.WaypointListColumnWidths;
    case 'T':
      return settings.TrackListColumnWidths;
    case 'I':
      return settings.EventListColumnWidths;
    default:
      return {};
  }
}

ItemList::ItemList(const session::Session& session, char kind)
    : session_(session), kind_(kind), columns_(columns_of(kind)) {
  rebuild();
}

void ItemList::rebuild() {
  texts_.emplace(session_);
  reference_ = reference_position(session_.settings);
  order_.resize(static_cast<std::size_t>(count_of(session_.items, kind_)));
  numbers_.clear();
  // Track points are never put in another order, and have no numbers.
  for (int index = 1; kind_ != 'T' && index <= row_count(); ++index)
    numbers_.push_back(item_at(session_.items, kind_, index).number);
  sort_rows();
}

std::vector<int> ItemList::rebuild_and_follow(const std::vector<int>& indices) {
  const std::vector<std::uint32_t> before = numbers_;
  rebuild();
  std::vector<int> now;
  if (kind_ == 'T' || before == numbers_) {
    for (const int index : indices) now.push_back(index <= row_count() ? index : 0);
    return now;
  }
  std::unordered_map<std::uint32_t, int> index_of;
  for (std::size_t i = 0; i < numbers_.size(); ++i) index_of.emplace(numbers_[i], static_cast<int>(i) + 1);
  for (const int index : indices) {
    const auto place = index_of.find(before[static_cast<std::size_t>(index) - 1]);
    now.push_back(place == index_of.end() ? 0 : place->second);
  }
  return now;
}

std::string ItemList::title(int column) const {
  const bool utm = session_.settings.DMSMode == geodesy::Notation::Utm;
  switch (field_of(column)) {
    case Field::Place:
    case Field::Number:
      return "No.";
    case Field::Name:
      return "Name";
    case Field::Symbol:
      return "Sym.";
    case Field::SymbolName:
      return "Symbol";
    case Field::Latitude:
      return utm ? "Zone" : "Latitude";
    case Field::Longitude:
      return utm ? "Easting, Northing" : "Longitude";
    case Field::Comment:
      return "Comment";
    case Field::Time:
      return "Time";
    case Field::Altitude:
      return with_unit("Alt.", texts_->height_unit());
    case Field::Depth:
      return with_unit("Depth", texts_->height_unit());
    case Field::Distance:
      return with_unit("Dist.", texts_->distance_unit());
    case Field::Bearing:
      return "Bearing";
    case Field::Proximity:
      return with_unit("Within", texts_->distance_unit());
    case Field::Track:
      return "Track";
    case Field::Leg:
      return with_unit("Leg", texts_->distance_unit());
  }
  return {};
}

bool ItemList::is_number(int column) const {
  switch (field_of(column)) {
    case Field::Number:
    case Field::Altitude:
    case Field::Depth:
    case Field::Distance:
    case Field::Bearing:
    case Field::Proximity:
    case Field::Leg:
      return true;
    default:
      return false;
  }
}

int ItemList::row_of(int index) const {
  const auto place = std::ranges::find(order_, index);
  return place == order_.end() ? -1 : static_cast<int>(place - order_.begin());
}

std::optional<store::ItemRecord> ItemList::record(int row) const {
  if (row < 0 || row >= row_count() || item_of(row) > count_of(session_.items, kind_)) return std::nullopt;
  return item_at(session_.items, kind_, item_of(row));
}

std::string ItemList::text(int row, int column) const {
  const std::optional<store::ItemRecord> item = record(row);
  return item ? text_of(field_of(column), *item, item_of(row)) : std::string();
}

std::optional<int> ItemList::symbol(int row) const {
  const std::optional<store::ItemRecord> item = record(row);
  return item ? std::optional(store::symbol_code(*item, session_.settings)) : std::nullopt;
}

bool ItemList::is_selected(int row) const {
  const std::optional<store::ItemRecord> item = record(row);
  return item && item->selected != 0;
}

bool ItemList::is_in_use(int row) const {
  const std::optional<store::ItemRecord> item = record(row);
  return !item || item->in_use != 0;
}

double ItemList::leg(const store::ItemRecord& item, int index) const {
  if (index == 1 || item.segment_flag != store::kContinues) return kUnknown;
  return geodesy::great_circle_distance(item_at(session_.items, kind_, index - 1).position, item.position,
                                        geodesy::DistanceUnit::Metres);
}

// In metres, degrees, seconds; kUnknown when it is not known, or for a field that is no number.
double ItemList::number(Field field, const store::ItemRecord& item, int index) const {
  switch (field) {
    case Field::Place:
      return index;
    case Field::Number:
      return item.number;
    case Field::Latitude:
      return item.position.latitude;
    case Field::Longitude:
      return item.position.longitude;
    case Field::Time:
      return item.time.seconds == 0 ? kUnknown : item.time.seconds;
    case Field::Altitude:
      return known(item.altitude);
    case Field::Depth:
      return known(item.depth);
    case Field::Distance:
      if (!reference_) return kUnknown;
      return geodesy::great_circle_distance(*reference_, item.position, geodesy::DistanceUnit::Metres);
    case Field::Bearing:
      return reference_ ? initial_bearing(*reference_, item.position) : kUnknown;
    case Field::Proximity:
      return known(item.proximity_distance);
    case Field::Leg:
      return leg(item, index);
    default:
      return kUnknown;
  }
}

std::string ItemList::text_of(Field field, const store::ItemRecord& item, int index) const {
  switch (field) {
    case Field::Name:
      return std::string(item.ident.view());
    case Field::Comment:
      return std::string(item.comment.view());
    case Field::Symbol:
      return {};
    case Field::SymbolName:
      return symbol_name(store::symbol_code(item, session_.settings));
    case Field::Latitude:
      return texts_->position(item.position).first;
    case Field::Longitude:
      return texts_->position(item.position).second;
    case Field::Time:
      return texts_->time(item.time, kind_);
    case Field::Altitude:
      return texts_->height(item.altitude);
    case Field::Depth:
      return texts_->height(item.depth);
    case Field::Track:
      if (item.segment_flag == store::kContinues) return {};
      return item.ident.empty() ? "(segment)" : std::string(item.ident.view());
    default:
      break;
  }
  const double value = number(field, item, index);
  if (is_unknown(value)) return {};
  if (field == Field::Place || field == Field::Number) return base::format_text("%.0f", value);
  if (field == Field::Bearing) return base::format_text("%.1f", value);
  return base::format_text("%.3f", value / geodesy::metres_per(session_.settings.DistValues));
}

void ItemList::sort(int column) {
  ascending_ = sort_column_ != column || !ascending_;
  sort_column_ = column;
  sort_rows();
}

bool ItemList::sorts_as_number(Field field) const {
  switch (field) {
    case Field::Name:
    case Field::Comment:
    case Field::Symbol:
    case Field::SymbolName:
    case Field::Track:
      return false;
    case Field::Latitude:
    case Field::Longitude:
      return session_.settings.DMSMode != geodesy::Notation::Utm;
    default:
      return true;
  }
}

void ItemList::sort_rows() {
  std::iota(order_.begin(), order_.end(), 1);
  if (sort_column_ < 0) return;
  Field field = field_of(sort_column_);
  if (field == Field::Symbol) field = Field::SymbolName;
  if (sorts_as_number(field)) {
    std::vector<double> keys;
    keys.reserve(order_.size());
    for (const int index : order_) keys.push_back(number(field, item_at(session_.items, kind_, index), index));
    sort_by(order_, keys, ascending_);
  } else {
    std::vector<std::string> keys;
    keys.reserve(order_.size());
    for (const int index : order_)
      keys.push_back(base::lower_case(text_of(field, item_at(session_.items, kind_, index), index)));
    sort_by(order_, keys, ascending_);
  }
}

}  // namespace ui::lists
