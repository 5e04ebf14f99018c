#include "platform/tableur/tableur.h"

#include <csv.h>

#include <cstddef>
#include <utility>

namespace tableur {
namespace {

/// What the library hands over, cell by cell.
struct Recolte {
    Rangees rangees;
    std::vector<std::string> rangee;
};

void prend_case(void* texte, std::size_t longueur, void* recolte) {
    static_cast<Recolte*>(recolte)->rangee.emplace_back(static_cast<const char*>(texte), longueur);
}

void prend_rangee(int, void* recolte) {
    auto& r = *static_cast<Recolte*>(recolte);
    r.rangees.push_back(std::move(r.rangee));
    r.rangee.clear();
}

std::string case_ecrite(const std::string& c, char separateur) {
    const std::string speciaux = std::string("\"\r\n") + separateur;
    if (c.find_first_of(speciaux) == std::string::npos && !c.starts_with(' ') && !c.ends_with(' ')) return c;
    std::string r(2 * c.size() + 2, '\0');
    r.resize(csv_write(r.data(), r.size(), c.data(), c.size()));
    return r;
}

}  // namespace

Rangees decoupe(std::string_view texte, char separateur, bool& ferme) {
    csv_parser p{};
    Recolte r;
    csv_init(&p, CSV_REPALL_NL);  // an empty row counts: rows keep the numbers that a spreadsheet gives them
    csv_set_delim(&p, static_cast<unsigned char>(separateur));
    csv_parse(&p, texte.data(), texte.size(), prend_case, prend_rangee, &r);
    ferme = p.quoted == 0;
    csv_fini(&p, prend_case, prend_rangee, &r);
    csv_free(&p);
    return std::move(r.rangees);
}

std::string rangee(const std::vector<std::string>& cases, char separateur) {
    std::string r;
    for (const std::string& c : cases) {
        if (&c != cases.data()) r += separateur;
        r += case_ecrite(c, separateur);
    }
    return r + "\r\n";
}

}  // namespace tableur
