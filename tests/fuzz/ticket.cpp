// An order file, a zero byte, the catalogue, a zero byte, what a fiche tells: the order's ticket.
#include "cuisine/ticket.h"

#include "cuisine/fiche.h"
#include "essai.h"

namespace {

/// No line leaves the paper, no character is a command of the printer, and the end is the end.
void verifie(const ticket::Ticket& t, int colonnes) {
    for (const ticket::Ligne& l : t) {
        exige(l.texte.size() <= static_cast<std::size_t>(colonnes));
        for (const char c : l.texte) exige(static_cast<unsigned char>(c) >= 32);
    }
    exige(t.back().texte == "FIN");
}

}  // namespace

void essaie(std::string_view entree) {
    const std::string contenu(coupe(entree)), carte(coupe(entree));
    commande::Commande c, debut;
    std::string faute, autre;
    const commande::Lecture lecture = commande::lis(contenu, c, faute);
    exige((lecture == commande::Lecture::entiere) == faute.empty());
    // Who is still writing an order is never told that it is none.
    if (lecture != commande::Lecture::fausse) {
        for (std::size_t n = 0; n < contenu.size(); n += 7)
            exige(commande::lis(contenu.substr(0, n), debut, autre) != commande::Lecture::fausse);
    }
    const articles::Articles catalogue(catalogue::depuis("", carte));
    std::vector<const commande::Article*> lignes;
    for (const commande::Article& a : c.articles) lignes.push_back(&a);
    for (const int colonnes : {ticket::colonnes_min, ticket::colonnes_usuelles, ticket::colonnes_max}) {
        for (const ticket::Page page : {ticket::Page::p1252, ticket::Page::p858}) {
            verifie(ticket::compose(c, lignes, catalogue, {1, true, {}, "bar"}, {colonnes, page}), colonnes);
            verifie(ticket::de_rejet(contenu, faute, false, {colonnes, page}), colonnes);
        }
    }
    exige(pose("a.fiche", entree));
    fiche::Fiche lue, relue;
    exige(fiche::lis("a.fiche", lue) == fichiers::Issue::fait && lue.numero >= 0);
    if (lue.parties.empty()) return;
    exige(fiche::ecrit("b.fiche", lue) == fichiers::Issue::fait);
    exige(fiche::lis("b.fiche", relue) == fichiers::Issue::fait && relue.parties.size() == lue.parties.size());
    for (std::size_t i = 0; i < lue.parties.size(); ++i) {
        const fiche::Partie &a = lue.parties[i], &b = relue.parties[i];
        exige(a.adresse == b.adresse && a.lignes == b.lignes && a.etat == b.etat);
    }
}
