#include "data/suivi.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "data/nombres.h"
#include "platform/systeme/texte.h"

namespace suivi {
namespace {

using horloge::DateHeure;

constexpr int delai_s = 5 * 60;
constexpr std::size_t nb_champs = 8, chiffres = 3;
constexpr std::uint64_t longueur_max = 1 << 20;

/// In the order of Etat.
constexpr std::string_view noms_des_etats[] = {"en attente"_t, "déposée"_t, "collectée"_t, "à vérifier"_t};

std::vector<Ligne> liste;
bool change = false;
bool tenue = false;  ///< another program held the file at the start: what it says must not be written over

bool est_finie(const Ligne& l) {
    return l.etat == Etat::collectee;
}

std::string en_ligne(const Ligne& l) {
    return horloge::lisible(l.ecrite) + ";" + nombres::entier_complete(l.serveur, 2) + ";" + l.table + ";" +
           l.couverts + ";" + std::to_string(l.lignes) + ";" +
           std::string(noms_des_etats[static_cast<std::size_t>(l.etat)]) + ";" + horloge::lisible(l.depuis) + ";" +
           l.nom + "\r\n";
}

/// A name from a file stays in its directory.
bool est_un_nom(std::string_view nom) {
    const bool plat = std::none_of(nom.begin(), nom.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; });
    return plat && !nom.empty() && nom.find_first_of("/\\:") == std::string_view::npos &&
           nom.find("..") == std::string_view::npos;
}

/// The fields of a line; the last one takes what is left, a name may hold ";".
std::vector<std::string_view> champs(std::string_view ligne) {
    std::vector<std::string_view> r;
    while (r.size() + 1 < nb_champs) {
        const auto fin = ligne.find(';');
        if (fin == std::string_view::npos) return {};
        r.push_back(ligne.substr(0, fin));
        ligne.remove_prefix(fin + 1);
    }
    r.push_back(ligne);
    return r;
}

/// Nothing when the line is damaged.
std::optional<Ligne> lis_ligne(std::string_view texte_lu) {
    const auto c = champs(texte_lu);
    if (c.size() != nb_champs || !est_un_nom(c[7])) return std::nullopt;
    const auto ecrite = horloge::depuis_texte(c[0]), depuis = horloge::depuis_texte(c[6]);
    const auto etat = std::find(std::begin(noms_des_etats), std::end(noms_des_etats), c[5]);
    if (!ecrite || !depuis || etat == std::end(noms_des_etats)) return std::nullopt;
    Ligne l;
    l.ecrite = *ecrite;
    l.serveur = nombres::entier_int(c[1]);
    l.table = c[2].substr(0, chiffres);
    l.couverts = c[3].substr(0, chiffres);
    l.lignes = nombres::entier_int(c[4]);
    l.etat = static_cast<Etat>(etat - std::begin(noms_des_etats));
    l.depuis = *depuis;
    l.nom = c[7];
    return l;
}

/// What stands behind a mark of the order file's head.
std::string_view valeur(std::string_view contenu, std::string_view marque) {
    for (const std::string_view ligne : texte::lignes(contenu)) {
        if (ligne.starts_with(marque)) return texte::rogne(ligne.substr(marque.size()));
    }
    return {};
}

/// The blocks of an order but the components of its menus, whose quantity ends with ")".
int compte_lignes(std::string_view contenu) {
    const auto lignes = texte::lignes(contenu);
    return static_cast<int>(std::count_if(lignes.begin(), lignes.end(), [](std::string_view l) {
        return l.starts_with("#REF#") && l.find('}') != std::string_view::npos;
    }));
}

/// A line for an order that has none, from its file.
Ligne depuis_fichier(std::string_view nom, const std::string& fichier) {
    std::string contenu;
    static_cast<void>(fichiers::lis_tout(fichier, contenu, longueur_max));  // then the line knows its name alone
    Ligne l;
    l.ecrite = l.depuis = horloge::depuis_nom(nom).value_or(horloge::maintenant());
    l.serveur = nombres::entier_int(valeur(contenu, "#SERVEUR#"));
    l.table = valeur(contenu, "#TABLE#").substr(0, chiffres);
    l.couverts = nombres::entier_complete(nombres::lis(valeur(contenu, "#NBCOUVERT#")), 3);
    l.lignes = compte_lignes(contenu);
    l.nom = nom;
    return l;
}

/// The last line of an order: a name may come again when the clock was set back over a start.
Ligne* cherche(std::string_view nom) {
    const auto i = std::find_if(liste.rbegin(), liste.rend(), [nom](const Ligne& l) { return l.nom == nom; });
    return i == liste.rend() ? nullptr : &*i;
}

void met_en_etat(Ligne& l, Etat etat) {
    if (l.etat == etat) return;
    l.etat = etat;
    l.depuis = horloge::maintenant();
    l.depuis_ms = horloge::millisecondes();
    change = true;
}

/// The oldest collected lines go first, and those that the waiter has to decide on last.
void raccourcit() {
    if (liste.size() <= lignes_max) return;
    std::size_t trop = liste.size() - lignes_max;
    const auto retire = [&trop](auto choisit) {
        std::erase_if(liste, [&](const Ligne& l) { return trop > 0 && choisit(l) && trop-- > 0; });
    };
    retire(est_finie);
    retire([](const Ligne& l) { return l.etat != Etat::a_verifier; });
    retire([](const Ligne&) { return true; });
    change = true;
}

/// Seconds in the present state, by the clock or by what has really passed: whichever is more. One that was set back
/// counts as none.
std::int64_t secondes(const Ligne& l) {
    return std::max(horloge::secondes_entre(l.depuis, horloge::maintenant()),
                    (horloge::millisecondes() - l.depuis_ms) / 1000);
}

void lis_fichier() {
    std::string contenu;
    tenue = fichiers::lis_tout(nom_fichier, contenu, longueur_max) == fichiers::Issue::occupe;
    for (const std::string_view t : texte::lignes(contenu)) {
        auto l = lis_ligne(t);
        if (!l) {
            change = true;
            continue;
        }
        l->depuis_ms = horloge::millisecondes();
        liste.push_back(std::move(*l));
    }
}

struct Fichier {
    std::string nom, fichier;
    Etat etat;
};

/// The orders that the working directory holds, and the state that their files tell.
std::vector<Fichier> cherche_fichiers(const livraison::Local& local) {
    std::vector<Fichier> r;
    for (const auto& f : local.en_attente) {
        const std::string nom(livraison::nom_de(f));
        const bool marquee = std::any_of(local.marques.begin(), local.marques.end(),
                                         [&](const std::string& m) { return livraison::nom_marque(m) == nom; });
        // Handed over, but its file could not be put away.
        r.push_back({nom, f, marquee && est_deposee(nom) ? Etat::deposee : Etat::en_attente});
    }
    for (const auto& f : local.gardees) r.push_back({livraison::nom_garde(f), f, Etat::deposee});
    for (const auto& f : local.a_verifier) r.push_back({std::string(livraison::nom_de(f)), f, Etat::a_verifier});
    std::sort(r.begin(), r.end(), [](const Fichier& a, const Fichier& b) { return a.nom < b.nom; });
    return r;
}

}  // namespace

