; The setup program. Made by scripts/package, which gives:
;   VERSION    1.2.3
;   ROOT       this checkout
;   STAGE      the folder with the files to install; STAGE.install.nsh and STAGE.delete.nsh name them
;   OUTPUT     the setup program's file
;   KILOBYTES  what the files take on the disk
;   CERTIFICATE  where there is one: signs the uninstaller
;
; For the user who runs it, without more rights than they have; for all users when it is run elevated.
;
;   /S            without windows; the exit code is 0, or 2 when nothing has been changed
;   /D=FOLDER     where to, unless it is there already; without quotes, as the last argument
;   /CURRENTUSER  /ALLUSERS   for whom, against the rule above
;   /AUTOSTART    starts Verbatix with Windows
;   /DESKTOP      makes a shortcut on the desktop
; The uninstaller also takes /DELETELIST: the texts and options in the user's application data go as well.
; Both give themselves /BY="FOLDER" when they ask for rights: the application data of the user who asks.
Target amd64-unicode
!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh

Name "Verbatix"
OutFile "${OUTPUT}"
!ifdef CERTIFICATE
    !uninstfinalize '"${ROOT}/scripts/sign" "${CERTIFICATE}" "%1"' = 0
!endif
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
Var OldFolder       ; and its current folder, to which these may be relative
Var IsAside         ; 1: the program that is replaced lies beside its place
Var IsUpgrade       ; 1: there is an installation, and it stays where it is
Var IsLent          ; 1: the rights are those of another account than the one at this desktop

!define MUI_ICON "${ROOT}/res/verbatix.ico"
!define MUI_UNICON "${ROOT}/res/verbatix.ico"
!define MUI_ABORTWARNING
!define MUI_COMPONENTSPAGE_NODESC
; A file that another session has open goes when the machine starts again; nothing else waits for that.
!define MUI_FINISHPAGE_NOREBOOTSUPPORT
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION StartAgain
!define MUI_PAGE_CUSTOMFUNCTION_PRE SkipFolder
!insertmacro MUI_PAGE_DIRECTORY
!define MUI_PAGE_CUSTOMFUNCTION_SHOW BarWayBack
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

; $4: the user (as a SID) whose process it is that has the handle $3; "" when that is a secret.
Function ${un}UserOf
    StrCpy $4 ""
    System::Call 'advapi32::OpenProcessToken(p r3, i 8, *p .r5) i .r6'
    ${If} $6 = 0
        Return
    ${EndIf}
    System::Alloc 256
    Pop $7
    System::Call 'advapi32::GetTokenInformation(p r5, i 1, p r7, i 256, *i .r8) i .r6'
    ${If} $6 <> 0
        System::Call '*$7(p .r8)'
        System::Call 'advapi32::ConvertSidToStringSidW(p r8, *w .r4)'
    ${EndIf}
    System::Free $7
    System::Call 'kernel32::CloseHandle(p r5)'
FunctionEnd

; Sets $IsLent. The list, the options and the start with Windows that these rights reach are then not those of
; the user at this desktop. Who asked for the rights is said by /BY; where they were there from the beginning, the
; shell tells whose desktop it is, and a shell that may not be asked is somebody else's.
Function ${un}FindLender
    StrCpy $IsLent 0
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/BY=" $1
    ${IfNot} ${Errors}
        ${If} $1 != $APPDATA
            StrCpy $IsLent 1
        ${EndIf}
        Return
    ${EndIf}
    System::Call 'user32::GetShellWindow() p .r1'
    ${If} $1 = 0
        Return
    ${EndIf}
    System::Call 'user32::GetWindowThreadProcessId(p r1, *i .r2)'
    System::Call 'kernel32::GetCurrentProcess() p .r3'
    Call ${un}UserOf
    StrCpy $9 $4
    StrCpy $4 ""
    System::Call 'kernel32::OpenProcess(i 0x1000, i 0, i r2) p .r3'
    ${If} $3 <> 0
        Call ${un}UserOf
        System::Call 'kernel32::CloseHandle(p r3)'
    ${EndIf}
    ${If} $4 != $9
        StrCpy $IsLent 1
    ${EndIf}
FunctionEnd

