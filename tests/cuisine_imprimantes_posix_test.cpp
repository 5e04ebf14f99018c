// An order is printed once, or again with a mark, and never lost: kitchens are killed while a printer of the test's own
// takes their tickets, which answers, keeps silent, breaks off or has no paper.
#include <arpa/inet.h>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <mutex>
#include <thread>

#include "fourneau_posix.h"
#include "platform/console/arret.h"
#include "platform/systeme/ouvrier.h"

namespace {

using tests::bloc, tests::Fourneau, tests::nom_de_commande, tests::Papier, tests::table_de;

/// How a printer treats one connection.
struct Conduite {
    bool repond = true;
    bool papier = true;
    std::size_t casse_apres = SIZE_MAX;    ///< bytes of the ticket, then it breaks off
    int pause_us = 0;                      ///< that it takes for a byte
    std::size_t se_tait_apres = SIZE_MAX;  ///< likewise, then it hangs until the other side gives up
    int fige_ms = 0;                       ///< that it hangs before it reads anything, and then it resets the line
};

class ImprimanteEssai {
  public:
    /// Takes a port; refuses until it is switched on.
    ImprimanteEssai() : douille_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in a{};
        a.sin_family = AF_INET;
        a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t n = sizeof a;
        EXPECT_EQ(::bind(douille_, reinterpret_cast<sockaddr*>(&a), n), 0);
        ::getsockname(douille_, reinterpret_cast<sockaddr*>(&a), &n);
        port_ = ntohs(a.sin_port);
    }
    ~ImprimanteEssai() {
        fin_ = true;
        if (fil_.joinable()) fil_.join();
        ::close(douille_);
    }

    std::string adresse() const { return "tcp://127.0.0.1:" + std::to_string(port_); }
    /// Each connection as the next of these, the last for all that follow.
    void allume(std::vector<Conduite> conduites) {
        conduites_ = std::move(conduites);
        ::listen(douille_, 5);
        fil_ = std::thread([this] { sert(); });
    }
    std::string recu() const {
        const std::lock_guard garde(verrou_);
        return recu_;
    }
    std::size_t appels() const { return appels_; }
    /// The tickets that it has cut off; while it prints, the last bytes may be half a command.
    std::size_t coupes() const {
        const std::string octets = recu();
        std::size_t n = 0;
        for (auto p = octets.find("\x1DVB"); p != std::string::npos; p = octets.find("\x1DVB", p + 1)) ++n;
        return n;
    }

  private:
    int douille_, port_ = 0;
    std::thread fil_;
    std::atomic<bool> fin_ = false;
    std::atomic<std::size_t> appels_ = 0;
    std::vector<Conduite> conduites_;
    mutable std::mutex verrou_;
    std::string recu_;

    bool lisible(int fd) const {
        pollfd veille{fd, POLLIN, 0};
        while (!fin_ && ::poll(&veille, 1, 20) == 0) continue;
        return !fin_;
    }

    void retient(char octet) {
        const std::lock_guard garde(verrou_);
        recu_ += octet;
    }

    void sert() {
        while (lisible(douille_)) {
            const int d = ::accept(douille_, nullptr, nullptr);
            const std::size_t n = appels_++;
            imprime(d, conduites_[std::min(n, conduites_.size() - 1)]);
            ::close(d);
        }
    }

    static void se_remet(int d, int fige_ms) {
        std::this_thread::sleep_for(std::chrono::milliseconds(fige_ms));
        const linger aussitot{1, 0};
        ::setsockopt(d, SOL_SOCKET, SO_LINGER, &aussitot, sizeof aussitot);
    }

