; The Windows installer of Quillon, for x86-64 Windows, built with Debian's
; makensis by packaging/windows/package.sh:
;
;   makensis -DVERSION=0.5.5 -DSOURCE=staged-folder -DFICHIERS=files.nsh \
;            -DICONE=quillon.ico -DSORTIE=quillon-0.5.5-win64-installation.exe quillon.nsi
;
; SOURCE is the Windows build installed into a folder (cmake --install): the
; programs, README.md, LICENSE, NOTICES and samples\. FICHIERS lists its files in two macros,
; FICHIERS_INSTALLER and FICHIERS_DESINSTALLER (written by package.sh), so
; that the uninstaller removes exactly what was installed. The installer puts them into Program
; Files\Quillon, adds a Start-menu entry that opens the windowed program,
; registers its uninstaller in the system's list of programs, and, unless the
; section is unticked, adds the folder to the system PATH so that quillon and
; quillon-lot can be typed in any console. A silent install (/S) adds it too;
; /SANSPATH leaves the PATH alone, silent or not.

Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel admin
ManifestDPIAware true

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include Sections.nsh
!include StrFunc.nsh
!include WinMessages.nsh
!include "${FICHIERS}"

${StrStr}
${UnStrRep}

!define NOM "Quillon"
!define CLE_PROGRAMME "Software\Quillon"
!define CLE_DESINSTALLATION "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quillon"
!define CLE_ENVIRONNEMENT "SYSTEM\CurrentControlSet\Control\Session Manager\Environment"
!define DESINSTALLATEUR "desinstaller.exe"

; The windowed program comes from the Windows build when it has one; the
; Start-menu entry opens it.
!if /FileExists "${SOURCE}/quillon-fenetres.exe"
  !define AVEC_FENETRES
!endif

Name "${NOM} ${VERSION}"
OutFile "${SORTIE}"
InstallDir "$PROGRAMFILES64\${NOM}"
InstallDirRegKey HKLM "${CLE_PROGRAMME}" "Dossier"
BrandingText "${NOM} ${VERSION}"

VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=1036 "ProductName" "${NOM}"
VIAddVersionKey /LANG=1036 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=1036 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=1036 "FileDescription" "Installation de ${NOM}"
VIAddVersionKey /LANG=1036 "LegalCopyright" "Les auteurs de ${NOM}"

!define MUI_ICON "${ICONE}"
!define MUI_UNICON "${ICONE}"
!define MUI_ABORTWARNING
!define MUI_COMPONENTSPAGE_SMALLDESC

!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
; The installer's pages in the user's language: French first (the default
; for any other), German, Italian.
!insertmacro MUI_LANGUAGE "French"
!insertmacro MUI_LANGUAGE "German"
!insertmacro MUI_LANGUAGE "Italian"

Section "Quillon" SecProgrammes
  SectionIn RO
  SetShellVarContext all
  !insertmacro FICHIERS_INSTALLER
  SetOutPath "$INSTDIR"

  WriteUninstaller "$INSTDIR\${DESINSTALLATEUR}"
  WriteRegStr HKLM "${CLE_PROGRAMME}" "Dossier" "$INSTDIR"

!ifdef AVEC_FENETRES
  CreateShortcut "$SMPROGRAMS\${NOM}.lnk" "$INSTDIR\quillon-fenetres.exe" "" "$INSTDIR\quillon-fenetres.exe" 0 \
    SW_SHOWNORMAL "" "$(DESC_Raccourci)"
!endif

  ; The system's list of programs.
  WriteRegStr HKLM "${CLE_DESINSTALLATION}" "DisplayName" "${NOM}"
  WriteRegStr HKLM "${CLE_DESINSTALLATION}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${CLE_DESINSTALLATION}" "Publisher" "Les auteurs de ${NOM}"
  WriteRegStr HKLM "${CLE_DESINSTALLATION}" "DisplayIcon" "$INSTDIR\quillon.exe,0"
  WriteRegStr HKLM "${CLE_DESINSTALLATION}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${CLE_DESINSTALLATION}" "UninstallString" '"$INSTDIR\${DESINSTALLATEUR}"'
  WriteRegStr HKLM "${CLE_DESINSTALLATION}" "QuietUninstallString" '"$INSTDIR\${DESINSTALLATEUR}" /S'
  WriteRegDWORD HKLM "${CLE_DESINSTALLATION}" "NoModify" 1
  WriteRegDWORD HKLM "${CLE_DESINSTALLATION}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  IntFmt $0 "0x%08X" $0
  WriteRegDWORD HKLM "${CLE_DESINSTALLATION}" "EstimatedSize" "$0"
