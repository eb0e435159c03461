# What "cmake --install BUILD --prefix PLACE" puts where on Linux. Included by CMakeLists.txt.
if(WIN32)
  return()
endif()
include(GNUInstallDirs)

# The program itself says what its man page and completion hold, so it must run where it is built.
install(TARGETS pelorix-cli)
if(NOT CMAKE_CROSSCOMPILING)
  set(cli_man ${PROJECT_BINARY_DIR}/man/pelorix-cli.1)
  set(cli_completion ${PROJECT_BINARY_DIR}/completion/pelorix-cli)
  add_custom_command(OUTPUT ${cli_man}
    COMMAND ${PROJECT_SOURCE_DIR}/tools/cli_man $<TARGET_FILE:pelorix-cli> ${PROJECT_VERSION} ${cli_man}
    DEPENDS pelorix-cli tools/cli_man tools/cli_help_table
    VERBATIM)
  add_custom_command(OUTPUT ${cli_completion}
    COMMAND ${PROJECT_SOURCE_DIR}/tools/cli_completion $<TARGET_FILE:pelorix-cli> ${cli_completion}
    DEPENDS pelorix-cli tools/cli_completion tools/cli_help_table
    VERBATIM)
  add_custom_target(cli_documents ALL DEPENDS ${cli_man} ${cli_completion})
  install(FILES ${cli_man} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES ${cli_completion} DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
endif()

if(PELORIX_WINDOW)
  set(window_man ${PROJECT_BINARY_DIR}/man/pelorix.1)
  add_custom_command(OUTPUT ${window_man}
    COMMAND ${PROJECT_SOURCE_DIR}/tools/manual_man ${PROJECT_SOURCE_DIR}/docs/manual.md ${PROJECT_VERSION} ${window_man}
    DEPENDS docs/manual.md tools/manual_man
    VERBATIM)
  add_custom_target(window_man ALL DEPENDS ${window_man})
  install(TARGETS pelorix)
  install(FILES ${window_man} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  # The second of the places where the program looks for it (src/ui/wx/help.cpp), whatever the system's own are.
  install(FILES ${manual} DESTINATION share/pelorix)
  install(FILES packaging/pelorix.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES packaging/pelorix.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
  install(FILES packaging/pelorix-mime.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME pelorix.xml)
  install(FILES packaging/org.example.pelorix.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
endif()
