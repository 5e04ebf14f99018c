#include "cuisine/imprimante.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <optional>

#include "cuisine/escpos.h"
#include "data/nombres.h"
#include "platform/liaison/liaison.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/texte.h"

namespace imprimante {
namespace {

using escpos::Reponse;

constexpr int port_usuel = 9100, port_max = 65535;
constexpr std::string_view debut_tcp = "tcp://", debut_fichier = "fichier:", mot_ecran = "ecran";

// Milliseconds.
constexpr int appel_max = 3000, envoi_max = 5000, reponse_max = 500, pas_d_attente = 1000;
constexpr int pas_d_impression = 8;    ///< steps that a ticket may take to be printed
constexpr int silences_max = 2;        ///< steps without any answer, after which it counts as hung
constexpr int fermeture_courte = 500;  ///< of a printer that keeps its lines open
constexpr int coup_d_oeil = 1;

constexpr std::string_view sans_confirmation = "reçu, sans confirmation de l'imprimante"_t;

class Ecran final : public Imprimante {
  public:
    Constat imprime(const ticket::Ticket& ticket, const std::function<bool()>& commence) override {
        if (!commence()) return {Sort::attend, std::string("l'archive refuse l'écriture"_t)};
        const std::string t = texte::vers_utf8(ticket::en_texte(ticket)) + "\n";
        const bool ecrit = std::fwrite(t.data(), 1, t.size(), stdout) == t.size() && std::fflush(stdout) == 0;
        if (ecrit) return {};
        std::clearerr(stdout);
        return {Sort::interrompu, std::string("la sortie est fermée"_t)};
    }
};

/// What the printer of a line has shown of itself in this run.
struct Connaissance {
    bool repond = false;   ///< it answers when it is asked for its state
    bool confirme = true;  ///< it says when all is printed; taken for granted until it did not
    /// Whether it ends the line when we do: known once it did, or twice did not.
    enum class Fermeture { inconnue, douteuse, oui, non } fermeture = Fermeture::inconnue;
};

/// One ticket on its way.
class Envoi {
  public:
    Envoi(liaison::Liaison& ligne, Connaissance& connue, const Patience& patience)
        : ligne_(ligne), connue_(connue), patience_(patience) {}

    /// Nothing when it can print; otherwise why not. One that never answered is taken for ready.
    std::optional<std::string> empechement() {
        const auto papier = interroge(escpos::demande_papier, reponse_max);
        if (!papier && perdue_) return texte_de(liaison::Issue::rompue);
        if (!papier) return connue_.repond ? texte_de(liaison::Issue::muette) : std::optional<std::string>();
        connue_.repond = true;
        if (*papier == Reponse::sans_papier) return "plus de papier";
        return interroge(escpos::demande_liaison, reponse_max) == Reponse::hors_ligne
                   ? std::string("hors ligne (capot ouvert ?)")
                   : std::optional<std::string>();
    }

    Constat envoie(const std::string& octets) {
        std::size_t partis = 0;
        const liaison::Issue issue = ligne_.envoie(octets, envoi_max, partis);
        if (issue != liaison::Issue::faite) return {partis == 0 ? Sort::attend : Sort::interrompu, texte_de(issue)};
        return connue_.repond ? attend_l_impression() : attend_la_fermeture();
    }

  private:
    liaison::Liaison& ligne_;
    Connaissance& connue_;
    const Patience& patience_;
    bool perdue_ = false;

    static std::string texte_de(liaison::Issue issue) { return std::string(liaison::raison(issue)); }

    std::optional<Reponse> interroge(std::string_view demande, int ms) {
        std::size_t partis = 0;
        if (ligne_.envoie(demande, ms, partis) != liaison::Issue::faite) return std::nullopt;
        return attend(demande, ms);
    }

