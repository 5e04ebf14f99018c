#include "config/reglages.h"

#include <algorithm>
#include <cctype>
#include <memory>

#include "data/nombres.h"
#include "platform/texte.h"

namespace reglages {
namespace {

constexpr std::string_view nom_fichier = "wwinqx42.wdo";
constexpr std::size_t longueur_record = 20;
constexpr std::uint64_t longueur_initialisee = 400;  ///< a shorter store is filled anew
constexpr int nb_records = 2000;
constexpr std::string_view marque = "#I#";
constexpr int record_resolution = 2;
constexpr Resolution resolution_par_defaut = {800, 800};

struct Defaut {
    int record;
    std::string_view valeur;
};
constexpr Defaut defauts[] = {
    {3, "#I#20"},                                                  // toolbox list, font
    {5, "#I#14"},   {6, "#I#2"},    {7, "#I#2"},   {8, "#I#10"},   // article keys: font, width, height, per page
    {10, "#I#14"},  {11, "#I#2"},   {12, "#I#2"},  {13, "#I#10"},  // server keys
    {20, "#I#18"},  {21, "#I#2"},   {22, "#I#2"},  {23, "#I#10"},  // family keys
    {25, "#I#006"}, {26, "#I#008"},                                // key grid: columns, rows
    {30, "#I#20"},                                                 // summary, font
    {40, "#I#20"},  {41, "#I#18"},  {42, "#I#20"},                 // article, remarks, complements: fonts
    {50, "#I#1"},   {51, "#I#28"},                                 // message box size; keypad font
    {60, "#I#36"},  {61, "#I#3"},   {62, "#I#8"},                  // table list: font, columns, rows
};

std::unique_ptr<fichiers::FichierRecords> fichier;

std::string_view defaut_de(int record) {
    const auto i =
        std::find_if(std::begin(defauts), std::end(defauts), [=](const Defaut& d) { return d.record == record; });
    return i == std::end(defauts) ? "" : i->valeur;
}

std::string lis(int record) {
    return fichier && record >= 1 ? fichier->lis(static_cast<std::size_t>(record)) : std::string();
}

std::string cinq_chiffres(int n) {
    return nombres::entier_complete(std::clamp(n, 0, 99999), 5);
}

}  // namespace

bool ouvre() {
    if (fichier) return true;
    fichier = fichiers::FichierRecords::ouvre(nom_fichier, longueur_record);
    if (!fichier) return false;
    if (fichier->longueur() >= longueur_initialisee) return true;
    const std::string blancs(longueur_record * nb_records, ' ');
    if (fichier->ecrit_depuis_le_debut(blancs) == fichiers::Issue::fait) return true;
    fichier.reset();
    return false;
}

void ferme() {
    fichier.reset();
}

std::string texte(int record) {
    return std::string(texte::rogne(lis(record)));
}

int nombre(int record) {
    std::string t = lis(record);
    if (!t.starts_with(marque)) {
        t = defaut_de(record);
        if (!t.empty() && fichier) static_cast<void>(ecrit(record, t));
    }
    return nombres::entier_int(texte::rogne(texte::colonnes(t, 4)));
}

std::int32_t couleur(int record) {
    const std::string t = texte(record);
    if (!t.starts_with(marque)) return -1;
    const int v = nombres::entier_int(t.substr(marque.size()));
    return v >= 0 && v <= 0xFFFFFF ? v : -1;
}

fichiers::Issue ecrit(int record, std::string_view contenu) {
    if (!fichier || record < 1) return fichiers::Issue::absent;
    return fichier->ecrit(static_cast<std::size_t>(record), contenu);
}

bool resolution_choisie() {
    return lis(record_resolution).starts_with(marque);
}

Resolution resolution() {
    if (!resolution_choisie()) return resolution_par_defaut;
    const std::string t = lis(record_resolution);
    return {nombres::entier_int(texte::colonnes(t, 6, 5)), nombres::entier_int(texte::colonnes(t, 12, 5))};
}

fichiers::Issue ecrit_resolution(Resolution r, Forme forme) {
    const std::string_view tete = forme == Forme::image ? "#I#0:" : "#I#1";
    return ecrit(record_resolution, std::string(tete) + cinq_chiffres(r.largeur) + ":" + cinq_chiffres(r.hauteur));
}

}  // namespace reglages
