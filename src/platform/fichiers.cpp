#include "platform/fichiers.h"

#include <algorithm>
#include <atomic>

#include "platform/fichiers_systeme.h"
#include "platform/texte.h"

namespace fichiers {
namespace {

using systeme::Fichier;

bool est_separateur(char c) {
    return c == '/' || c == '\\';
}

char minuscule(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool egal_sans_casse(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return minuscule(x) == minuscule(y); });
}

std::string repertoire_de(std::string_view chemin) {
    const auto p = chemin.find_last_of("/\\");
    if (p == std::string_view::npos) return ".";
    return std::string(chemin.substr(0, p + 1));
}

/// A name beside the target that nobody uses: process and count, and the end that marks all temporary files.
std::string nom_temporaire(std::string_view chemin) {
    static std::atomic<unsigned> compte = 0;
    return std::string(chemin) + "." + std::to_string(systeme::identite()) + "-" + std::to_string(++compte) +
           std::string(suffixe_temporaire);
}

/// Creates, fills and closes the temporary file; it stays only when all went well.
Issue ecrit_temporaire(const std::string& temporaire, std::string_view contenu) {
    Issue issue = Issue::panne;
    auto f = Fichier::ouvre(temporaire, Fichier::Ouverture::creation, issue);
    if (!f) return issue;
    issue = f->ecrit(0, contenu);
    if (issue == Issue::fait) issue = f->vide_tampon();
    const Issue fermeture = f->ferme();
    if (issue == Issue::fait) issue = fermeture;
    if (issue != Issue::fait) static_cast<void>(systeme::supprime(temporaire));
    return issue;
}

class Records final : public FichierRecords {
  public:
    Records(std::unique_ptr<Fichier> fichier, std::size_t taille) : fichier_(std::move(fichier)), taille_(taille) {}

    std::uint64_t longueur() const override { return fichier_->longueur(); }

    std::string lis(std::size_t numero) override {
        std::string r(taille_, ' ');
        const auto lus = fichier_->lis(place(numero), r.data(), taille_);
        r.resize(lus < 0 ? 0 : static_cast<std::size_t>(lus));
        return r;
    }

    Issue ecrit(std::size_t numero, std::string_view contenu) override {
        const std::uint64_t fin = fichier_->longueur();
        const std::uint64_t debut = place(numero);
        std::string octets = texte::complete(contenu, taille_);
        if (fin < debut) octets.insert(0, static_cast<std::size_t>(debut - fin), ' ');
        const Issue i = fichier_->ecrit(std::min(fin, debut), octets);
        return i == Issue::fait ? fichier_->vide_tampon() : i;
    }

    Issue ecrit_depuis_le_debut(std::string_view contenu) override {
        const Issue i = fichier_->ecrit(0, contenu);
        return i == Issue::fait ? fichier_->vide_tampon() : i;
    }

  private:
    std::unique_ptr<Fichier> fichier_;
    std::size_t taille_;

    std::uint64_t place(std::size_t numero) const { return static_cast<std::uint64_t>(numero - 1) * taille_; }
};

}  // namespace

std::string joint(std::string_view repertoire, std::string_view nom) {
    std::string r(repertoire);
    if (!r.empty() && !est_separateur(r.back())) r += '/';
    return r += nom;
}

bool existe(std::string_view chemin) {
    std::uint64_t n = 0;
    return systeme::nature(chemin, n) != systeme::Nature::absente;
}

bool est_repertoire(std::string_view chemin) {
    std::uint64_t n = 0;
    return systeme::nature(chemin, n) == systeme::Nature::repertoire;
}

std::optional<std::uint64_t> longueur(std::string_view chemin) {
    std::uint64_t n = 0;
    if (systeme::nature(chemin, n) != systeme::Nature::fichier) return std::nullopt;
    return n;
}

bool correspond(std::string_view nom, std::string_view motif) {
    const auto etoile = motif.find('*');
    if (etoile == std::string_view::npos) return egal_sans_casse(nom, motif);
    const std::string_view debut = motif.substr(0, etoile), fin = motif.substr(etoile + 1);
    return nom.size() >= debut.size() + fin.size() && egal_sans_casse(nom.substr(0, debut.size()), debut) &&
           egal_sans_casse(nom.substr(nom.size() - fin.size()), fin);
}

std::vector<std::string> liste(std::string_view repertoire, std::string_view motif) {
    std::vector<std::string> noms = systeme::entrees(repertoire);
    std::erase_if(noms, [motif](const std::string& n) { return !correspond(n, motif); });
    std::sort(noms.begin(), noms.end());
    return noms;
}

Issue lis_tout(std::string_view chemin, std::string& contenu, std::uint64_t borne) {
    Issue issue = Issue::panne;
    const auto f = Fichier::ouvre(chemin, Fichier::Ouverture::lecture, issue);
    if (!f) return issue;
    const std::uint64_t taille = f->longueur();
    if (taille > borne) return Issue::trop_long;
    std::string lu(static_cast<std::size_t>(taille), '\0');
    std::size_t place = 0;
    while (place < lu.size()) {
        const auto n = f->lis(place, lu.data() + place, lu.size() - place);
        if (n < 0) return Issue::panne;
        if (n == 0) break;
        place += static_cast<std::size_t>(n);
    }
    lu.resize(place);
    contenu = std::move(lu);
    return Issue::fait;
}

Issue ecrit_tout(std::string_view chemin, std::string_view contenu, Remplace remplace) {
    if (est_repertoire(chemin)) return remplace == Remplace::oui ? Issue::refuse : Issue::existe;
    if (remplace == Remplace::jamais && existe(chemin)) return Issue::existe;
    const std::string temporaire = nom_temporaire(chemin);
    Issue issue = ecrit_temporaire(temporaire, contenu);
    if (issue != Issue::fait) return issue;
    issue = remplace == Remplace::oui ? systeme::renomme_en_remplacant(temporaire, chemin)
                                      : systeme::renomme_sans_remplacer(temporaire, chemin);
    if (issue != Issue::fait) {
        static_cast<void>(systeme::supprime(temporaire));
        return issue;
    }
    systeme::vide_tampon_repertoire(repertoire_de(chemin));
    return Issue::fait;
}

Issue renomme(std::string_view de, std::string_view vers) {
    const Issue i = systeme::renomme_sans_remplacer(de, vers);
    if (i == Issue::fait) systeme::vide_tampon_repertoire(repertoire_de(vers));
    return i;
}

Issue supprime(std::string_view chemin) {
    return systeme::supprime(chemin);
}

Issue cree_repertoire(std::string_view chemin) {
    return systeme::cree_repertoire(chemin);
}

void retire_temporaires(std::string_view repertoire) {
    for (const std::string& nom : liste(repertoire, "*" + std::string(suffixe_temporaire))) {
        static_cast<void>(systeme::supprime(joint(repertoire, nom)));
    }
}

std::unique_ptr<FichierRecords> FichierRecords::ouvre(std::string_view chemin, std::size_t longueur_record) {
    Issue issue = Issue::panne;
    auto f = Fichier::ouvre(chemin, Fichier::Ouverture::lecture_ecriture, issue);
    if (!f) return nullptr;
    return std::make_unique<Records>(std::move(f), longueur_record);
}

bool entre_dans(std::string_view chemin) {
    return systeme::entre_dans(chemin);
}
std::string repertoire_courant() {
    return systeme::repertoire_courant();
}
std::string absolu(std::string_view chemin) {
    return systeme::est_absolu(chemin) ? std::string(chemin) : joint(repertoire_courant(), chemin);
}

}  // namespace fichiers
