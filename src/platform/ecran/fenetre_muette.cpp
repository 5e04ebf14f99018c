// No window: what replays and tests run on. It shows nothing and reports nothing.
#include <chrono>
#include <condition_variable>
#include <mutex>

#include "platform/ecran/fenetre.h"

namespace ecran {
namespace {

class FenetreMuette final : public Fenetre {
  public:
    FenetreMuette(int largeur, int hauteur) : taille_{largeur, hauteur, 1} {}

    TailleEcran taille() const override { return taille_; }
    bool se_voit() const override { return false; }

    Evenement attend(int ms) override {
        std::unique_lock verrou(mutex_);
        const auto reveille = [this] { return reveillee_; };
        if (ms < 0) {
            condition_.wait(verrou, reveille);
        } else {
            condition_.wait_for(verrou, std::chrono::milliseconds(ms), reveille);
        }
        reveillee_ = false;
        return {};
    }

    void montre(const Image&, std::span<const Zone>) override {}

    void reveille() override {
        const std::lock_guard verrou(mutex_);
        reveillee_ = true;
        condition_.notify_one();
    }

  private:
    TailleEcran taille_;
    std::mutex mutex_;
    std::condition_variable condition_;
    bool reveillee_ = false;
};

}  // namespace

std::unique_ptr<Fenetre> cree_fenetre_muette(int largeur, int hauteur) {
    return std::make_unique<FenetreMuette>(largeur, hauteur);
}

}  // namespace ecran
