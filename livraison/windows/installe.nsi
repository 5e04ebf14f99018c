; Installer of the terminal. Defined by the build: CIBLE, VERSION, VERSION_W (four numbers), PROGRAMME, CARTE, CUISINE,
; LICENCES, MANUEL, SORTIE, ICONE.
;
; Command line, besides /S (silent) and /D=DIRECTORY of the program (last, without quotes, or wholly between quotes):
;   /CurrentUser, /AllUsers      for whom; without it as what is installed already, else for the current user
;   /RESEAU=DIRECTORY            the network directory; without it an existing one stays
;   /DEMARRAGE, /DEMARRAGE=non   start at logon, or no more; without it the present choice stays
; A copy for one user and a copy for all would have two working directories: the second one is refused.
; Exit codes: 0 installed, 1 given up by the user, 2 refused or failed, the program being as it was before. A silent
; installation writes the reason to its standard error.

Unicode true
Target ${CIBLE}
!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include TextFunc.nsh
!include WinMessages.nsh
!include x64.nsh

!define NOM "Orvalune"
!define RACCOURCI_MANUEL "Manuel d'Orvalune"
!define RELIRE "Relire la carte"
!define CLE_PROGRAMME "Software\Microsoft\Windows\CurrentVersion\Uninstall\${NOM}"
!define CLE_DEMARRAGE "Software\Microsoft\Windows\CurrentVersion\Run"
!define REFUSE 2
!define ESSAIS 10                  ; 100 ms apart
!define PAGE_1252 1252
!define SANS_APPROCHER 0x400      ; WC_NO_BEST_FIT_CHARS
!define REMPLACE_ET_ECRIT 9       ; MOVEFILE_REPLACE_EXISTING, MOVEFILE_WRITE_THROUGH
!define SORTIE_ERREUR -12         ; STD_ERROR_HANDLE
!define CONSOLE_DU_PARENT -1      ; ATTACH_PARENT_PROCESS

Name "${NOM}"
Caption "Installation d'${NOM} ${VERSION}"
UninstallCaption "Désinstallation d'${NOM}"
OutFile "${SORTIE}"
BrandingText "${NOM} ${VERSION}"
SetCompressor /SOLID lzma
RequestExecutionLevel highest
ManifestDPIAware true
ManifestSupportedOS all
AllowSkipFiles off
ShowInstDetails nevershow
ShowUninstDetails nevershow

VIProductVersion "${VERSION_W}"
VIAddVersionKey /LANG=1036 ProductName "${NOM}"
VIAddVersionKey /LANG=1036 ProductVersion "${VERSION}"
VIAddVersionKey /LANG=1036 FileVersion "${VERSION}"
VIAddVersionKey /LANG=1036 FileDescription "Installation d'${NOM}"
VIAddVersionKey /LANG=1036 LegalCopyright ""

Var pour_tous     ; 1 for all users, else 0
Var administrateur
Var dossier       ; the working directory: orders, settings
Var reseau        ; the network directory as typed or given, empty: none
Var reseau_lu     ; the one that wfichdir.wdo holds already
Var demarrage     ; 1 starts the terminal at logon
Var repertoire_donne
Var demande           ; what the command line says of the users: "tous", "moi" or nothing
Var demarrage_demande ; 1, 0, or nothing when the command line does not say
Var copie_tous        ; where the program lies that is installed for all users; empty: nowhere
Var copie_moi         ; the one of the current user
Var copie_autre       ; one of any user who is logged on
Var ancien            ; where the program lay that is updated
Var erreur            ; why the installation is refused, empty: it is not
Var case_tous
Var case_reseau
Var case_demarrage

!define MUI_ICON "${ICONE}"
!define MUI_UNICON "${ICONE}"
!define MUI_ABORTWARNING
!define MUI_DIRECTORYPAGE_TEXT_TOP "${NOM} sera installé dans le dossier ci-dessous. Les commandes et les réglages sont gardés à part, dans $dossier."
!define MUI_UNCONFIRMPAGE_TEXT_TOP "${NOM} va être désinstallé. Les commandes et les réglages restent dans :$\r$\n$dossier"

Page custom page_utilisateurs quitte_utilisateurs
Page custom page_reseau quitte_reseau
!insertmacro MUI_PAGE_DIRECTORY
!define MUI_INSTFILESPAGE_FINISHHEADER_TEXT "${NOM} est installé"
!define MUI_INSTFILESPAGE_FINISHHEADER_SUBTEXT "Démarrez-le par le menu Démarrer."
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE French

