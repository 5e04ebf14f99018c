// The command line and the standard streams of a program that Windows starts without a console.
#pragma once

#include <string>
#include <vector>

namespace console {

/// Gives standard output, error and input the console of the program that started this one, when there is one and they
/// lead nowhere; redirected ones stay. To be called before anything is written.
void rattache();
/// Lets that console go: closing it, or a key pressed in it, ends the screens no more.
void detache();
/// A program of the console: what it writes is UTF-8; the console gets its code page back at the end.
void ecrit_en_utf8();
/// Waits for Enter where the console was opened for this program alone: it would close with what it says.
void attend_si_seul();
/// Shows a text (UTF-8) in a box where standard error leads nowhere: the program was started by a touch.
void montre(const std::string& texte);

/// The words of the command line behind the program's name, in the page 1252. A directory behind "--dossier" may bear a
/// user's name that the page cannot hold: it is entered at once, and "." stands for it; the
/// paths of a replay are made absolute before.
std::vector<std::string> mots(int argc, const wchar_t* const* argv);

}  // namespace console
