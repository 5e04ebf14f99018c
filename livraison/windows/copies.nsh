; Where the terminal is installed already, and the pages that ask for whom and for the network directory.

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