!macro fonctions_communes un
; Sets where the shortcuts, the registry keys and the working directory are, from $pour_tous.
Function ${un}choisit_utilisateurs
  ${If} $pour_tous = 1
    SetShellVarContext all
    StrCpy $dossier "$APPDATA\${NOM}"
  ${Else}
    SetShellVarContext current
    StrCpy $dossier "$LOCALAPPDATA\${NOM}"
  ${EndIf}
FunctionEnd

; Tells $erreur: in a message, or on the standard error when nobody looks.
Function ${un}dit
  ${IfNot} ${Silent}
    MessageBox MB_OK|MB_ICONSTOP "$erreur"
    Return
  ${EndIf}
  System::Call 'kernel32::GetStdHandle(i ${SORTIE_ERREUR}) p .R8'
  ${If} $R8 P<= 0
    System::Call 'kernel32::AttachConsole(i ${CONSOLE_DU_PARENT})'
    System::Call 'kernel32::GetStdHandle(i ${SORTIE_ERREUR}) p .R8'
  ${EndIf}
  StrCpy $R7 "$erreur$\r$\n"
  StrLen $R9 $R7
  System::Call 'kernel32::WriteConsoleW(p R8, w R7, i R9, *i, p 0) i .R9'
  ${If} $R9 = 0
    FileWrite $R8 $R7   ; a file or a pipe
  ${EndIf}
FunctionEnd

; Ends with a message when a program of the directory $1 runs.
Function ${un}exige_arret
  StrCpy $2 "orvalune.exe"
  Call ${un}exige_arret_de
  StrCpy $2 "orvalune-cuisine.exe"
  Call ${un}exige_arret_de
  StrCpy $2 "orvalune-carte.exe"
  Call ${un}exige_arret_de
FunctionEnd

; Likewise for the program $2: its file cannot be opened for writing then. What looks at a program that has just been
; written (a virus scanner, the start menu for its icon) holds it for a moment only.
Function ${un}exige_arret_de
  StrCpy $3 ${ESSAIS}
  encore:
  ${IfNot} ${FileExists} "$1\$2"
    Return
  ${EndIf}
  ClearErrors
  FileOpen $0 "$1\$2" a
  ${IfNot} ${Errors}
    FileClose $0
    Return
  ${EndIf}
  IntOp $3 $3 - 1
  ${If} $3 > 0
    Sleep 100
    Goto encore
  ${EndIf}
  StrCpy $erreur "${NOM} est ouvert, ou son dossier est protégé : $1"
  ${If} $2 == "orvalune-cuisine.exe"
    StrCpy $erreur "${NOM} Cuisine est ouvert, ou son dossier est protégé : $1"
  ${ElseIf} $2 == "orvalune-carte.exe"
    StrCpy $erreur "orvalune-carte est ouvert, ou son dossier est protégé : $1"
  ${EndIf}
  ${If} ${Silent}
    Call ${un}dit
  ${EndIf}
  MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$erreur$\r$\n$\r$\nQuittez ${NOM}, puis touchez Réessayer." /SD IDCANCEL IDRETRY encore
  SetErrorLevel ${REFUSE}
  Abort
FunctionEnd

Function ${un}regarde_droits
  UserInfo::GetAccountType
  Pop $0
  StrCpy $administrateur 0
  ${If} $0 == "Admin"
    StrCpy $administrateur 1
  ${EndIf}
  ; The same list of programs for both editions.
  !if ${CIBLE} == amd64-unicode
    SetRegView 64
  !else
    ${If} ${RunningX64}
      SetRegView 64
    ${EndIf}
  !endif
FunctionEnd

; Ends before anything is done, telling $erreur.
Function ${un}refuse
  Call ${un}dit
  SetErrorLevel ${REFUSE}
  Quit
FunctionEnd
!macroend
!insertmacro fonctions_communes ""
!insertmacro fonctions_communes "un."

Function .onInit
  Call regarde_droits
  Call lis_options
  ${If} $erreur == ""
    Call cherche_copies
    Call choisit_mode
  ${EndIf}
  ${If} $erreur != ""
    Call refuse
  ${EndIf}
  Call prepare
FunctionEnd

!include "${__FILEDIR__}/options.nsh"
!include "${__FILEDIR__}/copies.nsh"

; --- What is done

; Ends the installation when the step before has failed.
!macro exige_reussite texte
  ${If} ${Errors}
    StrCpy $erreur "${texte}"
    Call dit
    SetErrorLevel ${REFUSE}
    Abort
  ${EndIf}
!macroend

; Puts a file in the place of another at once, so that a power cut leaves one of them whole. Sets the error flag.
!macro met_en_place de vers
  ClearErrors
  StrCpy $0 "${de}"
  StrCpy $1 "${vers}"
  System::Call 'kernel32::MoveFileExW(w r0, w r1, i ${REMPLACE_ET_ECRIT}) i .r2'
  ${If} $2 = 0
    Delete "${de}"
    SetErrors
  ${EndIf}
