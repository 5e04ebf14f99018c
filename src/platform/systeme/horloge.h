// Date, time and the count of milliseconds that timers use. Real by default; a replay installs a virtual clock that
// only the scenario moves.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace horloge {

struct DateHeure {
    int annee = 2021, mois = 5, jour = 19, heure = 12, minute = 30, seconde = 0;
    bool operator==(const DateHeure&) const = default;
};

/// Local date and time.
DateHeure maintenant();
/// Local date and time of a moment, in seconds since 1970 (UTC).
DateHeure locale(std::int64_t secondes);
/// Milliseconds since some fixed moment; never goes back.
std::int64_t millisecondes();

/// "AAAA-MM-JJ hh:mm:ss", or nothing when the text is no valid date and time.
std::optional<DateHeure> depuis_texte(std::string_view t);
/// The moment `secondes` later, over the ends of minutes, months and years.
DateHeure plus_secondes(const DateHeure& d, std::int64_t secondes);
/// Seconds from one moment to another; negative when the second is earlier.
std::int64_t secondes_entre(const DateHeure& de, const DateHeure& a);

/// "yyyy-mm-dd hh:mm:ss", as depuis_texte() takes it.
std::string lisible(const DateHeure& d);
/// "yyyy-mm-dd-hh-nn-ss", as order file names begin.
std::string pour_fichier(const DateHeure& d);
/// The date that a name begins with as pour_fichier() writes it, if it does.
std::optional<DateHeure> depuis_nom(std::string_view nom);
/// "dd-mm-yyyy".
std::string jour(const DateHeure& d);
/// "dd-mm-yyyy-hh-nn-ss".
std::string jour_et_heure(const DateHeure& d);

/// From now on time is virtual: it starts at `debut` and moves only by avance() and regle().
void rend_virtuelle(const DateHeure& debut);
bool est_virtuelle();
void avance(std::int64_t ms);
/// Sets date and time of the virtual clock; the millisecond count of the timers goes on unchanged.
void regle(const DateHeure& d);
/// Back to the real clock.
void rend_reelle();

}  // namespace horloge
