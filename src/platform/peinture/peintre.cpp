#include "platform/peinture/peintre.h"

#include <algorithm>
#include <array>
#include <new>
#include <utility>

#include "platform/peinture/elements.h"

namespace ecran {
namespace {

constexpr std::size_t zones_max = 12;
/// Two zones are painted as one when that is at most so many hundredths of both: keys that stand side by side are.
constexpr int surcout_max = 110;
/// Painting goes on by bands of about this many pixels, which stay in the processor's cache from the ground to the
/// text.
constexpr int pixels_par_bande = 1 << 16;
/// One picture is in view, the others are some before it that a finger was on: this share of the screen makes the
/// change from one to another. Where a dialog closes or a page comes back, little or nothing is left to paint.
constexpr int part_d_un_autre_tableau = 4;
/// What differs less from what is to be seen than this share of the screen is nearly that already.
constexpr int part_de_ressemblance = 2;

std::int64_t surface(const Zone& z) {
    return z.vide() ? 0 : static_cast<std::int64_t>(z.droite - z.gauche) * (z.bas - z.haut);
}

std::int64_t surface(std::span<const Zone> zones) {
    std::int64_t somme = 0;
    for (const Zone& z : zones) somme += surface(z);
    return somme;
}

/// Zones to paint; two become one when that is hardly dearer than both.
class Salissures {
  public:
    explicit Salissures(const Zone& ecran) : ecran_(ecran) {}

