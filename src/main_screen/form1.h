// The main screen, Form1: the one permanent window, from which every dialog is opened.
#pragma once

namespace form1 {

/// Loads the main screen, runs the start-up sequence and serves until the program ends (by ecran::FinDuProgramme).
void montre_form1();

}  // namespace form1
