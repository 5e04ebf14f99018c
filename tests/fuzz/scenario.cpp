// Lines of a scenario.
#include "platform/rejeu/scenario.h"

#include "essai.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/texte.h"

namespace {

std::string cite(std::string_view texte) {
    std::string r = "\"";
    for (const char c : texte::vers_utf8(texte)) {
        if (c == '"' || c == '\\') r += '\\';
        r += c;
    }
    return r + "\"";
}

void verifie_mot(const rejeu::Mot& mot) {
    if (const auto nom = rejeu::lis_nom(mot.texte)) exige(!nom->controle.empty() && nom->index >= -1);
    exige(rejeu::lis_entier(mot.texte).value_or(0) >= 0);
    if (const auto d = horloge::depuis_texte(mot.texte)) horloge::pour_fichier(horloge::plus_secondes(*d, 90'000));
    if (!mot.cite) return;
    const auto relue = rejeu::decoupe("verifie " + cite(mot.texte));
    exige(relue.faute.empty() && relue.mots.size() == 2 && relue.mots[1].texte == mot.texte);
}

}  // namespace

void essaie(std::string_view entree) {
    for (const std::string_view ligne : texte::lignes(entree)) {
        const auto lue = rejeu::decoupe(ligne);
        exige(lue.faute.empty() || lue.mots.empty());
        for (const rejeu::Mot& mot : lue.mots) verifie_mot(mot);
    }
}