    /// The answer to a question; other bytes that come are left out.
    std::optional<Reponse> attend(std::string_view demande, int ms) {
        constexpr int octets_perdus_max = 16;
        for (int i = 0; i < octets_perdus_max; ++i) {
            unsigned char octet = 0;
            const liaison::Issue issue = ligne_.recoit(octet, ms);
            perdue_ = issue == liaison::Issue::rompue;
            if (issue != liaison::Issue::faite) return std::nullopt;
            const Reponse r = escpos::lis_reponse(demande, octet);
            if (r != Reponse::aucune) return r;
        }
        return std::nullopt;
    }

    /// Of a printer that answers: it says when everything before the question is printed. One that does not know that
    /// question still tells at once whether something stands in its way.
    Constat attend_l_impression() {
        std::size_t partis = 0;
        if (connue_.confirme) static_cast<void>(ligne_.envoie(escpos::demande_apres, envoi_max, partis));
        int silences = 0;
        for (int i = 0; i < (connue_.confirme ? pas_d_impression : 1); ++i) {
            const auto fin = connue_.confirme ? attend(escpos::demande_apres, pas_d_attente) : std::nullopt;
            if (fin == Reponse::prete) return {};
            const auto papier = fin ? fin : interroge(escpos::demande_papier, pas_d_attente);
            if (papier == Reponse::sans_papier) return {Sort::interrompu, "plus de papier"};
            if (interroge(escpos::demande_liaison, reponse_max) == Reponse::hors_ligne)
                return {Sort::interrompu, "hors ligne (capot ouvert ?)"};
            if (perdue_) return {Sort::interrompu, texte_de(liaison::Issue::rompue)};
            silences = papier ? 0 : silences + 1;
            if (silences == silences_max) return {Sort::interrompu, texte_de(liaison::Issue::muette)};
        }
        if (silences > 0) return {Sort::interrompu, texte_de(liaison::Issue::muette)};
        connue_.confirme = false;
        return {};
    }

    /// Of one that says nothing: it ends the line once it has read everything. One that keeps it open may hang, and
    /// gets the ticket once more; when it does so again it is taken for one that always does, until it cuts a line.
    Constat attend_la_fermeture() {
        using Fermeture = Connaissance::Fermeture;
        Fermeture& f = connue_.fermeture;
        const int ms = f == Fermeture::non        ? fermeture_courte
                       : f == Fermeture::douteuse ? patience_.encore
                                                  : patience_.d_abord;
        const liaison::Issue issue = ligne_.termine(ms);
        if (issue == liaison::Issue::faite && f != Fermeture::non) f = Fermeture::oui;
        if (issue == liaison::Issue::faite) return {};
        if (issue != liaison::Issue::muette || f == Fermeture::oui) return {Sort::interrompu, texte_de(issue)};
        const bool premiere_fois = f == Fermeture::inconnue;
        f = premiere_fois ? Fermeture::douteuse : Fermeture::non;
        if (premiere_fois) return {Sort::interrompu, texte_de(issue)};
        return {Sort::suspendu, std::string(sans_confirmation)};
    }
};

/// A line that the printer has kept open. It costs the printer nothing: it has been told that nothing follows.
class LigneGardee final : public Suite {
  public:
    LigneGardee(std::unique_ptr<liaison::Liaison> ligne, Connaissance& connue, int ms)
        : ligne_(std::move(ligne)), connue_(connue), echeance_(horloge::millisecondes() + ms) {}

    std::optional<Constat> regarde() override {
        const liaison::Issue issue = ligne_->termine(coup_d_oeil);
        if (issue == liaison::Issue::faite) return Constat{};
        if (issue == liaison::Issue::muette && horloge::millisecondes() < echeance_) return std::nullopt;
        if (issue == liaison::Issue::muette) return Constat{Sort::imprime, std::string(sans_confirmation)};
        connue_.fermeture = Connaissance::Fermeture::douteuse;
        return Constat{Sort::interrompu, std::string(liaison::raison(issue))};
    }

