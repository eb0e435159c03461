#include "ui/wx/file_dialogs.h"

#include <wx/filedlg.h>
#include <wx/msgdlg.h>

#include "base/system_file.h"
#include "ui/wx/text.h"

namespace ui::wx {
namespace {

wxString wildcards(const FileQuestion& question) {
  wxString text;
  for (const FileQuestion::Type& type : question.types)
    text += (text.empty() ? "" : "|") + wx_text(type.label) + "|" + wx_text(type.pattern);
  return text;
}

}  // namespace

std::vector<std::filesystem::path> ask_files_to_open(wxWindow* parent, FileQuestion& question) {
  wxFileDialog dialog(parent, wx_text(question.title), wx_path(question.directory), "", wildcards(question),
                      wxFD_OPEN | wxFD_FILE_MUST_EXIST | wxFD_MULTIPLE);
  dialog.SetFilterIndex(question.type);
  if (dialog.ShowModal() != wxID_OK) return {};
  question.type = dialog.GetFilterIndex();
  wxArrayString names;
  dialog.GetPaths(names);
  std::vector<std::filesystem::path> files;
  for (const wxString& name : names) files.push_back(path_of(name));
  return files;
}

std::optional<std::filesystem::path> ask_file_to_save(wxWindow* parent, FileQuestion& question) {
  wxFileDialog dialog(parent, wx_text(question.title), wx_path(question.directory),
                      wx_path(base::path_from_text(question.name)), wildcards(question),
                      wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
  dialog.SetFilterIndex(question.type);
  if (dialog.ShowModal() != wxID_OK) return std::nullopt;
  question.type = std::max(dialog.GetFilterIndex(), 0);
  std::filesystem::path file = path_of(dialog.GetPath());
  const std::string& pattern = question.types[static_cast<std::size_t>(question.type)].pattern;
  if (file.has_extension() || !pattern.starts_with("*.")) return file;
  file += pattern.substr(1);
  std::error_code error;
  const wxString overwrite = wx_path(file.filename()) + " is there already. Do you want to replace it?";
  if (std::filesystem::exists(file, error) &&
      wxMessageBox(overwrite, wx_text(question.title), wxYES_NO | wxICON_QUESTION, parent) != wxYES)
    return std::nullopt;
  return file;
}

}  // namespace ui::wx
