; The setup program. Made by scripts/package, which gives:
;   VERSION    1.2.3
;   ROOT       this checkout
;   STAGE      the folder with the files to install; STAGE.install.nsh and STAGE.delete.nsh name them
;   OUTPUT     the setup program's file
;   KILOBYTES  what the files take on the disk
;
; For the user who runs it, without more rights than they have; for all users when it is run elevated.
;
;   /S            without windows; the exit code is 0, or 2 when nothing has been changed
;   /D=FOLDER     where to; without quotes, as the last argument
;   /CURRENTUSER  /ALLUSERS   for whom, against the rule above
;   /AUTOSTART    starts Verbatix with Windows
;   /DESKTOP      makes a shortcut on the desktop
; The uninstaller also takes /DELETELIST: the texts and options in the user's application data go as well; with
; /BY=USER only where it runs as that user.
Target amd64-unicode
!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh

Name "Verbatix"
OutFile "${OUTPUT}"
RequestExecutionLevel user
SetCompressor /SOLID lzma
ManifestDPIAware true
ManifestSupportedOS all
XPStyle on
BrandingText "Verbatix ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "Verbatix"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileDescription "Setup of Verbatix"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey CompanyName "Verbatix"
VIAddVersionKey LegalCopyright "Copyright © 2026 the makers of Verbatix"

!define PROGRAM "$INSTDIR\Verbatix.exe"
!define RUN_KEY "Software\Microsoft\Windows\CurrentVersion\Run"
!define APPROVAL_KEY "Software\Microsoft\Windows\CurrentVersion\Explorer\StartupApproved\Run"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Verbatix"

Var ForAll          ; 1: for all users
Var WasRunning      ; 1: the copy that is replaced was running
Var OldArguments    ; what it had been started with
Var IsAside         ; 1: the program that is replaced lies beside its place

!define MUI_ICON "${ROOT}/res/verbatix.ico"
!define MUI_UNICON "${ROOT}/res/verbatix.ico"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION StartAgain
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_COMPONENTS
!insertmacro MUI_UNPAGE_INSTFILES
!include "${ROOT}/packaging/setup_texts.nsh"

; The uninstall key stands where the program was installed for.
!macro WriteApp kind name value
    ${If} $ForAll = 1
        WriteReg${kind} HKLM "${UNINSTALL_KEY}" "${name}" ${value}
    ${Else}
        WriteReg${kind} HKCU "${UNINSTALL_KEY}" "${name}" ${value}
    ${EndIf}
!macroend

!macro Shared un
; $0: whether "$1" stands on the command line as a switch.
Function ${un}HasSwitch
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 $1 $2
    StrCpy $0 1
    ${If} ${Errors}
        StrCpy $0 0
    ${EndIf}
FunctionEnd

; Ends the copy of Verbatix that runs from $INSTDIR, by the message with which it saves and ends; others are
; left alone. Sets $WasRunning and $OldArguments.
Function ${un}CloseRunning
    StrCpy $WasRunning 0
    StrCpy $OldArguments ""
  look:
    FindWindow $1 "VerbatixAndCommand"
    ${If} $1 = 0
        Return
    ${EndIf}
    System::Call 'user32::GetWindowThreadProcessId(p r1, *i .r2)'
    ; SYNCHRONIZE with PROCESS_QUERY_INFORMATION and PROCESS_VM_READ, which a copy with more rights than
    ; these refuses, or else with PROCESS_QUERY_LIMITED_INFORMATION
    System::Call 'kernel32::OpenProcess(i 0x100410, i 0, i r2) p .r3'
    ${If} $3 = 0
        System::Call 'kernel32::OpenProcess(i 0x101000, i 0, i r2) p .r3'
    ${EndIf}
    ${If} $3 = 0
        Return
    ${EndIf}
    System::Call 'kernel32::QueryFullProcessImageNameW(p r3, i 0, w .r4, *i ${NSIS_MAX_STRLEN})'
    ${If} $4 != "${PROGRAM}"
        System::Call 'kernel32::CloseHandle(p r3)'
        Return
    ${EndIf}
    StrCpy $WasRunning 1
    Call ${un}ReadArguments
    System::Call 'user32::RegisterWindowMessageW(w "Verbatix") i .r5'
    System::Call 'user32::SendMessageTimeoutW(p r1, i r5, p r5, p r5, i 2, i 5000, *p .r6)'
    System::Call 'kernel32::WaitForSingleObject(p r3, i 30000) i .r6'
    System::Call 'kernel32::CloseHandle(p r3)'
    ${If} $6 <> 0
        MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(StillRunning)" /SD IDCANCEL IDRETRY look
        SetErrorLevel 2
        Quit
    ${EndIf}
