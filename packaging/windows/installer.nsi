; The installer for the current user; needs no administrator rights. ./package windows defines NAME,
; VERSION, VENDOR, DESCRIPTION, FOLDER, FILES, ICON, BANNER and OUTPUT, and SIGN, the program that signs, if
; there is one.

; Like the program, for 64-bit Windows only; NSIS itself is a 32-bit program.
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestDPIAware true

!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include "${FILES}"

; SIGN signs the uninstaller, then the installer that contains it.
!ifdef SIGN
  !uninstfinalize '"${SIGN}" "%1"' = 0
  !finalize '"${SIGN}" "%1"' = 0
!endif

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\${NAME}"

Name "${NAME}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\${NAME}"
InstallDirRegKey HKCU "${UNINSTALL}" "InstallLocation"
BrandingText "${VENDOR} ${NAME} ${VERSION}"

VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=1033 "ProductName" "${NAME}"
VIAddVersionKey /LANG=1033 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=1033 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=1033 "CompanyName" "${VENDOR}"
VIAddVersionKey /LANG=1033 "FileDescription" "${NAME} ${VERSION} setup"
VIAddVersionKey /LANG=1033 "LegalCopyright" "The ${NAME} developers, MIT licence"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${BANNER}"
!define MUI_WELCOMEFINISHPAGE_BITMAP_STRETCH AspectFitHeight
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION StartProgram

!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES

!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "SimpChinese"

LangString Running ${LANG_ENGLISH} "${NAME} is running. Please close it and try again."
LangString Running ${LANG_SIMPCHINESE} "${NAME} 正在运行。请先将其关闭，然后重试。"
LangString ShortcutHint ${LANG_ENGLISH} "Collects what a support engineer needs"
LangString ShortcutHint ${LANG_SIMPCHINESE} "收集技术支持所需的信息"

; A running program and its libraries cannot be overwritten, so nothing is changed then.
!macro RefuseWhileRunning
  ${If} ${FileExists} "$INSTDIR\${NAME}.exe"
    ClearErrors
    FileOpen $0 "$INSTDIR\${NAME}.exe" a
    ${If} ${Errors}
      MessageBox MB_ICONEXCLAMATION|MB_OK "$(Running)" /SD IDOK
      SetErrorLevel 2
      Quit
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend

Function .onInit
  ; Chinese on a Chinese Windows, otherwise English.
  System::Call 'kernel32::GetUserDefaultUILanguage() i.r0'
  IntOp $0 $0 & 0x3ff
  ${If} $0 = 4
    StrCpy $LANGUAGE ${LANG_SIMPCHINESE}
  ${Else}
    StrCpy $LANGUAGE ${LANG_ENGLISH}
  ${EndIf}
FunctionEnd

Function un.onInit
  ; The language of the installation.
  ReadRegStr $0 HKCU "${UNINSTALL}" "Language"
  ${If} $0 != ""
    StrCpy $LANGUAGE $0
  ${EndIf}
FunctionEnd

; Removes an earlier version by its own uninstaller, which knows its files. It runs in place, so that
; the installer can wait for it, and therefore does not delete itself.
Function RemoveEarlierVersion
  ReadRegStr $0 HKCU "${UNINSTALL}" "InstallLocation"
  ${If} $0 != ""
  ${AndIf} ${FileExists} "$0\uninstall.exe"
    StrCpy $1 0
    ClearErrors
    ExecWait '"$0\uninstall.exe" /S _?=$0' $1
    ${If} ${Errors}
    ${OrIf} $1 <> 0
      MessageBox MB_ICONEXCLAMATION|MB_OK "$(Running)" /SD IDOK
      SetErrorLevel 2
      Quit
    ${EndIf}
    Delete "$0\uninstall.exe"
    RMDir "$0"
  ${EndIf}
FunctionEnd

Function StartProgram
  ; The working folder, like the shortcut's.
  SetOutPath "$DOCUMENTS"
  Exec '"$INSTDIR\${NAME}.exe"'
FunctionEnd

Section "${NAME}"
  !insertmacro RefuseWhileRunning
  Call RemoveEarlierVersion
  !insertmacro InstallFiles
  WriteUninstaller "$INSTDIR\uninstall.exe"

  ; The last SetOutPath becomes the shortcut's working folder, where save dialogs open.
  SetOutPath "$DOCUMENTS"
  CreateShortcut "$SMPROGRAMS\${NAME}.lnk" "$INSTDIR\${NAME}.exe" "" "$INSTDIR\${NAME}.exe" 0 \
    SW_SHOWNORMAL "" "$(ShortcutHint)"

  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "${NAME}"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\${NAME}.exe"
  WriteRegStr HKCU "${UNINSTALL}" "Publisher" "${VENDOR}"
  WriteRegStr HKCU "${UNINSTALL}" "Comments" "${DESCRIPTION}"
  WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKCU "${UNINSTALL}" "EstimatedSize" $0
  WriteRegStr HKCU "${UNINSTALL}" "Language" "$LANGUAGE"
SectionEnd

Section "Uninstall"
  !insertmacro RefuseWhileRunning
  !insertmacro RemoveInstalled
  Delete "$INSTDIR\uninstall.exe"
  Delete "$SMPROGRAMS\${NAME}.lnk"
  SetOutPath "$TEMP"
  RMDir "$INSTDIR"
  DeleteRegKey HKCU "${UNINSTALL}"
SectionEnd
