// The two directions of a record. A layout is written down once, as a generic function that names the fields in their
// order: with an ItemReading it takes them from a packet into an item, with an ItemWriting it appends them to a packet.
// The two classes have the same members, and their heirs add what only some kinds of records have.
#pragma once

#include <utility>

#include "base/byte_cursor.h"
#include "garmin/record_format.h"
#include "store/item_record.h"
#include "store/settings.h"

namespace garmin {

inline constexpr std::uint32_t kNoTime = 0xFFFFFFFF;
inline constexpr float kNotKnownToReceivers = 1.0e25F;

class ItemReading {
 public:
  ItemReading(base::ByteReader& in, store::ItemRecord& item) : in_(in), item_(item) {}
  // Whether the position that the layout may have had is one.
  [[nodiscard]] bool has_position() const { return has_position_; }

  // Latitude and longitude in semicircles, 2^31 of them to 180 degrees; the degrees are exact. A latitude beyond a
  // pole is how receivers mark a position that they do not have.
  void position();
  // An altitude or depth. "Not known" (1.0e24 or more) stays as received; what is no number is not known.
  void metres(float store::ItemRecord::*field) { item_.*field = read_metres(); }
  // The three values that receivers send for "none" become the store's 0.
  void time(std::uint32_t none);

  void ident(std::size_t size) { item_.ident = in_.text(size); }
  void ident() { item_.ident = in_.string(); }
  // A text of fixed length ...
  template <std::size_t N>
  void text(base::FixedText<N> store::ItemRecord::*field) {
    item_.*field = in_.text(N);
  }
  // ... and the texts, each with a NUL, that a record ends with.
  template <std::size_t... N>
  void texts(base::FixedText<N> store::ItemRecord::*... fields) {
    (void(item_.*fields = in_.string()), ...);
  }

  // What the store has no field for, and what goes out in its place.
  void not_kept_u8(std::uint8_t) { in_.skip(1); }
  void not_kept_u16(std::uint16_t) { in_.skip(2); }
  void not_kept_u32(std::uint32_t) { in_.skip(4); }
  void not_kept_f32(float) { in_.skip(4); }

 protected:
  [[nodiscard]] float read_metres();

  base::ByteReader& in_;
  store::ItemRecord& item_;

 private:
  bool has_position_ = true;
};

class ItemWriting {
 public:
  ItemWriting(base::ByteWriter& out, const store::ItemRecord& item, const store::Settings& settings)
      : out_(out), item_(item), settings_(settings) {}
  [[nodiscard]] bool has_position() const { return has_position_; }

  // The nearest semicircle; longitudes of up to 361 degrees count on behind 180, which is -180. Anything else, and a
  // latitude beyond a pole, is no position.
  void position();
  void metres(float store::ItemRecord::*field);  // what the store does not know goes out as 1.0e25
  void time(std::uint32_t none) { out_.u32(item_.time.seconds == 0 ? none : item_.time.seconds); }

  void ident(std::size_t size) { out_.text(item_.ident, size); }
  void ident() { out_.string(item_.ident, item_.ident.longest()); }
  template <std::size_t N>
  void text(base::FixedText<N> store::ItemRecord::*field) {
    out_.text(receiver_comment(item_.*field, Letters::Ascii), N);
  }
  template <std::size_t... N>
  void texts(base::FixedText<N> store::ItemRecord::*... fields) {
    std::size_t behind = sizeof...(fields);
    (append_text(item_.*fields, N, --behind), ...);
  }

  void not_kept_u8(std::uint8_t sent) { out_.u8(sent); }
  void not_kept_u16(std::uint16_t sent) { out_.u16(sent); }
  void not_kept_u32(std::uint32_t sent) { out_.u32(sent); }
  void not_kept_f32(float sent) { out_.f32(sent); }

 protected:
  base::ByteWriter& out_;
  store::ItemRecord item_;  // as it is to go out
  const store::Settings& settings_;

 private:
  // Cut so that the NULs of the texts behind it have room.
  void append_text(std::string_view text, std::size_t longest, std::size_t texts_behind);

  bool has_position_ = true;
};

// The row of a format; the layout is a lambda that captures nothing.
template <typename Reading, typename Writing, typename Layout>
[[nodiscard]] constexpr RecordFormat row_of(std::uint16_t number, std::size_t shortest, std::size_t longest,
                                            NameRule name, Layout) {
  return {number,
          shortest,
          longest,
          name,
          [](base::ByteReader& in, store::ItemRecord& item) {
            Reading fields(in, item);
            Layout{}(fields);
            return fields.has_position();
          },
          [](base::ByteWriter& out, const store::ItemRecord& item, const store::Settings& settings) {
            Writing fields(out, item, settings);
            Layout{}(fields);
            return fields.has_position();
          }};
}

}  // namespace garmin
