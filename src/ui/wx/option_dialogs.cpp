#include "ui/wx/option_dialogs.h"

#include <algorithm>
#include <array>

#include "ui/log_settings.h"
#include "ui/wx/datum_dialog.h"
#include "ui/wx/option_dialog.h"

namespace ui::wx {
namespace {

constexpr std::array<std::string_view, 2> kDownloadKeys{"SA_LwrRangeLo", "SA_LwrRangeHi"};
constexpr std::array<std::string_view, 3> kUploadKeys{"SA_LwrStartPt", "SA_LwrRteStartPt", "SA_SendLowrInactives"};

// Whoever saves the configuration and then cancels has changed settings too.
bool differ(const store::Settings& before, const store::Settings& now) {
  return store::configuration_text(before) != store::configuration_text(now);
}

}  // namespace

bool show_option_sheet(wxWindow* parent, Desk& desk) {
  session::Session& session = desk.session();
  const store::Settings before = session.settings;
  OptionDialog dialog(parent, session, "Options", option_pages());
  const bool accepted = dialog.ShowModal() == wxID_OK;
  follow_log_settings(session, desk.display(), before);
  return accepted || differ(before, session.settings);
}

bool choose_datum(wxWindow* parent, Desk& desk) {
  session::Session& session = desk.session();
  const store::Settings before = session.settings;
  DatumDialog dialog(parent, session, {before.externaldatum, before.DMSMode});
  const bool accepted = dialog.ShowModal() == wxID_OK;
  if (accepted) dialog.take_over();
  return accepted || differ(before, session.settings);
}

bool ask_igc_options(wxWindow* parent, Desk& desk) {
  std::vector<OptionPage> pages = option_pages();
  std::erase_if(pages, [](const OptionPage& page) { return page.title != kIgcPage; });
  OptionDialog dialog(parent, desk.session(), "IGC Flight", pages);
  return dialog.ShowModal() == wxID_OK;
}

bool ask_lowrance_options(wxWindow* parent, Desk& desk, Direction direction) {
  const bool is_download = direction == Direction::Download;
  const OptionPage page = is_download ? option_page("Download", kDownloadKeys) : option_page("Upload", kUploadKeys);
  OptionDialog dialog(parent, desk.session(),
                      is_download ? "Set LEI Waypoint Download Options" : "Set LEI Waypoint Upload Options", {page});
  return dialog.ShowModal() == wxID_OK;
}

}  // namespace ui::wx
