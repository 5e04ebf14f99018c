#include "platform/systeme/fichiers.h"

#include <algorithm>
#include <atomic>

#include "platform/systeme/fichiers_systeme.h"
#include "platform/systeme/texte.h"

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

/// A name beside the target that hardly anybody uses: process and count, and the end that marks all temporary files.
/// Of a long name only the beginning is taken, so that the whole stays within what every file system allows.
std::string nom_temporaire(std::string_view chemin) {
    static std::atomic<unsigned> compte = 0;
    constexpr std::size_t assez_court = 60;
    const std::string repertoire = repertoire_de(chemin);
    const auto nom = chemin.substr(chemin.find_last_of("/\\") + 1, assez_court);  // npos + 1 is 0
    return joint(repertoire, nom) + "." + std::to_string(systeme::identite()) + "-" + std::to_string(++compte) +
           std::string(suffixe_temporaire);
}

/// Creates the temporary file of a target. In a shared directory another machine may use the name: then the next.
std::unique_ptr<Fichier> cree_temporaire(std::string_view chemin, std::string& nom, Issue& issue) {
    std::unique_ptr<Fichier> f;
    issue = Issue::existe;
    for (int essai = 0; issue == Issue::existe && essai < 100; ++essai) {
        nom = nom_temporaire(chemin);
        f = Fichier::ouvre(nom, Fichier::Ouverture::creation, issue);
    }
    if (issue == Issue::existe) issue = Issue::panne;
    return f;
}

/// Whether what was written is put on the medium before the file is closed.
enum class Tampon { vide, laisse };

/// Fills and closes a new file; the first failure counts, and nothing is flushed twice.
Issue remplit(Fichier& f, std::string_view contenu, Tampon tampon = Tampon::vide) {
    Issue issue = f.ecrit(0, contenu);
    if (issue == Issue::fait && tampon == Tampon::vide) issue = f.vide_tampon();
    if (issue == Issue::fait && f.longueur() != contenu.size()) issue = Issue::panne;
    const Issue fermeture = f.ferme();
    return issue == Issue::fait ? fermeture : issue;
}

/// Gives the finished file its name, and puts the name on the medium.
Issue met_en_place(const std::string& temporaire, std::string_view chemin, Remplace remplace) {
    const Issue issue = remplace == Remplace::oui ? systeme::renomme_en_remplacant(temporaire, chemin)
                                                  : systeme::renomme_sans_remplacer(temporaire, chemin);
    if (issue == Issue::fait) systeme::vide_tampon_repertoire(repertoire_de(chemin));
    return issue;
}

/// Writes a temporary file beside, to which `pose` gives its name; on a failure nothing of it stays.
template <typename Pose>
Issue ecrit_a_cote(std::string_view chemin, std::string_view contenu, Tampon tampon, Pose pose) {
    std::string temporaire;
    Issue issue = Issue::panne;
    const auto f = cree_temporaire(chemin, temporaire, issue);
    if (!f) return issue;
    issue = remplit(*f, contenu, tampon);
    if (issue == Issue::fait) issue = pose(temporaire);
    if (issue != Issue::fait) static_cast<void>(systeme::supprime(temporaire));
    return issue;
}

class Records final : public FichierRecords {
  public:
    Records(std::unique_ptr<Fichier> fichier, std::size_t taille, std::string_view fin)
        : fichier_(std::move(fichier)),
          taille_(taille),
          vide_(std::string(taille - fin.size(), ' ') + std::string(fin)) {}

    std::uint64_t longueur() const override { return fichier_->longueur(); }

    std::optional<std::string> lis_suite(std::size_t numero, std::size_t nombre) override {
        if (numero == 0) return std::string();
        std::string r(nombre * taille_, ' ');
        const auto lus = fichier_->lis(place(numero), r.data(), r.size());
        if (lus < 0) return std::nullopt;
        r.resize(static_cast<std::size_t>(lus));
        return r;
    }

    Issue ecrit(std::size_t numero, std::string_view contenu) override {
        if (numero == 0) return Issue::panne;
        const std::uint64_t debut = std::min(fichier_->longueur(), place(numero));
        std::string octets;
        octets.reserve(static_cast<std::size_t>(place(numero) - debut) + taille_);
        for (std::uint64_t i = debut; i < place(numero); ++i) octets += vide_[static_cast<std::size_t>(i % taille_)];
        return ecrit_a(debut, octets + texte::complete(contenu, taille_));
    }

    Issue ecrit_depuis_le_debut(std::string_view contenu) override { return ecrit_a(0, contenu); }

  private:
    std::unique_ptr<Fichier> fichier_;
    std::size_t taille_;
    std::string vide_;  ///< a record that nobody has written

    std::uint64_t place(std::size_t numero) const { return static_cast<std::uint64_t>(numero - 1) * taille_; }