FunctionEnd

; $OldArguments: those of the process with handle $3, as far as it may be read and a string of NSIS holds them;
; they stand behind the program's name, which the shell puts in quotes. 64-bit Windows has the command line at
; these places of a process in all its versions.
Function ${un}ReadArguments
    System::Alloc 4096
    Pop $7
    System::Call 'ntdll::NtQueryInformationProcess(p r3, i 0, p r7, i 48, p 0) i .r8'
    ${If} $8 = 0
        System::Call '*$7(p, p .r9)'
        IntPtrOp $9 $9 + 0x20
        System::Call 'kernel32::ReadProcessMemory(p r3, p r9, *p .r8, p 8, p 0)'
        IntPtrOp $8 $8 + 0x70
        System::Call 'kernel32::ReadProcessMemory(p r3, p r8, p r7, p 16, p 0) i .r9'
        System::Call '*$7(&i2 .r8, &i2, &i4, p .r5)'
        ${If} $9 <> 0
        ${AndIf} $8 < 2000
            IntOp $9 $8 + 2
            System::Call 'kernel32::ReadProcessMemory(p r3, p r5, p r7, p r9, p 0)'
            IntOp $8 $8 / 2
            System::Call '*$7(&w1000 .r6)'
            StrCpy $6 $6 $8
            StrCpy $5 $6 1
            ${If} $5 == '"'
                StrCpy $8 1
                ${Do}
                    StrCpy $5 $6 1 $8
                    ${If} $5 == '"'
                    ${OrIf} $5 == ""
                        ${ExitDo}
                    ${EndIf}
                    IntOp $8 $8 + 1
                ${Loop}
                IntOp $8 $8 + 1
                StrCpy $OldArguments $6 "" $8
            ${EndIf}
        ${EndIf}
    ${EndIf}
    System::Free $7
FunctionEnd
!macroend
!insertmacro Shared ""
!insertmacro Shared "un."

Function IsElevated
    UserInfo::GetAccountType
    Pop $0
    ${If} $0 == "Admin"
        StrCpy $0 1
    ${Else}
        StrCpy $0 0
    ${EndIf}
FunctionEnd

; For whom, and where: as asked for; else as it was installed before; else by the rights there are.
Function .onInit
    SetRegView 64
    ReadRegStr $R0 HKCU "${UNINSTALL_KEY}" InstallLocation
    ReadRegStr $R1 HKLM "${UNINSTALL_KEY}" InstallLocation
    Call IsElevated
    StrCpy $R2 $0
    StrCpy $ForAll $R2
    ${If} $R0 != ""
    ${AndIf} $R1 == ""
        StrCpy $ForAll 0
    ${EndIf}
    StrCpy $1 "/CURRENTUSER"
    Call HasSwitch
    ${If} $0 = 1
        StrCpy $ForAll 0
    ${EndIf}
    StrCpy $1 "/ALLUSERS"
    Call HasSwitch
    ${If} $0 = 1
        StrCpy $ForAll 1
        ${If} $R2 = 0
            MessageBox MB_OK|MB_ICONSTOP "$(NeedsRights)" /SD IDOK
            SetErrorLevel 2
            Quit
        ${EndIf}
    ${EndIf}
    StrCpy $1 "/CURRENTUSER"
    Call HasSwitch
    ${If} $R0 == ""
    ${AndIf} $R1 != ""
    ${AndIf} $R2 = 0
    ${AndIf} $0 = 0
        ; It is there for all users, and is upgraded where it is: with the rights for that.
        ${If} ${Silent}
            SetErrorLevel 2
            Quit
        ${EndIf}
        ExecShell "runas" "$EXEPATH" "/ALLUSERS"
        Quit
    ${EndIf}
    ${If} $ForAll = 1
        SetShellVarContext all
        StrCpy $R0 $R1
    ${EndIf}
    ${If} $INSTDIR == ""
        StrCpy $INSTDIR $R0
    ${EndIf}
    ${If} $INSTDIR == ""
    ${AndIf} $ForAll = 1
        StrCpy $INSTDIR "$PROGRAMFILES64\Verbatix"
    ${ElseIf} $INSTDIR == ""
        StrCpy $INSTDIR "$LOCALAPPDATA\Programs\Verbatix"
    ${EndIf}
    Call ChooseOptions
