; What the setup program says beyond the texts that NSIS has in every language. English stands in where
; nobody has translated it yet. The languages are those for which the program has a number.
!macro Texts language
    LangString StillRunning ${language} "Verbatix is still running. Please exit it (File menu, Exit), then try again."
    LangString NeedsRights ${language} "To install Verbatix for all users, run this setup as administrator."
    LangString CannotWrite ${language} "Verbatix.exe cannot be written into this folder. Nothing has been changed."
    LangString Autostart ${language} "Start Verbatix with Windows"
    LangString Desktop ${language} "Shortcut on the desktop"
    LangString DeleteList ${language} "Delete my texts and options too"
!macroend

!macro Language name
    !insertmacro MUI_LANGUAGE "${name}"
    !insertmacro Texts "${LANG_${name}}"
!macroend

!insertmacro Language "English"  ; first: for systems in any other language
!insertmacro MUI_LANGUAGE "German"
LangString StillRunning ${LANG_GERMAN} "Verbatix läuft noch. Bitte beenden Sie es (Menü Datei, Beenden) und versuchen Sie es dann noch einmal."
LangString NeedsRights ${LANG_GERMAN} "Um Verbatix für alle Benutzer zu installieren, starten Sie dieses Setup als Administrator."
LangString CannotWrite ${LANG_GERMAN} "Verbatix.exe lässt sich in diesen Ordner nicht schreiben. Es wurde nichts geändert."
LangString Autostart ${LANG_GERMAN} "Verbatix mit Windows starten"
LangString Desktop ${LANG_GERMAN} "Verknüpfung auf dem Desktop"
LangString DeleteList ${LANG_GERMAN} "Auch meine Texte und Einstellungen löschen"
!insertmacro Language "Italian"
!insertmacro Language "Swedish"
!insertmacro Language "Serbian"
!insertmacro Language "Croatian"
!insertmacro Language "Greek"
!insertmacro Language "Romanian"
!insertmacro Language "Russian"
!insertmacro Language "Dutch"
!insertmacro Language "Catalan"
!insertmacro Language "Spanish"
!insertmacro Language "Farsi"
!insertmacro Language "Indonesian"
!insertmacro Language "SimpChinese"
!insertmacro Language "TradChinese"
!insertmacro Language "Portuguese"
!insertmacro Language "French"
!insertmacro Language "Vietnamese"
!insertmacro Language "Korean"
!insertmacro Language "Polish"
!insertmacro Language "Turkish"
!insertmacro Language "Hungarian"
!insertmacro Language "Czech"
!insertmacro Language "Arabic"
!insertmacro Language "Japanese"
