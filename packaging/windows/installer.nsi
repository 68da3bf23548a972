; The installer for Windows. Silent: setup.exe /S /D=C:\the\product's folder, which ends with 2 where that is not one.
;   makensis -DFILES=<folder> -DVERSION=<version> -DOUTPUT=<file> installer.nsi
Target amd64-unicode
!include "MUI2.nsh"
!include "LogicLib.nsh"
!include "FileFunc.nsh"
!include "x64.nsh"

!define NAME "Norva Quorra Zelvan Scheduler"
!define PRODUCT "Quorra Zelvan.exe"
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\ZelvanScheduler"

AllowSkipFiles off ; a program that runs is not left behind in an older version
SetCompressor /SOLID lzma
Name "${NAME}"
BrandingText "${NAME} ${VERSION}"
OutFile "${OUTPUT}"
RequestExecutionLevel admin
ManifestDPIAware true
ShowInstDetails nevershow
ShowUninstDetails nevershow

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_DIRECTORYPAGE_TEXT_TOP "The Scheduler has its place beside the analysis product. Please choose the product's \
folder, where ${PRODUCT} lies."
!define MUI_DIRECTORYPAGE_TEXT_DESTINATION "Folder of the analysis product"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

!macro Propose FOLDER
  ${If} $INSTDIR == ""
  ${AndIf} ${FileExists} "${FOLDER}\${PRODUCT}"
    StrCpy $INSTDIR "${FOLDER}"
  ${EndIf}
!macroend

Function .onInit
  SetRegView 64
  ${If} $INSTDIR != "" ; said on the command line
    Return
  ${EndIf}
  ReadRegStr $0 HKLM "${UNINSTALL}" "InstallLocation"
  !insertmacro Propose "$0"
  ReadRegStr $0 HKLM "Software\Microsoft\Windows\CurrentVersion\App Paths\${PRODUCT}" ""
  StrCpy $1 $0 1
  ${If} $1 == '"'
    StrCpy $0 $0 -1 1
  ${EndIf}
  ${GetParent} "$0" $0
  !insertmacro Propose "$0"
  !insertmacro Propose "$PROGRAMFILES64\Quorra Zelvan"
  !insertmacro Propose "$PROGRAMFILES32\Quorra Zelvan"
  !insertmacro Propose "$PROGRAMFILES64\Norva\Quorra Zelvan"
  !insertmacro Propose "$PROGRAMFILES32\Norva\Quorra Zelvan"
  ${IfNot} ${Silent} ; any user could have made these two, with something in them
    !insertmacro Propose "C:\Quorra Zelvan"
    !insertmacro Propose "$EXEDIR"
  ${EndIf}
  ${If} $INSTDIR == ""
    StrCpy $INSTDIR "$PROGRAMFILES64\Quorra Zelvan"
  ${EndIf}
FunctionEnd

; Next is to be pressed only where the product is.
Function .onVerifyInstDir
  ${IfNot} ${FileExists} "$INSTDIR\${PRODUCT}"
    Abort
  ${EndIf}
FunctionEnd

Section
  SetRegView 64
  SetShellVarContext all
  ${IfNot} ${FileExists} "$INSTDIR\${PRODUCT}"
    SetErrorLevel 2
    Abort "There is no ${PRODUCT} in $INSTDIR."
  ${EndIf}
  SetOutPath "$INSTDIR"
  File "${FILES}\zelvan-scheduler.exe"
  File "${FILES}\zelvan-schedules.exe"
  File "${FILES}\zelvan-scheduler-setup.exe"
  File "${FILES}\SchDB.sql"
  File "${FILES}\DBOptions.sql"
  SetOutPath "$INSTDIR\Scheduler"
  File /r "${FILES}\manual"
  File /r "${FILES}\licences"
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\zelvan-scheduler-uninstall.exe"
  CreateDirectory "$SMPROGRAMS\Zelvan Scheduler"
  CreateShortcut "$SMPROGRAMS\Zelvan Scheduler\Zelvan Scheduler.lnk" "$INSTDIR\zelvan-scheduler.exe"
  CreateShortcut "$SMPROGRAMS\Zelvan Scheduler\Manual.lnk" "$INSTDIR\Scheduler\manual\index.html"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayName" "${NAME}"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayIcon" "$INSTDIR\zelvan-scheduler.exe"
  WriteRegStr HKLM "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL}" "UninstallString" '"$INSTDIR\zelvan-scheduler-uninstall.exe"'
  WriteRegStr HKLM "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\zelvan-scheduler-uninstall.exe" /S'
  WriteRegDWORD HKLM "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL}" "NoRepair" 1
  ${GetSize} "$INSTDIR\Scheduler" "/S=0K" $0 $1 $2
  IntOp $0 $0 + 30000 ; and the programs
  WriteRegDWORD HKLM "${UNINSTALL}" "EstimatedSize" $0
  ${IfNot} ${FileExists} "$INSTDIR\Zelvan.SSS"
    MessageBox MB_YESNO|MB_ICONQUESTION "The Scheduler is installed. Before its first start an administrator stores the \
password of the server login, with zelvan-scheduler-setup.exe in the folder $INSTDIR.$\r$\n$\r$\nDo you want to do so \
now?" /SD IDNO IDNO later
    ExecWait '"$INSTDIR\zelvan-scheduler-setup.exe"'
    later:
  ${EndIf}
SectionEnd

Function un.onInit
  SetRegView 64
FunctionEnd

; What the users and the administrator made stays: Zelvan.SSS, error logs, paths.
Section "Uninstall"
  SetShellVarContext all
  ClearErrors
  Delete "$INSTDIR\zelvan-scheduler.exe"
  Delete "$INSTDIR\zelvan-schedules.exe"
  Delete "$INSTDIR\zelvan-scheduler-setup.exe"
  ${If} ${Errors}
    SetErrorLevel 2
    Abort "A program of the Scheduler is running. Please end it and try again."
  ${EndIf}
  Delete "$INSTDIR\SchDB.sql"
  Delete "$INSTDIR\DBOptions.sql"
  Delete "$INSTDIR\zelvan-scheduler-uninstall.exe"
  RMDir /r "$INSTDIR\Scheduler\manual"
  RMDir /r "$INSTDIR\Scheduler\licences"
  RMDir "$INSTDIR\Scheduler"
  Delete "$SMPROGRAMS\Zelvan Scheduler\Zelvan Scheduler.lnk"
  Delete "$SMPROGRAMS\Zelvan Scheduler\Manual.lnk"
  RMDir "$SMPROGRAMS\Zelvan Scheduler"
  DeleteRegKey HKLM "${UNINSTALL}"
SectionEnd
