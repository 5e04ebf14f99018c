; Installer of the terminal. Defined by the build: CIBLE, VERSION, VERSION_W (four numbers), PROGRAMME, LICENCES, SORTIE, ICONE.
;
; Command line, besides /S (silent) and /D=DIRECTORY of the program (last, without quotes):
;   /CurrentUser (default), /AllUsers   for whom
;   /RESEAU=DIRECTORY                   the network directory; without it an existing one stays
;   /DEMARRAGE, /DEMARRAGE=non          start at logon, or no more; without it the present choice stays
; Exit codes: 0 installed, 1 given up by the user, 2 refused or failed, nothing having been replaced.

Unicode true
Target ${CIBLE}
!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include TextFunc.nsh
!include WinMessages.nsh

!define NOM "Orvalune"
!define CLE_PROGRAMME "Software\Microsoft\Windows\CurrentVersion\Uninstall\${NOM}"
!define CLE_DEMARRAGE "Software\Microsoft\Windows\CurrentVersion\Run"
!define REFUSE 2
!define PAGE_1252 1252
!define SANS_APPROCHER 0x400      ; WC_NO_BEST_FIT_CHARS
!define REMPLACE_ET_ECRIT 9       ; MOVEFILE_REPLACE_EXISTING, MOVEFILE_WRITE_THROUGH

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

; Ends with a message when the terminal runs: its file cannot be opened for writing then.
Function ${un}exige_arret
  encore:
  ${IfNot} ${FileExists} "$INSTDIR\orvalune.exe"
    Return
  ${EndIf}
  ClearErrors
  FileOpen $0 "$INSTDIR\orvalune.exe" a
  ${IfNot} ${Errors}
    FileClose $0
    Return
  ${EndIf}
  MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "${NOM} est ouvert, ou son dossier est protégé.$\r$\n$\r$\nQuittez ${NOM}, puis touchez Réessayer." /SD IDCANCEL IDRETRY encore
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
  !if ${CIBLE} == amd64-unicode
    SetRegView 64
  !endif
FunctionEnd
!macroend
!insertmacro fonctions_communes ""
!insertmacro fonctions_communes "un."

; --- What is asked, on the command line or on the pages

; Ends a silent installation that cannot do what was asked; tells a present user why.
!macro refuse texte
  MessageBox MB_OK|MB_ICONSTOP "${texte}" /SD IDOK
  SetErrorLevel ${REFUSE}
  Quit
!macroend

Function .onInit
  StrCpy $repertoire_donne $INSTDIR
  Call regarde_droits
  ReadRegStr $0 HKLM "${CLE_PROGRAMME}" "InstallLocation"
  ReadRegStr $1 HKCU "${CLE_PROGRAMME}" "InstallLocation"
  StrCpy $pour_tous 0
  ${IfNot} ${Silent}
  ${AndIf} $0 != ""
  ${AndIf} $1 == ""
    StrCpy $pour_tous $administrateur
  ${EndIf}

  ${GetParameters} $R0
  ClearErrors
  ${GetOptions} $R0 "/AllUsers" $0
  ${IfNot} ${Errors}
    StrCpy $pour_tous 1
    ${If} $administrateur = 0
      !insertmacro refuse "Il faut être administrateur pour installer ${NOM} pour tous les utilisateurs."
    ${EndIf}
  ${EndIf}
  ClearErrors
  ${GetOptions} $R0 "/CurrentUser" $0
  ${IfNot} ${Errors}
    StrCpy $pour_tous 0
  ${EndIf}
  Call lis_reseau
  Call verifie_reseau
  ${If} $1 = 0
    !insertmacro refuse "Le répertoire réseau contient un caractère que la tablette ne connaît pas."
  ${EndIf}
  Call prepare
FunctionEnd

; $reseau from the command line $R0: up to the next blank; with quotes around it or the whole word, up to the next quote.
Function lis_reseau
  StrCpy $reseau ""
  StrCpy $0 -1   ; where the option may begin
  StrLen $1 "/RESEAU="
  ${Do}
    IntOp $0 $0 + 1
    StrCpy $2 $R0 $1 $0
    ${If} $2 == ""
      Return
    ${EndIf}
  ${LoopUntil} $2 == "/RESEAU="
  StrCpy $3 " "  ; what ends the value
  ${If} $0 > 0
    IntOp $2 $0 - 1
    StrCpy $2 $R0 1 $2
    ${If} $2 == '"'
      StrCpy $3 '"'
    ${EndIf}
  ${EndIf}
  IntOp $0 $0 + $1
  StrCpy $2 $R0 1 $0
  ${If} $2 == '"'
    StrCpy $3 '"'
    IntOp $0 $0 + 1
  ${EndIf}
  ${Do}
    StrCpy $2 $R0 1 $0
    IntOp $0 $0 + 1
    ${If} $2 == ""
    ${OrIf} $2 == $3
      Return
    ${EndIf}
    StrCpy $reseau "$reseau$2"
  ${Loop}
