#include "data/commande.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <random>
#include <set>
#include <string_view>

#include "data/etat.h"
#include "data/journal.h"
#include "data/lignes.h"
#include "data/livraison.h"
#include "data/nombres.h"
#include "data/suivi.h"
#include "platform/systeme/processus.h"
#include "platform/systeme/texte.h"

namespace commande {
namespace {

constexpr int essais_max = 3600;  ///< seconds that may be taken by other waiting orders

// --- what names this tablet ------------------------------------------------------------------------------------------

constexpr std::string_view signes = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
constexpr std::size_t longueur_identite = 10;
constexpr std::string_view fichier_secours = "identite.wdo";

std::string en_signes(std::uint64_t v) {
    std::string r;
    for (std::size_t i = 0; i < longueur_identite; ++i, v /= signes.size()) r += signes[v % signes.size()];
    return r;
}

/// FNV-1a, then a last mixing: near identifiers give far codes.
std::uint64_t empreinte(std::string_view t) {
    std::uint64_t h = 0xCBF29CE484222325;
    for (const char c : t) h = (h ^ static_cast<unsigned char>(c)) * 0x100000001B3;
    h = (h ^ (h >> 33)) * 0xFF51AFD7ED558CCD;
    return h ^ (h >> 33);
}

bool est_un_code(std::string_view t) {
    return t.size() == longueur_identite && t.find_first_not_of(signes) == std::string_view::npos;
}

std::string code_garde() {
    std::string t;
    if (fichiers::lis_tout(fichier_secours, t, 1024) == fichiers::Issue::fait) {
        const auto lignes = texte::lignes(t);
        if (!lignes.empty() && est_un_code(lignes[0])) return std::string(lignes[0]);
    }
    const std::string neuf = code_au_hasard();
    static_cast<void>(fichiers::ecrit_tout(fichier_secours, neuf + "\r\n", fichiers::Remplace::oui));
    return neuf;
}

std::string derive() {
    const std::string machine = processus::identifiant_machine();
    return machine.empty() ? code_garde() : code(machine);
}

// --- the order's text ------------------------------------------------------------------------------------------------

/// What the five lines of the head begin with, then the three of each block.
constexpr std::string_view tete[] = {"#ID#", "#VERSION#", "#SERVEUR#", "#TABLE#", "#NBCOUVERT#"};
constexpr std::string_view bloc[] = {"#REF#", "#COMP#", "#NOTE#"};
constexpr std::string_view version = "2.1";
/// What stands behind a quantity: of an article, a menu, and a menu's dish, whose first number follows it.
constexpr std::string_view fin_article = "}", fin_menu = "}   + ¤¤999999|ÐÐMENU"_t, fin_plat = ")  ¤¤"_t,
                           apres_plat = "|ÐÐMENU"_t;
constexpr std::size_t place_du_prix = 15;  ///< of a line's "{", behind the reference

std::string table_couverts() {
    return texte::complete(etat::table_couverts, std::max<std::size_t>(etat::table_couverts.size(), 7));
}

/// Adds a line made of pieces, and its end.
template <typename... Morceaux>
void ajoute_ligne(std::string& t, const Morceaux&... morceaux) {
    (t.append(morceaux), ...);
    t.append("\r\n");
}

void ajoute_bloc(std::string& t, std::string_view reference, const std::string& quantite, std::string_view suite,
                 std::string_view remarques = {}) {
    ajoute_ligne(t, bloc[0], reference, "{", quantite, suite);
    ajoute_ligne(t, bloc[1], remarques);
    ajoute_ligne(t, bloc[2]);
}

void ajoute_bloc_ordinaire(std::string& t, std::string_view ligne, float quantite) {
    std::string remarques;
    for (const std::string& s : lignes::segments(ligne)) remarques.append(s).append("|");
    ajoute_bloc(t, lignes::reference(ligne), nombres::montant_simple(quantite), fin_article, remarques);
}

void ajoute_bloc_menu(std::string& t, std::string_view ligne, float quantite) {
    ajoute_bloc(t, lignes::reference(ligne), nombres::montant_simple(quantite), fin_menu);
    for (const lignes::Composant& c : lignes::composants(ligne)) {
        const auto pieces = static_cast<float>(quantite * c.second);
        const std::string suite = std::string(fin_plat) + nombres::montant(c.premier) + std::string(apres_plat);
        ajoute_bloc(t, c.reference, nombres::montant_simple(pieces), suite);
    }
}

void vide_la_note() {
    etat::table_couverts.clear();
    etat::texte_table.clear();
    std::fill(etat::lignes_note.begin(), etat::lignes_note.end(), std::string());
    etat::nb_lignes_note = 0;
}

/// Pieces by reference, of one day.
struct Envoyes {
    std::string jour;
    std::map<std::string, double, std::less<>> pieces;
};

Envoyes& envoyes_du_jour() {
    constexpr int debut_du_jour = 5 * 3600;  ///< seconds after midnight
    static Envoyes envoyes;
    const std::string jour = horloge::jour(horloge::plus_secondes(horloge::maintenant(), -debut_du_jour));
    if (envoyes.jour != jour) envoyes = {jour, {}};
    return envoyes;
}

void compte_la_note() {
    auto& pieces = envoyes_du_jour().pieces;
    for (const std::string& ligne : etat::lignes_gardees())
        pieces[std::string(texte::rogne(lignes::reference(ligne)))] += lignes::quantite(ligne).value_or(1);
}

// --- reading ---------------------------------------------------------------------------------------------------------

void lis_remarques(std::string_view t, Article& a) {
    while (!t.empty()) {
        const auto fin = std::min(t.find('|'), t.size());
        if (!texte::rogne(t.substr(0, fin)).empty()) a.remarques.emplace_back(t.substr(0, fin));
        t.remove_prefix(std::min(fin + 1, t.size()));
    }
}

/// The first line of a block, behind its mark: an article or menu more, or a dish of the last menu.
bool lis_reference(std::string_view t, Commande& c, bool& dans_un_menu) {
    const bool a_sa_place = t.size() > place_du_prix && t[place_du_prix] == '{';
    const auto accolade = a_sa_place ? place_du_prix : t.find('{');
    if (accolade == std::string_view::npos) return false;
    const std::string reference(texte::rogne(t.substr(0, accolade)));
    t.remove_prefix(accolade + 1);
    const auto chiffres = std::min(t.find_first_not_of("-0123456789."), t.size());
    const double quantite = nombres::lis(t.substr(0, chiffres));
    t.remove_prefix(chiffres);
    if (chiffres == 0) return false;
    if (t == fin_article || t == fin_menu) {
        dans_un_menu = t == fin_menu;
        c.articles.push_back({reference, quantite, {}, {}});
        return true;
    }
    if (!dans_un_menu || !t.starts_with(fin_plat) || !t.ends_with(apres_plat)) return false;
    c.articles.back().plats.push_back({reference, quantite});
    return true;
}

/// The value behind the mark of line `n`, from 0.
bool lis_valeur(std::size_t n, std::string_view t, Commande& c, bool& dans_un_menu) {
    if (n >= std::size(tete)) {
        const std::size_t rang = (n - std::size(tete)) % std::size(bloc);
        if (rang == 0) return lis_reference(t, c, dans_un_menu);
        lis_remarques(t, c.articles.back());
        return true;
    }
    const std::string valeur(texte::rogne(t));
    if (n == 1) return valeur == version;
    if (n == 2) c.serveur = nombres::entier_int(valeur);
    std::string* const textes[] = {&c.identite, nullptr, nullptr, &c.table, &c.couverts};
    if (textes[n] != nullptr) *textes[n] = valeur;
    return true;
}

std::string_view marque_de(std::size_t n) {
    return n < std::size(tete) ? tete[n] : bloc[(n - std::size(tete)) % std::size(bloc)];
}

Lecture refuse(std::size_t n, std::string_view ligne, std::string& faute) {
    constexpr std::size_t montres = 40;
    const std::string la = texte::rogne(ligne).empty()
                               ? "une ligne vide"
                               : std::string("« "_t) + std::string(ligne.substr(0, montres)) + std::string(" »"_t);
    faute = "ligne " + std::to_string(n + 1) + " : une ligne " + std::string(marque_de(n)) +
            (n == 1 ? std::string(version) : "") + " est attendue, et non " + la;
    return Lecture::fausse;
}

}  // namespace

std::string code(std::string_view texte) {
    return en_signes(empreinte(texte));
}

std::string code_au_hasard() {
    std::random_device hasard;
    return en_signes((static_cast<std::uint64_t>(hasard()) << 32) ^ hasard());
}

const std::string& identite() {
    static const std::string c = derive();
    return c;
}

std::string contenu() {
    const std::string tc = table_couverts();
    std::string t;
    ajoute_ligne(t, tete[0], identite());
    ajoute_ligne(t, tete[1], version);
    ajoute_ligne(t, tete[2], nombres::entier_complete(etat::numero_serveur, 2));
    ajoute_ligne(t, tete[3], texte::colonnes(tc, 3, 3));
    ajoute_ligne(t, tete[4], texte::colonnes(tc, 6, 3));
    for (int n = 1; n <= std::min<int>(etat::nb_lignes_note, etat::lignes_note_max); ++n) {
        const std::string& ligne = etat::lignes_note[static_cast<std::size_t>(n)];
        const auto quantite = static_cast<float>(lignes::quantite(ligne).value_or(1));
        if (lignes::est_menu_compose(ligne)) {
            ajoute_bloc_menu(t, ligne, quantite);
        } else {
            ajoute_bloc_ordinaire(t, ligne, quantite);
        }
    }
    return t;
}

std::string nom(const horloge::DateHeure& date) {
    const std::string tc = table_couverts();
    return horloge::pour_fichier(date) + "_" + nombres::entier_complete(etat::numero_serveur, 2) + "_" +
           nombres::entier_complete(nombres::lis(texte::colonnes(tc, 3, 3)), 3) + "_" +
           nombres::entier_complete(nombres::lis(texte::colonnes(tc, 6, 3)), 3) + "_." +
           std::string(livraison::fin_en_attente);
}

/// A name is given once in a run, even when its order has left already: set back, the clock would make the router take
/// a second order for the first one.
fichiers::Issue envoi_commande() {
    static std::set<std::string> noms_donnes;
    const horloge::DateHeure maintenant = horloge::maintenant();
    const std::string texte = contenu();
    fichiers::Issue issue = fichiers::Issue::existe;
    std::string fichier;
    for (int s = 0; s < essais_max && issue == fichiers::Issue::existe; ++s) {
        fichier = nom(horloge::plus_secondes(maintenant, s));
        if (noms_donnes.contains(fichier) || suivi::connait(livraison::nom_de(fichier))) continue;
        issue = fichiers::ecrit_tout(fichier, texte, fichiers::Remplace::jamais);
    }
    const std::string ordre = "commande " + std::string(livraison::nom_de(fichier));
    if (issue != fichiers::Issue::fait) {
        journal::note(ordre + std::string(" non écrite : "_t) + std::string(fichiers::raison(issue)));
        return issue;
    }
    noms_donnes.insert(fichier);
    suivi::ajoute(livraison::nom_de(fichier), std::min<int>(etat::nb_lignes_note, etat::lignes_note_max));
    journal::retient(ordre + std::string(" écrite"_t));
    compte_la_note();
    vide_la_note();
    return issue;
}

double envoyes_ce_jour(std::string_view reference) {
    const auto& pieces = envoyes_du_jour().pieces;
    const auto p = pieces.find(texte::rogne(reference));
    return p == pieces.end() ? 0 : p->second;
}

Lecture lis(std::string_view contenu, Commande& commande, std::string& faute) {
    commande = {};
    bool dans_un_menu = false;
    const auto lignes = texte::lignes(contenu);
    const bool derniere_finie = contenu.ends_with('\n');
    for (std::size_t n = 0; n < lignes.size(); ++n) {
        const std::string_view ligne = lignes[n], marque = marque_de(n);
        const bool finie = derniere_finie || n + 1 < lignes.size();
        if (!finie && (marque.starts_with(ligne) || ligne.starts_with(marque))) break;
        if (!ligne.starts_with(marque) || !lis_valeur(n, ligne.substr(marque.size()), commande, dans_un_menu))
            return refuse(n, ligne, faute);
    }
    const std::size_t finies = lignes.size() - (derniere_finie || lignes.empty() ? 0 : 1);
    const bool blocs_entiers = finies >= std::size(tete) && (finies - std::size(tete)) % std::size(bloc) == 0;
    if (blocs_entiers && derniere_finie) return Lecture::entiere;
    faute = std::string("le fichier s'arrête à la ligne "_t) + std::to_string(finies + 1) + ", dans " +
            std::string(marque_de(finies));
    return Lecture::inachevee;
}

}  // namespace commande