    void imprime(int d, const Conduite& c) {
        if (c.fige_ms > 0) return se_remet(d, c.fige_ms);
        std::string ticket, demande;
        char octet = 0;
        while (lisible(d) && ticket.size() < c.casse_apres && ::recv(d, &octet, 1, 0) == 1) {
            const bool muette = ticket.size() >= c.se_tait_apres;
            demande = octet == 0x10 || octet == 0x1D || !demande.empty() ? demande + octet : "";
            if (demande.size() > 3) demande.erase(0, demande.size() - 3);
            char reponse = 0;
            if (demande == "\x10\x04\x04") reponse = static_cast<char>(c.papier ? 0x12 : 0x72);
            if (demande == "\x10\x04\x01") reponse = static_cast<char>(c.papier ? 0x12 : 0x1A);
            if (demande.ends_with("\x1Dr\x01")) reponse = c.papier ? 0x00 : 0x0C;
            if (muette) continue;
            ticket += octet;
            retient(octet);  // before it answers: whoever has the answer may look at the paper
            if (demande.size() == 3 && c.repond && (reponse != 0 || demande == "\x1Dr\x01"))
                ::send(d, &reponse, 1, MSG_NOSIGNAL);
            if (c.pause_us > 0) std::this_thread::sleep_for(std::chrono::microseconds(c.pause_us));
        }
    }
};

/// The real program on the restaurant.
class CuisineEtImprimante : public tests::EnMemoire, public Fourneau {
  protected:
    ImprimanteEssai imprimante;

    CuisineEtImprimante() { horloge::rend_reelle(); }

    pid_t ouvre(std::vector<std::string> options) const {
        options.insert(options.begin(), {CUISINE, t.reseau().string()});
        std::vector<char*> mots;
        for (std::string& o : options) mots.push_back(o.data());
        mots.push_back(nullptr);
        const std::string erreurs = (t.chemin() / "erreurs").string();
        const pid_t fils = ::fork();
        if (fils == 0) {
            ::dup2(::open(erreurs.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0666), 2);
            ::execv(CUISINE, mots.data());
            ::_exit(127);
        }
        return fils;
    }

    /// The same in a process of this program, with less patience than a kitchen has.
    pid_t ouvre_impatiente(const std::string& adresse) {
        imprime_sur(0, adresse);
        reglages.archive = (t.reseau() / "archive").string();
        reglages.une_fois = false;
        reglages.patience = {.d_abord = 200, .encore = 200};
        ouvrier::abandonne();
        const pid_t fils = ::fork();
        if (fils != 0) return fils;
        tests::fais_taire();
        arret::ecoute();
        ::_exit(service::sert(reglages));
    }

    /// Waits for something, for half a minute at most.
    static bool attend(const std::function<bool()>& arrive) {
        for (int i = 0; i < 1500 && !arrive(); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(20));
        return arrive();
    }

    static int ferme(pid_t fils, int signal) {
        ::kill(fils, signal);
        int statut = -1;
        ::waitpid(fils, &statut, 0);
        return WIFEXITED(statut) ? WEXITSTATUS(statut) : 128 + WTERMSIG(statut);
    }

    bool tout_est_range(std::size_t n) const {
        return t.fichiers("reseau/archive/2021-05-19", ".txt").size() == n &&
               t.fichiers("reseau/archive/en_cours", "").empty();
    }

    int dits(const std::string& texte) const {
        const std::string console = t.lis("erreurs");
        int n = 0;
        for (auto p = console.find(texte); p != std::string::npos; p = console.find(texte, p + 1)) ++n;
        return n;
    }

    /// Two orders with a printer that behaves so; what came out of it.
    Papier essaie(const std::vector<Conduite>& conduites, const std::string& raison, bool eteinte_d_abord = false) {
        depose(1, tests::commande_simple(1));
        depose(2, tests::commande_simple(2));
        const pid_t cuisine = ouvre({"--imprimante", imprimante.adresse()});
        if (eteinte_d_abord) {
            EXPECT_TRUE(attend([&] { return dits(raison) == 1; }));
        }
        imprimante.allume(conduites);
        EXPECT_TRUE(attend([&] { return tout_est_range(2); })) << t.lis("erreurs");
        EXPECT_EQ(ferme(cuisine, SIGTERM), 0);
        EXPECT_TRUE(raison.empty() || dits(raison) == 1) << "told once, not at each attempt\n" << t.lis("erreurs");
        EXPECT_EQ(dits("de nouveau"), raison.empty() ? 0 : 1);
        const Papier p(imprimante.recu());
        for (const int table : {1, 2}) tests::verifie_une_fois(p, table, raison);
        return p;
    }
};

