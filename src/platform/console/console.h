// The command line of the programs, what each of them answers by itself, and the standard streams, which Windows may
// have started a program without.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace console {

#ifdef _WIN32
using Lettre = wchar_t;
#else
using Lettre = char;
#endif

constexpr int faute_usage = 2;  ///< exit status

/// What a program says of itself, UTF-8; each text ends its last line.
struct Programme {
    const char* aide;
    const char* version;
};
/// Shows the help, or else the version; the exit status.
int presente(const Programme& programme, bool aide);
/// Says what makes no sense in the command line (page 1252), then the help; the exit status.
int refuse(const Programme& programme, std::string_view faute);

/// The words of the command line behind the program's name, in the page 1252. A directory behind "--dossier" may bear a
/// user's name that the page cannot hold: on Windows it is entered at once, and "." stands for it; the paths of a
/// replay are made absolute before.
std::vector<std::string> mots(int argc, const Lettre* const* argv);
/// A program of the console, from its command line to its exit status: what it writes is UTF-8, and a console that was
/// opened for it alone stays to show what it refuses.
int execute(int argc, const Lettre* const* argv, int (*lance)(const std::vector<std::string>& mots));

/// A line as it is shown: what would drive the console (control characters, which names and files may bring) is "?".
/// UTF-8.
std::string ligne(std::string_view utf8);

/// Keeps what is written from files of the program's own where a standard stream was closed before it began. To be
/// called before anything is opened; execute() and rattache() do.
void occupe_les_flux();

// Of these the systems without such consoles do nothing.

/// Gives standard output, error and input the console of the program that started this one, when there is one and they
/// lead nowhere; redirected ones stay. To be called before anything is written.
void rattache();
/// Lets that console go: closing it, or a key pressed in it, ends the screens no more.
void detache();
/// What is written is UTF-8; the console gets its code page back at the end.
void ecrit_en_utf8();
/// Waits for Enter where the console was opened for this program alone: it would close with what it says.
void attend_si_seul();
/// Shows a text (UTF-8) in a box where standard error leads nowhere: the program was started by a touch.
void montre(const std::string& texte);

}  // namespace console
