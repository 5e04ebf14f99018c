// The worker: what hangs, what is late, what is refused meanwhile, on the real clock and on a replay's.
#include "platform/systeme/ouvrier.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <latch>
#include <memory>
#include <thread>
#include <vector>

#include "platform/systeme/horloge.h"

namespace {

using ouvrier::Reponse;
using ouvrier::Reseau;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

class OuvrierTest : public testing::Test {
  protected:
    std::shared_ptr<std::atomic<int>> faits = std::make_shared<std::atomic<int>>(0);
    std::vector<Reponse> reponses;

    OuvrierTest() { remet(); }
    ~OuvrierTest() override { remet(); }

    static void remet() {
        ouvrier::abandonne();
        ouvrier::simule(Reseau::present, 0);
        ouvrier::attend_toujours(false);
        horloge::rend_reelle();
    }

    ouvrier::Operation operation(int limite_ms = 2000) {
        return {[faits = faits] { ++*faits; }, [this](Reponse r) { reponses.push_back(r); }, limite_ms};
    }
    ouvrier::Operation operation_qui_pend(const std::shared_ptr<std::latch>& barriere, int limite_ms) {
        auto o = operation(limite_ms);
        o.travail = [faits = faits, barriere] {
            barriere->wait();
            ++*faits;
        };
        return o;
    }
    /// Turns of a loop until the worker is free, as long as a slow machine may need.
    static bool se_libere() {
        const auto jusqua = steady_clock::now() + milliseconds(20'000);
        while (ouvrier::occupe() && steady_clock::now() < jusqua) ouvrier::attends(50);
        return !ouvrier::occupe();
    }
};

using Reponses = std::vector<Reponse>;

TEST_F(OuvrierTest, LaSuiteVientUneFoisSurLeFilDeLInterface) {
    const auto interface = std::this_thread::get_id();
    auto du_travail = std::make_shared<std::thread::id>();
    std::thread::id de_la_suite;
    std::atomic<int> reveils = 0;
    ouvrier::previens_par([&] { ++reveils; });
    ASSERT_TRUE(ouvrier::lance({[du_travail] { *du_travail = std::this_thread::get_id(); },
                                [&](Reponse r) {
                                    reponses.push_back(r);
                                    de_la_suite = std::this_thread::get_id();
                                    EXPECT_TRUE(ouvrier::lance(operation())) << "an answer may start the next";
                                }}));
    EXPECT_FALSE(ouvrier::lance(operation())) << "one at a time";
    EXPECT_TRUE(reponses.empty()) << "never from lance()";
    ASSERT_TRUE(se_libere());
    EXPECT_EQ(reponses, (Reponses{Reponse::faite, Reponse::faite}));
    EXPECT_EQ(*faits, 1) << "the refused one has not run";
    EXPECT_EQ(de_la_suite, interface);
    EXPECT_NE(*du_travail, interface);
    EXPECT_EQ(ouvrier::prochaine_echeance(), -1);
    const auto jusqua = steady_clock::now() + milliseconds(20'000);
    while (reveils < 2 && steady_clock::now() < jusqua) std::this_thread::yield();
    EXPECT_EQ(reveils, 2) << "each end wakes the loop";
    ouvrier::previens_par({});
}

TEST_F(OuvrierTest, CeQuiPendEstReponduUneFoisEtRienNeCommenceAvantSaFin) {
    const auto barriere = std::make_shared<std::latch>(1);
    auto qui_pend = operation_qui_pend(barriere, 60);
    int tardives = 0;
    qui_pend.tardive = [&tardives] { ++tardives; };
    ASSERT_TRUE(ouvrier::lance(std::move(qui_pend)));
    const auto echeance = ouvrier::prochaine_echeance() - horloge::millisecondes();
    EXPECT_GT(echeance, 0);
    EXPECT_LE(echeance, 60);
    EXPECT_FALSE(ouvrier::attends(5));
    EXPECT_TRUE(reponses.empty());
    EXPECT_FALSE(ouvrier::attends(20'000)) << "past its limit it is not awaited";
    EXPECT_EQ(reponses, Reponses{Reponse::hors_delai});
    EXPECT_EQ(ouvrier::prochaine_echeance(), -1) << "the loop has nothing to wake up for";
    EXPECT_FALSE(ouvrier::lance(operation()));
    EXPECT_EQ(tardives, 0);
    barriere->count_down();
    ASSERT_TRUE(se_libere());
    ouvrier::traite_reponses();
    EXPECT_EQ(reponses, Reponses{Reponse::hors_delai});
    EXPECT_EQ(tardives, 1) << "the interface is told that it has ended after all";
    EXPECT_EQ(*faits, 1);
    EXPECT_TRUE(ouvrier::lance(operation()));
    ASSERT_TRUE(se_libere());
    EXPECT_EQ(reponses.back(), Reponse::faite);
}

TEST_F(OuvrierTest, AbandonnerNAttendPasCeQuiPend) {
    const auto barriere = std::make_shared<std::latch>(1);
    std::atomic<bool> reveille = false;
    ouvrier::previens_par([&] { reveille = true; });
    ASSERT_TRUE(ouvrier::lance(operation_qui_pend(barriere, 10'000)));
    const auto debut = steady_clock::now();
    ouvrier::abandonne();
    EXPECT_LT(steady_clock::now() - debut, milliseconds(5'000));
    EXPECT_FALSE(ouvrier::occupe());
    EXPECT_TRUE(ouvrier::lance(operation())) << "a worker of its own";
    ASSERT_TRUE(se_libere());
    EXPECT_EQ(reponses, Reponses{Reponse::faite}) << "the abandoned one is never answered";
    barriere->count_down();
    EXPECT_FALSE(reveille) << "nor does it wake a loop that may be gone";
}

TEST_F(OuvrierTest, LeProgrammeFinitPendantQuUneOperationPend) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            ouvrier::lance({[] {
                                for (;;) std::this_thread::sleep_for(std::chrono::hours(1));
                            },
                            {},
                            20});
            if (ouvrier::attends(1000)) std::_Exit(3);
            ouvrier::abandonne();
            std::exit(0);
        },
        testing::ExitedWithCode(0), "");
}

/// The same on a replay's clock, which only the test moves.
class OuvrierEnRejeu : public OuvrierTest {
  protected:
    std::int64_t debut = 0;

    OuvrierEnRejeu() {
        horloge::rend_virtuelle({});
        ouvrier::attend_toujours(true);
        debut = horloge::millisecondes();
    }
    /// As a replay does between two commands.
    void va_a(std::int64_t ms) {
        horloge::avance(debut + ms - horloge::millisecondes());
        ouvrier::termine_en_rejeu();
    }
    /// The answers, how often the work was done, and whether it still is.
    std::string vu() const {
        std::string r;
        for (const Reponse reponse : reponses) r += reponse == Reponse::faite ? "faite " : "tard ";
        return r + std::to_string(*faits) + (ouvrier::occupe() ? " en cours" : "");
    }
    /// Starts an operation while the network is so: when it must be answered at the latest, and vu() at each instant.
    std::string suit(Reseau etat, int ms, std::initializer_list<int> instants) {
        debut = horloge::millisecondes();
        reponses.clear();
        *faits = 0;
        ouvrier::simule(etat, ms);
        EXPECT_TRUE(ouvrier::lance(operation()));
        EXPECT_TRUE(reponses.empty());
        std::string r = std::to_string(ouvrier::prochaine_echeance() - debut);
        for (const int instant : instants) {
            va_a(instant);
            r += ", " + std::to_string(instant) + ": " + vu();
        }
        return r;
    }
};

TEST_F(OuvrierEnRejeu, PresentEstAttenduMemeLentVraiment) {
    auto o = operation();
    o.travail = [faits = faits] {
        std::this_thread::sleep_for(milliseconds(50));
        ++*faits;
    };
    o.suite = [this](Reponse r) {
        reponses.push_back(r);
        ouvrier::lance(operation());
    };
    ASSERT_TRUE(ouvrier::lance(o));
    va_a(0);
    EXPECT_EQ(reponses, (Reponses{Reponse::faite, Reponse::faite})) << "and so is what its answer starts";
    EXPECT_EQ(*faits, 2);
    ASSERT_TRUE(ouvrier::lance(o));
    ouvrier::attends(1);
    EXPECT_EQ(reponses.size(), 3u) << "awaited longer than asked: the outcome does not hang on the machine's speed";
    EXPECT_EQ(horloge::millisecondes(), debut);
}

TEST_F(OuvrierEnRejeu, AbsentNExecuteRienEtLentRepondASonHeure) {
    EXPECT_EQ(suit(Reseau::absent, 0, {0}), "0, 0: faite 0");
    EXPECT_EQ(suit(Reseau::lent, 500, {499, 500}), "500, 499: 0 en cours, 500: faite 1");
}

TEST_F(OuvrierEnRejeu, TropLentEstHorsDelaiEtAgitQuandMemePlusTard) {
    EXPECT_EQ(suit(Reseau::lent, 5000, {2000}), "2000, 2000: tard 0 en cours");
    EXPECT_EQ(ouvrier::prochaine_echeance(), debut + 5000);
    va_a(4999);
    EXPECT_EQ(vu(), "tard 0 en cours");
    EXPECT_FALSE(ouvrier::lance(operation()));
    va_a(5000);
    EXPECT_EQ(vu(), "tard 1");
    EXPECT_EQ(suit(Reseau::lent, 2000, {2000}), "2000, 2000: faite 1") << "just in time is in time";
    suit(Reseau::lent, 2001, {13'000, 13'000});
    EXPECT_EQ(vu(), "tard 1") << "however far the clock has jumped";
}

TEST_F(OuvrierEnRejeu, BloqueAgitQuandLeReseauRevient) {
    EXPECT_EQ(suit(Reseau::bloque, 0, {1999, 2000, 100'000}),
              "2000, 1999: 0 en cours, 2000: tard 0 en cours, 100000: tard 0 en cours");
    EXPECT_EQ(ouvrier::prochaine_echeance(), -1);
    EXPECT_FALSE(ouvrier::lance(operation()));
    ouvrier::simule(Reseau::present, 0);
    ouvrier::termine_en_rejeu();
    EXPECT_EQ(vu(), "tard 1");
}

TEST_F(OuvrierEnRejeu, UnEtatQuiChangeDecideDeCeQuiPend) {
    suit(Reseau::bloque, 0, {});
    ouvrier::simule(Reseau::lent, 300);
    va_a(299);
    EXPECT_EQ(vu(), "0 en cours");
    ouvrier::simule(Reseau::absent, 0);
    va_a(299);
    EXPECT_EQ(vu(), "faite 0") << "what the network never got has no effect";
    suit(Reseau::bloque, 0, {});
    ouvrier::simule(Reseau::present, 0);
    va_a(299);
    EXPECT_EQ(vu(), "faite 1") << "within its limit it is an answer like others";
}

TEST_F(OuvrierEnRejeu, AttendreVoitCeQuiViendraitSansBougerLHorloge) {
    ouvrier::simule(Reseau::lent, 100);
    ASSERT_TRUE(ouvrier::lance(operation()));
    EXPECT_FALSE(ouvrier::attends(99));
    EXPECT_TRUE(reponses.empty());
    EXPECT_TRUE(ouvrier::attends(100));
    EXPECT_EQ(reponses, Reponses{Reponse::faite});
    ouvrier::simule(Reseau::bloque, 0);
    ASSERT_TRUE(ouvrier::lance(operation()));
    const auto avant = steady_clock::now();
    EXPECT_FALSE(ouvrier::attends(1999));
    EXPECT_EQ(reponses.size(), 1u);
    EXPECT_FALSE(ouvrier::attends(2000));
    EXPECT_EQ(reponses.back(), Reponse::hors_delai);
    EXPECT_LT(steady_clock::now() - avant, milliseconds(1500)) << "what is simulated takes no real time";
    EXPECT_EQ(horloge::millisecondes(), debut);
}

TEST_F(OuvrierEnRejeu, CeQuiPendVraimentNEstAttenduQuUneFois) {
    const auto barriere = std::make_shared<std::latch>(1);
    ASSERT_TRUE(ouvrier::lance(operation_qui_pend(barriere, 100)));
    ouvrier::termine_en_rejeu();
    EXPECT_EQ(reponses, Reponses{Reponse::hors_delai});
    const auto avant = steady_clock::now();
    for (int commande = 0; commande < 100; ++commande) ouvrier::termine_en_rejeu();
    EXPECT_LT(steady_clock::now() - avant, milliseconds(2000));
    barriere->count_down();
    ASSERT_TRUE(se_libere());
    EXPECT_EQ(reponses.size(), 1u);
}

}  // namespace
