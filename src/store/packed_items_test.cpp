#include "store/packed_items.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>

namespace store {
namespace {

// Records of very different fullness.
ItemRecord random_record(std::mt19937& random) {
  ItemRecord item;
  const auto chance = [&](unsigned one_in) { return random() % one_in == 0; };
  item.kind = "WRTIP"[random() % 5];
  item.number = static_cast<std::uint32_t>(random());
  item.position = {static_cast<double>(random() % 180) - 90, static_cast<double>(random() % 360) - 180};
  if (chance(2)) item.ident = std::string(random() % 51, 'x');
  if (chance(3)) item.comment = std::string(random() % 41, 'y');
  if (chance(5)) item.subclass.fill(0xFF);
  if (chance(5)) item.route_link_ident = std::string(51, 'z');
  if (chance(2)) item.altitude = kNotKnown;
  return item;
}

bool equal(const ItemRecord& left, const ItemRecord& right) { return std::memcmp(&left, &right, sizeof(left)) == 0; }

TEST(PackedItems, HoldWhatAPlainListHoldsWhateverIsDoneToIt) {
  std::mt19937 random(7);
  PackedItems packed;
  std::vector<ItemRecord> plain;
  for (int step = 0; step < 20000; ++step) {
    const ItemRecord item = random_record(random);
    if (plain.size() < 40 || random() % 8 == 0) {
      packed.push_back(item);
      plain.push_back(item);
    } else if (random() % 200 == 0) {
      std::vector<std::uint32_t> order(plain.size());
      for (std::uint32_t i = 0; i < order.size(); ++i) order[i] = i;
      std::shuffle(order.begin(), order.end(), random);
      std::vector<ItemRecord> moved;
      for (const std::uint32_t index : order) moved.push_back(plain[index]);
      plain = moved;
      packed.reorder(order);
    } else {
      const std::size_t index = random() % plain.size();
      packed.replace(index, item);
      plain[index] = item;
      ASSERT_TRUE(equal(packed[index], item)) << step;
    }
  }
  ASSERT_EQ(packed.size(), plain.size());
  EXPECT_TRUE(std::equal(packed.begin(), packed.end(), plain.begin(), equal));
}

}  // namespace
}  // namespace store