TEST_F(CuisineEtImprimante, QuiRepond) {
    const Papier p = essaie({{}}, "");
    EXPECT_EQ(p.entiers.size(), 2U);
    EXPECT_TRUE(p.avec("DUPLICATA").empty());
}

TEST_F(CuisineEtImprimante, QuiNeRepondJamais) {
    EXPECT_EQ(essaie({{.repond = false}}, "").entiers.size(), 2U);

    // Nor does this one, and it hangs for so long that it seems to be one that keeps its lines open.
    ImprimanteEssai figee;
    depose(3, tests::commande_simple(3));
    depose(4, tests::commande_simple(4));
    figee.allume({{.fige_ms = 4000}, {.fige_ms = 1}, {.fige_ms = 1}, {.repond = false}});
    const pid_t cuisine = ouvre_impatiente(figee.adresse());
    EXPECT_TRUE(attend([&] { return tout_est_range(4); })) << figee.appels() << " calls";
    EXPECT_EQ(ferme(cuisine, SIGTERM), 0);
    const Papier p(figee.recu());
    for (const int table : {3, 4}) tests::verifie_une_fois(p, table, "hung");
    EXPECT_GE(p.avec("DUPLICATA").size(), 1U) << "nobody knows what it did with the first one";
}

TEST_F(CuisineEtImprimante, QuiEstEteinte) {
    const Papier p = essaie({{}}, "éteinte", true);
    EXPECT_EQ(p.entiers.size(), 2U);
    EXPECT_TRUE(p.avec("DUPLICATA").empty()) << "nothing of it had left";
}

TEST_F(CuisineEtImprimante, QuiNAPlusDePapier) {
    const Papier p = essaie({{.papier = false}, {.papier = false}, {}}, "plus de papier");
    EXPECT_EQ(p.entiers.size(), 2U);
    EXPECT_TRUE(p.avec("DUPLICATA").empty());
    EXPECT_EQ(imprimante.appels(), 4U);
}

TEST_F(CuisineEtImprimante, QuiCasseAuMilieu) {
    const Papier p = essaie({{.casse_apres = 60}, {.repond = false, .casse_apres = 100}, {}}, "au milieu d'un ticket");
    EXPECT_EQ(p.restes.size(), 1U);
    EXPECT_EQ(p.avec("DUPLICATA").size(), 1U) << "the other one had not begun";
}

TEST_F(CuisineEtImprimante, QuiSeFigeAuMilieu) {
    const Papier p = essaie({{.se_tait_apres = 80}, {}}, "ne répond pas, au milieu d'un ticket");
    EXPECT_EQ(p.avec("DUPLICATA").size(), 1U);
    EXPECT_EQ(p.entiers.size(), 2U);
}

TEST_F(CuisineEtImprimante, QuiSeFigeNEmpechePasDArreter) {
    depose(1, tests::commande_simple(1));
    imprimante.allume({{.se_tait_apres = 20}, {}});
    const pid_t cuisine = ouvre({"--imprimante", imprimante.adresse()});
    EXPECT_TRUE(attend([&] { return t.existe("reseau/archive/en_cours/" + nom_de_commande(1) + ".fiche"); }));
    EXPECT_EQ(ferme(cuisine, SIGTERM), service::reste_a_imprimer);
    EXPECT_EQ(t.cuisine("--imprimante " + imprimante.adresse()).statut, 0);
    EXPECT_EQ(Papier(imprimante.recu()).avec("DUPLICATA").size(), 1U);
}

