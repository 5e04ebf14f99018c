#include "data/livraison.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <set>

#include "platform/systeme/fichiers.h"
#include "platform/systeme/horloge.h"

namespace livraison {
namespace {

using fichiers::Issue;

constexpr std::string_view fichier_sonde = "Test.res";
constexpr std::size_t longueur_sonde = 64;
constexpr std::string_view fichiers_du_catalogue[] = {"w_styl72.wdo", "orvalune.wdo", "worvalune.wdo"};
/// A directory that is known and holds none of these is the place where a share has been mounted.
constexpr std::string_view temoins[] = {fichier_sonde, fichiers_du_catalogue[0], fichiers_du_catalogue[1],
                                        fichiers_du_catalogue[2]};
constexpr std::string_view fin_de_marque = ".-D-", fin_ancienne = "-L-", fin_en_attente_ancienne = "-a-";
constexpr std::size_t longueur_fin = fin_en_attente.size();
constexpr std::size_t chiffres_dossier = 8, chiffres_compte = 8, longueur_code = 10;
constexpr std::size_t longueur_cle = chiffres_dossier + longueur_code + chiffres_compte;

using Noms = std::set<std::string, std::less<>>;

std::string fichier(std::string_view nom, std::string_view fin) {
    return std::string(nom) + std::string(fin);
}

bool est_partie(Issue suppression) {
    return suppression == Issue::fait || suppression == Issue::absent;
}

// --- names of a delivery -------------------------------------------------------------------------------------------

std::string hexadecimal(std::uint32_t v) {
    char t[9];
    std::snprintf(t, sizeof t, "%08x", static_cast<unsigned>(v));
    return t;
}

bool est_hexadecimal(std::string_view t) {
    return t.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

/// What tells one network directory from another, however its path is written (FNV-1a).
std::string empreinte(const Lieu& lieu) {
    std::string_view repertoire = lieu.repertoire;
    while (!repertoire.empty() && (repertoire.back() == '/' || repertoire.back() == '\\')) repertoire.remove_suffix(1);
    std::uint32_t h = 0x811C9DC5;
    for (const char c : repertoire) {
        const char egal = c == '\\' ? '/' : c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        h = (h ^ static_cast<unsigned char>(egal)) * 0x01000193;
    }
    return hexadecimal(lieu.monte ? ~h : h);
}

/// What the keys of this tablet's deliveries into that directory begin with.
std::string debut_de_cle(const Lieu& lieu) {
    std::string code = lieu.tablette;
    code.resize(longueur_code, '0');
    return empreinte(lieu) + code;
}

/// A key that no other delivery has, of this tablet or another: directory, tablet, time and count.
std::string nouvelle_cle(const Lieu& lieu) {
    static std::atomic<std::uint32_t> compte = 0;
    const auto temps = static_cast<std::uint32_t>(horloge::millisecondes());
    return debut_de_cle(lieu) + hexadecimal((temps << 8) + ++compte);
}

/// A mark taken apart: the order, and the key of the temporary file that it names.
struct Marque {
    std::string fichier, nom, cle;

    std::string temporaire() const {
        return nom + std::string(fin_livree) + "." + cle + std::string(fichiers::suffixe_temporaire);
    }
    /// Whether it speaks of that network directory.
    bool concerne(const Lieu& lieu) const { return cle.starts_with(empreinte(lieu)); }
};

Marque marque_pour(std::string_view nom, const std::string& cle) {
    return {std::string(nom) + cle + std::string(fin_de_marque), std::string(nom), cle};
}

std::optional<Marque> lis_marque(std::string_view fichier) {
    if (fichier.size() <= longueur_cle + fin_de_marque.size()) return std::nullopt;
    const std::size_t debut = fichier.size() - fin_de_marque.size() - longueur_cle;
    const std::string_view cle = fichier.substr(debut, longueur_cle);
    const bool bonne = fichier.ends_with(fin_de_marque) && fichier[debut - 1] == '.' &&
                       est_hexadecimal(cle.substr(0, chiffres_dossier)) &&
                       est_hexadecimal(cle.substr(chiffres_dossier + longueur_code));
    if (!bonne) return std::nullopt;
    return Marque{std::string(fichier), std::string(fichier.substr(0, debut)), std::string(cle)};
}

// --- one order -----------------------------------------------------------------------------------------------------

/// Whether a failure is this order's own: while the directory is there, the others may still go.
Constat echec(const Lieu& lieu, const std::string& nom, Issue i) {
    if (i == Issue::plein || !fichiers::est_repertoire(lieu.repertoire)) return {nom, Sort::reseau_perdu, i};
    return {nom, i == Issue::occupe ? Sort::tenue : Sort::attend, i};
}

/// Whether the ".txt" that stands in the place of an order is this order, delivered before: fait. Issue::existe: it is
/// another one, or perhaps collected this very moment. Anything else: nobody knows as long as it cannot be read.
Issue compare(const std::string& cible, const std::string& contenu) {
    std::string deja;
    const Issue lecture = fichiers::lis_tout(cible, deja);
    if (lecture == Issue::fait && deja == contenu) return Issue::fait;
    return lecture == Issue::fait || lecture == Issue::absent ? Issue::existe : lecture;
}

/// The file of a waiting order: the end may be in either letter case.
std::string attente_de(const std::string& nom) {
    std::string ancienne = fichier(nom, fin_en_attente_ancienne), r = fichier(nom, fin_en_attente);
    return !fichiers::existe(r) && fichiers::existe(ancienne) ? ancienne : r;
}

/// The name of the kept text of an order that lies in that network directory.
std::string gardee(const Lieu& lieu, std::string_view nom) {
    return std::string(nom) + empreinte(lieu) + "." + std::string(fin_gardee);
}

/// The order has been handed over: its text is kept, and the mark goes last. That one may come back after a power cut.
Constat range(const Lieu& lieu, const std::string& nom, Sort sort, const Marque* marque) {
    const std::string vers = sort == Sort::a_verifier ? fichier(nom, fin_a_verifier) : gardee(lieu, nom);
    const Issue issue = fichiers::renomme_en_remplacant(attente_de(nom), vers);
    if (!est_partie(issue)) return {nom, sort, issue, true};
    if (marque != nullptr) static_cast<void>(fichiers::supprime_sans_attendre(marque->fichier));
    return {nom, sort};
}

/// Takes back a delivery that has not been handed over. The mark goes first: a temporary file that a mark names stays.
void retire(const Lieu& lieu, const Marque& m) {
    if (est_partie(fichiers::supprime(m.fichier)))
        static_cast<void>(fichiers::supprime(fichiers::joint(lieu.repertoire, m.temporaire())));
}

/// The third step, after which the router may have the order. On a failure the mark stays, and tells what happened.
Constat remet(const Lieu& lieu, const Marque& m, const std::string& contenu) {
    const std::string cible = fichiers::joint(lieu.repertoire, fichier(m.nom, fin_livree));
    Issue issue = fichiers::renomme(fichiers::joint(lieu.repertoire, m.temporaire()), cible);
    if (issue == Issue::fait) return range(lieu, m.nom, Sort::deposee, &m);
    if (issue != Issue::existe) return echec(lieu, m.nom, issue);
    issue = compare(cible, contenu);
    if (issue != Issue::fait) {
        retire(lieu, m);
        return echec(lieu, m.nom, issue);
    }
    // Delivered before: without the temporary file the mark says so.
    issue = fichiers::supprime(fichiers::joint(lieu.repertoire, m.temporaire()));
    return est_partie(issue) ? range(lieu, m.nom, Sort::deposee, &m) : echec(lieu, m.nom, issue);
}

/// The first two steps. Issue::absent: the share is not there, though a directory may lie in its place.
Issue prepare(const Lieu& lieu, const Marque& m, const std::string& contenu) {
    const std::string temporaire = fichiers::joint(lieu.repertoire, m.temporaire());
    Issue issue = fichiers::cree(temporaire, contenu);
    if (issue != Issue::fait) return issue;
    const auto t = fichiers::trouve(temporaire);
    if (!t || t->longueur != contenu.size()) issue = Issue::panne;
    if (t && t->monte != lieu.monte) issue = Issue::absent;
    if (issue == Issue::fait) issue = fichiers::cree(m.fichier, "");
    if (issue != Issue::fait) retire(lieu, m);
    return issue;
}

// --- deliveries that were cut off ----------------------------------------------------------------------------------

/// Where the files of a marked order stand.
struct Restes {
    bool attend, gardee, a_verifier;
    bool prete, vue;  ///< in the network directory: the temporary file, the ".txt"
};

Restes cherche(const Lieu& lieu, const Marque& m, const Noms& la_bas) {
    return {fichiers::existe(attente_de(m.nom)), fichiers::existe(gardee(lieu, m.nom)),
            fichiers::existe(fichier(m.nom, fin_a_verifier)), la_bas.contains(m.temporaire()),
            la_bas.contains(fichier(m.nom, fin_livree))};
}

/// Ends the delivery that a mark tells of; nothing when it had ended but for the mark.
std::optional<Constat> reprend(const Lieu& lieu, const Marque& m, const Noms& la_bas, bool remise) {
    const Restes r = cherche(lieu, m, la_bas);
    const bool ici = m.concerne(lieu);
    if (r.gardee || r.a_verifier || (!r.attend && !(ici && r.prete))) {
        retire(lieu, m);
        return std::nullopt;
    }
    if (remise) return range(lieu, m.nom, Sort::deposee, &m);
    std::string contenu;
    Issue issue = fichiers::lis_tout(attente_de(m.nom), contenu);
    if (issue == Issue::occupe) return Constat{m.nom, Sort::tenue, issue};
    if (ici && r.prete) return remet(lieu, m, contenu);
    if (ici && r.vue) {
        if (issue == Issue::fait)
            issue = compare(fichiers::joint(lieu.repertoire, fichier(m.nom, fin_livree)), contenu);
        if (issue == Issue::fait) return range(lieu, m.nom, Sort::deposee, &m);
        if (issue != Issue::existe) return echec(lieu, m.nom, issue);  // perhaps it can be read the next time
    }
    return range(lieu, m.nom, Sort::a_verifier, &m);
}

/// An order that an earlier version delivered and could not delete: the mark repeats it. Nothing when it speaks of
/// another order, and is gone.
std::optional<Constat> reprend_ancienne(const Lieu& lieu, const std::string& marque) {
    const std::string nom(nom_de(marque));
    std::string marquee, presente;
    const Issue a = fichiers::lis_tout(marque, marquee);
    const Issue b = fichiers::lis_tout(attente_de(nom), presente);
    if (a == Issue::occupe || b == Issue::occupe) return Constat{nom, Sort::tenue, Issue::occupe};
    if (a == Issue::fait && b == Issue::fait && presente == marquee) {
        const Constat c = range(lieu, nom, Sort::deposee, nullptr);
        if (!c.reste) static_cast<void>(fichiers::supprime(marque));
        return c;
    }
    if (b != Issue::absent && (a != Issue::fait || b != Issue::fait)) return Constat{nom, Sort::attend, Issue::panne};
    static_cast<void>(fichiers::supprime(marque));
    return std::nullopt;
}

/// What became of a deposited order; nothing while it still lies there. One that another network directory has is
/// looked for by nobody any more.
std::optional<Constat> cherche_gardee(const Lieu& lieu, const std::string& fichier_garde, const Noms& la_bas) {
    const std::string nom = nom_garde(fichier_garde);
    if (nom.empty()) return std::nullopt;
    if (fichier_garde != gardee(lieu, nom)) {
        // Never over a text that is to be checked itself: that may be the only one of its order.
        const Issue issue = fichiers::renomme(fichier_garde, fichier(nom, fin_a_verifier));
        return issue == Issue::fait ? std::optional(Constat{nom, Sort::a_verifier}) : std::nullopt;
    }
    if (la_bas.contains(fichier(nom, fin_livree))) return std::nullopt;
    const Issue issue = fichiers::supprime_sans_attendre(fichier_garde);
    return Constat{nom, Sort::collectee, est_partie(issue) ? Issue::fait : issue};
}

/// What deliveries of waiting orders have in the network directory, marked or not.
std::vector<std::string> cherche_temporaires(const Lieu& lieu, const Local& local, const Noms& la_bas) {
    std::vector<std::string> r;
    for (const std::string& attente : local.en_attente) {
        const std::string debut = fichier(nom_de(attente), fin_livree) + "." + debut_de_cle(lieu);
        for (auto i = la_bas.lower_bound(debut); i != la_bas.end() && i->starts_with(debut); ++i) {
            if (i->ends_with(fichiers::suffixe_temporaire)) r.push_back(*i);
        }
    }
    return r;
}

Noms temporaires_marques(const Local& local) {
    Noms r;
    for (const std::string& f : local.marques) r.insert(lis_marque(f)->temporaire());
    return r;
}

/// Removes what deliveries left when they were cut off before their mark. `local` may be older than the marks of orders
/// that the same pass has tried: those are looked for anew.
void retire_restes(const Lieu& lieu, const Local& local, const Noms& la_bas) {
    const std::vector<std::string> temporaires = cherche_temporaires(lieu, local, la_bas);
    const auto present = temporaires.empty() ? std::nullopt : liste_locale();
    if (!present) return;
    const Noms marques = temporaires_marques(*present);
    for (const std::string& t : temporaires) {
        if (!marques.contains(t)) static_cast<void>(fichiers::supprime(fichiers::joint(lieu.repertoire, t)));
    }
}

/// Whether what was listed is the directory that has the orders of which conclusions would be drawn: not the place
/// where its share was mounted.
bool est_la_sienne(const Lieu& lieu, const Local& local, const std::vector<std::string>& la_bas) {
    if (local.gardees.empty() && local.marques.empty()) return true;
    for (const std::string& nom : la_bas) {
        if (std::ranges::none_of(temoins, [&](auto t) { return fichiers::correspond(nom, t); })) continue;
        const auto temoin = fichiers::trouve(fichiers::joint(lieu.repertoire, nom));
        return temoin && temoin->monte == lieu.monte;
    }
    return false;
}

/// `neuve` is set when the local file is not what it was.
Issue copie(const std::string& repertoire, std::string_view nom, const std::string* lu, bool& neuve) {
    const std::string source = fichiers::joint(repertoire, nom);
    std::string distant, local;
    const Issue lecture = fichiers::lis_tout(source, distant);
    if (lecture != Issue::fait) return lecture;
    if (distant.empty() || fichiers::longueur(source) != distant.size()) return Issue::absent;
    if (lu == nullptr && fichiers::lis_tout(nom, local) == Issue::fait) lu = &local;
    if (lu != nullptr && *lu == distant) return Issue::fait;
    const Issue ecriture = fichiers::ecrit_tout(nom, distant, fichiers::Remplace::oui);
    neuve = neuve || ecriture == Issue::fait;
    return ecriture;
}

/// Where a file of the working directory belongs; null: nowhere.
std::vector<std::string>* liste_de(Local& l, std::string_view n) {
    if (finit_par(n, fin_en_attente)) return &l.en_attente;
    if (finit_par(n, fin_ancienne)) return &l.anciennes;
    if (lis_marque(n)) return &l.marques;
    if (n.ends_with(fin_gardee) && !nom_garde(n).empty()) return &l.gardees;
    if (n.ends_with(fin_a_verifier) && nom_de(n).ends_with('.')) return &l.a_verifier;
    if (finit_par(n, fichiers::suffixe_temporaire.substr(1))) return &l.temporaires;
    return nullptr;
}

}  // namespace

std::string_view nom_de(std::string_view fichier) {
    return fichier.size() < longueur_fin ? std::string_view() : fichier.substr(0, fichier.size() - longueur_fin);
}

std::string nom_garde(std::string_view fichier) {
    const std::string_view debut = nom_de(fichier);
    if (debut.size() <= chiffres_dossier + 1 || !debut.ends_with('.')) return {};
    const std::string_view nom = debut.substr(0, debut.size() - chiffres_dossier - 1);
    const bool bon = nom.ends_with('.') && est_hexadecimal(debut.substr(nom.size(), chiffres_dossier));
    return std::string(bon ? nom : std::string_view());
}

std::string nom_marque(std::string_view fichier) {
    const auto m = lis_marque(fichier);
    return m ? m->nom : "";
}

bool finit_par(std::string_view fichier, std::string_view fin) {
    return fichiers::correspond(fichier, "*." + std::string(fin));
}

std::optional<Local> liste_locale() {
    auto noms = fichiers::entrees(".");
    if (!noms) return std::nullopt;
    std::sort(noms->begin(), noms->end());
    Local r;
    for (std::string& n : *noms) {
        if (std::vector<std::string>* liste = liste_de(r, n)) liste->push_back(std::move(n));
    }
    return r;
}

void retire_temporaires(const Local& local) {
    const Noms marquees = temporaires_marques(local);
    for (const std::string& f : local.temporaires) {
        if (!marquees.contains(f)) static_cast<void>(fichiers::supprime(f));
    }
}

Connu connait(const Lieu& lieu, const Local& local) {
    const auto en_parle = [&local](const Lieu& l) {
        const std::string fin = gardee(l, "");
        return std::ranges::any_of(local.gardees, [&](const auto& f) { return f.ends_with(fin); }) ||
               std::ranges::any_of(local.marques, [&](const auto& f) { return lis_marque(f)->concerne(l); });
    };
    return {en_parle({lieu.repertoire, lieu.tablette, false}), en_parle({lieu.repertoire, lieu.tablette, true})};
}

std::optional<fichiers::Trouve> ecrit_sonde(const std::string& repertoire, int record, const std::string& date,
                                            Connu connu) {
    if (repertoire.empty() || record < 1) return std::nullopt;
    if (connu.nu || connu.monte) {
        std::optional<fichiers::Trouve> la;
        for (const std::string_view temoin : temoins) {
            if (!la) la = fichiers::trouve(fichiers::joint(repertoire, temoin));
        }
        if (!la || (connu.monte && !la->monte)) return std::nullopt;
    }
    const std::string sonde = fichiers::joint(repertoire, fichier_sonde);
    const auto f = fichiers::FichierRecords::ouvre(sonde, longueur_sonde);
    if (!f || f->ecrit(static_cast<std::size_t>(record), date) != Issue::fait) return std::nullopt;
    return fichiers::trouve(sonde);
}

std::string empreinte_du_catalogue(const std::string& repertoire) {
    std::string r;
    for (const std::string_view nom : fichiers_du_catalogue)
        r += fichiers::empreinte(fichiers::joint(repertoire, nom)) + "|";
    return r;
}

Copie copie_catalogue(const std::string& repertoire, const Lus& lus) {
    Copie r;
    if (repertoire.empty()) return r;
    const std::string* deja_lus[] = {nullptr, lus.entete.get(), lus.catalogue.get()};
    Issue issue = Issue::absent;
    bool tenu = false;
    for (std::size_t n = 0; n < std::size(fichiers_du_catalogue); ++n) {
        issue = copie(repertoire, fichiers_du_catalogue[n], deja_lus[n], r.neuve);
        tenu = tenu || issue == Issue::occupe;
    }
    r.entiere = issue == Issue::fait && !tenu;
    return r;
}

std::optional<std::vector<Constat>> fait_le_point(const Lieu& lieu, const Local& local,
                                                  const std::vector<std::string>& remises) {
    if (lieu.repertoire.empty()) return std::nullopt;
    const auto liste = fichiers::entrees(lieu.repertoire);
    if (!liste || !est_la_sienne(lieu, local, *liste)) return std::nullopt;
    const Noms la_bas(liste->begin(), liste->end());
    std::vector<Constat> r;
    const auto retient = [&r](const std::optional<Constat>& c) {
        if (c) r.push_back(*c);
    };
    for (const std::string& fichier : local.marques) {
        const auto m = lis_marque(fichier);
        if (m) retient(reprend(lieu, *m, la_bas, std::find(remises.begin(), remises.end(), m->nom) != remises.end()));
    }
    for (const std::string& fichier : local.anciennes) retient(reprend_ancienne(lieu, fichier));
    for (const std::string& fichier : local.gardees) retient(cherche_gardee(lieu, fichier, la_bas));
    retire_restes(lieu, local, la_bas);
    return r;
}

Constat livre(const Lieu& lieu, const std::string& fichier) {
    const std::string nom(nom_de(fichier));
    if (lieu.repertoire.empty()) return {nom, Sort::reseau_perdu, Issue::absent};
    if (nom.empty()) return {nom, Sort::attend, Issue::refuse};
    std::string contenu;
    const Issue lecture = fichiers::lis_tout(fichier, contenu);
    if (lecture != Issue::fait) return {nom, lecture == Issue::occupe ? Sort::tenue : Sort::attend, lecture};
    const Marque m = marque_pour(nom, nouvelle_cle(lieu));
    const Issue issue = prepare(lieu, m, contenu);
    if (issue == Issue::absent) return {nom, Sort::reseau_perdu, issue};
    return issue == Issue::fait ? remet(lieu, m, contenu) : echec(lieu, nom, issue);
}

bool depose(const std::string& repertoire, const std::string& nom, const std::string& contenu) {
    if (repertoire.empty()) return false;
    return fichiers::ecrit_tout(fichiers::joint(repertoire, nom), contenu, fichiers::Remplace::jamais) == Issue::fait;
}

}  // namespace livraison
