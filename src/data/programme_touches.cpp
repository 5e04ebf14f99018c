#include "data/programme_touches.h"

#include <algorithm>
#include <memory>

#include "data/nombres.h"
#include "platform/fichiers.h"
#include "platform/texte.h"

namespace programme_touches {
namespace {

constexpr std::string_view nom_fichier = "progppb.wdo";
constexpr std::size_t longueur_record = 256, nb_records = 5000;
constexpr std::uint64_t longueur_vide = 250;  ///< up to this length the file counts as not filled
constexpr int records_par_page = 100;

/// Place of a field in the record, in bytes.
struct Champ {
    std::size_t debut, longueur;
};
constexpr Champ champ_reference = {0, 15}, champ_libelle = {15, 40}, champ_lh = {55, 2}, champ_image = {59, 4},
                champ_visible = {63, 1}, champ_taille = {64, 3}, champ_couleur = {67, 10}, champ_action = {154, 100};

std::unique_ptr<fichiers::FichierRecords> fichier;

std::string_view lis_champ(const std::string& record, const Champ& c) {
    return texte::rogne(texte::colonnes(record, c.debut + 1, c.longueur));
}

int cellules(const std::string& record, std::size_t chiffre) {
    const std::string_view lh = texte::colonnes(record, champ_lh.debut + 1 + chiffre, 1);
    return std::max(1, nombres::entier_int(lh));
}

std::string programme_vide() {
    std::string r(nb_records * longueur_record, ' ');
    for (std::size_t i = longueur_record; i <= r.size(); i += longueur_record) {
        r[i - 2] = '\r';
        r[i - 1] = '\n';
    }
    return r;
}

}  // namespace

std::string_view Ligne::reference() const {
    return lis_champ(record, champ_reference);
}
std::string_view Ligne::libelle() const {
    return lis_champ(record, champ_libelle);
}
int Ligne::largeur() const {
    return cellules(record, 0);
}
int Ligne::hauteur() const {
    return cellules(record, 1);
}
int Ligne::image() const {
    return nombres::entier_int(lis_champ(record, champ_image));
}
bool Ligne::visible() const {
    return lis_champ(record, champ_visible) == "1";
}
int Ligne::taille() const {
    return nombres::entier_int(lis_champ(record, champ_taille));
}
std::int32_t Ligne::couleur() const {
    const auto t = lis_champ(record, champ_couleur);
    const int v = nombres::entier_int(t);
    return t.empty() || v < 0 || v > 0xFFFFFF ? -1 : v;
}
std::string_view Ligne::action() const {
    return lis_champ(record, champ_action);
}

bool prepare() {
    if (fichier) return true;
    fichier = fichiers::FichierRecords::ouvre(nom_fichier, longueur_record);
    if (!fichier) return false;
    if (fichier->longueur() > longueur_vide) return true;
    return fichier->ecrit_depuis_le_debut(programme_vide()) == fichiers::Issue::fait;
}

void ferme() {
    fichier.reset();
}

std::vector<Ligne> lis_page(int page) {
    std::vector<Ligne> r;
    if (!fichier || page < 0 || page >= nb_pages) return r;
    for (int i = 1; i <= lignes_par_page; ++i) {
        r.push_back({fichier->lis(static_cast<std::size_t>(page * records_par_page + i))});
    }
    return r;
}

}  // namespace programme_touches