    /// What a failed write has added is cut off again: half a record would read as another value.
    Issue ecrit_a(std::uint64_t debut, std::string_view octets) {
        const std::uint64_t avant = fichier_->longueur();
        const Issue i = fichier_->ecrit(debut, octets);
        if (i == Issue::fait) return fichier_->vide_tampon();
        if (fichier_->longueur() > avant) static_cast<void>(fichier_->tronque(avant));
        return i;
    }
};

}  // namespace

std::string_view raison(Issue issue) {
    switch (issue) {
        case Issue::fait:
            return "fait";
        case Issue::absent:
            return "introuvable";
        case Issue::existe:
            return "le nom existe déjà"_t;
        case Issue::refuse:
            return "accès refusé"_t;
        case Issue::occupe:
            return "utilisé par un autre programme"_t;
        case Issue::plein:
            return "plus de place";
        case Issue::trop_long:
            return "trop long";
        case Issue::panne:
            break;
    }
    return "panne du support ou du réseau"_t;
}

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

bool est_tenu(std::string_view chemin) {
    Issue issue = Issue::absent;
    if (existe(chemin)) static_cast<void>(Fichier::ouvre(chemin, Fichier::Ouverture::lecture_ecriture, issue));
    return issue == Issue::occupe;
}

std::optional<std::uint64_t> longueur(std::string_view chemin) {
    std::uint64_t n = 0;
    if (systeme::nature(chemin, n) != systeme::Nature::fichier) return std::nullopt;
    return n;
}

std::optional<Trouve> trouve(std::string_view chemin) {
    Trouve r;
    std::uint64_t volume = 0, volume_autour = 0, n = 0;
    if (systeme::nature(chemin, r.longueur, &volume) != systeme::Nature::fichier) return std::nullopt;
    std::string repertoire = repertoire_de(chemin);
    while (repertoire.size() > 1 && est_separateur(repertoire.back())) repertoire.pop_back();
    if (systeme::nature(repertoire_de(repertoire), n, &volume_autour) == systeme::Nature::repertoire)
        r.monte = volume != volume_autour;
    return r;
}

std::optional<std::int64_t> modifie_le(std::string_view chemin) {
    return systeme::modifie_le(chemin);
}

bool correspond(std::string_view nom, std::string_view motif) {
    const auto etoile = motif.find('*');
    if (etoile == std::string_view::npos) return egal_sans_casse(nom, motif);
    const std::string_view debut = motif.substr(0, etoile), fin = motif.substr(etoile + 1);
    return nom.size() >= debut.size() + fin.size() && egal_sans_casse(nom.substr(0, debut.size()), debut) &&
           egal_sans_casse(nom.substr(nom.size() - fin.size()), fin);
}

std::optional<std::vector<std::string>> entrees(std::string_view repertoire) {
    std::vector<std::string> noms;
    if (systeme::entrees(repertoire, noms) != Issue::fait) return std::nullopt;
    return noms;
}

std::vector<std::string> liste(std::string_view repertoire, std::string_view motif) {
    std::vector<std::string> noms;
    static_cast<void>(systeme::entrees(repertoire, noms));
    std::erase_if(noms, [motif](const std::string& n) { return !correspond(n, motif); });
    std::sort(noms.begin(), noms.end());
    return noms;
}

Issue lis_tout(std::string_view chemin, std::string& contenu, std::uint64_t borne) {
    Issue issue = Issue::panne;
    const auto f = Fichier::ouvre(chemin, Fichier::Ouverture::lecture, issue);
    if (!f) return issue;
    const std::uint64_t attendue = f->longueur();
    if (attendue == longueur_inconnue) return Issue::panne;
    if (attendue > borne) return Issue::trop_long;
    // More than expected is asked for, so that a file that grows meanwhile is read to its end.
    const std::size_t pas = std::max<std::size_t>(static_cast<std::size_t>(attendue) + 1, 4096);
    std::string lu;
    std::int64_t lus = 0;
    std::size_t total = 0;
    do {
        if (total == lu.size()) lu.resize(total + pas);
        lus = f->lis(total, lu.data() + total, lu.size() - total);
        if (lus < 0) return Issue::panne;
        total += static_cast<std::size_t>(lus);
    } while (lus > 0 && total <= borne);
    if (total > borne) return Issue::trop_long;
    lu.resize(total);
    contenu = std::move(lu);
    return Issue::fait;
}

Issue lis_debut(std::string_view chemin, std::size_t nombre, std::string& contenu) {
    Issue issue = Issue::panne;
    const auto f = Fichier::ouvre(chemin, Fichier::Ouverture::lecture, issue);
    if (!f) return issue;
    std::string lu(nombre, '\0');
    const std::int64_t lus = f->lis(0, lu.data(), nombre);
    if (lus < 0) return Issue::panne;
    contenu = lu.substr(0, static_cast<std::size_t>(lus));
    return Issue::fait;
}

