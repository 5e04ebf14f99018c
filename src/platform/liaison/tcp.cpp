#include <algorithm>
#include <chrono>
#include <memory>
#include <thread>
#include <vector>

#include "platform/console/arret.h"
#include "platform/liaison/liaison.h"
#include "platform/liaison/tcp_systeme.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/ouvrier.h"

namespace liaison {
namespace {

using namespace systeme;

/// Milliseconds that are left until a moment, as the request to end leaves them.
int reste(std::int64_t echeance) {
    return arret::limite(static_cast<int>(std::max<std::int64_t>(0, echeance - horloge::millisecondes())));
}

/// Waits in short steps, so that the request to end shortens a wait that is under way.
bool attend(Douille d, bool en_ecriture, int ms) {
    constexpr int pas_ms = 100;
    const std::int64_t debut = horloge::millisecondes();
    for (;;) {
        const auto passees = static_cast<int>(horloge::millisecondes() - debut);
        const int restent = arret::limite(ms) - passees;
        if (restent <= 0) return prete(d, en_ecriture, 0);
        if (prete(d, en_ecriture, std::min(restent, pas_ms))) return true;
    }
}

class LiaisonTcp final : public Liaison {
  public:
    explicit LiaisonTcp(Douille d) : d_(d) {}
    ~LiaisonTcp() override { ferme(d_); }

    Issue envoie(std::string_view octets, int ms, std::size_t& partis) override {
        partis = 0;
        while (!octets.empty()) {
            const auto n = ::send(d_, octets.data(), octets.size(), drapeaux_d_envoi);
            if (n < 0 && !a_attendre()) return Issue::rompue;
            if (n < 0 && !attend(d_, true, ms)) return Issue::muette;
            if (n <= 0) continue;
            partis += static_cast<std::size_t>(n);
            octets.remove_prefix(static_cast<std::size_t>(n));
        }
        return Issue::faite;
    }

    Issue recoit(unsigned char& octet, int ms) override {
        if (!attend(d_, false, ms)) return Issue::muette;
        const auto n = ::recv(d_, reinterpret_cast<char*>(&octet), 1, 0);
        if (n == 1) return Issue::faite;
        return n < 0 && a_attendre() ? Issue::muette : Issue::rompue;
    }

    /// What still comes back is dropped. Bytes that nobody acknowledged are lost with the line.
    Issue termine(int ms) override {
        if (!terminee_ && ::shutdown(d_, ferme_en_ecriture) != 0) return Issue::rompue;
        terminee_ = true;
        const std::int64_t echeance = horloge::millisecondes() + ms;
        char perdus[64];
        for (int restent = reste(echeance); restent > 0; restent = reste(echeance)) {
            if (!attend(d_, false, restent)) break;
            const auto n = ::recv(d_, perdus, sizeof perdus, 0);
            if (n == 0) return tout_arrive() ? Issue::faite : Issue::rompue;
            if (n < 0 && !a_attendre()) return Issue::rompue;
        }
        return en_chemin(d_) > 0 ? Issue::rompue : Issue::muette;
    }

  private:
    Douille d_;
    bool terminee_ = false;

    /// The other side has ended the line, perhaps before it had everything: then what it refuses comes back as an
    /// error.
    bool tout_arrive() const {
        constexpr int pas = 25, pas_ms = 40;
        for (int i = 0; i < pas; ++i) {
            int erreur = 0;
            socklen_t longueur = sizeof erreur;
            ::getsockopt(d_, SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&erreur), &longueur);
            if (erreur != 0) return false;
            if (en_chemin(d_) == 0) return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(pas_ms));
        }
        return false;
    }
};

struct Adresse {
    int famille = 0;
    std::vector<char> octets;
};

std::vector<Adresse> adresses(const std::string& hote, int port, int drapeaux) {
    addrinfo souhait{}, *liste = nullptr;
    souhait.ai_socktype = SOCK_STREAM;
    souhait.ai_flags = drapeaux;
    std::vector<Adresse> r;
    if (::getaddrinfo(hote.c_str(), std::to_string(port).c_str(), &souhait, &liste) != 0) return r;
    for (const addrinfo* a = liste; a != nullptr; a = a->ai_next) {
        const auto* debut = reinterpret_cast<const char*>(a->ai_addr);
        r.push_back({a->ai_family, {debut, debut + a->ai_addrlen}});
    }
    ::freeaddrinfo(liste);
    return r;
}

/// The system may take a minute to look up a name: that is done beside, and given up.
std::vector<Adresse> cherche(const std::string& hote, int port, int ms) {
    auto r = adresses(hote, port, AI_NUMERICHOST);
    if (!r.empty()) return r;
    struct Recherche {
        std::vector<Adresse> trouvees;
        bool finie = false;
    };
    const auto recherche = std::make_shared<Recherche>();
    ouvrier::lance(
        {.travail = [recherche, hote, port] { recherche->trouvees = adresses(hote, port, 0); },
         .suite = [recherche](ouvrier::Reponse reponse) { recherche->finie = reponse == ouvrier::Reponse::faite; },
         .limite_ms = ms});
    static_cast<void>(ouvrier::attends(ms));
    return recherche->finie ? recherche->trouvees : std::vector<Adresse>();
}

/// Issue::faite leaves the socket connected in `d`.
Issue joint(Douille d, const Adresse& a, int ms) {
    ne_bloque_plus(d);
    const int oui = 1;
    ::setsockopt(d, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&oui), sizeof oui);
    const auto* adresse = reinterpret_cast<const sockaddr*>(a.octets.data());
    if (::connect(d, adresse, static_cast<socklen_t>(a.octets.size())) == 0) return Issue::faite;
    if (!a_attendre()) return Issue::refusee;
    if (!attend(d, true, ms)) return Issue::muette;
    int erreur = 0;
    socklen_t longueur = sizeof erreur;
    if (::getsockopt(d, SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&erreur), &longueur) != 0) return Issue::rompue;
    return erreur == 0 ? Issue::faite : est_refus(erreur) ? Issue::refusee : Issue::muette;
}

}  // namespace

std::unique_ptr<Liaison> appelle(const std::string& hote, int port, int ms, Issue& issue) {
    prepare();
    issue = Issue::introuvable;
    for (const Adresse& a : cherche(hote, port, ms)) {
        const Douille d = ::socket(a.famille, SOCK_STREAM, 0);
        if (d == aucune) continue;
        issue = joint(d, a, ms);
        if (issue == Issue::faite) return std::make_unique<LiaisonTcp>(d);
        ferme(d);
    }
    return nullptr;
}

}  // namespace liaison
