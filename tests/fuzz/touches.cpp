// The key program.
#include "data/programme_touches.h"
#include "essai.h"
#include "platform/systeme/texte.h"

namespace {

using programme_touches::Champ;
using programme_touches::Ligne;

constexpr Champ champs[] = {Champ::reference, Champ::libelle, Champ::lh,      Champ::image,
                            Champ::visible,   Champ::taille,  Champ::couleur, Champ::action};

void lis_champs(const Ligne& l) {
    exige(l.lue && l.largeur() >= 1 && l.hauteur() >= 1);
    exige(l.couleur() >= -1 && l.couleur() <= 0xFFFFFF);
    static_cast<void>(l.image() + l.taille() + l.marque() + l.visible());
    for (const Champ c : champs) exige(l.champ(c).find('\0') == std::string_view::npos);
}

/// A line is written back with its own fields, the action's text as its label; the others stay.
void recrit(int numero, Ligne l) {
    const std::string action(l.action()), reference(l.reference());
    l.pose(Champ::libelle, l.action());
    exige(programme_touches::ecrit_ligne(0, numero, l) == fichiers::Issue::fait);
    const Ligne relue = programme_touches::lis_page(0)[static_cast<std::size_t>(numero - 1)];
    exige(relue.action() == action && relue.reference() == reference);
    exige(relue.libelle() == texte::rogne(action.substr(0, 40)));
}

}  // namespace

void essaie(std::string_view entree) {
    // A shorter file is filled anew, whatever it holds: that is 1.28 MB each time.
    pose(std::string(programme_touches::nom_fichier),
         texte::complete(entree, std::max<std::size_t>(entree.size(), 256)));
    exige(programme_touches::prepare());
    const auto page = programme_touches::lis_page(0);
    exige(page.size() == programme_touches::lignes_par_page && programme_touches::lis_page(50).empty());
    for (const Ligne& l : page) lis_champs(l);
    lis_champs(programme_touches::lis_titres(0));
    const auto numero = static_cast<int>(entree.size() % programme_touches::lignes_par_page);
    recrit(numero + 1, page[static_cast<std::size_t>(numero)]);
    programme_touches::ferme();
}
