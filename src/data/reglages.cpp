#include "data/reglages.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "data/nombres.h"
#include "data/tenus.h"
#include "platform/systeme/texte.h"

namespace reglages {
namespace {

constexpr std::uint64_t longueur_initialisee = 400;  ///< a shorter store is filled anew
constexpr int nb_records = 2000, record_max = 32767;
constexpr std::string_view marque = "#I#";
constexpr Resolution resolution_par_defaut = {800, 800};

/// A setting that is a number: what it is, what it holds before anybody has set it, and what makes sense.
struct Reglage {
    int record;
    std::string_view defaut, nom;
    int min, max;
};
constexpr int police_max = 200, cellules_max = 100, touches_max = 100;
constexpr Reglage reglages_connus[] = {
    {police_outils, "#I#20", "font size of the toolbox list", 1, police_max},
    {touches_articles, "#I#14", "font size of article keys", 1, police_max},
    {touches_articles + 1, "#I#2", "width of article keys", 1, cellules_max},
    {touches_articles + 2, "#I#2", "height of article keys", 1, cellules_max},
    {touches_articles + 3, "#I#10", "article keys per page", 1, touches_max},
    {touches_serveurs, "#I#14", "font size of server keys", 1, police_max},
    {touches_serveurs + 1, "#I#2", "width of server keys", 1, cellules_max},
    {touches_serveurs + 2, "#I#2", "height of server keys", 1, cellules_max},
    {touches_serveurs + 3, "#I#10", "server keys per page", 1, touches_max},
    {touches_familles, "#I#18", "font size of family keys", 1, police_max},
    {touches_familles + 1, "#I#2", "width of family keys", 1, cellules_max},
    {touches_familles + 2, "#I#2", "height of family keys", 1, cellules_max},
    {touches_familles + 3, "#I#10", "family keys per page", 1, touches_max},
    {colonnes_grille, "#I#006", "columns of the key grid", 1, cellules_max},
    {lignes_grille, "#I#008", "rows of the key grid", 1, cellules_max},
    {police_note, "#I#20", "font size of the summary", 1, police_max},
    {police_article, "#I#20", "font size of an article's label", 1, police_max},
    {police_remarques, "#I#18", "font size of an article's remarks", 1, police_max},
    {police_complements, "#I#20", "font size of complements", 1, police_max},
    {taille_boites, "#I#1", "size of message boxes", 1, 99},
    {police_table, "#I#28", "font size of the keypads", 1, police_max},
    {police_liste_tables, "#I#36", "font size of the table list", 1, police_max},
    {colonnes_liste_tables, "#I#3", "columns of the table list", 1, cellules_max},
    {lignes_liste_tables, "#I#8", "rows of the table list", 1, cellules_max},
};

std::unique_ptr<fichiers::FichierRecords> fichier;
/// The whole store as it was read last; nothing when it could not be.
std::optional<std::string> contenu;

const Reglage* reglage_de(int record) {
    const auto i = std::find_if(std::begin(reglages_connus), std::end(reglages_connus),
                                [=](const Reglage& r) { return r.record == record; });
    return i == std::end(reglages_connus) ? nullptr : i;
}

/// A power cut leaves zero bytes where nothing was written: they read as blanks.
void blanchit(std::string& records) {
    std::replace(records.begin(), records.end(), '\0', ' ');
}

/// One reading serves all settings until the next refresh, or a write that failed; one that failed is tried again.
void relis() {
    contenu.reset();
    if (!fichier) return;
    const std::uint64_t records = std::min<std::uint64_t>(fichier->longueur() / longueur_record + 1, record_max);
    contenu = fichier->lis_suite(1, static_cast<std::size_t>(records));
    if (contenu) blanchit(*contenu);
}

/// The record, whole; nothing when the store cannot be read at the moment.
std::optional<std::string> lis(int record) {
    if (!contenu) relis();
    if (!contenu || record < 1) return std::nullopt;
    const std::size_t debut = static_cast<std::size_t>(record - 1) * longueur_record;
    return texte::complete(texte::colonnes(*contenu, debut + 1, longueur_record), longueur_record);
}

/// What was read stays true: it takes what was written over.
void retient(std::size_t record, std::string_view valeur) {
    const std::size_t debut = (record - 1) * longueur_record;
    contenu->resize(std::max(contenu->size(), debut + longueur_record), ' ');
    std::string neuf = texte::complete(valeur, longueur_record);
    blanchit(neuf);
    contenu->replace(debut, longueur_record, neuf);
}

int lis_nombre(std::string_view record) {
    return nombres::entier_int(texte::rogne(texte::colonnes(record, 4)));
}

std::string cinq_chiffres(int n) {
    return nombres::entier_complete(std::clamp(n, 0, 99999), 5);
}

}  // namespace

bool ouvre() {
    if (tenus::attend(nom_fichier) || (fichier && !tenus::est_tenu(nom_fichier))) return relis(), true;
    fichiers::Issue ecriture = fichiers::Issue::panne;
    auto ouvert = fichiers::FichierRecords::ouvre(nom_fichier, longueur_record, ecriture);
    if (ouvert || !fichier) fichier = std::move(ouvert);
    tenus::note(nom_fichier, ecriture);
    relis();
    // A store that is there but cannot be opened reads as blank records.
    if (!fichier) return fichiers::existe(nom_fichier);
    if (fichier->longueur() >= longueur_initialisee) return true;
    // On a full medium the store stays short: it reads as blank records, and every setting has its default.
    static_cast<void>(fichier->ecrit_depuis_le_debut(std::string(longueur_record * nb_records, ' ')));
    relis();
    return true;
}

void ferme() {
    fichier.reset();
    contenu.reset();
}

std::string brut(int record) {
    return lis(record).value_or(std::string(longueur_record, ' '));
}

std::string texte(int record) {
    return std::string(texte::rogne(brut(record)));
}

std::string valeur(int record) {
    return std::string(texte::rogne(texte::colonnes(brut(record), marque.size() + 1)));
}

int nombre(int record) {
    const Reglage* reglage = reglage_de(record);
    const auto lu = lis(record);
    const std::string t = lu.value_or("");
    const bool pose = t.starts_with(marque);
    if (!reglage) return pose ? lis_nombre(t) : 0;
    if (!pose && lu) static_cast<void>(ecrit(record, reglage->defaut));
    const int n = pose ? lis_nombre(t) : 0;
    return n < reglage->min ? lis_nombre(reglage->defaut) : std::min(n, reglage->max);
}

Disposition disposition(int premier_record, int colonnes, int lignes, int touches) {
    Disposition d;
    d.police = std::max(1, nombre(premier_record));
    d.largeur = std::clamp(nombre(premier_record + 1), 1, colonnes);
    d.hauteur = std::clamp(nombre(premier_record + 2), 1, lignes);
    const int place = (colonnes / d.largeur) * (lignes / d.hauteur);
    d.par_page = std::clamp(nombre(premier_record + 3), 1, std::min(place, touches));
    return d;
}

std::int32_t couleur(int record) {
    const std::string t = texte(record);
    if (!t.starts_with(marque)) return -1;
    const int v = lis_nombre(t);
    return v >= 0 && v <= 0xFFFFFF ? v : -1;
}

fichiers::Issue ecrit(int record, std::string_view valeur) {
    if (!fichier) return fichiers::Issue::absent;
    if (record < 1 || record > record_max) return fichiers::Issue::refuse;
    const auto numero = static_cast<std::size_t>(record);
    const fichiers::Issue ecriture = fichier->ecrit(numero, valeur);
    if (contenu && ecriture == fichiers::Issue::fait)
        retient(numero, valeur);
    else
        relis();
    return ecriture;
}

bool resolution_choisie() {
    return brut(record_resolution).starts_with(marque);
}

Resolution resolution() {
    if (!resolution_choisie()) return resolution_par_defaut;
    const std::string t = brut(record_resolution);
    return {nombres::entier_int(texte::colonnes(t, 6, 5)), nombres::entier_int(texte::colonnes(t, 12, 5))};
}

fichiers::Issue ecrit_resolution(Resolution r, Forme forme) {
    const std::string_view tete = forme == Forme::image ? "#I#0:" : "#I#1";
    return ecrit(record_resolution, std::string(tete) + cinq_chiffres(r.largeur) + ":" + cinq_chiffres(r.hauteur));
}

fichiers::Issue retouche_resolution(Resolution r) {
    auto t = lis(record_resolution);
    if (!t) return fichiers::Issue::panne;
    t->replace(5, 5, cinq_chiffres(r.largeur));
    t->replace(11, 5, cinq_chiffres(r.hauteur));
    return ecrit(record_resolution, *t);
}

}  // namespace reglages
