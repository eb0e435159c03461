#include "ui/editing/item_form.h"

#include <algorithm>

#include "base/encoding.h"
#include "base/text.h"

namespace ui {
namespace {

std::string label_of(const FieldRow& row, const ItemTexts& texts) {
  std::string label(row.label);
  if (row.kind == FieldKind::Position) label += " (" + texts.datum() + ")";
  if (row.kind == FieldKind::Height) label += " (" + std::string(texts.height_unit()) + ")";
  if (row.kind == FieldKind::Distance) label += " (" + std::string(texts.distance_unit()) + ")";
  if (row.kind == FieldKind::Hex) label += " (hexadecimal)";
  return label;
}

// Receivers and files hold numbers that have no name here.
std::vector<FieldChoice> choices_of(const FieldRow& row, const std::string& shown) {
  std::vector<FieldChoice> choices(row.choices.begin(), row.choices.end());
  const auto value = static_cast<int>(base::leading_integer(shown));
  if (row.kind == FieldKind::Choice && std::ranges::find(choices, value, &FieldChoice::value) == choices.end())
    choices.push_back({value, {}});
  return choices;
}

}  // namespace

ItemForm::ItemForm(const session::Session& session, const store::ItemRecord& item, bool is_new)
    : texts_(session), settings_(session.settings), item_(item), is_new_(is_new) {
  for (const FieldRow& row : field_rows()) {
    if (row.kinds.find(item.kind) == std::string_view::npos) continue;
    if (is_new && row.id == "in_use") continue;  // a new item is
    Field field{&row, label_of(row, texts_), {}, {}, {}};
    const bool is_empty = is_new && row.kind == FieldKind::Position;
    if (!is_empty) field.shown = base::utf8_from_latin1(row.show({texts_, settings_}, item));
    field.choices = choices_of(row, field.shown);
    field.text = field.shown;
    fields_.push_back(std::move(field));
  }
}

std::size_t ItemForm::find(std::string_view id) const {
  const auto place = std::ranges::find(fields_, id, [](const Field& field) { return field.row->id; });
  return static_cast<std::size_t>(place - fields_.begin());
}

bool ItemForm::must_be_set(const Field& field) const {
  return field.is_changed() || (is_new_ && (field.row->id == "position" || field.row->id == "ident"));
}

ItemForm::Verdict ItemForm::judge(std::size_t field) const {
  const auto& [row, label, choices, shown, text] = fields_[field];
  int substitutes = 0;
  const std::string latin = base::latin1_from_utf8(text, &substitutes);
  store::ItemRecord item = item_;
  Verdict verdict;
  if (must_be_set(fields_[field])) verdict.problem = row->set({texts_, settings_}, latin, item);
  if (!verdict.problem.empty()) return verdict;
  if (row->kind == FieldKind::Position && !text.empty()) {
    verdict.note = base::utf8_from_latin1(row->show({texts_, settings_}, item));
  } else if (row->id == "class") {
    verdict.note = class_name(item.waypoint_class);
  } else if (row->kind == FieldKind::Text && text != shown && (substitutes > 0 || latin.find('|') < latin.size())) {
    verdict.note = "Becomes \"" + base::utf8_from_latin1(row->show({texts_, settings_}, item)) + "\"";
  }
  return verdict;
}

std::string ItemForm::detail_problem(const store::ItemRecord& item) const {
  const bool is_changed = item.detail_kind != item_.detail_kind || item.waypoint_class != item_.waypoint_class;
  if (is_changed && item.detail_kind == store::kFullDetails && item.waypoint_class == 0)
    return "A user waypoint (class 0) has none of these";
  return {};
}

std::vector<std::string> ItemForm::problems() const {
  std::vector<std::string> problems;
  for (std::size_t i = 0; i < fields_.size(); ++i) problems.push_back(judge(i).problem);
  if (const std::size_t details = find("details"); details < fields_.size() && problems[details].empty())
    problems[details] = detail_problem(result());
  return problems;
}

std::string ItemForm::duplicate_problem(const store::ItemStore& items) const {
  const bool keeps_all = settings_.HandleReadDups == store::Duplicates::Merge;
  if (!is_new_ || item_.kind != 'W' || (keeps_all && settings_.ForceExactDupeRemoval == 0)) return {};
  const store::ItemRecord item = result();
  for (int index = 1; index <= items.waypoint_count(); ++index) {
    const store::ItemRecord other = items.waypoint(index);
    if (base::equal_ignoring_case(other.ident, item.ident) && (!keeps_all || other.position == item.position))
      return "There is a waypoint of this name already, and the options want no duplicates";
  }
  return {};
}

store::ItemRecord ItemForm::result() const {
  store::ItemRecord item = item_;
  for (const Field& field : fields_) {
    if (!must_be_set(field)) continue;
    store::ItemRecord changed = item;
    if (field.row->set({texts_, settings_}, base::latin1_from_utf8(field.text), changed).empty()) item = changed;
  }
  return item;
}

}  // namespace ui
