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

; Likewise for the program $2: its file cannot be opened for writing then.
Function ${un}exige_arret_de
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

; --- What is asked, on the command line or on the pages

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

; Splits the command line as every program does, and reads its options; $erreur tells what is wrong with the first bad one.
Function lis_options
  ; Windows's command line goes on where the one of the installer ends: with the " /D=" that it has cut off and mended.
  System::Call 'kernel32::GetCommandLineW() w .R0'
  StrLen $0 $CMDLINE
  StrCpy $repertoire_donne $R0 "" $0
  ${If} $repertoire_donne != ""
    StrCpy $repertoire_donne $repertoire_donne "" 4
    Call verifie_repertoire
  ${EndIf}
  StrCpy $R0 $CMDLINE
  System::Call 'shell32::CommandLineToArgvW(w R0, *i .R1) p .R2'
  IntOp $R1 $R1 - 1
  ${For} $R3 1 $R1   ; 0 is the installer itself
    IntOp $R4 $R3 * ${NSIS_PTR_SIZE}
    IntPtrOp $R4 $R2 + $R4
    System::Call '*$R4(p .R4)'
    System::Call 'kernel32::lstrcpynW(w .R5, p R4, i ${NSIS_MAX_STRLEN})'
    StrCpy $R6 $erreur
    Call lis_option
    ${If} $R6 != ""
      StrCpy $erreur $R6
    ${EndIf}
  ${Next}
  System::Call 'kernel32::LocalFree(p R2)'
FunctionEnd

; Reads the option $R5.
Function lis_option
  StrCpy $0 $R5 8
  StrCpy $1 $R5 3
  ${If} $R5 == "/S"
    SetSilent silent   ; the installer itself does not see it between quotes
  ${ElseIf} $R5 == "/NCRC"
    Nop   ; the installer itself has read it
  ${ElseIf} $R5 == "/AllUsers"
    StrCpy $R5 "tous"
    Call demande_mode
  ${ElseIf} $R5 == "/CurrentUser"
    StrCpy $R5 "moi"
    Call demande_mode
  ${ElseIf} $R5 == "/DEMARRAGE"
    StrCpy $demarrage_demande 1
  ${ElseIf} $R5 == "/DEMARRAGE=non"
    StrCpy $demarrage_demande 0
  ${ElseIf} $0 == "/RESEAU="
    StrCpy $reseau $R5 "" 8
    Call enleve_guillemets
    Call verifie_reseau
  ${ElseIf} $1 == "/D="
    StrCpy $repertoire_donne $R5 "" 3
    Call verifie_repertoire
  ${Else}
    StrCpy $erreur "Option inconnue : $R5"
  ${EndIf}
FunctionEnd

Function demande_mode
  ${If} $demande != ""
  ${AndIf} $demande != $R5
    StrCpy $erreur "/AllUsers et /CurrentUser s'excluent."
  ${EndIf}
  StrCpy $demande $R5
FunctionEnd

; $reseau without the quotes that a command interpreter has left around it.
Function enleve_guillemets
  StrCpy $0 $reseau 1
  StrCpy $1 $reseau 1 -1
  ${If} $0$1 == '""'
    StrCpy $reseau $reseau -1 1
  ${EndIf}
FunctionEnd

; $erreur when $repertoire_donne is not a whole path: its options are within it then, or its quotes.
Function verifie_repertoire
  StrCpy $4 $repertoire_donne
  Call cherche_interdit
  StrCpy $0 $repertoire_donne 2
  StrCpy $1 $repertoire_donne 2 1
  ${If} $0 == "\\"
    StrCpy $1 ":\"
  ${EndIf}
  ${If} $3 != ""
  ${OrIf} $1 != ":\"
  ${OrIf} $2 < 2   ; a whole drive
    StrCpy $erreur "/D= veut le chemin complet d'un dossier, en dernier et sans guillemets : $repertoire_donne"
  ${EndIf}
FunctionEnd

; $3: a character of the path $4 that no directory has, empty: none; $2: how many names it has.
Function cherche_interdit
  StrCpy $0 0
  StrCpy $1 "\"   ; the character before
  StrCpy $2 0
  ${Do}
    StrCpy $3 $4 1 $0
    ${If} $3 == ""
    ${OrIf} $3 == "/"
    ${OrIf} $3 == '"'
    ${OrIf} $3 == "|"
    ${OrIf} $3 == "<"
    ${OrIf} $3 == ">"
    ${OrIf} $3 == "*"
    ${OrIf} $3 == "?"
      Return
    ${EndIf}
    ${If} $1 == "\"
    ${AndIf} $3 != "\"
    ${AndIf} $3 != " "
      IntOp $2 $2 + 1
    ${EndIf}
    StrCpy $1 $3
    IntOp $0 $0 + 1
  ${Loop}
FunctionEnd