FunctionEnd

; What follows from the choice of the users: directories, and what an earlier installation holds.
Function prepare
  Call choisit_utilisateurs
  StrCpy $INSTDIR $repertoire_donne
  ${If} $INSTDIR == ""
    ReadRegStr $INSTDIR SHCTX "${CLE_PROGRAMME}" "InstallLocation"
  ${EndIf}
  ${If} $INSTDIR == ""
    ${If} $pour_tous = 0
      StrCpy $INSTDIR "$LOCALAPPDATA\Programs\${NOM}"
    ${Else}
      !if ${CIBLE} == amd64-unicode
        StrCpy $INSTDIR "$PROGRAMFILES64\${NOM}"
      !else
        StrCpy $INSTDIR "$PROGRAMFILES32\${NOM}"
      !endif
    ${EndIf}
  ${EndIf}

  StrCpy $demarrage 0
  ReadRegStr $0 SHCTX "${CLE_DEMARRAGE}" "${NOM}"
  ${If} $0 != ""
    StrCpy $demarrage 1
  ${EndIf}
  ${GetParameters} $R0
  ClearErrors
  ${GetOptions} $R0 "/DEMARRAGE" $0
  ${IfNot} ${Errors}
    StrCpy $demarrage 1
    ${If} $0 == "=non"
      StrCpy $demarrage 0
    ${EndIf}
  ${EndIf}

  StrCpy $reseau_lu ""
  ClearErrors
  FileOpen $0 "$dossier\wfichdir.wdo" r
  ${IfNot} ${Errors}
    FileRead $0 $reseau_lu
    FileClose $0
    ${TrimNewLines} $reseau_lu $reseau_lu
  ${EndIf}
FunctionEnd

; $1: bytes of $reseau in the code page of the files, its end included; 0 when it has a character that is not there.
Function verifie_reseau
  StrCpy $0 $reseau
  System::Call 'kernel32::WideCharToMultiByte(i ${PAGE_1252}, i ${SANS_APPROCHER}, w r0, i -1, p 0, i 0, p 0, *i .r2) i .r1'
  ${If} $2 <> 0
    StrCpy $1 0
  ${EndIf}
FunctionEnd

Function page_utilisateurs
  ${If} $administrateur = 0
    Abort
  ${EndIf}
  !insertmacro MUI_HEADER_TEXT "Utilisateurs" "Qui se servira d'${NOM} sur cette tablette ?"
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateRadioButton} 0 6u 100% 12u "&Moi seulement"
  Pop $0
  ${NSD_CreateRadioButton} 0 26u 100% 12u "&Tous les utilisateurs de cette tablette"
  Pop $case_tous
  ${If} $pour_tous = 1
    ${NSD_Check} $case_tous
  ${Else}
    ${NSD_Check} $0
  ${EndIf}
  ${NSD_CreateLabel} 0 50u 100% 40u "Les commandes et les réglages sont gardés dans le dossier de l'utilisateur, ou dans un dossier commun si la tablette sert à plusieurs."
  Pop $0
  nsDialogs::Show
FunctionEnd

Function quitte_utilisateurs
  ${NSD_GetState} $case_tous $pour_tous
  Call prepare
FunctionEnd

Function page_reseau
  !insertmacro MUI_HEADER_TEXT "Réseau et démarrage" "Où le restaurant partage-t-il son catalogue et ses commandes ?"
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateLabel} 0 2u 100% 10u "&Répertoire réseau :"
  Pop $0
  ${If} $reseau == ""
    StrCpy $0 $reseau_lu
  ${Else}
    StrCpy $0 $reseau
  ${EndIf}
  ${NSD_CreateText} 0 14u 78% 13u "$0"
  Pop $case_reseau
  ${NSD_CreateBrowseButton} 80% 13u 20% 15u "&Parcourir…"
  Pop $0
  ${NSD_OnClick} $0 parcourt
  ${NSD_CreateLabel} 0 32u 100% 30u "Par exemple \\serveur\orvalune : le répertoire que partage le routeur de commandes. Laissez vide si vous ne le savez pas encore : la tablette le demandera au premier démarrage."
  Pop $0
  ${NSD_CreateCheckBox} 0 76u 100% 12u "&Démarrer ${NOM} à l'ouverture de session"
  Pop $case_demarrage
  ${NSD_SetState} $case_demarrage $demarrage
  nsDialogs::Show
