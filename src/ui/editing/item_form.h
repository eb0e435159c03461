// One record as a form of texts: what a dialog shows, what is wrong with what was typed, and the record that comes out.
// Only fields whose text was changed touch the record, so that nothing suffers from being printed and read again.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "ui/editing/item_fields.h"

namespace ui {

class ItemForm {
 public:
  // Texts are UTF-8.
  struct Field {
    const FieldRow* row = nullptr;
    std::string label;                 // with its unit or datum
    std::vector<FieldChoice> choices;  // the present value among them, even when it has no name
    std::string shown;                 // at first
    std::string text;                  // now
    [[nodiscard]] bool is_changed() const { return text != shown; }
  };
  struct Verdict {
    std::string problem;  // a sentence without full stop; empty when the text can be taken
    std::string note;     // how it was understood, or what becomes of it, where that is not plain
  };

  // A new item has no position yet, and must be given one, and a name where it has such.
  ItemForm(const session::Session& session, const store::ItemRecord& item, bool is_new = false);

  [[nodiscard]] const std::vector<Field>& fields() const { return fields_; }
  [[nodiscard]] bool has_changes() const { return std::ranges::any_of(fields_, &Field::is_changed); }
  void set_text(std::size_t field, std::string text) { fields_[field].text = std::move(text); }
  // The place of a field; the id must be one of the record's kind.
  [[nodiscard]] std::size_t find(std::string_view id) const;

  [[nodiscard]] Verdict judge(std::size_t field) const;
  // What keeps the settings for duplicates from taking a new waypoint, so that its name must be another one; empty for
  // none. To be asked when all fields can be taken.
  [[nodiscard]] std::string duplicate_problem(const store::ItemStore& items) const;
  // The problem of each field, empty ones where there is none.
  [[nodiscard]] std::vector<std::string> problems() const;
  // With all changes that can be taken.
  [[nodiscard]] store::ItemRecord result() const;

 private:
  [[nodiscard]] bool must_be_set(const Field& field) const;
  [[nodiscard]] std::string detail_problem(const store::ItemRecord& item) const;

  const ItemTexts texts_;
  const store::Settings settings_;
  const store::ItemRecord item_;
  const bool is_new_;
  std::vector<Field> fields_;
};

}  // namespace ui
