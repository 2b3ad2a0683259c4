; The per-user installer. scripts/package defines VERSION, RESOURCES, PAYLOAD (the folder of the
; files to install), PAYLOAD_KB and OUTPUT.
Unicode true
; The same as the program needs.
Target amd64-unicode
!include MUI2.nsh
!include LogicLib.nsh

!define PRODUCT "Tellurvane"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PRODUCT}"
!define RUN_KEY "Software\Microsoft\Windows\CurrentVersion\Run"
!define RUN_VALUE "RunTellurvane"
!define GUIDE "使用說明.html"

Name "${PRODUCT}"
OutFile "${OUTPUT}"
BrandingText "${PRODUCT} ${VERSION}"
; No administrator is needed, and the program must be able to write beside itself.
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\${PRODUCT}"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
SetCompressor /SOLID zlib
ManifestDPIAware true
ManifestSupportedOS all

!define MUI_ICON "${RESOURCES}/Tellurvane.ico"
!define MUI_UNICON "${RESOURCES}/Tellurvane.ico"
!define MUI_COMPONENTSPAGE_NODESC
!define MUI_WELCOMEFINISHPAGE_BITMAP "${RESOURCES}/wizard.bmp"
!define MUI_FINISHPAGE_TITLE "$(Finished)"
!define MUI_FINISHPAGE_RUN "$INSTDIR\Tellurvane.exe"
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\${GUIDE}"
!define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED
!define MUI_FINISHPAGE_SHOWREADME_TEXT "$(ShowGuide)"
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!include texts.nsh

VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=0 "ProductName" "${PRODUCT}"
VIAddVersionKey /LANG=0 "FileDescription" "${PRODUCT} Setup"
VIAddVersionKey /LANG=0 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "CompanyName" "${PRODUCT}"
VIAddVersionKey /LANG=0 "LegalCopyright" "Copyright 2026 The Tellurvane authors"

; Only the program's own command ends it: closing its window just hides it. So the user is asked.
; Ending the process would lose the last folder and stop the music.
!macro LeaveFirst prefix
Function ${prefix}LeaveFirst
  ${Do}
    ${IfNot} ${FileExists} "$INSTDIR\Tellurvane.exe"
      ${ExitDo}
    ${EndIf}
    ; A running executable cannot be opened for writing.
    ClearErrors
    FileOpen $0 "$INSTDIR\Tellurvane.exe" a
    ${IfNot} ${Errors}
      FileClose $0
      ${ExitDo}
    ${EndIf}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(StillRunning)" /SD IDCANCEL IDRETRY +2
    Abort "$(StillRunning)"
  ${Loop}
FunctionEnd
!macroend
!insertmacro LeaveFirst ""
!insertmacro LeaveFirst "un."

Section "${PRODUCT}"
  SectionIn RO
  Call LeaveFirst
  SetOutPath "$INSTDIR"
  File "${PAYLOAD}/Tellurvane.exe"
  File "${PAYLOAD}/${GUIDE}"
  File "${PAYLOAD}/LICENSE.txt"
  ; An upgrade keeps the user's settings.
  SetOverwrite off
  File "${PAYLOAD}/Setting.ini"
  SetOverwrite on
  SetOutPath "$INSTDIR\licenses"
  File "${PAYLOAD}/licenses/*"
  WriteUninstaller "$INSTDIR\Uninstall.exe"

  SetOutPath "$INSTDIR"
  CreateShortcut "$SMPROGRAMS\${PRODUCT}.lnk" "$INSTDIR\Tellurvane.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\Tellurvane.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "${PRODUCT}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" ${PAYLOAD_KB}
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

Section /o "$(DesktopLink)"
  SetOutPath "$INSTDIR"
  CreateShortcut "$DESKTOP\${PRODUCT}.lnk" "$INSTDIR\Tellurvane.exe"
SectionEnd

; The value may belong to a copy in another folder. The program writes the machine's value, or the
; user's with quotes where that is denied.
Function un.RemoveRunValue
  ReadRegStr $0 HKCU "${RUN_KEY}" "${RUN_VALUE}"
  ${If} $0 == '"$INSTDIR\Tellurvane.exe"'
    DeleteRegValue HKCU "${RUN_KEY}" "${RUN_VALUE}"
  ${EndIf}
  ReadRegStr $0 HKLM "${RUN_KEY}" "${RUN_VALUE}"
  ${If} $0 == "$INSTDIR\Tellurvane.exe"
    ClearErrors
    DeleteRegValue HKLM "${RUN_KEY}" "${RUN_VALUE}"
    ${If} ${Errors}
      MessageBox MB_OK|MB_ICONINFORMATION "$(RunValueStays)" /SD IDOK
    ${EndIf}
  ${EndIf}
FunctionEnd

Function un.RemoveState
  ${IfNot} ${FileExists} "$INSTDIR\Setting.ini"
  ${AndIfNot} ${FileExists} "$INSTDIR\JobList.dbs*"
    Return
  ${EndIf}
  ; A silent removal keeps them: they could not be restored.
  MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "$(RemoveState)" /SD IDNO IDYES +2
  Return
  Delete "$INSTDIR\Setting.ini"
  Delete "$INSTDIR\JobList.dbs"
  Delete "$INSTDIR\JobList.dbs.tmp"
  Delete "$INSTDIR\JobList.dbs.*.bak"
FunctionEnd

Section "Uninstall"
  Call un.LeaveFirst
  Delete "$INSTDIR\Tellurvane.exe"
  Delete "$INSTDIR\${GUIDE}"
  Delete "$INSTDIR\LICENSE.txt"
  Delete "$INSTDIR\licenses\README.txt"
  Delete "$INSTDIR\licenses\gcc.txt"
  Delete "$INSTDIR\licenses\mingw-w64.txt"
  RMDir "$INSTDIR\licenses"
  Delete "$SMPROGRAMS\${PRODUCT}.lnk"
  Delete "$DESKTOP\${PRODUCT}.lnk"
  Call un.RemoveRunValue
  Call un.RemoveState
  Delete "$INSTDIR\Uninstall.exe"
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
  ; Only when it holds no file of the user.
  SetOutPath "$TEMP"
  RMDir "$INSTDIR"
SectionEnd