    void ajoute(Zone z) {
        z = intersection(z, ecran_);
        const auto contient = [&](const Zone& ensemble) { return intersection(ensemble, z) == z; };
        if (z.vide() || std::any_of(zones_.rbegin(), zones_.rend(), contient)) return;
        for (std::size_t i = 0; i < zones_.size();) {
            const Zone ensemble = reunion(zones_[i], z);
            if (surface(ensemble) > (surface(zones_[i]) + surface(z)) * surcout_max / 100) {
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

bool se_touchent(const Zone& a, const Zone& b) {
    return a.gauche < b.droite && b.gauche < a.droite && a.haut < b.bas && b.haut < a.bas;
}

/// What is to be painted in a zone: from the last one that hides all below it, the shapes that no caption or picture
/// lies under, then the rest, both in their order. Whatever number of keys stand side by side, most rows of the shapes
/// are like the one above them.
struct Couches {
    std::vector<const Element*> fond, dessus;
};

/// A picture, and what is to be seen on it.
struct Tableau {
    explicit Tableau(std::pmr::memory_resource* memoire) : image{0, 0, std::pmr::vector<std::uint32_t>(memoire)} {}

    Image image;
    std::vector<Element> liste;
    bool peint = false;   ///< otherwise its pixels mean nothing
    bool touche = false;  ///< a finger was on it: it may come back
    std::int64_t vu = 0;  ///< the turn at which it was in view last, 0: not yet

    Zone entier() const { return {0, 0, image.largeur, image.hauteur}; }
    /// Where a new list differs from its own.
    std::vector<Zone> differences(const std::vector<Element>& neuve) const;
    /// The surface of all elements that are on it or in a new list alone, where they overlap more than once: roughly
    /// what there is to paint.
    std::int64_t ecart(const std::vector<Element>& neuve) const;
    /// Gives the image its pixels; false when there is no memory for them.
    bool reserve() {
        try {
            if (image.pixels.empty()) image.pixels.resize(static_cast<std::size_t>(surface(entier())));
        } catch (const std::bad_alloc&) {
            return false;
        }
        return true;
    }
    Couches separe(const Zone& z) const;
    void peint_bande(const Couches& couches, const Zone& z);
    void peint_zone(const Zone& z);
    void peint_neuve(std::vector<Element>& neuve, std::span<const Zone> zones);
    bool recouvre(const Tableau& dessous, std::vector<Element>& neuve);
};

/// Both lists are in the order of their elements' places, so that one walk along the two pairs each element with what
/// stood in its place before. Tells of each one that has no like.
template <typename Action>
void compare(const std::vector<Element>& avant, const std::vector<Element>& apres, const Action& differe) {
    auto a = avant.begin(), b = apres.begin();
    while (a != avant.end() || b != apres.end()) {
        const bool seul_avant = b == apres.end() || (a != avant.end() && a->ordre < b->ordre);
        const bool seul_apres = a == avant.end() || (b != apres.end() && b->ordre < a->ordre);
        if (seul_avant || seul_apres || a->empreinte != b->empreinte) {
            if (!seul_apres) differe(a->zone);
            if (!seul_avant) differe(b->zone);
        }
        if (!seul_apres) ++a;
        if (!seul_avant) ++b;
    }
}

std::vector<Zone> Tableau::differences(const std::vector<Element>& neuve) const {
    if (!peint) return {entier()};
    Salissures sales(entier());
    compare(liste, neuve, [&](const Zone& z) { sales.ajoute(z); });
    return std::move(sales).zones();
}

std::int64_t Tableau::ecart(const std::vector<Element>& neuve) const {
    if (!peint) return surface(entier());
    std::int64_t somme = 0;
    compare(liste, neuve, [&](const Zone& z) { somme += surface(intersection(z, entier())); });
    return somme;
}

Couches Tableau::separe(const Zone& z) const {
    auto premier = liste.begin();
    for (auto e = liste.begin(); e != liste.end(); ++e) {
        if (e->couvre() && intersection(e->zone, z) == z) premier = e;
    }
    Couches c;
    for (auto e = premier; e != liste.end(); ++e) {
        const auto touche = [&](const Element* autre) { return se_touchent(autre->zone, e->zone); };
        if (!se_touchent(e->zone, z)) continue;
        const bool libre = !e->est_ecrit() && std::none_of(c.dessus.begin(), c.dessus.end(), touche);
        (libre ? c.fond : c.dessus).push_back(&*e);
    }
    return c;
}

/// A row that looks like the one above it is a copy.
void peint_fond(const std::vector<const Element*>& formes, Toile toile) {
    const Zone& z = toile.coupe();
    std::vector<std::uint8_t> neufs(static_cast<std::size_t>(z.bas - z.haut));
    for (const Element* e : formes) marque_rangs(*e, z.haut, neufs);
    for (auto rang = neufs.begin(); rang != neufs.end();) {
        const auto copies = std::find(rang + 1, neufs.end(), 0), suite = std::find(copies, neufs.end(), 1);
        const auto y = [&](auto place) { return z.haut + static_cast<int>(place - neufs.begin()); };
        const Toile rangs = toile.coupee({z.gauche, y(rang), z.droite, y(copies)});
        for (const Element* e : formes)
            if (se_touchent(e->zone, rangs.coupe())) dessine(*e, rangs);
        toile.repete(y(copies) - 1, y(suite));
        rang = suite;
    }
}

void Tableau::peint_bande(const Couches& couches, const Zone& z) {
    const Toile toile(image, z);
    peint_fond(couches.fond, toile);
    for (const Element* e : couches.dessus)
        if (se_touchent(e->zone, z)) dessine(*e, toile);
}

template <typename Action>
void par_bandes(const Zone& z, const Action& peint) {
    const int rangs = std::max(16, pixels_par_bande / std::max(1, z.droite - z.gauche));
    for (int haut = z.haut; haut < z.bas; haut += rangs)
        peint({z.gauche, haut, z.droite, std::min(haut + rangs, z.bas)});
}

void Tableau::peint_zone(const Zone& z) {
    const Couches couches = separe(z);
    par_bandes(z, [&](const Zone& bande) { peint_bande(couches, bande); });
}

/// Takes over a list, and paints the zones where it differs.
void Tableau::peint_neuve(std::vector<Element>& neuve, std::span<const Zone> zones) {
    std::swap(liste, neuve);
    for (const Zone& z : zones) peint_zone(z);
    peint = true;
}

/// Takes over a list that ends with elements which have come upon another picture, or upon this one: that is copied,
/// and they are painted upon it. False, and nothing is done, where none has come, or where they hide much of the rest
/// or much of it has changed as well.
bool Tableau::recouvre(const Tableau& dessous, std::vector<Element>& neuve) {
    const std::int64_t beaucoup = surface(entier()) / part_de_ressemblance;
    const auto venue = [&](const Element& e) { return e.ordre > dessous.liste.back().ordre; };
    const auto premiere = std::find_if(neuve.begin(), neuve.end(), venue);
    const auto cache = [&](const Element& e) { return e.couvre() && surface(e.zone) > beaucoup; };
    if (premiere == neuve.end() || std::any_of(premiere, neuve.end(), cache)) return false;
    std::vector<Element> reste(neuve.begin(), premiere);
    const std::vector<Zone> changees = dessous.differences(reste);
    if (surface(changees) > beaucoup) return false;
    if (&dessous != this) image.pixels = dessous.image.pixels;
    peint_neuve(reste, changees);
    par_bandes(entier(), [&](const Zone& bande) {
        const Toile toile(image, bande);
        for (const Element& e : std::span(premiere, neuve.end()))
            if (se_touchent(e.zone, bande)) dessine(e, toile);
    });
    std::swap(liste, neuve);
    return true;
}

}  // namespace

struct Peintre::Interne {
    explicit Interne(std::pmr::memory_resource* memoire)
        : tableaux{Tableau{memoire}, Tableau{memoire}, Tableau{memoire}} {}

    std::array<Tableau, 3> tableaux;  ///< enough for a page, the one before it and a dialog
    Tableau* montre = tableaux.data();
    std::int64_t tour = 0;
    double echelle = 1;
    std::vector<Element> liste;  ///< in the making
    std::vector<Zone> zones;

    /// Where the list is painted when much of the screen changes: upon a picture that shows nearly that, or else upon
    /// the one in view if it is not worth keeping, or the one that went out of view first.
    Tableau& choisit() {
        Tableau *proche = montre, *ancien = montre;
        std::int64_t moindre = montre->ecart(liste);
        for (Tableau& t : tableaux) {
            const std::int64_t ecart = t.ecart(liste);
            if (ecart < moindre) proche = &t;
            moindre = std::min(moindre, ecart);
            if (t.vu < ancien->vu) ancien = &t;
        }
        if (moindre < surface(montre->entier()) / part_de_ressemblance) return *proche;
        return montre->touche ? *ancien : *montre;
    }

    /// Another picture comes into view. Where there is no memory for one, the one in view has to do.
    void change_de_tableau() {
        Tableau& autre = choisit();
        if (!autre.reserve()) return;
        if (!montre->touche) montre->vu = 0;
        montre = &autre;
        montre->touche = false;
    }

    /// Takes the list over, upon the picture in view or upon another one.
    void repeint(bool avec_un_doigt) {
        zones = montre->differences(liste);
        const Tableau* avant = montre;
        if (montre->peint && surface(zones) > surface(montre->entier()) / part_d_un_autre_tableau) change_de_tableau();
        if (!montre->reserve()) throw std::bad_alloc();
        const std::vector<Zone> a_peindre = montre == avant ? zones : montre->differences(liste);
        montre->touche = montre->touche || avec_un_doigt;
        montre->vu = ++tour;
        const bool presque_tout = avant->peint && surface(a_peindre) > surface(montre->entier()) / part_de_ressemblance;
        if (!presque_tout || !montre->recouvre(*avant, liste)) montre->peint_neuve(liste, a_peindre);
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

void Peintre::prepare() {
    const Tableau& montre = *interne_->montre;
    Zone formes;  // but for the ground below them all
    for (const Element& e : std::span(montre.liste).subspan(std::min<std::size_t>(1, montre.liste.size())))
        formes = reunion(formes, e.zone);
    if (surface(formes) <= surface(montre.entier()) / part_d_un_autre_tableau) return;
    const auto sans_pixels = [](const Tableau& t) { return t.image.pixels.empty(); };
    const auto t = std::ranges::find_if(interne_->tableaux, sans_pixels);
    if (t != interne_->tableaux.end()) static_cast<void>(t->reserve());  // tried again when it is needed
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