FunctionEnd

Function parcourt
  nsDialogs::SelectFolderDialog "Le répertoire réseau du restaurant" "$NETHOOD"
  Pop $0
  ${If} $0 != "error"
    ${NSD_SetText} $case_reseau "$0"
  ${EndIf}
FunctionEnd

Function quitte_reseau
  ${NSD_GetText} $case_reseau $reseau
  ${NSD_GetState} $case_demarrage $demarrage
  Call verifie_reseau
  ${If} $1 = 0
    MessageBox MB_OK|MB_ICONEXCLAMATION "Ce répertoire contient un caractère que la tablette ne connaît pas."
    Abort
  ${EndIf}
  ${If} $reseau == $reseau_lu
    StrCpy $reseau ""
  ${EndIf}
FunctionEnd

; --- What is done

; Ends the installation when the step before has failed.
!macro exige_reussite texte
  ${If} ${Errors}
    MessageBox MB_OK|MB_ICONSTOP "${texte}" /SD IDOK
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
  Call verifie_reseau
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

Section
  Call exige_arret
  ClearErrors
  SetOutPath $INSTDIR
  SetOverwrite try
  File "/oname=orvalune.nouveau" "${PROGRAMME}"
  !insertmacro exige_reussite "Le programme n'a pas pu être écrit dans $INSTDIR."
  !insertmacro met_en_place "$INSTDIR\orvalune.nouveau" "$INSTDIR\orvalune.exe"
  !insertmacro exige_reussite "Le programme n'a pas pu être écrit dans $INSTDIR."
  ClearErrors
  File "/oname=licences.txt" "${LICENCES}"
  WriteUninstaller "$INSTDIR\desinstalle.exe"
  CreateDirectory $dossier
  !insertmacro exige_reussite "Le dossier $dossier n'a pas pu être créé."
  ${If} $pour_tous = 1
    ; Every user may write there; the group is named by its number, the same in all languages.
    nsExec::Exec '"$SYSDIR\icacls.exe" "$dossier" /grant *S-1-5-32-545:(OI)(CI)M'
    Pop $0
    ${If} $0 != 0
      SetErrors
      !insertmacro exige_reussite "Les droits du dossier $dossier n'ont pas pu être donnés."
    ${EndIf}
  ${EndIf}
  ${If} $reseau != ""
    Call ecrit_wfichdir
  ${EndIf}

  SetOutPath $dossier   ; where the shortcut starts
  CreateShortcut "$SMPROGRAMS\${NOM}.lnk" "$INSTDIR\orvalune.exe" '--dossier "$dossier"' "$INSTDIR\orvalune.exe" 0 SW_SHOWNORMAL "" "Prise de commande à table"
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
SectionEnd

; --- The uninstaller: the program goes, the working directory stays

Function un.onInit
  Call un.regarde_droits
  ReadRegStr $0 HKLM "${CLE_PROGRAMME}" "InstallLocation"
  StrCpy $pour_tous 0
  ${If} $0 == $INSTDIR
  ${OrIf} "$0\" == $INSTDIR
    StrCpy $pour_tous 1
    ${If} $administrateur = 0
      !insertmacro refuse "Il faut être administrateur pour désinstaller ${NOM}."
    ${EndIf}
  ${EndIf}
  Call un.choisit_utilisateurs
FunctionEnd

Section Uninstall
  Call un.exige_arret
  Delete "$INSTDIR\orvalune.exe"
  Delete "$INSTDIR\licences.txt"
  Delete "$INSTDIR\desinstalle.exe"
  SetOutPath $TEMP
  RMDir $INSTDIR
  Delete "$SMPROGRAMS\${NOM}.lnk"
  DeleteRegValue SHCTX "${CLE_DEMARRAGE}" "${NOM}"
  DeleteRegKey SHCTX "${CLE_PROGRAMME}"
SectionEnd