Issue ecrit_tout(std::string_view chemin, std::string_view contenu, Remplace remplace) {
    if (est_repertoire(chemin)) return remplace == Remplace::oui ? Issue::refuse : Issue::existe;
    if (remplace == Remplace::jamais && existe(chemin)) return Issue::existe;
    return ecrit_a_cote(chemin, contenu, Tampon::vide,
                        [&](const std::string& temporaire) { return met_en_place(temporaire, chemin, remplace); });
}

Issue remplace_sans_attendre(std::string_view chemin, std::string_view contenu) {
    return ecrit_a_cote(chemin, contenu, Tampon::laisse, [&](const std::string& temporaire) {
        return systeme::renomme_en_remplacant(temporaire, chemin);
    });
}

Issue cree(std::string_view chemin, std::string_view contenu) {
    Issue issue = Issue::panne;
    const auto f = Fichier::ouvre(chemin, Fichier::Ouverture::creation, issue);
    if (!f) return issue;
    issue = remplit(*f, contenu);
    if (issue == Issue::fait)
        systeme::vide_tampon_repertoire(repertoire_de(chemin));
    else
        static_cast<void>(systeme::supprime(chemin));
    return issue;
}

Issue ajoute(std::string_view chemin, std::string_view contenu) {
    Issue issue = Issue::panne;
    const auto f = Fichier::ouvre(chemin, Fichier::Ouverture::lecture_ecriture, issue);
    if (!f) return issue;
    const std::uint64_t fin = f->longueur();
    if (fin == longueur_inconnue) return Issue::panne;
    issue = f->ecrit(fin, contenu);
    const Issue fermeture = f->ferme();
    return issue == Issue::fait ? fermeture : issue;
}

Issue renomme(std::string_view de, std::string_view vers) {
    return met_en_place(std::string(de), vers, Remplace::jamais);
}

Issue renomme_en_remplacant(std::string_view de, std::string_view vers) {
    return met_en_place(std::string(de), vers, Remplace::oui);
}

Issue supprime(std::string_view chemin) {
    const Issue i = systeme::supprime(chemin);
    if (i == Issue::fait) systeme::vide_tampon_repertoire(repertoire_de(chemin));
    return i;
}

Issue supprime_sans_attendre(std::string_view chemin) {
    return systeme::supprime(chemin);
}

std::string empreinte(std::string_view chemin) {
    return systeme::empreinte(chemin);
}

Issue cree_repertoire(std::string_view chemin) {
    return systeme::cree_repertoire(chemin);
}

std::optional<std::string> cree_repertoire_temporaire(std::string_view debut) {
    Issue issue = Issue::existe;
    for (int essai = 0; issue == Issue::existe && essai < 100; ++essai) {
        const std::string nom = std::string(debut) + std::to_string(systeme::identite()) + "-" + std::to_string(essai);
        const std::string chemin = joint(systeme::repertoire_temporaire(), nom);
        issue = systeme::cree_repertoire(chemin);
        if (issue == Issue::fait) return chemin;
    }
    return std::nullopt;
}

Issue supprime_repertoire(std::string_view chemin) {
    for (const std::string& nom : entrees(chemin).value_or(std::vector<std::string>()))
        static_cast<void>(systeme::supprime(joint(chemin, nom)));
    return systeme::supprime_repertoire(chemin);
}

void retire_temporaires(std::string_view repertoire) {
    for (const std::string& nom : liste(repertoire, "*" + std::string(suffixe_temporaire))) {
        static_cast<void>(systeme::supprime(joint(repertoire, nom)));
    }
}

std::unique_ptr<FichierRecords> FichierRecords::ouvre(std::string_view chemin, std::size_t longueur_record,
                                                      Issue& ecriture, std::string_view fin_de_record) {
    Issue lecture = Issue::panne;
    auto f = Fichier::ouvre(chemin, Fichier::Ouverture::lecture_ecriture, ecriture);
    if (!f) f = Fichier::ouvre(chemin, Fichier::Ouverture::lecture, lecture);
    if (!f) return nullptr;
    return std::make_unique<Records>(std::move(f), longueur_record, fin_de_record);
}

std::unique_ptr<FichierRecords> FichierRecords::ouvre(std::string_view chemin, std::size_t longueur_record) {
    Issue ecriture = Issue::panne;
    return ouvre(chemin, longueur_record, ecriture);
}

bool entre_dans(std::string_view chemin) {
    return systeme::entre_dans(chemin);
}
std::string repertoire_courant() {
    return systeme::repertoire_courant();
}
std::string absolu(std::string_view chemin) {
    return systeme::absolu(chemin);
}

}  // namespace fichiers