TEST_F(CuisineEtImprimante, DontLUneEstEteinteNArretePasLAutre) {
    ImprimanteEssai bar;
    imprimante.allume({{}});
    depose(1, tests::commande_de(1, bloc("8880000000611") + bloc("8880000000024")));
    depose(2, tests::commande_simple(2));
    const pid_t cuisine = ouvre({"--imprimante", imprimante.adresse(), "--familles", "4=" + bar.adresse()});
    EXPECT_TRUE(attend([&] { return imprimante.coupes() == 2; }));
    EXPECT_TRUE(attend([&] { return t.fichiers("reseau/archive/2021-05-19", ".txt").size() == 1; }));
    EXPECT_EQ(ferme(cuisine, SIGKILL), 128 + SIGKILL);
    bar.allume({{}});
    const pid_t suivante = ouvre({"--imprimante", imprimante.adresse(), "--familles", "4=" + bar.adresse()});
    EXPECT_TRUE(attend([&] { return tout_est_range(2); }));
    EXPECT_EQ(ferme(suivante, SIGTERM), 0);
    EXPECT_EQ(Papier(imprimante.recu()).entiers.size(), 2U) << "a part that was printed stays so";
    EXPECT_EQ(Papier(bar.recu()).avec("DUPLICATA").size(), 0U);
    EXPECT_EQ(Papier(bar.recu()).avec("suite : 127.0.0.1").size(), 1U);
}

TEST_F(CuisineEtImprimante, TueeEncoreEtEncore) {
    constexpr int nombre = 24;
    for (int table = 1; table <= nombre; ++table) depose(table, tests::commande_simple(table));
    imprimante.allume({{.pause_us = 100}});
    int tuees = 0;
    for (std::size_t seuil = 150; !tout_est_range(nombre);
         seuil = imprimante.recu().size() + 137 * static_cast<std::size_t>(1 + tuees % 7)) {
        ASSERT_LT(++tuees, 400);
        const pid_t cuisine = ouvre({"--imprimante", imprimante.adresse()});
        EXPECT_TRUE(attend([&] { return imprimante.recu().size() >= seuil || tout_est_range(nombre); }));
        EXPECT_EQ(ferme(cuisine, SIGKILL), 128 + SIGKILL);
    }
    EXPECT_GT(tuees, 5);
    const Papier p(imprimante.recu());
    for (int table = 1; table <= nombre; ++table) tests::verifie_une_fois(p, table, std::to_string(tuees) + " kills");
}

TEST_F(CuisineEtImprimante, DeuxCuisinesNePrennentUneCommandeQuUneFois) {
    constexpr int nombre = 40;
    for (int table = 1; table <= nombre; ++table) depose(table, tests::commande_simple(table));
    std::vector<pid_t> cuisines;
    for (const char* nom : {"a", "b", "b"}) {
        const std::string ici = (t.chemin() / nom).string();
        cuisines.push_back(ouvre({"--archive", ici, "--imprimante", "fichier:" + ici + ".bin"}));
    }
    const auto rangees = [&] {
        return t.fichiers("a/2021-05-19", ".txt").size() + t.fichiers("b/2021-05-19", ".txt").size();
    };
    EXPECT_TRUE(attend([&] { return rangees() == nombre; }));
    EXPECT_TRUE(attend([&] { return dits("un autre orvalune-cuisine utilise") == 1; }))
        << "two with one archive: the second one waits";
    for (const pid_t c : cuisines) EXPECT_EQ(ferme(c, SIGTERM), 0);
    const Papier p(t.lis("a.bin") + t.lis("b.bin"));
    EXPECT_EQ(p.entiers.size(), static_cast<std::size_t>(nombre));
    for (int table = 1; table <= nombre; ++table) EXPECT_EQ(p.avec(table_de(table)).size(), 1U) << table;
}

}  // namespace
