#include "cuisine/service.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "cuisine/archive.h"
#include "cuisine/collecte.h"
#include "cuisine/compteur.h"
#include "cuisine/fiche.h"
#include "platform/console/arret.h"
#include "platform/console/console.h"
#include "platform/liaison/guet.h"
#include "platform/liaison/verrou.h"
#include "platform/systeme/texte.h"

namespace service {
namespace {

using fiche::Etat;
using fichiers::Issue;
using imprimante::Sort;

// Milliseconds.
constexpr int regard_ms = 1000, regard_proche_ms = 200, tour_max = 3000;
constexpr int etrangere_ms = 60000;  ///< that another kitchen may take to bring over what it has taken
constexpr int pause_debut = 1000, pause_max = 8000, pause_max_interrompu = 30000;

/// A line on the console, with the time.
void dit(std::string_view t) {
    const std::string heure = horloge::lisible(horloge::maintenant());
    std::fprintf(stderr, "%s %s\n", heure.c_str(), console::ligne(texte::vers_utf8(t)).c_str());
}

std::string archive_refusee(const std::string& archive, Issue issue) {
    return std::string("écriture impossible dans l'archive "_t) + archive + " : " +
           std::string(fichiers::raison(issue));
}

/// Waits for something new in a directory, which is watched from the first wait on. Simulated time passes at once.
class Attente {
  public:
    explicit Attente(std::string repertoire = {}) : repertoire_(std::move(repertoire)) {}
    void attend(int ms) {
        if (horloge::est_virtuelle()) return horloge::avance(ms);
        if (!guet_) guet_ = guet::ouvre(repertoire_);
        guet_->attend(ms);
    }
    /// The directory was gone, and is there again.
    void recommence() { guet_ = nullptr; }

  private:
    std::string repertoire_;
    std::unique_ptr<guet::Guet> guet_;
};

/// Says something when it is not what was said last.
class Annonce {
  public:
    void dit(const std::string& t) {
        if (t != derniere_) service::dit(t);
        derniere_ = t;
    }
    /// All is well; that is said when something else was said before.
    void va_bien(const std::string& t) {
        if (!derniere_.empty()) service::dit(t);
        derniere_.clear();
    }

  private:
    std::string derniere_;
};

/// An order in progress.
struct Commande {
    collecte::Prise prise;
    fiche::Fiche fiche;
    bool ecrite = false;                                     ///< the fiche is on the medium as it stands here
    std::vector<std::unique_ptr<imprimante::Suite>> suites;  ///< by part, of those in suspense
};

/// A printer and its next attempt.
struct Poste {
    imprimante::Adresse adresse;
    std::unique_ptr<imprimante::Imprimante> imprimante;
    std::int64_t prochain = 0;  ///< horloge::millisecondes()
    int pause = 0;
    bool prete = true;  ///< in this turn
    Annonce annonce;
};

class Service {
  public:
    Service(const Reglages& r, const archive::Archive& archive)
        : reglages_(r),
          archive_(archive),
          verrou_(fichiers::empreinte(archive.verrou())),
          collecte_(r.reseau, archive, r.une_fois ? 0 : etrangere_ms),
          compteur_(archive.dossier()),
          carte_(r.reseau) {
        for (const auto& a : r.partage.adresses) {
            postes_.push_back({a, imprimante::cree(a, {r.papier.page, r.avec_etat, r.patience}), 0, 0, true, {}});
        }
    }

    /// Nothing when the archive, or the claim on it, has come to lie elsewhere: what is known of it is known no more.
    std::optional<Statut> travaille() {
        Attente attente(reglages_.reseau);
        archive_.nettoie();
        bool joignable = true;
        while (!arret::demande()) {
            if (est_a_d_autres() || (!compteur_.est_lu() && !archive_.est_la())) return std::nullopt;
            if (!compteur_.relit() || !carte_.relit()) {
                attente.attend(regard_ms);
                continue;
            }
            if (compteur_.perdu()) numeros_.dit(std::string("numero.txt est abîmé : les tickets recommencent à 1"_t));
            collecte::Regard regard = collecte_.regarde();
            if (regard.joignable && !archive_.est_la()) return std::nullopt;  // what waits there comes back with it
            for (const std::string& t : regard.dits) dit(t);
            if (regard.joignable) retenues_ = regard.retenues;
            if (regard.joignable) laissees_ = regard.laissees;
            if (regard.archive != Issue::fait) refus_.dit(archive_refusee(reglages_.archive, regard.archive));
            if (!regard.joignable) reseau_.dit(std::string("répertoire réseau introuvable : "_t) + reglages_.reseau);
            if (regard.joignable) reseau_.va_bien(std::string("répertoire réseau retrouvé"_t));
            if (regard.joignable && !joignable) attente.recommence();
            joignable = regard.joignable;
            for (collecte::Prise& p : regard.prises) nouvelles_.push_back({std::move(p), 0});
            std::erase_if(nouvelles_, [this](Nouvelle& n) { return accueille(n); });
            regarde_suites();
            const bool a_imprimer = imprime();
            const bool rangees = range();  // others of their names may follow
            if (reglages_.une_fois && !a_imprimer && !rangees && a_fini(regard)) break;
            attente.attend(a_imprimer || rangees ? 0 : regard.a_suivre ? regard_proche_ms : regard_ms);
        }
        if (en_main() > 0 || laissees_ > 0) return reste_a_imprimer;
        return reglages_.une_fois && !joignable ? impossible : tout_imprime;
    }
    /// How many orders have been taken, and are not printed.
    std::size_t en_main() const { return commandes_.size() + nouvelles_.size() + static_cast<std::size_t>(retenues_); }

