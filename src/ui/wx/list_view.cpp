#include "ui/wx/list_view.h"

#include <wx/imaglist.h>
#include <wx/settings.h>
#include <wx/wupdlock.h>

#include <algorithm>

#include "ui/wx/symbol_pictures.h"
#include "ui/wx/text.h"

namespace ui::wx {
namespace {

constexpr int kPictureSize = 16;  // pixels of a plain screen
constexpr int kNoPicture = -1;
constexpr int kArrowWidth = 28;  // beside a column's title, with its margins; likewise
constexpr int kTextMargins = 14;
constexpr int kBoxWidth = 38;
constexpr int kSampleRows = 20;
constexpr long kCurrentAndLit = wxLIST_STATE_FOCUSED | wxLIST_STATE_SELECTED;

}  // namespace

ListView::ListView(wxWindow* parent, Desk& desk, char kind)
    : wxListCtrl(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxLC_REPORT | wxLC_VIRTUAL),
      desk_(desk),
      kind_(kind),
      list_(desk.session(), kind),
      images_(FromDIP(kPictureSize), FromDIP(kPictureSize)) {
  EnableCheckBoxes();
  SetImageList(&images_, wxIMAGE_LIST_SMALL);
  const int columns = static_cast<int>(list_.columns().size());
  for (int column = 0; column < columns; ++column)
    AppendColumn("", list_.is_number(column) ? wxLIST_FORMAT_RIGHT : wxLIST_FORMAT_LEFT);
  set_titles();
  set_widths();
  SetItemCount(list_.row_count());
  // The keys have something to act on from the start.
  if (list_.row_count() > 0) SetItemState(0, kCurrentAndLit, kCurrentAndLit);
  deleted_.SetTextColour(wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT));
  wxFont struck = GetFont().Strikethrough();
  struck.SetEncoding(wxFONTENCODING_SYSTEM);  // the toolkit draws rows of another one itself, without their boxes
  deleted_.SetFont(struck);
  Bind(wxEVT_LIST_COL_CLICK, [this](wxListEvent& event) { sort(event.GetColumn()); });
  Bind(wxEVT_LIST_COL_END_DRAG, [this](wxListEvent&) { CallAfter([this] { keep_widths(); }); });
  Bind(wxEVT_LIST_ITEM_CHECKED, [this](wxListEvent& event) { select(event.GetIndex(), true); });
  Bind(wxEVT_LIST_ITEM_UNCHECKED, [this](wxListEvent& event) { select(event.GetIndex(), false); });
}

void ListView::set_titles() {
  for (int column = 0; column < GetColumnCount(); ++column) {
    wxListItem item;
    item.SetMask(wxLIST_MASK_TEXT);
    item.SetText(wx_text(list_.title(column)));
    SetColumn(column, item);
  }
}

// The title with its arrow and, where all rows have texts of about the same length, such a text.
int ListView::fitting_width(int column) const {
  int width = GetTextExtent(wx_text(list_.title(column))).x + FromDIP(kArrowWidth);
  const lists::Field field = list_.columns()[static_cast<std::size_t>(column)].field;
  if (field == lists::Field::Place && list_.row_count() > 0)
    width = std::max(width, GetTextExtent(wxString::Format("%d", list_.row_count())).x + FromDIP(kBoxWidth));
  const bool is_even =
      field == lists::Field::Latitude || field == lists::Field::Longitude || field == lists::Field::Time;
  for (int row = 0; is_even && row < std::min(list_.row_count(), kSampleRows); ++row)
    width = std::max(width, GetTextExtent(wx_text(list_.text(row, column))).x + FromDIP(kTextMargins));
  return width;
}

void ListView::set_widths() {
  store::Settings start;
  const std::span<const int> at_start = lists::saved_widths(start, kind_);
  const std::span<const int> saved = lists::saved_widths(desk_.session().settings, kind_);
  std::vector<int> given;
  for (int column = 0; column < GetColumnCount(); ++column) {
    const auto i = static_cast<std::size_t>(column);
    // A list whose widths are not saved keeps what the user has dragged.
    if (i < given_widths_.size() && i >= saved.size() && GetColumnWidth(column) != given_widths_[i]) {
      given.push_back(given_widths_[i]);
      continue;
    }
    const bool is_chosen = i < saved.size() && saved[i] != at_start[i];
    int width = FromDIP(std::max(i < saved.size() ? saved[i] : list_.columns()[i].width, 0));
    // The widths at the start are those of a small font.
    if (!is_chosen) width = std::max(width, fitting_width(column));
    SetColumnWidth(column, width);
    given.push_back(GetColumnWidth(column));
  }
  given_widths_ = given;
}

void ListView::keep_widths() {
  const std::span<int> saved = lists::saved_widths(desk_.session().settings, kind_);
  for (std::size_t i = 0; i < saved.size(); ++i) {
    const int width = GetColumnWidth(static_cast<int>(i));
    if (width != given_widths_[i]) saved[i] = ToDIP(width);
  }
}

int ListView::columns_width() const {
  int width = 0;
  for (int column = 0; column < GetColumnCount(); ++column) width += GetColumnWidth(column);
  return width;
}

