#include "cuisine/articles.h"

#include <algorithm>
#include <utility>

#include "data/lignes.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/texte.h"

namespace articles {
namespace {

std::string_view reference_de(std::string_view record) {
    return texte::rogne(lignes::reference(record));
}

}  // namespace

std::unique_ptr<catalogue::Tables> lis_tables(const std::string& repertoire) {
    std::string contenu;
    const bool lu =
        fichiers::lis_tout(fichiers::joint(repertoire, catalogue::fichier_catalogue), contenu) == fichiers::Issue::fait;
    auto tables = catalogue::depuis("", std::move(contenu));
    tables->lu = lu;
    return tables;
}

Articles::Articles(std::unique_ptr<catalogue::Tables> tables) : tables_(std::move(tables)) {
    for (const int n : tables_->ordre_familles) {
        ajoute_famille(n, catalogue::sans_couleur(tables_->noms_familles[static_cast<std::size_t>(n)]), sans_famille);
    }
    for (int n = 0; n <= catalogue::familles_max; ++n) {
        if (!tables_->articles[static_cast<std::size_t>(n)].empty()) ajoute_famille(n, {}, sans_famille);
    }
    familles_.push_back({sans_famille, "Autres", sans_famille});
    for (const Famille& f : familles_) {
        if (f.numero != sans_famille) ajoute_articles(f.numero);
    }
}

/// With its sub-groups; one that is there already stays as it is, and one that no catalogue can have articles of is
/// none.
void Articles::ajoute_famille(int numero, std::string_view nom, int dans) {
    if (numero < 0 || numero > catalogue::familles_max) return;
    const auto meme = [numero](const Famille& f) { return f.numero == numero; };
    if (std::any_of(familles_.begin(), familles_.end(), meme)) return;
    const std::string_view court = texte::rogne(nom);
    familles_.push_back({numero, court.empty() ? "Famille " + std::to_string(numero) : std::string(court), dans});
    for (const std::string_view record : tables_->articles[static_cast<std::size_t>(numero)]) {
        if (catalogue::est_sous_groupe(record))
            ajoute_famille(catalogue::famille_du_sous_groupe(record), lignes::libelle(record), numero);
    }
}

/// Where a reference is listed twice the first place counts.
void Articles::ajoute_articles(int famille) {
    for (const std::string_view record : tables_->articles[static_cast<std::size_t>(famille)]) {
        if (!catalogue::est_sous_groupe(record))
            par_reference_.try_emplace(reference_de(record), Article{lignes::libelle(record), famille});
    }
}

const Article* Articles::trouve(std::string_view reference) const {
    const auto i = par_reference_.find(texte::rogne(reference));
    return i == par_reference_.end() ? nullptr : &i->second;
}

std::string_view Articles::serveur(int numero) const {
    if (numero < 0 || numero > catalogue::serveurs_max) return {};
    return texte::rogne(tables_->noms_serveurs[static_cast<std::size_t>(numero)]);
}

bool Carte::relit() {
    constexpr int patience = 10;
    constexpr std::int64_t stable_ms = 3000;
    const std::string empreinte = fichiers::empreinte(fichiers::joint(repertoire_, catalogue::fichier_catalogue));
    const bool change = !empreinte.empty() && empreinte != empreinte_;
    if (std::exchange(vue_, empreinte) != empreinte) vue_depuis_ = horloge::millisecondes();
    const bool stable = horloge::millisecondes() - vue_depuis_ >= stable_ms;  // else it may be on its way
    if (articles_ && lue_ && (!change || !stable)) return true;
    auto tables = lis_tables(repertoire_);
    if (tables->lu || !articles_) {
        lue_ = tables->lu;
        empreinte_ = empreinte;
        articles_ = std::make_unique<Articles>(std::move(tables));
    }
    return lue_ || empreinte.empty() || ++echecs_ > patience;
}

}  // namespace articles