  private:
    const Reglages& reglages_;
    const archive::Archive& archive_;
    const std::string verrou_;  ///< tells the file of the claim from another one
    collecte::Collecte collecte_;
    compteur::Compteur compteur_;
    articles::Carte carte_;
    std::vector<Poste> postes_;
    std::vector<Commande> commandes_;  ///< by date
    Annonce reseau_, refus_, numeros_;
    int retenues_ = 0;  ///< taken, and not in the archive yet
    int laissees_ = 0;  ///< that cannot be taken

    /// A taken file whose fiche has not been read yet.
    struct Nouvelle {
        collecte::Prise prise;
        int essais = 0;
    };
    std::vector<Nouvelle> nouvelles_;

    /// Whether another archive, or another claim on it, lies at its place: others may work in it, and know nothing of
    /// what is in hand here.
    bool est_a_d_autres() const {
        return archive_.est_la() && (archive_.est_remplacee() || fichiers::empreinte(archive_.verrou()) != verrou_);
    }
    /// Whether it can be noted there what becomes of an order.
    bool est_la() const { return archive_.est_la() && !est_a_d_autres(); }

    /// Whether nothing is left to do, or nothing can be done.
    bool a_fini(const collecte::Regard& regard) const {
        if (!regard.joignable) return true;
        const auto attend = [](const Poste& p) { return p.pause > 0; };
        if (commandes_.empty()) return nouvelles_.empty() && !regard.a_suivre;
        // What is printed and still here could not be put away in this turn.
        return std::any_of(postes_.begin(), postes_.end(), attend) ||
               std::all_of(commandes_.begin(), commandes_.end(), est_imprimee);
    }

    static bool est_imprimee(const Commande& c) {
        return std::all_of(c.fiche.parties.begin(), c.fiche.parties.end(),
                           [](const fiche::Partie& p) { return p.etat == Etat::finie; });
    }

    /// What is known of a taken order, and how its lines are shared among the printers. False when that cannot be read
    /// at the moment.
    bool accueille(Nouvelle& n) {
        constexpr int essais_max = 10;
        Commande c;
        const Issue lue = fiche::lis(collecte_.fiche(n.prise), c.fiche);
        const bool connue = lue == Issue::fait || lue == Issue::absent;
        if (!connue && ++n.essais < essais_max) return false;
        c.prise = std::move(n.prise);
        c.ecrite = lue == Issue::fait && rapproche(c);
        if (!c.ecrite) {
            c.fiche = {0, partage::parties(c.prise.commande, carte_.courante(), reglages_.partage)};
            // Of a damaged fiche nobody knows how far it was.
            if (lue != Issue::absent) {
                for (fiche::Partie& p : c.fiche.parties) p.etat = Etat::commencee;
            }
        }
        for (fiche::Partie& p : c.fiche.parties) p.duplicata = p.duplicata || c.prise.deja || p.etat == Etat::commencee;
        c.suites.resize(c.fiche.parties.size());
        compteur_.connait(c.fiche.numero);
        const auto place = std::find_if(commandes_.begin(), commandes_.end(),
                                        [&c](const Commande& autre) { return collecte::avant(c.prise, autre.prise); });
        commandes_.insert(place, std::move(c));
        return true;
    }

    /// Brings a fiche of an earlier run in line with the printers of today: what none of them has is the first one's.
    /// False when it does not fit the order.
    bool rapproche(Commande& c) const {
        std::vector<bool> vues(c.prise.commande.articles.size());
        for (fiche::Partie& p : c.fiche.parties) {
            for (const int n : p.lignes) {
                if (n < 0 || static_cast<std::size_t>(n) >= vues.size() || vues[static_cast<std::size_t>(n)])
                    return false;
                vues[static_cast<std::size_t>(n)] = true;
            }
            const auto tient = [&p](const Poste& poste) { return poste.adresse.ecrite() == p.adresse; };
            if (std::none_of(postes_.begin(), postes_.end(), tient)) p.adresse = postes_.front().adresse.ecrite();
        }
        return std::find(vues.begin(), vues.end(), false) == vues.end() && !c.fiche.parties.empty();
    }

