// No window: what replays and tests run on. It shows nothing and reports nothing.
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

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
        Evenement e;
        if (std::exchange(appelee_, false)) e.sorte = Evenement::Sorte::reveil;
        return e;
    }

    void montre(const Image&, std::span<const Zone>) override {}

    void reveille() override { interrompt(false); }
    void vient_devant() override { interrompt(true); }

  private:
    TailleEcran taille_;
    std::mutex mutex_;
    std::condition_variable condition_;
    bool reveillee_ = false;
    bool appelee_ = false;  ///< asked to come to the front

    void interrompt(bool appelee) {
        const std::lock_guard verrou(mutex_);
        reveillee_ = true;
        appelee_ = appelee_ || appelee;
        condition_.notify_one();
    }
};

}  // namespace

std::unique_ptr<Fenetre> cree_fenetre_muette(int largeur, int hauteur) {
    return std::make_unique<FenetreMuette>(largeur, hauteur);
}

}  // namespace ecran