; Ends the copy of Verbatix that runs from $INSTDIR, by the message with which it saves and ends; others are
; left alone. Sets $WasRunning, $OldArguments and $OldFolder.
Function ${un}CloseRunning
    StrCpy $WasRunning 0
    StrCpy $OldArguments ""
    StrCpy $OldFolder ""
  look:
    FindWindow $1 "VerbatixAndCommand"
    ${If} $1 = 0
        Return
    ${EndIf}
    System::Call 'user32::GetWindowThreadProcessId(p r1, *i .r2)'
    ; An administrator needs the privilege to debug where it is another user's; nobody else gets it.
    System::Call 'ntdll::RtlAdjustPrivilege(i 20, i 1, i 0, *i)'
    ; SYNCHRONIZE with PROCESS_QUERY_INFORMATION and PROCESS_VM_READ, which a copy with more rights than
    ; these refuses, or else with PROCESS_QUERY_LIMITED_INFORMATION
    System::Call 'kernel32::OpenProcess(i 0x100410, i 0, i r2) p .r3'
    ${If} $3 = 0
        System::Call 'kernel32::OpenProcess(i 0x101000, i 0, i r2) p .r3'
    ${EndIf}
    System::Call 'ntdll::RtlAdjustPrivilege(i 20, i 0, i 0, *i)'
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

; $OldArguments and $OldFolder: those of the process with handle $3, as far as it may be read and a string of NSIS
; holds them. 64-bit Windows has both at these places of a process in all its versions.
Function ${un}ReadArguments
    System::Alloc 4096
    Pop $7
    System::Call 'ntdll::NtQueryInformationProcess(p r3, i 0, p r7, i 48, p 0) i .r8'
    ${If} $8 = 0
        System::Call '*$7(p, p .r9)'
        IntPtrOp $9 $9 + 0x20
        System::Call 'kernel32::ReadProcessMemory(p r3, p r9, *p .r9, p 8, p 0) i .r8'
        ${If} $8 <> 0
            IntPtrOp $8 $9 + 0x38
            Call ${un}ReadText
            StrCpy $OldFolder $6
            IntPtrOp $8 $9 + 0x70
            Call ${un}ReadText
            StrCpy $OldArguments $6
            Call ${un}DropName
        ${EndIf}
    ${EndIf}
    System::Free $7
FunctionEnd

; $6: the text (a UNICODE_STRING) at $8 in the process with handle $3; "" when it cannot be read. $7: 4096 bytes.
Function ${un}ReadText
    StrCpy $6 ""
    System::Call 'kernel32::ReadProcessMemory(p r3, p r8, p r7, p 16, p 0) i .r5'
    ${If} $5 = 0
        Return
    ${EndIf}
    System::Call '*$7(&i2 .r4, &i2, &i4, p .r8)'
    ${If} $4 >= 2000
        Return
    ${EndIf}
    System::Call 'kernel32::ReadProcessMemory(p r3, p r8, p r7, p r4, p 0) i .r5'
    ${If} $5 = 0
        Return
    ${EndIf}
    IntOp $4 $4 / 2
    System::Call '*$7(&w1000 .r6)'
    StrCpy $6 $6 $4
FunctionEnd

; Takes the program's name off $OldArguments, to its second quote or, where it has none, to the first blank.
Function ${un}DropName
    StrCpy $8 0
    StrCpy $6 $OldArguments 1
    ${If} $6 == '"'
        StrCpy $8 1
    ${Else}
        StrCpy $6 " "
    ${EndIf}
    ${Do}
        StrCpy $5 $OldArguments 1 $8
        IntOp $8 $8 + 1
        ${If} $5 == $6
        ${OrIf} $5 == ""
            ${ExitDo}
        ${EndIf}
    ${Loop}
    StrCpy $OldArguments $OldArguments "" $8
    ${Do}
        StrCpy $5 $OldArguments 1
        ${If} $5 != " "
            ${ExitDo}
        ${EndIf}
        StrCpy $OldArguments $OldArguments "" 1
    ${Loop}
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

; For whom: as asked for; else as it was installed before; else by the rights there are. Where: as before; else as
; asked for. Another folder would leave a copy behind that runs on and that nobody can remove.
Function .onInit
    SetRegView 64
    Call FindLender
    ReadRegStr $R0 HKCU "${UNINSTALL_KEY}" InstallLocation
    ReadRegStr $R1 HKLM "${UNINSTALL_KEY}" InstallLocation
    Call IsElevated
    StrCpy $R2 $0
    StrCpy $ForAll $R2
    ${If} $R0 != ""
    ${AndIf} $R1 == ""
    ${AndIf} $IsLent = 0
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
        ${GetParameters} $0
        ExecShell "runas" "$EXEPATH" '$0 /ALLUSERS /BY="$APPDATA"'
        Quit
    ${EndIf}
    ${If} $ForAll = 1
        SetShellVarContext all
        StrCpy $R0 $R1
    ${EndIf}
    StrCpy $IsUpgrade 0
    ${If} $R0 != ""
    ${AndIf} ${FileExists} "$R0\Verbatix.exe"
        StrCpy $IsUpgrade 1
        StrCpy $INSTDIR $R0
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

