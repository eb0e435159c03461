// The fields of records that can be edited: how each is shown as a text, and how a typed text goes into the record.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "session/session.h"
#include "ui/item_texts.h"

namespace ui {

enum class FieldKind { Text, Number, Position, Time, Height, Distance, Choice, Flag, Hex, Symbol };

// Of choices the text is the value as a decimal number, of flags "0" or "1", of symbols the Garmin code.
struct FieldChoice {
  int value = 0;
  std::string_view name = {};
};

struct FieldContext {
  const ItemTexts& texts;
  const store::Settings& settings;
};

struct FieldRow {
  std::string_view id;
  std::string_view label;
  std::string_view kinds;  // of the records that have it; 'R' is a route header
  int page = 0;
  FieldKind kind = FieldKind::Text;
  std::size_t longest = 0;  // of texts, in characters
  // Texts are Latin-1.
  std::string (*show)(const FieldContext& context, const store::ItemRecord& item) = nullptr;
  // What is wrong with the text, or an empty one when the record has it now.
  std::string (*set)(const FieldContext& context, std::string_view text, store::ItemRecord& item) = nullptr;
  std::span<const FieldChoice> choices = {};
};

// In the order of the dialogs.
[[nodiscard]] std::span<const FieldRow> field_rows();

// What receivers call a waypoint class; empty for a number that has no name.
[[nodiscard]] std::string_view class_name(int waypoint_class);

}  // namespace ui