FunctionEnd

; An upgrade that breaks off, on a full disk say, leaves the program as it was, and running.
Function PutBack
    ${If} $IsAside = 1
        Delete "${PROGRAM}"
        Rename "$INSTDIR\Verbatix.old" "${PROGRAM}"
        StrCpy $IsAside 0
    ${EndIf}
    ${If} $WasRunning = 1
        Call StartAgain
    ${EndIf}
FunctionEnd

Function .onInstFailed
    Call PutBack
FunctionEnd

Section "Verbatix"
    SectionIn RO
    SetOutPath "$INSTDIR"
    Call CloseRunning
    ; A copy of another session may still run: its file can be renamed but not overwritten.
    StrCpy $IsAside 0
    Delete "$INSTDIR\Verbatix.old"
    ClearErrors
    Rename "${PROGRAM}" "$INSTDIR\Verbatix.old"
    ${IfNot} ${Errors}
        StrCpy $IsAside 1
    ${EndIf}
    SetOverwrite try
    ClearErrors
    File "${STAGE}/Verbatix.exe"
    ${If} ${Errors}
        Call PutBack
        MessageBox MB_OK|MB_ICONSTOP "$(CannotWrite)" /SD IDOK
        SetErrorLevel 2
        Quit
    ${EndIf}
    StrCpy $IsAside 0
    Delete /REBOOTOK "$INSTDIR\Verbatix.old"
    !include "${STAGE}.install.nsh"
    WriteUninstaller "$INSTDIR\Uninstall.exe"
    CreateShortcut "$SMPROGRAMS\Verbatix.lnk" "${PROGRAM}"
    !insertmacro WriteApp Str DisplayName '"Verbatix"'
    !insertmacro WriteApp Str DisplayVersion '"${VERSION}"'
    !insertmacro WriteApp Str DisplayIcon '"${PROGRAM}"'
    !insertmacro WriteApp Str Publisher '"Verbatix"'
    !insertmacro WriteApp Str InstallLocation '"$INSTDIR"'
    !insertmacro WriteApp Str UninstallString '"$\"$INSTDIR\Uninstall.exe$\""'
    !insertmacro WriteApp Str QuietUninstallString '"$\"$INSTDIR\Uninstall.exe$\" /S"'
    !insertmacro WriteApp DWORD EstimatedSize ${KILOBYTES}
    !insertmacro WriteApp DWORD NoModify 1
    !insertmacro WriteApp DWORD NoRepair 1
SectionEnd

; As the program's own option writes it, so that the option shows and undoes it.
Section /o "$(Autostart)" SectionAutostart
    WriteRegStr HKCU "${RUN_KEY}" Verbatix '"${PROGRAM}" -bg'
    DeleteRegValue HKCU "${APPROVAL_KEY}" Verbatix
SectionEnd

Section /o "$(Desktop)" SectionDesktop
    CreateShortcut "$DESKTOP\Verbatix.lnk" "${PROGRAM}"
SectionEnd

; Behind all sections, because their numbers are known only here. What an installation before this one has
; stays as it is.
Function ChooseOptions
    StrCpy $1 "/AUTOSTART"
    Call HasSwitch
    ${If} $0 = 1
        !insertmacro SelectSection ${SectionAutostart}
    ${EndIf}
    StrCpy $1 "/DESKTOP"
    Call HasSwitch
    ${If} $0 = 1
        !insertmacro SelectSection ${SectionDesktop}
    ${EndIf}