Function SkipFolder
    ${If} $IsUpgrade = 1
        Abort
    ${EndIf}
FunctionEnd

; Back to the page that was skipped would close the setup.
Function BarWayBack
    ${If} $IsUpgrade = 1
        GetDlgItem $0 $HWNDPARENT 3
        EnableWindow $0 0
    ${EndIf}
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
; stays as it is. With lent rights there is no start with Windows: it would be the lender's.
Function ChooseOptions
    StrCpy $1 "/AUTOSTART"
    Call HasSwitch
    ${If} $0 = 1
        !insertmacro SelectSection ${SectionAutostart}
    ${EndIf}
    ${If} $IsLent = 1
        SectionSetFlags ${SectionAutostart} 0
        SectionSetText ${SectionAutostart} ""
    ${EndIf}
    StrCpy $1 "/DESKTOP"
    Call HasSwitch
    ${If} $0 = 1
        !insertmacro SelectSection ${SectionDesktop}
    ${EndIf}
FunctionEnd

; As the user and not with the rights of the setup: the shell, which has the user's, opens the shortcut, which lies
; where the user may read it whoever has lent the rights. The current folder becomes the one of the shortcut.
Function StartAgain
    StrCpy $R3 $OldArguments
    StrCpy $0 "$R3 " 4
    ${If} $WasRunning = 1
    ${AndIf} $0 != "-bg "
        StrCpy $R3 "-bg $R3"
    ${EndIf}
    ${If} $OldFolder != ""
    ${AndIf} ${FileExists} "$OldFolder\*.*"
        SetOutPath $OldFolder
    ${EndIf}
    Call IsElevated
    ${If} $0 = 0
        Exec '"${PROGRAM}" $R3'
        Return
    ${EndIf}
    CreateShortcut "$INSTDIR\Start.lnk" "${PROGRAM}" "$R3"
    SetOutPath "$INSTDIR"
    Exec '"$WINDIR\explorer.exe" "$INSTDIR\Start.lnk"'
    ; Until it has been opened, 10 s at most.
    ${For} $0 1 100
        Sleep 100
        FindWindow $1 "VerbatixAndCommand"
        ${If} $1 <> 0
            ${ExitFor}
        ${EndIf}
    ${Next}
    Delete "$INSTDIR\Start.lnk"
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
    Call un.FindLender
    StrCpy $ForAll 0
    ReadRegStr $0 HKLM "${UNINSTALL_KEY}" InstallLocation
    ${If} $0 == $INSTDIR
        StrCpy $ForAll 1
        UserInfo::GetAccountType
        Pop $0
        ${If} $0 != "Admin"
            ${GetParameters} $1
            ; Quotes around the value alone: an option in quotes is none.
            ExecShell "runas" "$INSTDIR\Uninstall.exe" '$1 /BY="$APPDATA"'
            Quit
        ${EndIf}
        SetShellVarContext all
    ${EndIf}
    Call un.ChooseOptions
FunctionEnd

; Of all users who are logged on, as far as these rights go, and only where it starts this copy.
Function un.StopAutostart
    StrLen $1 '"${PROGRAM}"'
    StrCpy $2 0
    ${Do}
        EnumRegKey $3 HKU "" $2
        ${If} $3 == ""
            ${ExitDo}
        ${EndIf}
        ReadRegStr $0 HKU "$3\${RUN_KEY}" Verbatix
        StrCpy $0 $0 $1
        ${If} $0 == '"${PROGRAM}"'
            DeleteRegValue HKU "$3\${RUN_KEY}" Verbatix
            DeleteRegValue HKU "$3\${APPROVAL_KEY}" Verbatix
        ${EndIf}
        IntOp $2 $2 + 1
    ${Loop}
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
    Delete "$INSTDIR\Start.lnk"
    Delete "$INSTDIR\Uninstall.exe"
    ${If} ${FileExists} "$INSTDIR\Verbatix.*"
        RMDir /REBOOTOK "$INSTDIR"
    ${Else}
        RMDir "$INSTDIR"
    ${EndIf}
    Delete "$SMPROGRAMS\Verbatix.lnk"
    Delete "$DESKTOP\Verbatix.lnk"
    ${If} $ForAll = 1
        DeleteRegKey HKLM "${UNINSTALL_KEY}"
    ${Else}
        DeleteRegKey HKCU "${UNINSTALL_KEY}"
    ${EndIf}
    Call un.StopAutostart
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
    ${If} $IsLent = 1
        SectionSetFlags ${SectionList} ${SF_RO}
    ${EndIf}
FunctionEnd
