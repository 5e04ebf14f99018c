; What the command line of the installer asks for, and whether it can be done.

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
