#include "platform/peinture/peintre.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/peinture/elements.h"

namespace ecran {
namespace {

constexpr std::size_t zones_max = 12;
/// Painting goes on by bands of about this many pixels, which stay in the processor's cache from the ground to the
/// text.
constexpr int pixels_par_bande = 1 << 16;
/// Of the two pictures one is in view, the other is one before it that a finger was on: this share of the screen makes
/// the change from one to the other. Where a dialog closes or a page comes back, little or nothing is left to paint.
constexpr int part_d_un_autre_tableau = 4;

std::int64_t surface(const Zone& z) {
    return z.vide() ? 0 : static_cast<std::int64_t>(z.droite - z.gauche) * (z.bas - z.haut);
}

std::int64_t surface(std::span<const Zone> zones) {
    std::int64_t somme = 0;
    for (const Zone& z : zones) somme += surface(z);
    return somme;
}

/// Zones to paint; two become one when that is no dearer than both.
class Salissures {
  public:
    explicit Salissures(const Zone& ecran) : ecran_(ecran) {}

    void ajoute(Zone z) {
        z = intersection(z, ecran_);
        const auto contient = [&](const Zone& ensemble) { return intersection(ensemble, z) == z; };
        if (z.vide() || std::any_of(zones_.rbegin(), zones_.rend(), contient)) return;
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

/// A picture, and what is to be seen on it.
struct Tableau {
    explicit Tableau(std::pmr::memory_resource* memoire) : image{0, 0, std::pmr::vector<std::uint32_t>(memoire)} {}

    Image image;
    std::vector<Element> liste;
    bool peint = false;   ///< otherwise its pixels mean nothing
    bool touche = false;  ///< a finger was on it: it may come back

    Zone entier() const { return {0, 0, image.largeur, image.hauteur}; }
    /// Where a new list differs from its own. Both are in the order of their elements' places, so that one walk along
    /// the two pairs each element with what stood in its place before.
    std::vector<Zone> differences(const std::vector<Element>& neuve) const;
    /// Gives the image its pixels.
    void reserve() {
        if (image.pixels.empty()) image.pixels.resize(static_cast<std::size_t>(surface(entier())));
    }
    void peint_bande(const Zone& z);
    void peint_zone(const Zone& z);
};

std::vector<Zone> Tableau::differences(const std::vector<Element>& neuve) const {
    if (!peint) return {entier()};
    Salissures sales(entier());
    auto n = neuve.begin(), d = liste.begin();
    while (n != neuve.end() || d != liste.end()) {
        if (d == liste.end() || (n != neuve.end() && n->ordre < d->ordre)) {
            sales.ajoute((n++)->zone);
        } else if (n == neuve.end() || d->ordre < n->ordre) {
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

void Tableau::peint_bande(const Zone& z) {
    const Toile toile(image, z);
    auto premier = liste.begin();
    for (auto e = liste.begin(); e != liste.end(); ++e) {
        if (e->couvre() && intersection(e->zone, z) == z) premier = e;
    }
    for (auto e = premier; e != liste.end(); ++e) {
        if (e->zone.haut < z.bas && e->zone.bas > z.haut) dessine(*e, toile);
    }
}

void Tableau::peint_zone(const Zone& z) {
    const int rangs = std::max(16, pixels_par_bande / std::max(1, z.droite - z.gauche));
    for (int haut = z.haut; haut < z.bas; haut += rangs) {
        peint_bande({z.gauche, haut, z.droite, std::min(haut + rangs, z.bas)});
    }
}

}  // namespace

struct Peintre::Interne {
    explicit Interne(std::pmr::memory_resource* memoire) : tableaux{Tableau{memoire}, Tableau{memoire}} {}

    std::array<Tableau, 2> tableaux;
    Tableau* montre = tableaux.data();
    double echelle = 1;
    std::vector<Element> liste;  ///< in the making
    std::vector<Zone> zones;

    /// Takes the list over, upon the picture in view, or upon the other one when much of the screen changes.
    void repeint(bool avec_un_doigt) {
        zones = montre->differences(liste);
        std::vector<Zone> a_peindre = zones;
        if (montre->peint && surface(zones) > surface(montre->entier()) / part_d_un_autre_tableau) {
            Tableau& autre = montre == tableaux.data() ? tableaux.back() : tableaux.front();
            std::vector<Zone> ailleurs = autre.differences(liste);
            if (montre->touche || surface(ailleurs) < surface(zones)) {
                montre = &autre;
                a_peindre = std::move(ailleurs);
            }
            montre->touche = false;
        }
        montre->touche = montre->touche || avec_un_doigt;
        montre->reserve();
        std::swap(montre->liste, liste);
        for (const Zone& z : a_peindre) montre->peint_zone(z);
        montre->peint = true;
    }
};

Peintre::Peintre(std::pmr::memory_resource* memoire) : interne_(new Interne(memoire)) {}
Peintre::~Peintre() {
    delete interne_;
}

void Peintre::dimensionne(int largeur, int hauteur, double echelle) {
    for (Tableau& t : interne_->tableaux) {
        t.image.largeur = std::max(1, largeur);
        t.image.hauteur = std::max(1, hauteur);
        t.image.pixels.clear();
        t.peint = false;
    }
    interne_->echelle = echelle > 0 ? echelle : 1;
}

std::span<const Zone> Peintre::peint(std::span<Forme* const> pile, const Appui& appui) {
    Interne& p = *interne_;
    p.liste.clear();
    const Image& image = p.montre->image;
    compose(pile, appui, image.largeur, image.hauteur, p.echelle, p.liste);
    p.repeint(appui.forme != nullptr);
    return p.zones;
}

void Peintre::oublie() {
    interne_->montre->peint = false;
}
const Image& Peintre::image() const {
    return interne_->montre->image;
}
double Peintre::echelle() const {
    return interne_->echelle;
}

}  // namespace ecran