SectionEnd

Section "$(NOM_Path)" SecPath
  ReadRegStr $0 HKLM "${CLE_ENVIRONNEMENT}" "Path"
  ${StrStr} $1 ";$0;" ";$INSTDIR;"
  ${If} $1 == ""
    ${If} $0 == ""
      StrCpy $0 "$INSTDIR"
    ${Else}
      StrCpy $0 "$0;$INSTDIR"
    ${EndIf}
    WriteRegExpandStr HKLM "${CLE_ENVIRONNEMENT}" "Path" "$0"
    WriteRegDWORD HKLM "${CLE_PROGRAMME}" "DansPath" 1
    SendMessage ${HWND_BROADCAST} ${WM_SETTINGCHANGE} 0 "STR:Environment" /TIMEOUT=5000
  ${EndIf}
SectionEnd

LangString DESC_Programmes ${LANG_FRENCH} "quillon.exe et quillon-lot.exe en console, la fenêtre principale, le LISEZ-MOI (README.md), la licence (LICENSE), les mentions des œuvres tierces (NOTICES) et les exemples."
LangString DESC_Programmes ${LANG_GERMAN} "quillon.exe und quillon-lot.exe für die Konsole, das Hauptfenster, das LIESMICH (README.md), die Lizenz (LICENSE), die Hinweise zu Werken Dritter (NOTICES) und die Beispiele."
LangString DESC_Programmes ${LANG_ITALIAN} "quillon.exe e quillon-lot.exe per la console, la finestra principale, il LEGGIMI (README.md), la licenza (LICENSE), le note sulle opere di terzi (NOTICES) e gli esempi."
LangString DESC_Path ${LANG_FRENCH} "Ajoute le dossier d'installation au PATH du système : quillon et quillon-lot se lancent alors dans toute console."
LangString DESC_Path ${LANG_GERMAN} "Fügt den Installationsordner dem PATH des Systems hinzu: quillon und quillon-lot starten dann in jeder Konsole."
LangString DESC_Path ${LANG_ITALIAN} "Aggiunge la cartella d'installazione al PATH del sistema: quillon e quillon-lot si avviano allora in ogni console."
LangString NOM_Path ${LANG_FRENCH} "Programmes en ligne de commande dans le PATH"
LangString NOM_Path ${LANG_GERMAN} "Befehlszeilenprogramme im PATH"
LangString NOM_Path ${LANG_ITALIAN} "Programmi a riga di comando nel PATH"
LangString DESC_Raccourci ${LANG_FRENCH} "Convertir les fichiers de points de la mensuration officielle"
LangString DESC_Raccourci ${LANG_GERMAN} "Punktdateien der amtlichen Vermessung umwandeln"
LangString DESC_Raccourci ${LANG_ITALIAN} "Convertire i file di punti della misurazione ufficiale"
!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${SecProgrammes} $(DESC_Programmes)
  !insertmacro MUI_DESCRIPTION_TEXT ${SecPath} $(DESC_Path)
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Function .onInit
  SetRegView 64
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/SANSPATH" $1
  ${IfNot} ${Errors}
    !insertmacro UnselectSection ${SecPath}
  ${EndIf}
FunctionEnd

Function un.onInit
  SetRegView 64
FunctionEnd

Section "Uninstall"
  SetShellVarContext all
  ; The PATH loses the folder only when the installer added it.
  ReadRegDWORD $0 HKLM "${CLE_PROGRAMME}" "DansPath"
  ${If} $0 == 1
    ReadRegStr $0 HKLM "${CLE_ENVIRONNEMENT}" "Path"
    ${UnStrRep} $1 ";$0;" ";$INSTDIR;" ";"
    StrCpy $1 $1 "" 1
    StrCpy $1 $1 -1
    WriteRegExpandStr HKLM "${CLE_ENVIRONNEMENT}" "Path" "$1"
    SendMessage ${HWND_BROADCAST} ${WM_SETTINGCHANGE} 0 "STR:Environment" /TIMEOUT=5000
  ${EndIf}

  Delete "$SMPROGRAMS\${NOM}.lnk"
  !insertmacro FICHIERS_DESINSTALLER
  Delete "$INSTDIR\${DESINSTALLATEUR}"
  RMDir "$INSTDIR"

  DeleteRegKey HKLM "${CLE_DESINSTALLATION}"
  DeleteRegKey HKLM "${CLE_PROGRAMME}"
SectionEnd