wxString ListView::OnGetItemText(long row, long column) const {
  return wx_text(list_.text(static_cast<int>(row), static_cast<int>(column)));
}

int ListView::OnGetItemColumnImage(long row, long column) const {
  if (list_.columns()[static_cast<std::size_t>(column)].field != lists::Field::Symbol) return kNoPicture;
  const std::optional<int> symbol = list_.symbol(static_cast<int>(row));
  if (!symbol) return kNoPicture;
  const auto known = image_of_symbol_.find(*symbol);
  if (known != image_of_symbol_.end()) return known->second;
  const double scale = GetContentScaleFactor();
  wxBitmap picture = symbol_bitmap(*symbol, static_cast<int>(FromDIP(kPictureSize) * scale));
  picture.SetScaleFactor(scale);
  return image_of_symbol_[*symbol] = images_.Add(picture);
}

bool ListView::OnGetItemIsChecked(long row) const { return list_.is_selected(static_cast<int>(row)); }

wxItemAttr* ListView::OnGetItemAttr(long row) const {
  return list_.is_in_use(static_cast<int>(row)) ? nullptr : &deleted_;
}

void ListView::select(long row, bool selected) {
  const int item = row < list_.row_count() ? list_.item_of(static_cast<int>(row)) : 0;
  // While a transfer runs, the item may have gone already.
  if (desk_.is_busy() || item == 0) return;
  desk_.session().items.select(kind_, item, selected);
  desk_.tell(Change::Selection);
}

void ListView::sort(int column) {
  if (desk_.is_busy() || column < 0) return;
  const wxBusyCursor busy;
  const std::vector<ItemRef> lit = highlighted();
  const long row = current();
  const int item = row < 0 ? 0 : list_.item_of(static_cast<int>(row));
  list_.sort(column);
  ShowSortIndicator(column, list_.is_ascending());
  highlight(lit);
  if (item != 0) make_current(list_.row_of(item));
  Refresh();
}

std::vector<ItemRef> ListView::highlighted() const {
  std::vector<ItemRef> items;
  for (long row = -1; (row = GetNextItem(row, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED)) >= 0;)
    items.push_back({kind_, list_.item_of(static_cast<int>(row)), 0});
  return items;
}

void ListView::highlight(const std::vector<ItemRef>& items) {
  const wxWindowUpdateLocker locker(this);
  if (!items.empty() && items.size() == static_cast<std::size_t>(list_.row_count())) {
    highlight_all();
    return;
  }
  SetItemState(-1, 0, wxLIST_STATE_SELECTED);
  std::vector<bool> is_lit(static_cast<std::size_t>(list_.row_count()) + 1);
  for (const ItemRef& item : items)
    if (item.index <= list_.row_count()) is_lit[static_cast<std::size_t>(item.index)] = true;
  for (int row = 0; row < list_.row_count(); ++row)
    if (is_lit[static_cast<std::size_t>(list_.item_of(row))])
      SetItemState(row, wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
}

void ListView::highlight_all() {
  if (list_.row_count() > 0) SetItemState(-1, wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
}

void ListView::make_current(long row) {
  if (row < 0 || row >= list_.row_count()) return;
  SetItemState(row, wxLIST_STATE_FOCUSED, wxLIST_STATE_FOCUSED);
  EnsureVisible(row);
}

void ListView::show_item(const ItemRef& item) {
  const int row = list_.row_of(item.index);
  if (row < 0) return;
  highlight({item});
  make_current(row);
}

// What is highlighted stays so, wherever it is now.
void ListView::take_rows() {
  const long row = current();
  const bool has_current = row >= 0 && row < list_.row_count();
  std::vector<int> followed{has_current ? list_.item_of(static_cast<int>(row)) : 1};
  for (const ItemRef& ref : highlighted()) followed.push_back(ref.index);
  if (list_.row_count() == 0) followed.clear();
  const long top = GetTopItem();
  const long last = top + GetCountPerPage() - 1;
  const int old_count = list_.row_count();
  const std::vector<int> now = list_.rebuild_and_follow(followed);
  // The toolkit does not look after a current row that has gone.
  if (list_.row_count() < old_count) DeleteAllItems();
  SetItemCount(list_.row_count());
  std::vector<ItemRef> lit;
  for (std::size_t i = 1; i < now.size(); ++i)
    if (now[i] != 0) lit.push_back({kind_, now[i], 0});
  highlight(lit);
  if (list_.row_count() == 0) return;
  const long current_now = now.empty() || now.front() == 0 ? -1 : list_.row_of(now.front());
  make_current(current_now >= 0 ? current_now : list_.row_count() - 1);
  for (const long seen : {last, top})
    if (seen >= 0) EnsureVisible(std::min<long>(seen, list_.row_count() - 1));
}

void ListView::show_change(Change change) {
  if (change == Change::Picture) return;
  if (change != Change::Selection) take_rows();
  if (change == Change::Settings) {
    set_titles();
    set_widths();
  }
  Refresh();
}

}  // namespace ui::wx
