// The routes and their points, as texts in columns.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "session/session.h"
#include "ui/item_ref.h"
#include "ui/item_texts.h"
#include "ui/stored_items.h"

namespace ui::lists {

enum class RouteField { Name, Latitude, Longitude, Leg, Comment };
inline constexpr int kRouteFields = 5;

class RouteList {
 public:
  // The session must outlive the list.
  explicit RouteList(const session::Session& session);

  // To be called when settings have changed.
  void take_settings() { texts_.emplace(session_); }

  // The routes that have a header, and the points of a route.
  [[nodiscard]] std::vector<ItemRef> routes() const;
  [[nodiscard]] std::vector<ItemRef> points(int number) const;

  [[nodiscard]] bool has(const ItemRef& item) const { return record(item) != nullptr; }

  [[nodiscard]] std::string title(RouteField field) const;
  // Of what is no longer there, an empty text. The leg of a route is its length.
  [[nodiscard]] std::string text(const ItemRef& item, RouteField field) const;
  // Of points only.
  [[nodiscard]] std::optional<int> symbol(const ItemRef& item) const;
  [[nodiscard]] bool is_selected(const ItemRef& item) const;
  // Points are only where their route is, too.
  [[nodiscard]] bool is_in_use(const ItemRef& item) const;

 private:
  [[nodiscard]] const store::ItemRecord* record(const ItemRef& item) const {
    return find_route_record(session_.items, item);
  }
  [[nodiscard]] std::string name(const ItemRef& item) const;
  [[nodiscard]] std::string leg(const ItemRef& item) const;

  const session::Session& session_;
  std::optional<ItemTexts> texts_;
};

}  // namespace ui::lists
