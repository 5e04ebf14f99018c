// What the terminal did, for the technician: "journal.txt" of the working directory, in French, one line an event with
// date and time; at 1 MB it becomes "journal_1.txt". It never holds a note's text, a remark or a code.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace journal {

inline constexpr std::string_view nom_fichier = "journal.txt", nom_ancien = "journal_1.txt";

/// Writes one line (page 1252). A line that cannot be written is lost: the terminal goes on.
void note(std::string_view evenement);
/// Likewise several, at one stroke: however many orders were collected, the interface opens the file once.
void note(std::span<const std::string> evenements);

/// Keeps an event of this moment until something is noted, or ecrit(): whoever tells it is not held up.
void retient(std::string_view evenement);
void ecrit();

/// The last lines, at most `nombre`, oldest first, with CR LF; those of the older file too where they are needed.
std::string fin(std::size_t nombre);

}  // namespace journal