FunctionEnd

; As the user and not with the rights of the setup: the shell, which has the user's, opens the shortcut.
Function StartAgain
    StrCpy $R3 $OldArguments
    ${If} $WasRunning = 1
        StrCpy $R3 '-bg $R3'
    ${EndIf}
    Call IsElevated
    ${If} $0 = 0
        Exec '"${PROGRAM}" $R3'
        Return
    ${EndIf}
    CreateShortcut "$TEMP\Verbatix.lnk" "${PROGRAM}" "$R3"
    Exec '"$WINDIR\explorer.exe" "$TEMP\Verbatix.lnk"'
    ; Until it has been opened, 10 s at most.
    ${For} $0 1 100
        Sleep 100
        FindWindow $1 "VerbatixAndCommand"
        ${If} $1 <> 0
            ${ExitFor}
        ${EndIf}
    ${Next}
    Delete "$TEMP\Verbatix.lnk"
FunctionEnd

Function .onInstSuccess
    ${If} ${Silent}
    ${AndIf} $WasRunning = 1
        Call StartAgain
    ${EndIf}
FunctionEnd

; The uninstaller of an installation for all users needs rights that the list of apps does not give it.
Function un.onInit
    SetRegView 64
    StrCpy $ForAll 0
    ReadRegStr $0 HKLM "${UNINSTALL_KEY}" InstallLocation
    ${If} $0 == $INSTDIR
        StrCpy $ForAll 1
        UserInfo::GetAccountType
        Pop $0
        ${If} $0 != "Admin"
            ${GetParameters} $1
            ReadEnvStr $2 USERNAME
            ExecShell "runas" "$INSTDIR\Uninstall.exe" '$1 "/BY=$2"'
            Quit
        ${EndIf}
        SetShellVarContext all
    ${EndIf}
    Call un.ChooseOptions
FunctionEnd

; Only what was installed: the folder may hold files of the user's.
Section "un.Verbatix"
    SectionIn RO
    Call un.CloseRunning
    Delete /REBOOTOK "${PROGRAM}"
    Delete /REBOOTOK "$INSTDIR\Verbatix.old"
    !include "${STAGE}.delete.nsh"
    ; Where a list was named on the command line, the program leaves a trial file without one here.
    ReadINIStr $0 "$INSTDIR\Verbatix.ini" Program listcmd_count
    ${If} $0 == ""
        Delete "$INSTDIR\Verbatix.ini"
        Delete "$INSTDIR\Verbatix.ini.bak"
    ${EndIf}
    Delete "$INSTDIR\Uninstall.exe"
    RMDir "$INSTDIR"
    Delete "$SMPROGRAMS\Verbatix.lnk"
    Delete "$DESKTOP\Verbatix.lnk"
    ${If} $ForAll = 1
        DeleteRegKey HKLM "${UNINSTALL_KEY}"
    ${Else}
        DeleteRegKey HKCU "${UNINSTALL_KEY}"
    ${EndIf}
    ; Only where it starts this copy.
    ReadRegStr $0 HKCU "${RUN_KEY}" Verbatix
    StrLen $1 '"${PROGRAM}"'
    StrCpy $0 $0 $1
    ${If} $0 == '"${PROGRAM}"'
        DeleteRegValue HKCU "${RUN_KEY}" Verbatix
        DeleteRegValue HKCU "${APPROVAL_KEY}" Verbatix
    ${EndIf}
SectionEnd

Section /o "un.$(DeleteList)" SectionList
    SetShellVarContext current
    RMDir /r "$APPDATA\Verbatix"
SectionEnd

Function un.ChooseOptions
    StrCpy $1 "/DELETELIST"
    Call un.HasSwitch
    ${If} $0 = 1
        !insertmacro SelectSection ${SectionList}
    ${EndIf}
    ; Rights may have been lent by another account: its list is not the one that was meant.
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/BY=" $1
    ${IfNot} ${Errors}
        ReadEnvStr $2 USERNAME
        ${If} $1 != $2
            SectionSetFlags ${SectionList} ${SF_RO}
        ${EndIf}
    ${EndIf}
FunctionEnd
