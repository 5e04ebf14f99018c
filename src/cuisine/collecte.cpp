#include "cuisine/collecte.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "data/livraison.h"
#include "platform/systeme/texte.h"

namespace collecte {
namespace {

using commande::Lecture;
using fichiers::Issue;

constexpr std::string_view fin_commande = ".txt", fin_fiche = ".fiche", fin_copie = ".copie", fin_des_prises = ".prise",
                           fin_raison = ".raison.txt";
constexpr std::uint64_t longueur_max = 1 << 20;
constexpr std::uint64_t longueur_prise_max = 64 << 20;  ///< of what is copied; longer files are left where they are
/// Bytes of a name; the names of what is written beside an order are longer, and systems take no more than 255.
constexpr std::size_t nom_max = 200;
constexpr int places_max = 1000;  ///< of one name in a folder: itself, then numbered ones
/// How long a file must not have changed, milliseconds: one that is whole, and one that is only a beginning.
constexpr std::int64_t stable_ms = 400, abandonnee_ms = 10000;

horloge::DateHeure date_de(std::string_view nom, std::string_view chemin) {
    if (const auto d = horloge::depuis_nom(nom)) return *d;
    const auto modifie = fichiers::modifie_le(chemin);
    return modifie ? horloge::locale(*modifie) : horloge::maintenant();
}

std::string jour_de(const horloge::DateHeure& d) {
    constexpr std::size_t longueur = 10;
    return horloge::lisible(d).substr(0, longueur);
}

/// The name with a number before its end, for a place that is taken.
std::string numerote(const std::string& nom, int n) {
    if (n < 2) return nom;
    const std::string debut = nom.substr(0, nom.size() - fin_commande.size());
    return debut + " (" + std::to_string(n) + ")" + nom.substr(debut.size());
}

/// Reads a file as an order; anything but Issue::fait: it cannot be read now.
Issue lis(const std::string& chemin, std::string& contenu, Lecture& lecture, commande::Commande& c,
          std::string& faute) {
    const Issue issue = fichiers::lis_tout(chemin, contenu, longueur_max);
    faute.clear();
    if (issue == Issue::fait) lecture = commande::lis(contenu, c, faute);
    if (issue == Issue::trop_long) {
        lecture = Lecture::fausse;
        faute = std::string("le fichier dépasse un mégaoctet"_t);
    }
    if (!faute.empty()) c = {};  // nothing of it is for any printer
    return issue == Issue::trop_long ? Issue::fait : issue;
}

}  // namespace

bool avant(const Prise& a, const Prise& b) {
    const std::string date_a = horloge::lisible(a.date), date_b = horloge::lisible(b.date);
    return std::tie(date_a, a.nom) < std::tie(date_b, b.nom);
}

Collecte::Collecte(std::string reseau, archive::Archive archive, std::int64_t patience_ms)
    : reseau_(std::move(reseau)),
      patience_ms_(patience_ms),
      archive_(std::move(archive)),
      en_cours_(archive_.en_cours()),
      fin_prise_("." + archive_.code() + std::string(fin_des_prises)) {}

Regard Collecte::regarde() {
    Regard r;
    const auto noms = fichiers::entrees(reseau_);
    r.joignable = noms.has_value();
    if (noms) {
        rapatrie(*noms, r);
        dit_les_etrangeres(*noms, r);
        suit(*noms);
        std::vector<Prise> ordre;
        for (auto& [nom, vue] : vues_) {
            if (!est_prete(nom, vue, r)) continue;
            ordre.push_back({nom, date_de(nom, fichiers::joint(reseau_, nom)), {}, {}, false});
        }
        std::sort(ordre.begin(), ordre.end(), avant);
        for (const Prise& p : ordre) {
            const auto vue = vues_.find(p.nom);
            if (prend(p.nom, vue->second, r)) vues_.erase(vue);  // the next one of its name is another file
        }
    }
    if (a_relire_) lis_en_cours(r);
    return r;
}

/// Notes what has changed of the orders that lie there.
void Collecte::suit(const std::vector<std::string>& noms) {
    std::map<std::string, Vue, std::less<>> encore;
    for (const std::string& nom : noms) {
        // What a tablet says of itself is for a router.
        if (!livraison::finit_par(nom, livraison::fin_livree) || nom.starts_with(livraison::debut_identification))
            continue;
        const std::string chemin = fichiers::joint(reseau_, nom);
        const auto longueur = fichiers::longueur(chemin);
        const auto date = fichiers::modifie_le(chemin);
        if (!longueur || !date) continue;
        const auto i = vues_.find(nom);
        const bool meme = i != vues_.end() && i->second.longueur == *longueur && i->second.date == *date;
        encore[nom] = meme ? i->second : Vue{*longueur, *date, horloge::millisecondes()};
    }
    vues_ = std::move(encore);
}

/// Whether a file can be taken: it has not changed for a while, and is not the beginning of an order.
bool Collecte::est_prete(const std::string& nom, Vue& vue, Regard& regard) {
    const std::int64_t age = horloge::millisecondes() - vue.depuis;
    regard.a_suivre = regard.a_suivre || age < abandonnee_ms;
    if (age < stable_ms) return false;
    if (!vue.lue) {
        commande::Commande c;
        std::string contenu, faute;
        const Issue issue = lis(fichiers::joint(reseau_, nom), contenu, vue.lecture, c, faute);
        vue.lue = issue == Issue::fait;
        if (!vue.lue && issue != Issue::absent) ++regard.laissees;
        if (!vue.lue && !vue.dite && issue != Issue::absent) {
            vue.dite = true;
            regard.dits.push_back(nom + " : lecture impossible, " + std::string(fichiers::raison(issue)));
        }
    }
    return vue.lue && (vue.lecture != Lecture::inachevee || age >= abandonnee_ms);
}

/// Whether an order of that name is still in progress.
bool Collecte::est_occupee(const std::string& nom) const {
    const std::string la = fichiers::joint(en_cours_, nom);
    return connues_.contains(nom) || fichiers::existe(la) || fichiers::existe(la + std::string(fin_fiche)) ||
           fichiers::existe(la + std::string(fin_copie));
}

/// True when it lies there no more.
bool Collecte::prend(const std::string& nom, Vue& vue, Regard& regard) {
    a_relire_ = true;  // whatever the answer, it may be there
    if (est_occupee(nom)) return false;
    const std::string de = fichiers::joint(reseau_, nom);
    Issue issue = Issue::trop_long;
    if (texte::vers_utf8(nom).size() <= nom_max) issue = fichiers::renomme(de, fichiers::joint(en_cours_, nom));
    if ((issue == Issue::panne || issue == Issue::refuse) && vue.longueur > longueur_prise_max)
        issue = Issue::trop_long;
    if (issue == Issue::panne || issue == Issue::refuse) {
        const std::string prise = de + fin_prise_;
        issue = fichiers::renomme(de, prise);
        if (issue == Issue::fait) rapatrie_une(nom, prise, regard);
    }
    if (issue == Issue::fait || issue == Issue::absent) return true;
    ++regard.laissees;
    if (!std::exchange(vue.dite, true))
        regard.dits.push_back(nom + std::string(" : n'a pas pu être collectée, "_t) +
                              std::string(fichiers::raison(issue)));
    return false;
}

/// Brings over what was renamed in the network directory. A copy takes its name only when nothing of it is left there.
void Collecte::rapatrie(const std::vector<std::string>& noms, Regard& regard) {
    std::set<std::string> la_bas;
    for (const std::string& prise : noms) {
        if (!prise.ends_with(fin_prise_)) continue;
        const std::string nom = prise.substr(0, prise.size() - fin_prise_.size());
        la_bas.insert(nom);
        rapatrie_une(nom, fichiers::joint(reseau_, prise), regard);
    }
    for (const std::string& copie : fichiers::liste(en_cours_, "*" + std::string(fin_copie))) {
        const std::string nom = copie.substr(0, copie.size() - fin_copie.size());
        if (la_bas.contains(nom)) continue;
        a_relire_ = true;
        if (!nomme_la_copie(nom)) ++regard.retenues;
    }
}

/// Of what was taken for another archive, and is not brought over: that may be gone for good.
void Collecte::dit_les_etrangeres(const std::vector<std::string>& noms, Regard& regard) {
    std::map<std::string, Etrangere, std::less<>> encore;
    for (const std::string& nom : noms) {
        if (!nom.ends_with(fin_des_prises) || nom.ends_with(fin_prise_)) continue;
        const auto i = etrangeres_.find(nom);
        Etrangere& e = encore[nom];
        e = i != etrangeres_.end() ? i->second : Etrangere{horloge::millisecondes(), false};
        if (horloge::millisecondes() - e.depuis < patience_ms_) continue;
        ++regard.laissees;
        if (std::exchange(e.dite, true)) continue;
        const auto point = nom.find_last_of('.', nom.size() - fin_des_prises.size() - 1);
        regard.dits.push_back(nom +
                              std::string(" : prise pour une autre archive, et peut-être pas imprimée ; si celle-là "
                                          "ne sert plus, renommez le fichier en "_t) +
                              nom.substr(0, point));
    }
    etrangeres_ = std::move(encore);
}

/// What fails here is done by the next look.
void Collecte::rapatrie_une(const std::string& nom, const std::string& prise, Regard& regard) {
    a_relire_ = true;
    std::string contenu, ancien;
    const std::string copie = fichiers::joint(en_cours_, nom) + std::string(fin_copie);
    const bool lue = fichiers::lis_tout(prise, contenu, longueur_prise_max) == Issue::fait;
    const Issue deja = lue ? fichiers::lis_tout(copie, ancien, longueur_prise_max) : Issue::panne;
    if (deja == Issue::absent) {
        const Issue issue = fichiers::ecrit_tout(copie, contenu, fichiers::Remplace::jamais);
        if (issue == Issue::fait) ancien = contenu;
        if (issue != Issue::fait) regard.archive = issue;
    }
    const bool copiee = lue && ancien == contenu && fichiers::existe(copie);
    if (copiee && fichiers::supprime(prise) == Issue::fait && nomme_la_copie(nom)) return;
    ++regard.retenues;
    // A copy that was there already and is another order's: two never share one.
    if (deja == Issue::fait && ancien != contenu) static_cast<void>(nomme_la_copie(nom));
}

/// A copy becomes the order. What tells of an earlier one of its name, which has been put away, is not said of it.
bool Collecte::nomme_la_copie(const std::string& nom) const {
    const auto noms = fichiers::entrees(en_cours_);
    if (!noms || connues_.contains(nom) || std::find(noms->begin(), noms->end(), nom) != noms->end()) return false;
    const std::string vers = fichiers::joint(en_cours_, nom);
    const Issue fiche = fichiers::supprime(vers + std::string(fin_fiche));
    if (fiche != Issue::fait && fiche != Issue::absent) return false;
    return fichiers::renomme(vers + std::string(fin_copie), vers) == Issue::fait;
}

/// What is there and has not been given yet. A fiche whose order has been put away goes.
void Collecte::lis_en_cours(Regard& regard) {
    const auto noms = fichiers::entrees(en_cours_);
    a_relire_ = !noms;
    if (!noms) {
        ++regard.retenues;
        return;
    }
    const auto est_la = [&noms](const std::string& nom) {
        return std::find(noms->begin(), noms->end(), nom) != noms->end();
    };
    for (const std::string& nom : *noms) {
        const std::string commande = nom.substr(0, nom.size() - std::min(nom.size(), fin_fiche.size()));
        const bool seule = nom.ends_with(fin_fiche) && !connues_.contains(commande) && !est_la(commande) &&
                           !est_la(commande + std::string(fin_copie));
        if (seule) static_cast<void>(fichiers::supprime(fichiers::joint(en_cours_, nom)));
        if (!livraison::finit_par(nom, livraison::fin_livree) || connues_.contains(nom)) continue;
        Prise p;
        const Issue lue = lis_prise(nom, p);
        if (lue == Issue::fait) {
            illisibles_.erase(nom);
            connues_.insert(nom);
            regard.prises.push_back(std::move(p));
        } else {
            a_relire_ = true;
            ++regard.retenues;
            if (illisibles_.insert(nom).second)
                regard.dits.push_back(nom + " : lecture impossible, " + std::string(fichiers::raison(lue)));
        }
    }
    std::sort(regard.prises.begin(), regard.prises.end(), avant);
}

Issue Collecte::lis_prise(const std::string& nom, Prise& p) const {
    const std::string chemin = fichiers::joint(en_cours_, nom);
    Lecture lecture = Lecture::fausse;
    std::string contenu;
    const Issue issue = lis(chemin, contenu, lecture, p.commande, p.faute);
    if (issue != Issue::fait) return issue;
    p.nom = nom;
    p.date = date_de(nom, chemin);
    p.deja = est_rangee(p, contenu);
    return Issue::fait;
}

/// Whether a file of that name and content has been put away.
bool Collecte::est_rangee(const Prise& p, const std::string& contenu) const {
    std::string ancien;
    Issue issue = Issue::fait;
    for (int n = 1; n <= places_max && issue != Issue::absent; ++n) {
        issue = fichiers::lis_tout(fichiers::joint(dossier(p), numerote(p.nom, n)), ancien, longueur_max);
        if (issue == Issue::fait && ancien == contenu) return true;
        // What cannot be read may be the same.
        if (issue != Issue::fait && issue != Issue::absent && issue != Issue::trop_long) return true;
    }
    return false;
}

std::string Collecte::fiche(const Prise& p) const {
    return fichiers::joint(en_cours_, p.nom) + std::string(fin_fiche);
}

/// Where it is put away.
std::string Collecte::dossier(const Prise& p) const {
    return p.faute.empty() ? fichiers::joint(archive_.dossier(), jour_de(p.date)) : archive_.rejets();
}

/// Under its name, or a numbered one. What is wrong with a rejected file is written before it comes to stand there;
/// what bears the name of that and says something else keeps its place.
Issue Collecte::deplace(const Prise& p, const std::string& dossier) {
    Issue issue = Issue::existe;
    for (int n = 1; n <= places_max && issue == Issue::existe; ++n) {
        const std::string vers = fichiers::joint(dossier, numerote(p.nom, n));
        if (fichiers::existe(vers)) continue;
        if (!p.faute.empty()) {
            const std::string raison = vers.substr(0, vers.size() - fin_commande.size()) + std::string(fin_raison);
            const std::string texte = p.nom + "\r\n" + p.faute + "\r\n";
            std::string ancien;
            issue = fichiers::ecrit_tout(raison, texte, fichiers::Remplace::jamais);
            if (issue != Issue::fait && issue != Issue::existe) return issue;
            const bool autre = fichiers::lis_tout(raison, ancien, longueur_max) != Issue::fait || ancien != texte;
            if (issue == Issue::existe && autre) continue;
        }
        issue = fichiers::renomme(fichiers::joint(en_cours_, p.nom), vers);
    }
    return issue;
}

Issue Collecte::range(const Prise& p) {
    const std::string vers = dossier(p);
    if (!fichiers::est_repertoire(vers)) static_cast<void>(fichiers::cree_repertoire(vers));
    Issue issue = deplace(p, vers);
    // Without its fiche it would be printed anew: that goes only when the order itself is gone, whatever was answered.
    if (issue == Issue::absent && fichiers::existe(fichiers::joint(en_cours_, p.nom))) return Issue::panne;
    if (issue == Issue::fait || issue == Issue::absent) issue = fichiers::supprime(fiche(p));
    if (issue == Issue::absent) issue = Issue::fait;
    if (issue == Issue::fait) connues_.erase(p.nom);
    return issue;
}

}  // namespace collecte