    Poste& poste_de(const fiche::Partie& partie) {
        return *std::find_if(postes_.begin(), postes_.end(),
                             [&](const Poste& p) { return p.adresse.ecrite() == partie.adresse; });
    }

    ticket::Ticket compose(const Commande& c, const fiche::Partie& partie, int numero) {
        if (!c.prise.faute.empty())
            return ticket::de_rejet(c.prise.nom, c.prise.faute, partie.duplicata, reglages_.papier);
        ticket::Entete entete{numero, partie.duplicata, c.prise.date, ""};
        for (const fiche::Partie& autre : c.fiche.parties) {
            if (autre.adresse == partie.adresse) continue;
            entete.ailleurs += (entete.ailleurs.empty() ? "" : ", ") + poste_de(autre).adresse.nom();
        }
        std::vector<const commande::Article*> lignes;
        for (const int n : partie.lignes) lignes.push_back(&c.prise.commande.articles[static_cast<std::size_t>(n)]);
        return ticket::compose(c.prise.commande, lignes, carte_.courante(), entete, reglages_.papier);
    }

    /// Puts what is known of an order on the medium.
    bool ecrit(Commande& c) {
        const Issue issue = est_la() ? fiche::ecrit(collecte_.fiche(c.prise), c.fiche) : Issue::absent;
        c.ecrite = issue == Issue::fait;
        if (!c.ecrite) refus_.dit(archive_refusee(reglages_.archive, issue));
        return c.ecrite;
    }

    /// Everything that waits, by date. A printer that fails gets nothing later before what it has not printed. True
    /// when a slow printer has taken so long that it is time for a look at the network directory.
    bool imprime() {
        const std::int64_t debut = horloge::millisecondes();
        for (Poste& poste : postes_) poste.prete = horloge::millisecondes() >= poste.prochain;
        for (Commande& c : commandes_) {
            for (std::size_t i = 0; i < c.fiche.parties.size(); ++i) {
                fiche::Partie& p = c.fiche.parties[i];
                Poste& poste = poste_de(p);
                if (p.etat == Etat::finie || c.suites[i] || !poste.prete) continue;
                if (arret::demande()) return false;
                if (horloge::millisecondes() - debut > tour_max) return true;
                poste.prete = imprime(poste, c, p, c.suites[i]);
            }
        }
        return false;
    }

    /// What the printers have done meanwhile with the tickets in suspense.
    void regarde_suites() {
        for (Commande& c : commandes_) {
            for (std::size_t i = 0; i < c.suites.size(); ++i) {
                const auto constat = c.suites[i] ? c.suites[i]->regarde() : std::nullopt;
                if (!constat) continue;
                c.suites[i] = nullptr;
                fiche::Partie& p = c.fiche.parties[i];
                if (constat->sort == Sort::imprime)
                    finit(c, p);
                else
                    attend(poste_de(p), c, p, *constat);
            }
        }
    }

    /// False when the printer has not taken all of it.
    bool imprime(Poste& poste, Commande& c, fiche::Partie& p, std::unique_ptr<imprimante::Suite>& suite) {
        const bool rejet = !c.prise.faute.empty();
        const int numero = rejet ? 0 : c.fiche.numero > 0 ? c.fiche.numero : compteur_.dernier() + 1;
        const auto commence = [&] {
            c.fiche.numero = numero;
            p.etat = Etat::commencee;
            compteur_.connait(numero);
            return ecrit(c) && (rejet || compteur_.retient(numero) == Issue::fait);
        };
        imprimante::Constat constat = poste.imprimante->imprime(compose(c, p, numero), commence);
        suite = std::move(constat.suite);
        if (constat.sort != Sort::imprime && constat.sort != Sort::suspendu) {
            attend(poste, c, p, constat);
            return false;
        }
        if (constat.sort == Sort::imprime) finit(c, p);
        poste.pause = 0;
        poste.annonce.va_bien("imprimante " + poste.adresse.nom() + std::string(" : de nouveau prête"_t));
        raconte(poste, c, p, constat.raison);
        return true;
    }

    void finit(Commande& c, fiche::Partie& p) {
        p.etat = Etat::finie;
        static_cast<void>(ecrit(c));
    }