!macroend

; The settings of the terminal that hold the network directory: it on line 1, then eleven lines of one blank.
Function ecrit_wfichdir
  Call compte_octets
  System::Alloc $1
  Pop $2
  System::Call 'kernel32::WideCharToMultiByte(i ${PAGE_1252}, i ${SANS_APPROCHER}, w r0, i -1, p r2, i r1, p 0, p 0)'
  IntOp $1 $1 - 1
  ClearErrors
  FileOpen $3 "$dossier\wfichdir.nouveau" w
  ${IfNot} ${Errors}
    System::Call 'kernel32::WriteFile(p r3, p r2, i r1, *i .r4, p 0) i .r5'
    ${For} $0 1 11
      FileWrite $3 "$\r$\n "
    ${Next}
    FileWrite $3 "$\r$\n"
    System::Call 'kernel32::FlushFileBuffers(p r3)'
    FileClose $3
    ${If} $4 <> $1
      SetErrors
    ${EndIf}
  ${EndIf}
  System::Free $2
  !insertmacro exige_reussite "Le fichier wfichdir.wdo n'a pas pu être écrit dans $dossier."
  !insertmacro met_en_place "$dossier\wfichdir.nouveau" "$dossier\wfichdir.wdo"
  !insertmacro exige_reussite "Le fichier wfichdir.wdo n'a pas pu être écrit dans $dossier."
FunctionEnd

; The working directory; everyone writes there when it is for all.
Function prepare_dossier
  ClearErrors
  CreateDirectory $dossier
  !insertmacro exige_reussite "Le dossier $dossier n'a pas pu être créé."
  ${If} $pour_tous = 1
    ; The group is named by its number, the same in all languages; /T: what lies there already, too.
    nsExec::Exec '"$SYSDIR\icacls.exe" "$dossier" /grant *S-1-5-32-545:(OI)(CI)M /T /Q'
    Pop $0
    ${If} $0 != 0
      SetErrors
      !insertmacro exige_reussite "Les droits du dossier $dossier n'ont pas pu être donnés à tous les utilisateurs."
    ${EndIf}
  ${EndIf}
FunctionEnd

; Removes the program from where it was before, when the new one is elsewhere.
Function retire_ancien
  GetFullPathName /SHORT $0 "$ancien\orvalune.exe"
  GetFullPathName /SHORT $1 "$INSTDIR\orvalune.exe"
  ${If} $ancien == ""
  ${OrIf} $0 == ""
  ${OrIf} $0 == $1
    Return
  ${EndIf}
  Delete "$ancien\orvalune.exe"
  Delete "$ancien\orvalune-cuisine.exe"
  Delete "$ancien\orvalune-carte.exe"
  Delete "$ancien\licences.txt"
  Delete "$ancien\manuel.html"
  Delete "$ancien\desinstalle.exe"
  RMDir $ancien
FunctionEnd

