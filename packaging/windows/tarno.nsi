; The installer for Windows. It installs for one user and needs no administrator rights. The log is stored in the
; program folder; files there that the user may have changed are never overwritten or removed.
;   makensis -DVERSION=<version> -DFROM=<folder> -DOUT=<installer> packaging/windows/tarno.nsi

Target amd64-unicode
ManifestDPIAware true
RequestExecutionLevel user
SetCompressor /SOLID lzma

!include MUI2.nsh

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tarno"

Name "Tarno"
BrandingText "Tarno ${VERSION}"
OutFile "${OUT}"
InstallDir "$LOCALAPPDATA\Programs\Tarno"
InstallDirRegKey HKCU "${UNINSTALL}" "InstallLocation"

VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "Tarno"
VIAddVersionKey FileDescription "Installs Tarno, a fishing log for one angler"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey CompanyName "Tarno"
VIAddVersionKey LegalCopyright ""

!define MUI_ICON "tarno.ico"
!define MUI_UNICON "tarno.ico"
!define MUI_ABORTWARNING
!define MUI_DIRECTORYPAGE_TEXT_TOP "Tarno stores your log in the folder where it is installed. Choose a folder in which you can save files."
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\Tarno.exe"
!insertmacro MUI_PAGE_FINISH
!define MUI_UNCONFIRMPAGE_TEXT_TOP "Tarno will be removed from this folder. Your log and its files will be kept."
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

Section
    SetOutPath "$INSTDIR"
    SetOverwrite on
    ClearErrors
    File "${FROM}\Tarno.exe"
    File "${FROM}\Tarno.com"
    IfErrors 0 +3
        MessageBox MB_OK|MB_ICONSTOP "Tarno could not be installed because it is still open. Close Tarno, then run the installer again." /SD IDOK
        Abort
    SetOverwrite off
    File "${FROM}\*.xml"
    File "${FROM}\*.txt"
    SetOutPath "$INSTDIR\sample"
    File /r "${FROM}\sample\*.*"
    SetOverwrite on
    WriteUninstaller "$INSTDIR\Uninstall.exe"

    SetOutPath "$INSTDIR"
    CreateShortcut "$SMPROGRAMS\Tarno.lnk" "$INSTDIR\Tarno.exe"

    WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Tarno"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\Tarno.exe"
    WriteRegStr HKCU "${UNINSTALL}" "Publisher" "Tarno"
    WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
    WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
    WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
SectionEnd

Section Uninstall
    ClearErrors
    Delete "$INSTDIR\Tarno.exe"
    Delete "$INSTDIR\Tarno.com"
    IfErrors 0 +3
        MessageBox MB_OK|MB_ICONSTOP "Tarno could not be removed because it is still open. Close Tarno, then try again." /SD IDOK
        Abort
    Delete "$INSTDIR\Uninstall.exe"
    Delete "$SMPROGRAMS\Tarno.lnk"
    DeleteRegKey HKCU "${UNINSTALL}"
    RMDir "$INSTDIR" ; removes the folder only if it is empty
SectionEnd
