// The settings store.
#include "data/reglages.h"

#include "essai.h"
#include "platform/systeme/texte.h"

namespace {

constexpr int nombres[] = {
    reglages::police_outils,         reglages::touches_articles,     reglages::touches_articles + 1,
    reglages::touches_articles + 2,  reglages::touches_articles + 3, reglages::touches_serveurs,
    reglages::touches_familles,      reglages::colonnes_grille,      reglages::lignes_grille,
    reglages::police_note,           reglages::taille_boites,        reglages::police_liste_tables,
    reglages::colonnes_liste_tables, reglages::lignes_liste_tables,
};

void verifie_resolution() {
    exige(reglages::retouche_resolution({1280, 770}) == fichiers::Issue::fait);
    if (!reglages::resolution_choisie()) return;
    const auto r = reglages::resolution();
    exige(r.largeur == 1280 && r.hauteur == 770);
}

}  // namespace

void essaie(std::string_view entree) {
    pose(std::string(reglages::nom_fichier), entree);
    exige(reglages::ouvre());
    for (const int record : nombres) {
        const int n = reglages::nombre(record);
        exige(n >= 1 && n <= 200 && reglages::nombre(record) == n);
        exige(reglages::brut(record).starts_with("#I#"));
    }
    for (int n = 1; n <= 9; ++n) {
        const auto couleur = reglages::couleur(reglages::fonds + n);
        exige(couleur >= -1 && couleur <= 0xFFFFFF);
    }
    for (int record = 0; record <= 60; ++record) {
        exige(reglages::brut(record).size() == reglages::longueur_record);
        exige(reglages::valeur(record).size() <= reglages::longueur_valeur);
    }
    verifie_resolution();
    const auto texte = entree.substr(0, 30);
    exige(reglages::ecrit(2001, texte) == fichiers::Issue::fait);
    std::string attendu = texte::complete(texte, reglages::longueur_record);
    std::replace(attendu.begin(), attendu.end(), '\0', ' ');
    exige(reglages::brut(2001) == attendu);
    reglages::ferme();
}
