; The installer for Windows: for one user, without the rights of an administrator. The log lies in the program's
; folder; what the user may have changed there is never written over and never removed.
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
!define MUI_DIRECTORYPAGE_TEXT_TOP "Tarno keeps your log in the folder in which it is installed: choose one that is yours."
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\Tarno.exe"
!insertmacro MUI_PAGE_FINISH
!define MUI_UNCONFIRMPAGE_TEXT_TOP "Your log stays: the files in which it lies are not removed."
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

Section
    SetOutPath "$INSTDIR"
    SetOverwrite on
    ClearErrors
    File "${FROM}\Tarno.exe"
    IfErrors 0 +3
        MessageBox MB_OK|MB_ICONSTOP "Tarno is still open. Please close it and install it again." /SD IDOK
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
    IfErrors 0 +3
        MessageBox MB_OK|MB_ICONSTOP "Tarno is still open. Please close it and try again." /SD IDOK
        Abort
    Delete "$INSTDIR\Uninstall.exe"
    Delete "$SMPROGRAMS\Tarno.lnk"
    DeleteRegKey HKCU "${UNINSTALL}"
    RMDir "$INSTDIR" ; only when nothing is left in it
SectionEnd
