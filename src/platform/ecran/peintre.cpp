#include "platform/ecran/peintre.h"

#include <algorithm>
#include <utility>

#include "platform/ecran/elements.h"
#include "platform/ecran/toile.h"

namespace ecran {
namespace {

constexpr std::size_t zones_max = 12;

std::int64_t surface(const Zone& z) {
    return z.vide() ? 0 : static_cast<std::int64_t>(z.droite - z.gauche) * (z.bas - z.haut);
}

/// Zones to paint: two become one only when that is no dearer than both.
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
        if (zones_.size() > zones_max) tout();
    }

    void tout() { zones_ = {ecran_}; }
    std::vector<Zone> zones() && { return std::move(zones_); }

  private:
    Zone ecran_;
    std::vector<Zone> zones_;
};

}  // namespace

struct Peintre::Interne {
    Image image;
    double echelle = 1;
    bool tout_a_peindre = true;
    std::vector<Element> liste, derniere;
    std::vector<Zone> zones;

    Zone ecran() const { return {0, 0, image.largeur, image.hauteur}; }

    /// Where the new list differs from the last one, between their common beginning and their common end.
    std::vector<Zone> compare() const {
        Salissures sales(ecran());
        if (tout_a_peindre) {
            sales.tout();
            return std::move(sales).zones();
        }
        const std::size_t n = liste.size(), m = derniere.size();
        if (n == m) {
            for (std::size_t i = 0; i < n; ++i) {
                if (liste[i] == derniere[i]) continue;
                sales.ajoute(derniere[i].zone);
                sales.ajoute(liste[i].zone);
            }
            return std::move(sales).zones();
        }
        std::size_t debut = 0, fin = 0;
        while (debut < std::min(n, m) && liste[debut] == derniere[debut]) ++debut;
        while (fin < std::min(n, m) - debut && liste[n - 1 - fin] == derniere[m - 1 - fin]) ++fin;
        for (std::size_t i = debut; i < m - fin; ++i) sales.ajoute(derniere[i].zone);
        for (std::size_t i = debut; i < n - fin; ++i) sales.ajoute(liste[i].zone);
        return std::move(sales).zones();
    }

    void repeint(const Zone& z) {
        Toile toile(image, z);
        std::size_t premier = 0;
        for (std::size_t i = 0; i < liste.size(); ++i) {
            if (liste[i].est_opaque() && intersection(liste[i].zone, z) == z) premier = i;
        }
        for (std::size_t i = premier; i < liste.size(); ++i) {
            if (!intersection(liste[i].zone, z).vide()) dessine(liste[i], toile);
        }
    }
};

Peintre::Peintre() : interne_(new Interne) {}
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
    fait_la_liste(pile, appui, p.image.largeur, p.image.hauteur, p.echelle, p.liste);
    p.zones = p.compare();
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
