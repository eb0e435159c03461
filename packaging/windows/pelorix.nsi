; The installer. Made by packaging/windows/build, which defines VERSION, FOLDER (what is installed), OUTPUT, and
; BITS (32 or 64). It installs for one user and needs no administrator.
Unicode true
!if ${BITS} == 64
  Target amd64-unicode
!else
  Target x86-unicode
!endif
SetCompressor /SOLID lzma
!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Pelorix"
!define CLASSES "Software\Classes"

Name "Pelorix"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Pelorix"
InstallDirRegKey HKCU "${UNINSTALL}" "InstallLocation"
RequestExecutionLevel user
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Pelorix"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Installs Pelorix"
VIAddVersionKey "CompanyName" "The Pelorix developers"
VIAddVersionKey "LegalCopyright" "(C) 2026 The Pelorix developers, MIT licence"
!define MUI_ICON "pelorix.ico"
!define MUI_UNICON "pelorix.ico"
!define MUI_FINISHPAGE_NOAUTOCLOSE
!insertmacro MUI_PAGE_LICENSE "${FOLDER}/LICENSE.txt"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; Offers the program in "Open with" of a file type; what opens it by itself stays the user's choice.
!macro offer extension
  WriteRegStr HKCU "${CLASSES}\Applications\pelorix.exe\SupportedTypes" ".${extension}" ""
  WriteRegNone HKCU "${CLASSES}\.${extension}\OpenWithProgids" "Pelorix.File"
!macroend
!macro withdraw extension
  DeleteRegValue HKCU "${CLASSES}\.${extension}\OpenWithProgids" "Pelorix.File"
  DeleteRegKey /ifempty HKCU "${CLASSES}\.${extension}\OpenWithProgids"
  DeleteRegKey /ifempty HKCU "${CLASSES}\.${extension}"
!macroend
!macro for_each_type action
  !insertmacro ${action} wpt
  !insertmacro ${action} rte
  !insertmacro ${action} plt
  !insertmacro ${action} evt
  !insertmacro ${action} fwp
  !insertmacro ${action} gpx
  !insertmacro ${action} sa3
  !insertmacro ${action} sa4
  !insertmacro ${action} sa5
  !insertmacro ${action} sa6
  !insertmacro ${action} sa7
!macroend

Section
  SetOutPath "$INSTDIR"
  File /r "${FOLDER}/*"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  ; Settings and files stand where the program is started.
  CreateDirectory "$DOCUMENTS\Pelorix"
  SetOutPath "$DOCUMENTS\Pelorix"
  CreateDirectory "$SMPROGRAMS\Pelorix"
  CreateShortcut "$SMPROGRAMS\Pelorix\Pelorix.lnk" "$INSTDIR\pelorix.exe"
  CreateShortcut "$SMPROGRAMS\Pelorix\Pelorix for the console.lnk" "$SYSDIR\cmd.exe" \
    '/k set "PATH=$INSTDIR;%PATH%" && pelorix-cli --help' "$INSTDIR\pelorix-cli.exe"
  SetOutPath "$INSTDIR"
  CreateShortcut "$SMPROGRAMS\Pelorix\Uninstall Pelorix.lnk" "$INSTDIR\uninstall.exe"
  WriteRegStr HKCU "${CLASSES}\Pelorix.File" "" "Positions for GPS receivers"
  WriteRegStr HKCU "${CLASSES}\Pelorix.File\DefaultIcon" "" "$INSTDIR\pelorix.exe,0"
  WriteRegStr HKCU "${CLASSES}\Pelorix.File\shell\open\command" "" '"$INSTDIR\pelorix.exe" "%1"'
  WriteRegStr HKCU "${CLASSES}\Applications\pelorix.exe\shell\open\command" "" '"$INSTDIR\pelorix.exe" "%1"'
  !insertmacro for_each_type offer
  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Pelorix"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "Publisher" "The Pelorix developers"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\pelorix.exe"
  WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKCU "${UNINSTALL}" "EstimatedSize" $0
SectionEnd

; Only what was installed: the folder may be one of the user's, and Documents\Pelorix is.
Section "Uninstall"
  ClearErrors
  Delete "$INSTDIR\pelorix.exe"
  Delete "$INSTDIR\pelorix-cli.exe"
  ${If} ${Errors}
    MessageBox MB_OK|MB_ICONEXCLAMATION "Pelorix is running. End it, then uninstall it again." /SD IDOK
    Abort
  ${EndIf}
  Delete "$INSTDIR\README.txt"
  Delete "$INSTDIR\LICENSE.txt"
  Delete "$INSTDIR\manual\manual.html"
  RMDir "$INSTDIR\manual"
  Delete "$INSTDIR\licences\*.txt"
  RMDir "$INSTDIR\licences"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Pelorix\*.lnk"
  RMDir "$SMPROGRAMS\Pelorix"
  !insertmacro for_each_type withdraw
  DeleteRegKey HKCU "${CLASSES}\Pelorix.File"
  DeleteRegKey HKCU "${CLASSES}\Applications\pelorix.exe"
  DeleteRegKey HKCU "${UNINSTALL}"
  RMDir "$DOCUMENTS\Pelorix" ; when nothing is in it
SectionEnd
