#include "ui/lists/selection.h"

#include <gtest/gtest.h>

#include "base/quiet_front_end.h"
#include "ui/lists/deletion.h"

namespace ui::lists {
namespace {

class SelectionTest : public testing::Test {
 protected:
  void add(const std::string& ident, double latitude = 50) {
    items.start_item();
    items.CurrentItem.ident = ident;
    items.CurrentItem.position = {latitude, 7};
    (void)items.push_waypoint(0);
  }
  void add_route(std::uint32_t number, const std::vector<std::string>& idents) {
    items.start_route(number, std::to_string(number), "");
    (void)items.push_route(false);
    for (const std::string& ident : idents) {
      items.start_item();
      items.CurrentItem.ident = ident;
      (void)items.push_route(true);
    }
  }
  // The idents of what is selected, one after the other.
  std::string selected() const {
    std::string idents;
    for (const ItemRef& ref : selected_items(items, 'W')) idents += items.waypoint(ref.index).ident.view();
    return idents;
  }

  store::Settings settings;
  base::QuietFrontEnd front_end;
  store::ItemStore items{settings, front_end};
};

TEST_F(SelectionTest, DuplicatesAreThoseBehindTheFirstInUse) {
  add("A", 1);
  add("a", 2);
  add("A", 2);
  add("a", 2);
  add("B", 2);
  items.select('W', 5, true);
  EXPECT_EQ(select_duplicates(items, false), 3);
  EXPECT_EQ(selected(), "aAa") << "what was selected before no longer is";
  EXPECT_EQ(select_duplicates(items, true), 2);
  EXPECT_EQ(selected(), "Aa");
  items.set_in_use('W', 1, false);
  items.set_in_use('W', 2, false);
  EXPECT_EQ(select_duplicates(items, false), 1) << "one out of use is nobody's original";
}

TEST_F(SelectionTest, RoutesOutOfUseUseNothing) {
  add("L");
  add_route(1, {"P", "Q"});
  add_route(2, {"X"});
  EXPECT_EQ(select_by_route_use(items, true), 3);
  EXPECT_EQ(selected(), "PQX");
  items.set_in_use('R', 2, false);
  EXPECT_EQ(select_by_route_use(items, true), 2);
  EXPECT_EQ(select_by_route_use(items, false), 2);
  EXPECT_EQ(selected(), "LX");
}

TEST_F(SelectionTest, WithinADistanceTheLimitIncluded) {
  add("HERE", 50);
  add("NORTH", 51);
  const double metres = geodesy::great_circle_distance({50, 7}, {51, 7}, geodesy::DistanceUnit::Metres);
  EXPECT_EQ(select_within(items, 'W', {50, 7}, metres), 2);
  EXPECT_EQ(select_within(items, 'W', {50, 7}, metres - 1), 1);
  EXPECT_EQ(select_within(items, 'W', {0, 0}, 0), 0);
}

TEST_F(SelectionTest, TheInverseLeavesOutWhatIsDeleted) {
  for (const char* ident : {"A", "B", "C"}) add(ident);
  items.select('W', 1, true);
  items.set_in_use('W', 3, false);
  EXPECT_EQ(select_inverse(items, 'W'), 1);
  EXPECT_EQ(selected(), "B");
  add_route(1, {"P"});
  add_route(2, {"Q"});
  items.select('R', 1, true);
  EXPECT_EQ(select_inverse(items, 'R'), 1);
  EXPECT_EQ(selected_items(items, 'R'), std::vector({ItemRef{'R', 2, 0}}));
}

TEST_F(SelectionTest, TogglingMakesAllLikeTheOppositeOfTheFirst) {
  for (const char* ident : {"A", "B", "C"}) add(ident);
  items.select('W', 2, true);
  toggle_selection(items, {{'W', 1, 0}, {'W', 2, 0}});
  EXPECT_EQ(selected(), "AB");
  toggle_selection(items, {{'W', 1, 0}, {'W', 2, 0}});
  EXPECT_EQ(selected(), "");
}

TEST_F(SelectionTest, RoutesAndTheirPointsGoOutOfUseAndComeBack) {
  add_route(1, {"A", "B", "C"});
  add_route(2, {"X", "Y"});
  const std::vector<ItemRef> some{{'R', 1, 1}, {'R', 1, 3}, {'R', 2, 0}};
  delete_items(items, some);
  ASSERT_EQ(items.route(1).points.size(), 3u);
  EXPECT_EQ(items.route(1).points[0].in_use, 0);
  EXPECT_EQ(items.route(1).points[1].in_use, 1);
  EXPECT_EQ(items.route(2).header->in_use, 0);
  EXPECT_FALSE(has_item_in_use(items, some));
  EXPECT_TRUE(has_deleted_item(items, {{'R', 1, 3}}));
  undelete_items(items, some);
  EXPECT_EQ(items.route(1).points[2].in_use, 1);
  EXPECT_FALSE(has_deleted_item(items, some));
}

}  // namespace
}  // namespace ui::lists
