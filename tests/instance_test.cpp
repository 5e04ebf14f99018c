// One start per directory, within one process: a later start is another thread, since a claim belongs to its thread.
// Two real programs meet in fenetre/second_depart.sh.
#include "platform/systeme/instance.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <thread>
#include <vector>

#include "atelier.h"

namespace {

using namespace std::chrono_literals;

std::unique_ptr<instance::Prise> prend() {
    bool appelee = false;
    return instance::prend(appelee);
}

class Instance : public tests::Atelier {
  protected:
    /// A later start on the working directory. What it claims it gives back at once: whether it could is told.
    static std::future<bool> second() {
        return std::async(std::launch::async, [] { return prend() != nullptr; });
    }
    static bool second_prend() { return second().get(); }
    /// A later start finds the directory claimed, and the first one answers or not.
    static bool second_est_devance(bool repondu) {
        const auto essaie = [repondu] {
            bool appelee = !repondu;
            return !instance::prend(appelee) && appelee == repondu;
        };
        return std::async(std::launch::async, essaie).get();
    }
    /// Of so many threads at the same time, in how many this is true.
    static int en_meme_temps(int fils, const std::function<bool()>& essaie) {
        std::vector<std::future<bool>> essais;
        for (int i = 0; i < fils; ++i) essais.push_back(std::async(std::launch::async, essaie));
        return static_cast<int>(std::count_if(essais.begin(), essais.end(), [](auto& e) { return e.get(); }));
    }
};

TEST_F(Instance, UnSecondDepartAppelleLePremierEtFinit) {
    std::atomic<int> appels = 0;
    auto prise = prend();
    ASSERT_TRUE(prise);
    prise->ecoute([&] { ++appels; });
    for (int n = 1; n <= 3; ++n) {
        EXPECT_TRUE(second_est_devance(true));
        EXPECT_EQ(appels, n);
    }
    std::filesystem::create_directory("autre");
    std::filesystem::current_path("autre");
    EXPECT_TRUE(second_prend()) << "another directory is another matter";
    std::filesystem::current_path(terrain.chemin() / "autre" / "..");
    EXPECT_FALSE(second_prend());
    EXPECT_EQ(appels, 4);
    EXPECT_TRUE(terrain.fichiers(".", "").size() == 1 && terrain.existe("autre")) << "nothing is left in the directory";
    prise.reset();
    EXPECT_TRUE(second_prend());
    EXPECT_EQ(appels, 4);
}

/// An icon touched several times: none of these starts may believe that the first one is frozen.
TEST_F(Instance, TousCeuxQuiAppellentEnMemeTempsOntUneReponse) {
    const auto prise = prend();
    ASSERT_TRUE(prise);
    prise->ecoute([] { std::this_thread::sleep_for(30ms); });
    for (int tour = 0; tour < 5; ++tour) EXPECT_EQ(en_meme_temps(4, [] { return second_est_devance(true); }), 4);
}

TEST_F(Instance, UnPremierMuetNeRetientLeSecondQuUnMoment) {
    std::atomic<int> appels = 0;
    const auto prise = prend();
    ASSERT_TRUE(prise);
    const auto debut = std::chrono::steady_clock::now();
    EXPECT_TRUE(second_est_devance(false));
    EXPECT_LT(std::chrono::steady_clock::now() - debut, instance::attente_ms * 1ms + 2s);
    prise->ecoute([&] { ++appels; });
    EXPECT_FALSE(second_prend());
    EXPECT_GE(appels, 1);
    prise->cesse();
    const int avant = appels;
    EXPECT_TRUE(second_est_devance(false)) << "it listens no more, but has the directory still";
    EXPECT_EQ(appels, avant);
}

TEST_F(Instance, LeSecondPrendLaPlaceDUnPremierQuiFinit) {
    auto prise = prend();
    ASSERT_TRUE(prise);
    auto plus_tard = second();
    EXPECT_EQ(plus_tard.wait_for(100ms), std::future_status::timeout);
    prise.reset();
    EXPECT_TRUE(plus_tard.get());
}

TEST_F(Instance, DeTousLesDepartsUnSeulPrend) {
    constexpr int departs = 6;
    for (int tour = 0; tour < 20; ++tour) {
        std::atomic<int> arrives = 0;
        const auto essaie = [&] {
            const auto prise = prend();
            if (prise) prise->ecoute([] {});
            ++arrives;
            while (arrives < departs) std::this_thread::yield();
            return prise != nullptr;
        };
        EXPECT_EQ(en_meme_temps(departs, essaie), 1);
    }
}

}  // namespace
