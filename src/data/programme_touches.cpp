#include "data/programme_touches.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "data/nombres.h"
#include "data/tenus.h"
#include "platform/systeme/texte.h"

namespace programme_touches {
namespace {

constexpr std::size_t longueur_record = 256, nb_records = 5000;
constexpr std::string_view fin_de_record = "\r\n";

/// Place of a field in the record, in bytes.
struct Place {
    std::size_t debut, longueur;
};
/// In the order of Champ.
constexpr Place places[] = {{0, 15}, {15, 40}, {55, 2}, {59, 4}, {63, 1}, {64, 3}, {67, 10}, {154, 100}};

const Place& place(Champ c) {
    return places[static_cast<std::size_t>(c)];
}

std::unique_ptr<fichiers::FichierRecords> fichier;

int cellules(const Ligne& ligne, std::size_t chiffre) {
    const std::string_view lh = texte::colonnes(ligne.record, place(Champ::lh).debut + 1 + chiffre, 1);
    return std::max(1, nombres::entier_int(lh));
}

bool existe(int page, int numero) {
    return fichier && page >= 0 && page < nb_pages && numero >= 1;
}

std::size_t record_de(int page, int numero) {
    return static_cast<std::size_t>(page * records_par_page + numero);
}

std::size_t debut_de(int page, int numero) {
    return (record_de(page, numero) - 1) * longueur_record;
}

/// Whole, with its end.
std::string record_entier(const Ligne& ligne) {
    return texte::complete(ligne.record, longueur_record - fin_de_record.size()) + std::string(fin_de_record);
}

Ligne ligne(std::string_view record, bool lue) {
    Ligne l{std::string(record), lue};
    for (const Place& p : places) {  // where a power cut left the file unwritten; bytes that nobody is shown stay
        const std::size_t debut = std::min(p.debut, l.record.size()),
                          fin = std::min(debut + p.longueur, l.record.size());
        std::replace(l.record.begin() + static_cast<std::ptrdiff_t>(debut),
                     l.record.begin() + static_cast<std::ptrdiff_t>(fin), '\0', ' ');
    }
    return l;
}

fichiers::Issue ecrit(int page, int numero, const Ligne& ligne) {
    if (!existe(page, numero)) return fichiers::Issue::refuse;
    if (!ligne.lue) return fichiers::Issue::panne;
    return fichier->ecrit(record_de(page, numero), record_entier(ligne));
}

}  // namespace

std::string contenu_vide() {
    std::string r(nb_records * longueur_record, ' ');
    for (std::size_t i = longueur_record; i <= r.size(); i += longueur_record) {
        r[i - 2] = '\r';
        r[i - 1] = '\n';
    }
    return r;
}

void pose_dans(std::string& contenu, int page, int numero, const Ligne& ligne) {
    contenu.replace(debut_de(page, numero), longueur_record, record_entier(ligne));
}

Ligne lis_dans(std::string_view contenu, int page, int numero) {
    return ligne(texte::colonnes(contenu, debut_de(page, numero) + 1, longueur_record), true);
}

std::size_t longueur(Champ c) {
    return place(c).longueur;
}

std::string_view abrege(std::string_view article) {
    return article.substr(0, longueur(Champ::action) - marque::longueur);
}

std::string_view Ligne::champ(Champ c) const {
    return texte::rogne(texte::colonnes(record, place(c).debut + 1, place(c).longueur));
}
void Ligne::pose(Champ c, std::string_view texte) {
    const std::string valeur = texte::complete(texte, place(c).longueur);  // the text may be a part of the record
    record = texte::complete(record, std::max(record.size(), longueur_record - fin_de_record.size()));
    record.replace(place(c).debut, place(c).longueur, valeur);
}

int Ligne::largeur() const {
    return cellules(*this, 0);
}
int Ligne::hauteur() const {
    return cellules(*this, 1);
}
int Ligne::image() const {
    return nombres::entier_int(champ(Champ::image));
}
bool Ligne::marque() const {
    return champ(Champ::image).ends_with('N');
}
int Ligne::taille() const {
    return nombres::entier_int(champ(Champ::taille));
}
std::int32_t Ligne::couleur() const {
    const auto t = champ(Champ::couleur);
    const int v = nombres::entier_int(t);
    return t.empty() || v < 0 || v > 0xFFFFFF ? -1 : v;
}

bool prepare() {
    if (tenus::attend(nom_fichier) || (fichier && !tenus::est_tenu(nom_fichier))) return fichier != nullptr;
    fichiers::Issue ecriture = fichiers::Issue::panne;
    auto ouvert = fichiers::FichierRecords::ouvre(nom_fichier, longueur_record, ecriture, fin_de_record);
    if (ouvert || !fichier) fichier = std::move(ouvert);
    tenus::note(nom_fichier, ecriture);
    if (!fichier) return false;
    if (fichier->longueur() > longueur_vide) return true;
    return fichier->ecrit_depuis_le_debut(contenu_vide()) == fichiers::Issue::fait;
}

void ferme() {
    fichier.reset();
}

std::vector<Ligne> lis_page(int page) {
    std::vector<Ligne> r;
    if (!existe(page, 1)) return r;
    const auto lues = fichier->lis_suite(record_de(page, 1), lignes_par_page);
    const std::string records = lues.value_or("");
    for (std::size_t i = 0; i < lignes_par_page; ++i)
        r.push_back(ligne(texte::colonnes(records, i * longueur_record + 1, longueur_record), lues.has_value()));
    return r;
}

fichiers::Issue ecrit_ligne(int page, int numero, const Ligne& ligne) {
    if (numero > lignes_par_page) return fichiers::Issue::refuse;
    return ecrit(page, numero, ligne);
}

Ligne lis_titres(int page) {
    if (!existe(page, ligne_des_titres)) return {"", false};
    const auto lus = fichier->lis(record_de(page, ligne_des_titres));
    return ligne(lus.value_or(""), lus.has_value());
}

fichiers::Issue ecrit_titres(int page, const Ligne& ligne) {
    return ecrit(page, ligne_des_titres, ligne);
}

}  // namespace programme_touches
