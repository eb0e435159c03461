#include "ui/log_settings.h"

namespace ui {

void follow_log_settings(session::Session& session, Display& display, const store::Settings& before) {
  const store::Settings& now = session.settings;
  const bool other_file = now.DebugFileName != before.DebugFileName ||
                          now.DebugFileNameExtn != before.DebugFileNameExtn ||
                          now.SaveDebugFileWorkingDirectory != before.SaveDebugFileWorkingDirectory;
  if (now.EnableDebugFile == 0 && before.EnableDebugFile != 0) session.debug_log.close();
  // A file that is being written stays as it is.
  const bool is_written = session.debug_log.is_open() && !other_file;
  if (now.EnableDebugFile != 0 && (before.EnableDebugFile == 0 || other_file) && !is_written) session.open_debug_log();
  if (now.LogDisplayOutput == 0 && before.LogDisplayOutput != 0) display.close_log();
  if (now.LogDisplayOutput != 0 && before.LogDisplayOutput == 0) display.log_to("DisplayOutput");
}

}  // namespace ui
