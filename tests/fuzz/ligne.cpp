// A note line: a catalogue record, a zero byte, a remark.
#include "data/lignes.h"

#include <vector>

#include "data/commande.h"
#include "data/complements.h"
#include "data/etat.h"
#include "essai.h"
#include "platform/systeme/texte.h"

namespace {

void lis_tout(std::string_view ligne) {
    lignes::reference(ligne);
    lignes::libelle(ligne);
    lignes::prix_affiche(ligne);
    lignes::quantite_courte(ligne);
    const int chiffre = lignes::chiffre_couleur(ligne);
    exige(chiffre >= 0 && chiffre <= 9);
    for (const auto& c : lignes::composants(ligne)) exige(c.reference.size() <= 15);
    for (const auto& s : lignes::services(lignes::composition(ligne).value_or("")))
        exige(s.choix.size() <= lignes::choix_par_service);
}

/// Whatever was typed, a remark comes back as it was taken over, and leaves the line what it is.
std::string valide(std::string_view ligne, const std::string& remarque) {
    const std::string une = lignes::validee(ligne, 3, std::vector{remarque});
    const std::string dite = lignes::neutralise(texte::rogne(remarque));
    exige(lignes::segments(une) == (dite.empty() ? std::vector<std::string>() : std::vector{dite}));
    exige(lignes::quantite(une) == 3.0);
    const std::string autre = lignes::validee(ligne, 3, std::vector<std::string>{"Sans sel"});
    exige(lignes::libelle(une) == lignes::libelle(autre) && lignes::prix(une) == lignes::prix(autre));
    exige(lignes::est_menu_compose(une) == lignes::est_menu_compose(autre));
    return une;
}

/// A record has no quantity before it is validated: of one that has, or that gets one as its segments go, a part of any
/// text is cut out.
bool a_sa_quantite(std::string_view ligne) {
    const std::string une = lignes::validee(ligne, 3, {});
    return texte::contient(ligne, "##QUA") || une.find("##QUA") != une.rfind("##QUA");
}

/// Each line of the order file begins with its key, and ends with CR LF.
void ecrit_commande(std::string_view ligne) {
    etat::nb_lignes_note = 1;
    etat::lignes_note[1] = ligne;
    const std::string contenu = commande::contenu();
    exige(contenu.ends_with("\r\n"));
    for (const auto l : texte::lignes(contenu)) exige(l.starts_with('#'));
}

}  // namespace

void essaie(std::string_view entree) {
    std::string ligne(coupe(entree));
    std::replace(ligne.begin(), ligne.end(), '\n', ' ');  // the catalogue's reader has cut there
    const std::string remarque(entree.substr(0, 60));
    lis_tout(ligne);
    ecrit_commande(ligne);
    if (!a_sa_quantite(ligne)) valide(valide(ligne, remarque), remarque);
    complements::prend(ligne);
    complements::bascule(remarque);
    complements::bascule(remarque);
    complements::pose(0, remarque);
    const std::string validee = lignes::validee(ligne, 1, complements::rangs());
    lis_tout(validee);
    ecrit_commande(validee);
}