  private:
    std::unique_ptr<liaison::Liaison> ligne_;
    Connaissance& connue_;
    std::int64_t echeance_;
};

class ParLiaison final : public Imprimante {
  public:
    ParLiaison(Adresse adresse, const Reglages& reglages) : adresse_(std::move(adresse)), reglages_(reglages) {
        if (!reglages_.avec_etat) connue_.fermeture = Connaissance::Fermeture::non;
    }

    Constat imprime(const ticket::Ticket& ticket, const std::function<bool()>& commence) override {
        liaison::Issue issue = liaison::Issue::faite;
        const bool reseau = adresse_.sorte == Adresse::Sorte::tcp;
        auto ligne = reseau ? liaison::appelle(texte::vers_utf8(adresse_.lieu), adresse_.port, appel_max, issue)
                            : liaison::ouvre(adresse_.lieu, issue);
        if (!ligne) return {Sort::attend, std::string(liaison::raison(issue))};
        Envoi envoi(*ligne, connue_, reglages_.patience);
        const auto empechement = reseau && reglages_.avec_etat ? envoi.empechement() : std::nullopt;
        if (empechement) return {Sort::attend, *empechement};
        if (!commence()) return {Sort::attend, std::string("l'archive refuse l'écriture"_t)};
        Constat constat = envoi.envoie(escpos::octets(ticket, reglages_.page));
        if (constat.sort != Sort::suspendu) return constat;
        if (!reglages_.avec_etat) return {Sort::imprime, constat.raison};
        constat.suite = std::make_unique<LigneGardee>(std::move(ligne), connue_, reglages_.patience.en_suspens);
        return constat;
    }

  private:
    Adresse adresse_;
    Reglages reglages_;
    Connaissance connue_;
};

}  // namespace

std::string Adresse::ecrite() const {
    if (sorte == Sorte::ecran) return std::string(mot_ecran);
    if (sorte == Sorte::fichier) return std::string(debut_fichier) + lieu;
    return std::string(debut_tcp) + lieu + ":" + std::to_string(port);
}

std::string Adresse::nom() const {
    if (sorte == Sorte::ecran) return std::string("écran"_t);
    return sorte == Sorte::tcp ? lieu : lieu.substr(lieu.find_last_of("/\\") + 1);  // npos + 1 is 0
}

bool lis_adresse(std::string_view t, Adresse& a) {
    a = {};
    if (t == mot_ecran) return true;
    if (t.starts_with(debut_fichier)) {
        a.sorte = Adresse::Sorte::fichier;
        a.lieu = t.substr(debut_fichier.size());
        return !a.lieu.empty();
    }
    if (!t.starts_with(debut_tcp)) return false;
    t.remove_prefix(debut_tcp.size());
    while (t.ends_with('/')) t.remove_suffix(1);
    a.sorte = Adresse::Sorte::tcp;
    a.port = port_usuel;
    // An address of the sixth protocol has colons of its own, and stands between brackets.
    const auto crochet = t.find(']');
    const auto deux_points = t.find(':', t.starts_with('[') && crochet != std::string_view::npos ? crochet : 0);
    if (deux_points != std::string_view::npos) {
        const std::string_view port = t.substr(deux_points + 1);
        if (port.empty() || port.find_first_not_of("0123456789") != std::string_view::npos) return false;
        a.port = nombres::entier_int(port);
    }
    a.lieu = t.substr(0, deux_points);
    if (a.lieu.starts_with('[') && a.lieu.ends_with(']')) a.lieu = a.lieu.substr(1, a.lieu.size() - 2);
    return !a.lieu.empty() && a.port > 0 && a.port <= port_max;
}

std::unique_ptr<Imprimante> cree(const Adresse& adresse, const Reglages& reglages) {
    if (adresse.sorte == Adresse::Sorte::ecran) return std::make_unique<Ecran>();
    return std::make_unique<ParLiaison>(adresse, reglages);
}

}  // namespace imprimante
