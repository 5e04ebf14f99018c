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
    std::random_device hasard;
    const std::string neuf = en_signes((static_cast<std::uint64_t>(hasard()) << 32) ^ hasard());
    static_cast<void>(fichiers::ecrit_tout(fichier_secours, neuf + "\r\n", fichiers::Remplace::oui));
    return neuf;
}

std::string derive() {
    const std::string machine = processus::identifiant_machine();
    return machine.empty() ? code_garde() : en_signes(empreinte(machine));
}

// --- the order's text ------------------------------------------------------------------------------------------------

std::string table_couverts() {
    return texte::complete(etat::table_couverts, std::max<std::size_t>(etat::table_couverts.size(), 7));
}

/// Adds a line made of pieces, and its end.
template <typename... Morceaux>
void ajoute_ligne(std::string& t, const Morceaux&... morceaux) {
    (t.append(morceaux), ...);
    t.append("\r\n");
}

void ajoute_bloc_ordinaire(std::string& t, std::string_view ligne, float quantite) {
    ajoute_ligne(t, "#REF#", lignes::reference(ligne), "{", nombres::montant_simple(quantite), "}");
    t += "#COMP#";
    for (const std::string& s : lignes::segments(ligne)) t.append(s).append("|");
    ajoute_ligne(t);
    ajoute_ligne(t, "#NOTE#");
}

void ajoute_bloc_menu(std::string& t, std::string_view ligne, float quantite) {
    constexpr std::string_view menu = "|ÐÐMENU"_t;
    ajoute_ligne(t, "#REF#", lignes::reference(ligne), "{", nombres::montant_simple(quantite), "}   + ¤¤999999"_t,
                 menu);
    ajoute_ligne(t, "#COMP#");
    ajoute_ligne(t, "#NOTE#");
    for (const lignes::Composant& c : lignes::composants(ligne)) {
        const auto pieces = static_cast<float>(quantite * c.second);
        ajoute_ligne(t, "#REF#", c.reference, "{", nombres::montant_simple(pieces), ")  ¤¤"_t,
                     nombres::montant(c.premier), menu);
        ajoute_ligne(t, "#COMP#");
        ajoute_ligne(t, "#NOTE#");
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

}  // namespace

const std::string& identite() {
    static const std::string c = derive();
    return c;
}

std::string contenu() {
    const std::string tc = table_couverts();
    std::string t;
    ajoute_ligne(t, "#ID#", identite());
    ajoute_ligne(t, "#VERSION#2.1");
    ajoute_ligne(t, "#SERVEUR#", nombres::entier_complete(etat::numero_serveur, 2));
    ajoute_ligne(t, "#TABLE#", texte::colonnes(tc, 3, 3));
    ajoute_ligne(t, "#NBCOUVERT#", texte::colonnes(tc, 6, 3));
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
        journal::note(ordre + std::string(" pas écrite : "_t) + std::string(fichiers::raison(issue)));
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

}  // namespace commande
