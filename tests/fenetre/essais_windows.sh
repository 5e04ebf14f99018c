#!/usr/bin/env bash
# The tests of the real window of Windows, on a display of their own: without one they skip themselves.
# Usage: essais_windows.sh TESTS SOURCES EMULATOR
. "$(dirname "$0")/ecran.sh"
ouvre_ecran
"$emulateur" "$programme" '--gtest_filter=FenetreWin32.*' >"$terrain/essais.txt" 2>&1 </dev/null
statut=$?
cat "$terrain/essais.txt"
[ "$statut" = 0 ] || echoue "status $statut"
grep -qE '^\[  PASSED  \] [1-9]' "$terrain/essais.txt" || echoue "no test was run"
! grep -q SKIPPED "$terrain/essais.txt" || echoue "no window was made"
