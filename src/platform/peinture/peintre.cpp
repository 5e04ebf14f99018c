#include "platform/peinture/peintre.h"

#include <algorithm>
#include <utility>

#include "platform/peinture/elements.h"

namespace ecran {
namespace {

constexpr std::size_t zones_max = 12;
/// Painting goes on by bands of about this many pixels, which stay in the processor's cache from the ground to the
/// text.
constexpr int pixels_par_bande = 1 << 16;

std::int64_t surface(const Zone& z) {
    return z.vide() ? 0 : static_cast<std::int64_t>(z.droite - z.gauche) * (z.bas - z.haut);
}

/// Zones to paint; two become one when that is no dearer than both.
class Salissures {
  public:
    explicit Salissures(const Zone& ecran) : ecran_(ecran) {}

    void ajoute(Zone z) {
        z = intersection(z, ecran_);
        if (z.vide()) return;
        for (std::size_t i = 0; i < zones_.size();) {
            const Zone ensemble = reunion(zones_[i], z);
            if (surface(ensemble) > surface(zones_[i]) + surface(z)) {
                ++i;
                continue;
            }
            z = ensemble;
            zones_.erase(zones_.begin() + static_cast<std::ptrdiff_t>(i));
            i = 0;
        }
        zones_.push_back(z);
        if (zones_.size() > zones_max) joint_les_proches();
    }

    std::vector<Zone> zones() && { return std::move(zones_); }

  private:
    Zone ecran_;
    std::vector<Zone> zones_;

    /// Joins the two zones whose union costs least.
    void joint_les_proches() {
        std::size_t a = 0, b = 1;
        std::int64_t moindre = -1;
        for (std::size_t i = 0; i < zones_.size(); ++i) {
            for (std::size_t k = i + 1; k < zones_.size(); ++k) {
                const std::int64_t cout =
                    surface(reunion(zones_[i], zones_[k])) - surface(zones_[i]) - surface(zones_[k]);
                if (moindre >= 0 && cout >= moindre) continue;
                moindre = std::max<std::int64_t>(0, cout);
                a = i;
                b = k;
            }
        }
        const Zone ensemble = reunion(zones_[a], zones_[b]);
        zones_.erase(zones_.begin() + static_cast<std::ptrdiff_t>(b));
        zones_.erase(zones_.begin() + static_cast<std::ptrdiff_t>(a));
        ajoute(ensemble);
    }
};

}  // namespace

struct Peintre::Interne {
    explicit Interne(std::pmr::memory_resource* memoire) : image{0, 0, std::pmr::vector<std::uint32_t>(memoire)} {}

    Image image;
    double echelle = 1;
    bool tout_a_peindre = true;
    std::vector<Element> liste, derniere;
    std::vector<Zone> zones;

    Zone ecran() const { return {0, 0, image.largeur, image.hauteur}; }

    /// Where the new list differs from the last one. Both are in the order of their elements' places, so that one walk
    /// along the two pairs each element with what stood in its place before.
    std::vector<Zone> compare() const {
        Salissures sales(ecran());
        auto n = liste.begin(), d = derniere.begin();
        while (n != liste.end() || d != derniere.end()) {
            if (d == derniere.end() || (n != liste.end() && n->ordre < d->ordre)) {
                sales.ajoute((n++)->zone);
            } else if (n == liste.end() || d->ordre < n->ordre) {
                sales.ajoute((d++)->zone);
            } else {
                if (n->empreinte != d->empreinte) {
                    sales.ajoute(d->zone);
                    sales.ajoute(n->zone);
                }
                ++n, ++d;
            }
        }
        return std::move(sales).zones();
    }

    void repeint_bande(const Zone& z) {
        const Toile toile(image, z);
        auto premier = liste.begin();
        for (auto e = liste.begin(); e != liste.end(); ++e) {
            if (e->couvre() && intersection(e->zone, z) == z) premier = e;
        }
        for (auto e = premier; e != liste.end(); ++e) dessine(*e, toile);
    }

    void repeint(const Zone& z) {
        const int rangs = std::max(16, pixels_par_bande / std::max(1, z.droite - z.gauche));
        for (int haut = z.haut; haut < z.bas; haut += rangs) {
            repeint_bande({z.gauche, haut, z.droite, std::min(haut + rangs, z.bas)});
        }
    }
};

Peintre::Peintre(std::pmr::memory_resource* memoire) : interne_(new Interne(memoire)) {}
Peintre::~Peintre() {
    delete interne_;
}

void Peintre::dimensionne(int largeur, int hauteur, double echelle) {
    Interne& p = *interne_;
    p.image.largeur = std::max(1, largeur);
    p.image.hauteur = std::max(1, hauteur);
    p.image.pixels.assign(static_cast<std::size_t>(p.image.largeur) * static_cast<std::size_t>(p.image.hauteur), 0);
    p.echelle = echelle > 0 ? echelle : 1;
    p.tout_a_peindre = true;
}

std::span<const Zone> Peintre::peint(std::span<Forme* const> pile, const Appui& appui) {
    Interne& p = *interne_;
    p.liste.clear();
    compose(pile, appui, p.image.largeur, p.image.hauteur, p.echelle, p.liste);
    p.zones = p.tout_a_peindre ? std::vector<Zone>{p.ecran()} : p.compare();
    for (const Zone& z : p.zones) p.repeint(z);
    std::swap(p.liste, p.derniere);
    p.tout_a_peindre = false;
    return p.zones;
}

void Peintre::oublie() {
    interne_->tout_a_peindre = true;
}
const Image& Peintre::image() const {
    return interne_->image;
}
double Peintre::echelle() const {
    return interne_->echelle;
}

}  // namespace ecran