; $erreur when $reseau cannot be the network directory of a restaurant.
Function verifie_reseau
  StrCpy $erreur ""
  StrCpy $4 $reseau
  Call cherche_interdit
  StrCpy $0 $reseau 2
  ${If} $0 == "\\"
    IntOp $2 $2 - 1   ; a server alone has no directory
  ${EndIf}
  Call compte_octets
  ${If} $3 != ""
    StrCpy $erreur "Un répertoire réseau ne peut pas contenir le signe $3 : $reseau"
  ${ElseIf} $2 < 1
    StrCpy $erreur "Le répertoire réseau n'est pas complet : $reseau. Écrivez par exemple \\serveur\orvalune."
  ${ElseIf} $1 = 0
    StrCpy $erreur "Le répertoire réseau contient un caractère que la tablette ne connaît pas : $reseau"
  ${EndIf}
FunctionEnd

; $1: bytes of $reseau in the code page of the files, its end included; 0 when it has a character that is not there.
Function compte_octets
  StrCpy $0 $reseau
  System::Call 'kernel32::WideCharToMultiByte(i ${PAGE_1252}, i ${SANS_APPROCHER}, w r0, i -1, p 0, i 0, p 0, *i .r5) i .r1'
  ${If} $5 <> 0
    StrCpy $1 0
  ${EndIf}
FunctionEnd

; --- Where the terminal is installed already

Function cherche_copies
  ReadRegStr $copie_tous HKLM "${CLE_PROGRAMME}" "InstallLocation"
  ReadRegStr $copie_moi HKCU "${CLE_PROGRAMME}" "InstallLocation"
  ; An administrator is often not the one who has installed it for himself.
  StrCpy $copie_autre ""
  StrCpy $0 0
  ${Do}
    EnumRegKey $1 HKU "" $0
    ${If} $1 == ""
      ${ExitDo}
    ${EndIf}
    ReadRegStr $2 HKU "$1\${CLE_PROGRAMME}" "InstallLocation"
    ${If} $2 != ""
    ${AndIf} ${FileExists} "$2\orvalune.exe"
      StrCpy $copie_autre $2
    ${EndIf}
    IntOp $0 $0 + 1
  ${Loop}
FunctionEnd

; $pour_tous as the command line asks, else as what is there.
Function choisit_mode
  StrCpy $pour_tous 0
  ${If} $demande == "tous"
    StrCpy $pour_tous 1
  ${ElseIf} $demande == ""
  ${AndIf} $copie_tous != ""
    StrCpy $pour_tous 1
  ${EndIf}
  Call verifie_mode
FunctionEnd

; $erreur when $pour_tous cannot be.
Function verifie_mode
  StrCpy $erreur ""
  ${If} $pour_tous = 1
    ${If} $administrateur = 0
      StrCpy $erreur "Il faut être administrateur pour installer ou mettre à jour ${NOM} pour tous les utilisateurs."
    ${ElseIf} $copie_tous == ""
    ${AndIf} $copie_autre != ""
      StrCpy $erreur "${NOM} est déjà installé pour un seul utilisateur, dans $copie_autre. Désinstallez-le d'abord ; ses commandes et ses réglages resteront."
    ${EndIf}
  ${ElseIf} $copie_moi == ""
  ${AndIf} $copie_tous != ""
  ${AndIf} ${FileExists} "$copie_tous\orvalune.exe"
    StrCpy $erreur "${NOM} est déjà installé pour tous les utilisateurs, dans $copie_tous. Désinstallez-le d'abord ; ses commandes et ses réglages resteront."
  ${EndIf}
FunctionEnd

; What follows from the choice of the users: directories, and what an earlier installation holds.
Function prepare
  Call choisit_utilisateurs
  ReadRegStr $ancien SHCTX "${CLE_PROGRAMME}" "InstallLocation"
  StrCpy $INSTDIR $repertoire_donne
  ${If} $INSTDIR == ""
    StrCpy $INSTDIR $ancien
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
  ${If} $demarrage_demande != ""
    StrCpy $demarrage $demarrage_demande
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

; $0: 1 when for whom the installation is needs no question: an update is for whom the first one was.
Function sans_choix
  StrCpy $0 0
  ${If} $administrateur = 0
  ${OrIf} $copie_tous$copie_moi != ""
    StrCpy $0 1
  ${EndIf}
FunctionEnd

Function page_utilisateurs
  Call sans_choix
  ${If} $0 = 1
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
  Call verifie_mode
  ${If} $erreur != ""
    Call dit
    Abort
  ${EndIf}
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
  ${NSD_CreateLabel} 0 32u 100% 30u "Par exemple \\serveur\orvalune : le répertoire que partage le routeur de commandes. Laissez vide si vous ne le connaissez pas encore : ${NOM} le demandera au premier démarrage."
  Pop $0
  ${NSD_CreateCheckBox} 0 76u 100% 12u "&Démarrer ${NOM} à l'ouverture de session"
  Pop $case_demarrage
  ${NSD_SetState} $case_demarrage $demarrage
  Call sans_choix
  ${If} $0 = 1
    GetDlgItem $0 $HWNDPARENT 3   ; "back" would leave by the first page, which is not shown
    EnableWindow $0 0
  ${EndIf}
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
  ${If} $reseau == $reseau_lu
    StrCpy $reseau ""
  ${EndIf}
  ${If} $reseau != ""
    Call verifie_reseau
    ${If} $erreur != ""
      Call dit
      Abort
    ${EndIf}
  ${EndIf}
FunctionEnd

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
