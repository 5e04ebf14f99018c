#include "data/reseau.h"

#include <algorithm>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "data/catalogue.h"
#include "data/commande.h"
#include "data/etat.h"
#include "data/journal.h"
#include "data/livraison.h"
#include "data/suivi.h"
#include "data/tenus.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/ouvrier.h"
#include "platform/systeme/texte.h"

namespace reseau {
namespace {

using livraison::Sort;

constexpr int lignes_vides = 11;
constexpr std::uint64_t longueur_max = 1 << 20;
constexpr int limite_sonde_ms = 2000, limite_copie_ms = 10000;
constexpr int attente_sonde_ms = 100, attente_catalogue_ms = 2000;

struct Connexion {
    bool joignable = false;
    std::optional<bool> au_journal;             ///< what the journal has told of it last
    bool au_demarrage = false;                  ///< the start waits for the catalogue
    bool catalogue_venu = false;                ///< it has come whole, and is still the one that the network has
    std::string empreinte;                      ///< of the catalogue that has come
    bool catalogue_frais = false;               ///< it has come since it was last read
    bool point_fait = false;                    ///< what an earlier run did not end has been ended
    std::set<std::string> attentes;             ///< files of orders that wait, in name order
    std::map<std::string, std::string> fautes;  ///< by order, what the journal has told of it last
    std::map<std::string, Sort> remises;        ///< by order, what became of it; its file could not be put away
    bool regarde = false;                       ///< the look at the kitchen is under way
    bool passe_voulue = false;                  ///< a pass is to follow it
    int deposees = 0;                           ///< orders that have been handed over, and not been seen collected
    std::string partage;  ///< the network directory where a share was mounted when it last answered
};
Connexion connexion;
std::function<void()> temoin;  ///< told of every change

/// One look at the network and what follows from it: each order is tried once, and the catalogue once.
struct Passe {
    livraison::Local local;
    std::deque<std::string> a_livrer;
    std::set<std::string> vues;  ///< files that were put into `a_livrer`
    bool a_completer = false;    ///< orders have been listed since `a_livrer` was filled
    bool point_fait = false;
    bool catalogue_vu = false;  ///< whether the network has another one than that which has come
    bool catalogue = false;
    bool retenue = false;  ///< an order could not go, though the network answers
};
Passe passe_en_cours;

void signale() {
    suivi::enregistre();
    if (temoin) temoin();
}

/// Each change is told once; that the network is back only when something has been done there: a full one answers, too,
/// and is none that cannot be reached.
void note_le_reseau(bool joignable) {
    const auto avant = std::exchange(connexion.au_journal, joignable);
    if (avant == joignable) return;
    journal::note(joignable ? "réseau joignable"_t : avant ? "réseau perdu"_t : "réseau injoignable"_t);
}

void change_etat(bool joignable) {
    const bool avant = std::exchange(connexion.joignable, joignable);
    if (!joignable && (connexion.au_journal || !avant)) note_le_reseau(false);
    if (avant != joignable) signale();
}

livraison::Lieu lieu() {
    return {etat::repertoire_reseau, commande::identite(), connexion.partage == etat::repertoire_reseau};
}

/// What the working directory holds now, taken over from its listing; nothing when it cannot be listed, and nothing may
/// be delivered then.
std::optional<livraison::Local> regarde_ici(std::optional<livraison::Local> local = livraison::liste_locale()) {
    if (!local) return local;
    connexion.deposees = static_cast<int>(local->gardees.size());
    std::erase_if(connexion.remises, [&](const auto& r) {
        return std::ranges::none_of(local->en_attente, [&](auto& f) { return livraison::nom_de(f) == r.first; });
    });
    std::set<std::string>& attentes = connexion.attentes;
    if (connexion.remises.empty() && std::ranges::equal(attentes, local->en_attente)) return local;
    attentes.clear();
    for (const std::string& fichier : local->en_attente) {
        if (!connexion.remises.contains(std::string(livraison::nom_de(fichier))))
            attentes.insert(attentes.end(), fichier);
    }
    return local;
}

/// Orders that an earlier run handed over and could not put away: their marks are there, and the list knows the rest.
void retrouve_les_remises(const livraison::Local& local) {
    for (const std::string& marque : local.marques) {
        const std::string nom = livraison::nom_marque(marque);
        if (suivi::est_deposee(nom)) connexion.remises.emplace(nom, Sort::deposee);
    }
}

/// Orders that this pass has not seen yet join those that it delivers.
void complete_la_passe() {
    if (!std::exchange(passe_en_cours.a_completer, false)) return;
    for (const std::string& fichier : connexion.attentes) {
        if (passe_en_cours.vues.insert(fichier).second) passe_en_cours.a_livrer.push_back(fichier);
    }
}

void retire_des_attentes(const std::string& nom) {
    for (const std::string_view fin : {"-A-", "-a-"}) connexion.attentes.erase(nom + std::string(fin));
}

/// An order has left the tablet, or nobody can know.
void note_remise(const livraison::Constat& c, suivi::Etat etat) {
    retire_des_attentes(c.nom);
    if (c.reste) {
        if (!connexion.remises.emplace(c.nom, c.sort).second) return;
    } else {
        connexion.remises.erase(c.nom);
    }
    if (c.sort == Sort::deposee) ++connexion.deposees;
    if (c.sort == Sort::collectee) --connexion.deposees;
    suivi::passe_a(c.nom, etat);
}

constexpr std::string_view mots_du_journal[] = {"déposée"_t, "collectée"_t, "à vérifier"_t,
                                                "retenue",   "retenue",     "retenue"};

/// What the journal tells of an order, or nothing: a fault is told once as long as it lasts.
std::optional<std::string> evenement(const livraison::Constat& c) {
    const std::string_view mot = mots_du_journal[static_cast<std::size_t>(c.sort)];
    if (c.sort == Sort::reseau_perdu && c.cause != fichiers::Issue::plein) return std::nullopt;  // told of the network
    std::string ligne = "commande " + c.nom + " " + std::string(mot);
    if (c.cause != fichiers::Issue::fait) ligne += " : " + std::string(fichiers::raison(c.cause));
    if (c.cause == fichiers::Issue::fait)
        connexion.fautes.erase(c.nom);
    else if (std::exchange(connexion.fautes[c.nom], ligne) == ligne)
        return std::nullopt;
    return ligne;
}

/// Takes over what became of an order, but for the journal. False when the network is lost.
bool retient(const livraison::Constat& c) {
    switch (c.sort) {
        case Sort::deposee:
            note_le_reseau(true);
            note_remise(c, suivi::Etat::deposee);
            break;
        case Sort::collectee:
            note_remise(c, suivi::Etat::collectee);
            break;
        case Sort::a_verifier:
            note_remise(c, suivi::Etat::a_verifier);
            break;
        case Sort::attend:
        case Sort::tenue:
            passe_en_cours.retenue = true;
            break;
        case Sort::reseau_perdu:
            break;
    }
    return c.sort != Sort::reseau_perdu;
}

bool prend(const livraison::Constat& c) {
    if (const auto e = evenement(c)) journal::note(*e);
    return retient(c);
}

using Constats = std::optional<std::vector<livraison::Constat>>;

/// The waiting orders that they speak of are not delivered by this pass any more.
bool prend_tous(const std::vector<livraison::Constat>& constats) {
    bool joint = true;
    std::vector<std::string> evenements;
    for (const livraison::Constat& c : constats) {
        if (c.sort != Sort::collectee) {
            for (const std::string_view fin : {"-A-", "-a-"}) passe_en_cours.vues.insert(c.nom + std::string(fin));
        }
        if (auto e = evenement(c)) evenements.push_back(std::move(*e));
        joint = retient(c) && joint;
    }
    journal::note(evenements);
    if (!constats.empty()) signale();
    return joint;
}

void livre_la_suivante();

void cherche_catalogue() {
    passe_en_cours.catalogue = passe_en_cours.catalogue_vu = true;
    struct Venu {
        livraison::Copie copie;
        std::string empreinte;
    };
    auto venu = std::make_shared<Venu>();
    const bool au_demarrage = connexion.au_demarrage;  // what the tablet holds has been read just now
    livraison::Lus lus;
    if (au_demarrage) lus = {catalogue::courant().entete, catalogue::courant().contenu};
    ouvrier::lance({[repertoire = etat::repertoire_reseau, venu, lus] {
                        venu->empreinte = livraison::empreinte_du_catalogue(repertoire);
                        venu->copie = livraison::copie_catalogue(repertoire, lus);
                    },
                    [venu, au_demarrage](ouvrier::Reponse reponse) {
                        if (reponse == ouvrier::Reponse::hors_delai) return change_etat(false);
                        const auto [entiere, neuve] = venu->copie;
                        connexion.catalogue_venu = connexion.catalogue_venu || entiere;
                        if (entiere) connexion.empreinte = venu->empreinte;
                        // Later on the tablet's files may be ahead of what was read of them.
                        const bool frais = neuve || (entiere && !au_demarrage);
                        connexion.catalogue_frais = connexion.catalogue_frais || frais;
                        livre_la_suivante();
                    },
                    limite_copie_ms});
}

/// A manager may have made another one meanwhile. No part of the look whether the network answers: on a slow share that
/// would take too long.
void regarde_le_catalogue() {
    passe_en_cours.catalogue_vu = true;
    auto empreinte = std::make_shared<std::string>();
    ouvrier::lance({[repertoire = etat::repertoire_reseau, empreinte] {
                        *empreinte = livraison::empreinte_du_catalogue(repertoire);
                    },
                    [empreinte](ouvrier::Reponse reponse) {
                        if (reponse == ouvrier::Reponse::hors_delai) return change_etat(false);
                        if (*empreinte != connexion.empreinte) connexion.catalogue_venu = false;
                        livre_la_suivante();
                    },
                    limite_copie_ms});
}

/// Orders that have surely been handed over, though their files are still here.
std::vector<std::string> commandes_remises() {
    std::vector<std::string> r;
    for (const auto& [nom, sort] : connexion.remises) {
        if (sort == Sort::deposee) r.push_back(nom);
    }
    return r;
}

/// Lists the network directory: deliveries that were cut off are ended, and what was collected is seen.
void fait_le_point() {
    passe_en_cours.point_fait = true;
    auto constats = std::make_shared<Constats>();
    ouvrier::lance({[lieu = lieu(), local = passe_en_cours.local, constats, remises = commandes_remises()] {
                        *constats = livraison::fait_le_point(lieu, local, remises);
                    },
                    [constats](ouvrier::Reponse reponse) {
                        const bool passe_voulue = std::exchange(connexion.passe_voulue, false);
                        connexion.regarde = false;
                        const bool fait = reponse == ouvrier::Reponse::faite && *constats;
                        connexion.point_fait = connexion.point_fait || fait;
                        if (!fait || !prend_tous(**constats)) return change_etat(false);
                        if (!etat::hors_ligne) change_etat(true);
                        if (passe_voulue) return passe();
                        livre_la_suivante();
                    },
                    limite_copie_ms,
                    [constats] {
                        if (*constats) static_cast<void>(prend_tous(**constats));
                    }});
}

/// What an earlier run, or a failure, has left unclear comes before anything is delivered.
bool point_necessaire() {
    const livraison::Local& l = passe_en_cours.local;
    return !connexion.point_fait || !l.marques.empty() || !l.anciennes.empty();
}

void livre(const std::string& fichier) {
    auto constat = std::make_shared<livraison::Constat>();
    constat->nom = livraison::nom_de(fichier);
    ouvrier::lance({[lieu = lieu(), fichier, constat] { *constat = livraison::livre(lieu, fichier); },
                    [constat](ouvrier::Reponse reponse) {
                        const bool joint = reponse == ouvrier::Reponse::faite && prend(*constat);
                        signale();
                        if (!joint) return change_etat(false);
                        livre_la_suivante();
                    },
                    limite_copie_ms,
                    [constat] {
                        static_cast<void>(prend(*constat));
                        signale();
                    }});
}

/// One operation after the other, each within a limit of its own: order after order, then what was collected, then the
/// catalogue.
void livre_la_suivante() {
    Passe& p = passe_en_cours;
    if (etat::hors_ligne || ouvrier::occupe()) return;  // a new pass has begun meanwhile
    if (!p.point_fait && point_necessaire()) return fait_le_point();
    complete_la_passe();
    if (!p.a_livrer.empty()) {
        const std::string fichier = std::move(p.a_livrer.front());
        p.a_livrer.pop_front();
        return livre(fichier);
    }
    if (!p.point_fait && !p.local.gardees.empty()) return fait_le_point();
    note_le_reseau(true);
    if (connexion.catalogue_venu && !p.catalogue_vu) return regarde_le_catalogue();
    if (!connexion.catalogue_venu && !p.catalogue) cherche_catalogue();
}

/// At the start the catalogue comes first; later the orders, which a slow catalogue must not hold up.
void apres_la_sonde(bool repond) {
    if (etat::hors_ligne) return;
    change_etat(repond);
    if (!repond) return;
    if (connexion.au_demarrage && !connexion.catalogue_venu) return cherche_catalogue();
    livre_la_suivante();
}

bool lance_sonde(livraison::Connu connu) {
    connu.monte = connu.monte || connexion.partage == etat::repertoire_reseau;
    auto sonde = std::make_shared<std::optional<fichiers::Trouve>>();
    return ouvrier::lance({[repertoire = etat::repertoire_test, record = int{etat::record_test}, sonde, connu,
                            date = horloge::jour(horloge::maintenant())] {
                               *sonde = livraison::ecrit_sonde(repertoire, record, date, connu);
                           },
                           [sonde, repertoire = etat::repertoire_reseau](ouvrier::Reponse reponse) {
                               const bool repond = reponse == ouvrier::Reponse::faite && *sonde;
                               if (repond) connexion.partage = (*sonde)->monte ? repertoire : "";
                               apres_la_sonde(repond);
                           },
                           limite_sonde_ms});
}

/// What is kept in mind for the files goes there.
void enregistre() {
    suivi::enregistre();
    journal::ecrit();
}

void commence_une_passe(std::optional<livraison::Local> local) {
    if (etat::hors_ligne) connexion.joignable = false;
    if (etat::hors_ligne || !local) return;
    if (connexion.regarde) {
        connexion.passe_voulue = true;
        return ouvrier::presse(limite_sonde_ms);
    }
    if (lance_sonde(livraison::connait(lieu(), *local))) {
        passe_en_cours = {};
        passe_en_cours.local = std::move(*local);
    }
    passe_en_cours.a_completer = true;
}

}  // namespace

bool repertoire_connu() {
    return fichiers::existe(nom_fichier);
}

fichiers::Issue lis_repertoire() {
    if (tenus::attend(nom_fichier)) return fichiers::Issue::occupe;
    std::string contenu;
    const auto lecture = tenus::note(nom_fichier, fichiers::lis_tout(nom_fichier, contenu, longueur_max));
    std::replace(contenu.begin(), contenu.end(), '\0', ' ');  // that a power cut leaves where nothing was written
    const auto lignes = texte::lignes(contenu);
    if (lecture != fichiers::Issue::occupe)
        etat::repertoire_reseau = lignes.empty() ? "" : std::string(texte::rogne(lignes[0]));
    etat::repertoire_test = etat::repertoire_reseau;
    etat::record_test = 1;
    return lecture;
}

fichiers::Issue ecrit_repertoire(std::string_view repertoire) {
    std::string t = std::string(repertoire) + "\r\n";
    for (int i = 0; i < lignes_vides; ++i) t += " \r\n";
    return fichiers::ecrit_tout(nom_fichier, t, fichiers::Remplace::oui);
}

bool joignable() {
    return connexion.joignable && !etat::hors_ligne;
}

bool a_reprendre() {
    return joignable() && (passe_en_cours.retenue || !connexion.remises.empty());
}

bool est_attendu() {
    return !etat::hors_ligne && !connexion.joignable && !connexion.attentes.empty();
}

bool attend_la_cuisine() {
    return !etat::hors_ligne && connexion.deposees > 0;
}

int commandes_en_attente() {
    return static_cast<int>(connexion.attentes.size());
}

void commence_la_connexion() {
    const auto dit = connexion.au_journal;
    connexion = {};
    connexion.au_journal = dit;
    auto local = livraison::liste_locale();
    if (local) retrouve_les_remises(*local);
    connexion.au_demarrage = true;
    enregistre();
    commence_une_passe(regarde_ici(std::move(local)));
}

void attend_la_connexion() {
    if (ouvrier::occupe()) ouvrier::attends(attente_sonde_ms);
    if (connexion.joignable) ouvrier::attends(attente_catalogue_ms);
    connexion.au_demarrage = false;
}

void passe() {
    enregistre();
    ouvrier::traite_reponses();  // what has ended late has changed the files
    commence_une_passe(regarde_ici());
}

void regarde_la_cuisine() {
    if (etat::hors_ligne || ouvrier::occupe()) return;
    if (!connexion.joignable) return passe();
    auto local = regarde_ici();
    if (!local || local->gardees.empty()) return;
    passe_en_cours = {};
    passe_en_cours.local = std::move(*local);
    connexion.regarde = true;
    fait_le_point();
}

bool catalogue_frais() {
    return std::exchange(connexion.catalogue_frais, false);
}

void envoie_identification(std::function<void(bool)> suite) {
    const std::string nom =
        std::string(livraison::debut_identification) + horloge::jour_et_heure(horloge::maintenant()) + ".txt";
    auto ecrit = std::make_shared<bool>(false);
    const bool lance =
        !etat::hors_ligne &&
        ouvrier::lance(
            {[repertoire = etat::repertoire_reseau, nom, ecrit, contenu = "#ID#" + commande::identite() + "\r\n"] {
                 *ecrit = livraison::depose(repertoire, nom, contenu);
             },
             [ecrit, suite](ouvrier::Reponse reponse) { suite(reponse == ouvrier::Reponse::faite && *ecrit); },
             limite_copie_ms,
             [ecrit, suite] {
                 if (*ecrit) suite(true);
             }});
    if (!lance) suite(false);
}

void au_changement(std::function<void()> action) {
    temoin = std::move(action);
}

}  // namespace reseau