    /// Of a ticket that is to be printed later, once more perhaps.
    void attend(Poste& poste, Commande& c, fiche::Partie& p, const imprimante::Constat& constat) {
        const bool interrompu = constat.sort == Sort::interrompu;
        p.duplicata = p.duplicata || interrompu;
        if (!interrompu && p.etat == Etat::commencee && !p.duplicata) {
            p.etat = Etat::attend;
            static_cast<void>(ecrit(c));
        }
        if (horloge::millisecondes() >= poste.prochain) {  // not once more for each ticket of one failure
            poste.pause = std::clamp(poste.pause * 2, pause_debut, interrompu ? pause_max_interrompu : pause_max);
            poste.prochain = horloge::millisecondes() + poste.pause;
        }
        poste.annonce.dit("imprimante " + poste.adresse.nom() + " : " + constat.raison +
                          (interrompu ? ", au milieu d'un ticket" : "") + " ; les commandes attendent");
    }

    static void raconte(const Poste& poste, const Commande& c, const fiche::Partie& p, const std::string& remarque) {
        if (poste.adresse.sorte == imprimante::Adresse::Sorte::ecran) return;
        const std::string quoi =
            c.prise.faute.empty() ? "commande " + std::to_string(c.fiche.numero) + ", table " + c.prise.commande.table
                                  : std::string("fichier rejeté "_t) + c.prise.nom;
        dit(quoi + " : " + poste.adresse.nom() + (p.duplicata ? ", duplicata" : "") +
            (remarque.empty() ? "" : " (" + remarque + ")"));
    }

    /// Puts away what is printed whole; true when there was something. An order whose fiche could not be written stays,
    /// and is not printed again.
    bool range() {
        return std::erase_if(commandes_, [this](Commande& c) {
                   if (!est_imprimee(c) || (!c.ecrite && !ecrit(c)) || !est_la()) return false;
                   const Issue issue = collecte_.range(c.prise);
                   if (issue != Issue::fait) refus_.dit(archive_refusee(reglages_.archive, issue));
                   if (issue == Issue::fait && retenues_ == 0)
                       refus_.va_bien(std::string("archive : de nouveau prête"_t));
                   return issue == Issue::fait;
               }) > 0;
    }
};

/// The archive, which may lie where the network is not there yet, or nowhere; nothing when the end was asked for
/// before.
std::optional<archive::Archive> attend_l_archive(const Reglages& r) {
    Annonce annonce;
    Attente attente;
    while (!arret::demande()) {
        Issue issue = Issue::fait;
        auto archive = archive::Archive::ouvre(r.archive, issue);
        if (archive) return archive;
        annonce.dit(archive_refusee(r.archive, issue));
        if (r.une_fois) return std::nullopt;
        attente.attend(regard_ms);
    }
    return std::nullopt;
}

/// The claim on it; null when it cannot be had, or not before the end was asked for.
std::unique_ptr<verrou::Verrou> attend_le_verrou(const archive::Archive& archive, bool une_fois) {
    Annonce annonce;
    Attente attente;
    Issue issue = Issue::occupe;
    while (!arret::demande()) {
        auto verrou = verrou::prend(archive.verrou(), issue);
        if (verrou || issue == Issue::absent) return verrou;
        annonce.dit(issue == Issue::occupe ? "un autre orvalune-cuisine utilise l'archive " + archive.dossier() +
                                                 " : celui-ci prendra la suite"
                                           : archive_refusee(archive.dossier(), issue));
        if (une_fois) return nullptr;
        attente.attend(regard_ms);
    }
    return nullptr;
}

/// One run on the archive as it lies there; nothing: once more, on what lies there then.
std::optional<Statut> travaille(const Reglages& reglages, std::set<std::string>& laissees) {
    const auto archive = attend_l_archive(reglages);
    if (!archive) return reglages.une_fois ? impossible : tout_imprime;
    const auto verrou = attend_le_verrou(*archive, reglages.une_fois);
    if (!verrou) return reglages.une_fois ? std::optional(impossible) : std::nullopt;
    if (archive->est_remplacee()) return std::nullopt;
    Service service(reglages, *archive);
    const auto statut = service.travaille();
    laissees.erase(archive->code());
    const std::size_t reste = service.en_main();
    if (reste > 0) laissees.insert(archive->code());
    if (!statut && reste > 0 && (!archive->est_la() || archive->est_remplacee()))
        dit("l'archive " + archive->dossier() + std::string(" n'est plus là : "_t) + std::to_string(reste) +
            std::string(" commande(s) en cours reviendront avec elle"_t));
    return statut;
}

}  // namespace

int sert(const Reglages& reglages) {
    std::set<std::string> laissees;  // codes of archives that are gone, with orders that are not printed
    std::optional<Statut> statut;
    while (!(statut = travaille(reglages, laissees)) && !arret::demande()) Attente().attend(regard_ms);
    if (statut && *statut != tout_imprime) return *statut;
    return laissees.empty() ? tout_imprime : reste_a_imprimer;
}

}  // namespace service