void charge(const std::optional<livraison::Local>& local) {
    liste.clear();
    change = false;
    lis_fichier();
    if (!local) return;
    std::vector<Fichier> presents = cherche_fichiers(*local);
    const auto present = [&](const std::string& nom) {
        return std::binary_search(presents.begin(), presents.end(), Fichier{nom, "", {}},
                                  [](const Fichier& a, const Fichier& b) { return a.nom < b.nom; });
    };
    // The text of a deposited order goes when it has been collected. One that waited has been taken by somebody else,
    // or the list is older than the files, after a power cut: nobody knows.
    for (Ligne& l : liste) {
        if (present(l.nom)) continue;
        if (l.etat == Etat::deposee) met_en_etat(l, Etat::collectee);
        if (l.etat == Etat::en_attente) met_en_etat(l, Etat::a_verifier);
    }
    std::size_t trop = presents.size() > lignes_max ? presents.size() - lignes_max : 0;
    std::erase_if(presents, [&trop](const Fichier& f) { return trop > 0 && f.etat != Etat::a_verifier && trop-- > 0; });
    for (const Fichier& f : presents) {
        if (!est_un_nom(f.nom)) continue;
        Ligne* l = cherche(f.nom);
        if (l == nullptr) {
            liste.push_back(depuis_fichier(f.nom, f.fichier));
            l = &liste.back();
            l->depuis_ms = horloge::millisecondes();
            change = true;
        }
        met_en_etat(*l, f.etat);
    }
    raccourcit();
    enregistre();
}

const std::vector<Ligne>& lignes() {
    return liste;
}

bool est_deposee(std::string_view nom) {
    const Ligne* l = cherche(nom);
    return l != nullptr && l->etat == Etat::deposee;
}

bool connait(std::string_view nom) {
    return cherche(nom) != nullptr;
}

void ajoute(std::string_view nom, int nombre_de_lignes) {
    Ligne l;
    l.ecrite = l.depuis = horloge::maintenant();
    l.depuis_ms = horloge::millisecondes();
    l.lignes = nombre_de_lignes;
    l.nom = nom;
    // "yyyy-mm-dd-hh-nn-ss_SS_TTT_CCC_."
    l.serveur = nombres::entier_int(texte::colonnes(nom, 21, 2));
    l.table = texte::colonnes(nom, 24, 3);
    l.couverts = texte::colonnes(nom, 28, 3);
    liste.push_back(std::move(l));
    change = true;
    raccourcit();
}

void passe_a(std::string_view nom, Etat etat) {
    if (Ligne* l = cherche(nom)) met_en_etat(*l, etat);
}

void enregistre() {
    if (!change || tenue) return;
    std::string t;
    for (const Ligne& l : liste) t += en_ligne(l);
    if (fichiers::remplace_sans_attendre(nom_fichier, t) == fichiers::Issue::fait) change = false;
}

int non_collectees() {
    return static_cast<int>(std::count_if(
        liste.begin(), liste.end(), [](const Ligne& l) { return l.etat == Etat::deposee && secondes(l) >= delai_s; }));
}

std::int64_t avant_la_prochaine() {
    std::int64_t r = -1;
    for (const Ligne& l : liste) {
        if (l.etat != Etat::deposee) continue;
        const std::int64_t reste = (delai_s - secondes(l)) * 1000;
        if (reste > 0 && (r < 0 || reste < r)) r = reste;
    }
    return r;
}

Renvoi renvoie(std::string_view nom) {
    if (!est_un_nom(nom)) return Renvoi::texte_perdu;
    const std::string base(nom), attente = base + std::string(livraison::fin_en_attente);
    const auto issue = fichiers::renomme(base + std::string(livraison::fin_a_verifier), attente);
    if (issue != fichiers::Issue::fait) {
        if (fichiers::existe(attente)) return Renvoi::deja_en_attente;
        return issue == fichiers::Issue::absent ? Renvoi::texte_perdu : Renvoi::echec;
    }
    passe_a(nom, Etat::en_attente);
    enregistre();
    return Renvoi::fait;
}

}  // namespace suivi