Section
  StrCpy $1 $INSTDIR
  Call exige_arret
  ${If} $ancien != ""
    StrCpy $1 $ancien
    Call exige_arret
  ${EndIf}
  Call prepare_dossier
  ClearErrors
  SetOutPath $INSTDIR
  SetOverwrite try
  File "/oname=orvalune.nouveau" "${PROGRAMME}"
  File "/oname=cuisine.nouveau" "${CUISINE}"
  File "/oname=orvalune-carte.nouveau" "${CARTE}"
  !insertmacro exige_reussite "Le logiciel n'a pas pu être écrit dans $INSTDIR."
  ${If} $reseau != ""
    Call ecrit_wfichdir
  ${EndIf}
  !insertmacro met_en_place "$INSTDIR\cuisine.nouveau" "$INSTDIR\orvalune-cuisine.exe"
  !insertmacro exige_reussite "Le logiciel n'a pas pu être écrit dans $INSTDIR."
  !insertmacro met_en_place "$INSTDIR\orvalune.nouveau" "$INSTDIR\orvalune.exe"
  !insertmacro exige_reussite "Le logiciel n'a pas pu être écrit dans $INSTDIR."
  !insertmacro met_en_place "$INSTDIR\orvalune-carte.nouveau" "$INSTDIR\orvalune-carte.exe"
  !insertmacro exige_reussite "Le programme orvalune-carte n'a pas pu être écrit dans $INSTDIR : fermez-le."
  ClearErrors
  File "/oname=licences.txt" "${LICENCES}"
  File "/oname=manuel.html" "${MANUEL}"
  WriteUninstaller "$INSTDIR\desinstalle.exe"
  !insertmacro exige_reussite "Le logiciel n'a pas pu être écrit entièrement dans $INSTDIR."

  CreateDirectory "$dossier\carte"   ; where the sheets of the card lie, an example at first
  SetOutPath $dossier   ; where the shortcuts start
  CreateShortcut "$SMPROGRAMS\${NOM}.lnk" "$INSTDIR\orvalune.exe" '--dossier "$dossier"' "$INSTDIR\orvalune.exe" 0 SW_SHOWNORMAL "" "Prise de commande à table"
  CreateShortcut "$SMPROGRAMS\${RACCOURCI_MANUEL}.lnk" "$INSTDIR\manuel.html"
  ; It finds the network directory in the working directory; how it prints is added to the shortcut's command line.
  CreateShortcut "$SMPROGRAMS\${NOM} Cuisine.lnk" "$INSTDIR\orvalune-cuisine.exe" "" "$INSTDIR\orvalune-cuisine.exe" 0 SW_SHOWNORMAL "" "Tickets de cuisine"
  CreateShortcut "$SMPROGRAMS\${RELIRE}.lnk" "$INSTDIR\orvalune-carte.exe" '"$dossier\carte"' "$INSTDIR\orvalune-carte.exe" 0 SW_SHOWNORMAL "" "Relit la carte avant le service"
  ${If} $demarrage = 1
    WriteRegStr SHCTX "${CLE_DEMARRAGE}" "${NOM}" '"$INSTDIR\orvalune.exe" --dossier "$dossier"'
  ${Else}
    DeleteRegValue SHCTX "${CLE_DEMARRAGE}" "${NOM}"
  ${EndIf}
  WriteRegStr SHCTX "${CLE_PROGRAMME}" "DisplayName" "${NOM}"
  WriteRegStr SHCTX "${CLE_PROGRAMME}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${CLE_PROGRAMME}" "DisplayIcon" "$INSTDIR\orvalune.exe"
  WriteRegStr SHCTX "${CLE_PROGRAMME}" "Publisher" "${NOM}"
  WriteRegStr SHCTX "${CLE_PROGRAMME}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${CLE_PROGRAMME}" "UninstallString" '"$INSTDIR\desinstalle.exe"'
  WriteRegStr SHCTX "${CLE_PROGRAMME}" "QuietUninstallString" '"$INSTDIR\desinstalle.exe" /S'
  WriteRegDWORD SHCTX "${CLE_PROGRAMME}" "NoModify" 1
  WriteRegDWORD SHCTX "${CLE_PROGRAMME}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  IntFmt $0 "0x%08X" $0
  WriteRegDWORD SHCTX "${CLE_PROGRAMME}" "EstimatedSize" "$0"
  Call retire_ancien
SectionEnd

Function .onInstFailed
  Delete "$INSTDIR\orvalune.nouveau"
  Delete "$INSTDIR\cuisine.nouveau"
  Delete "$INSTDIR\orvalune-carte.nouveau"
  SetOutPath $TEMP
  RMDir $INSTDIR
FunctionEnd

; --- The uninstaller: the program goes, the working directory stays

Function un.onInit
  Call un.regarde_droits
  ReadRegStr $0 HKLM "${CLE_PROGRAMME}" "InstallLocation"
  StrCpy $pour_tous 0
  ${If} $0 == $INSTDIR
  ${OrIf} "$0\" == $INSTDIR
    StrCpy $pour_tous 1
    ${If} $administrateur = 0
      StrCpy $erreur "Il faut être administrateur pour désinstaller ${NOM} pour tous les utilisateurs."
      Call un.refuse
    ${EndIf}
  ${EndIf}
  Call un.choisit_utilisateurs
FunctionEnd

Section Uninstall
  StrCpy $1 $INSTDIR
  Call un.exige_arret
  Delete "$INSTDIR\orvalune.exe"
  Delete "$INSTDIR\orvalune-cuisine.exe"
  Delete "$INSTDIR\orvalune-carte.exe"
  Delete "$INSTDIR\licences.txt"
  Delete "$INSTDIR\manuel.html"
  Delete "$INSTDIR\desinstalle.exe"
  SetOutPath $TEMP
  RMDir $INSTDIR
  Delete "$SMPROGRAMS\${NOM}.lnk"
  Delete "$SMPROGRAMS\${RACCOURCI_MANUEL}.lnk"
  Delete "$SMPROGRAMS\${NOM} Cuisine.lnk"
  Delete "$SMPROGRAMS\${RELIRE}.lnk"
  DeleteRegValue SHCTX "${CLE_DEMARRAGE}" "${NOM}"
  DeleteRegKey SHCTX "${CLE_PROGRAMME}"
SectionEnd
