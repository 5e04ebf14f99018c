#include "data/journal.h"

#include <algorithm>
#include <cstdint>

#include "platform/systeme/fichiers.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/texte.h"

namespace journal {
namespace {

constexpr std::uint64_t longueur_max = 1'000'000;

std::string retenues;  ///< lines that have not been written yet

/// A file's name may hold what would end the line.
std::string sur_une_ligne(std::string t) {
    std::replace_if(
        t.begin(), t.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, '?');
    return t;
}

std::string lis(std::string_view fichier) {
    std::string t;
    static_cast<void>(fichiers::lis_tout(fichier, t));  // there is none yet, or it cannot be read: no lines
    return t;
}

}  // namespace

void note(std::string_view evenement) {
    const std::string seul[] = {std::string(evenement)};
    note(seul);
}

void note(std::span<const std::string> evenements) {
    for (const std::string& e : evenements) retient(e);
    ecrit();
}

void retient(std::string_view evenement) {
    retenues += horloge::lisible(horloge::maintenant()) + " " + sur_une_ligne(std::string(evenement)) + "\r\n";
}

/// A full journal that cannot become the older one goes on to twice its length, and not beyond.
void ecrit() {
    if (retenues.empty()) return;
    std::uint64_t longueur = fichiers::longueur(nom_fichier).value_or(0);
    if (longueur >= longueur_max && fichiers::renomme_en_remplacant(nom_fichier, nom_ancien) == fichiers::Issue::fait)
        longueur = 0;
    if (longueur < 2 * longueur_max) static_cast<void>(fichiers::ajoute(nom_fichier, retenues));
    retenues.clear();
}

std::string fin(std::size_t nombre) {
    const std::string recent = lis(nom_fichier);
    const std::string tout = (texte::lignes(recent).size() < nombre ? lis(nom_ancien) : "") + recent;
    const auto lignes = texte::lignes(tout);
    std::string r;
    for (std::size_t i = lignes.size() > nombre ? lignes.size() - nombre : 0; i < lignes.size(); ++i) {
        r.append(lignes[i]).append("\r\n");
    }
    return r;
}

}  // namespace journal
