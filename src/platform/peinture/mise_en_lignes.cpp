// How captions are broken into lines, shrunk and cut.
#include <algorithm>
#include <unordered_map>

#include "platform/peinture/polices.h"
#include "platform/systeme/texte.h"

namespace ecran {
namespace {

constexpr std::size_t mises_max = 4000;     ///< kept layouts; they are made anew beyond
constexpr std::size_t longueur_max = 2000;  ///< of a caption; more never fits a screen
constexpr float jambage = 0.15F;            ///< share of the em that a line box may stand over the room
constexpr std::string_view signes_doubles = "!?:;\xBB";
constexpr char suite = '\x85';  ///< "…" of the page 1252

/// A caption measured once for an em of 1; every size is a multiple.
class Mesure {
  public:
    Mesure(Police police, std::string_view t) : police_(police), texte_(t) {
        cumul_.reserve(t.size() + 1);
        float x = 0;
        cumul_.push_back(0);
        for (std::size_t i = 0; i < t.size(); ++i) {
            x += avance(police, 1, octet(i));
            if (i > 0) x += crenage(police, 1, octet(i - 1), octet(i));
            cumul_.push_back(x);
        }
        hauteur_ = metrique(police, 1).hauteur;
    }

    /// A piece of the caption, as positions within it.
    struct Morceau {
        std::size_t debut, fin;
    };

    float largeur(const Morceau& m) const {
        if (m.fin <= m.debut) return 0;
        const float attache = m.debut > 0 ? crenage(police_, 1, octet(m.debut - 1), octet(m.debut)) : 0;
        return cumul_[m.fin] - cumul_[m.debut] - attache;
    }
    std::string_view texte(const Morceau& m) const { return texte_.substr(m.debut, m.fin - m.debut); }
    Police police() const { return police_; }

    /// Lines no wider than `largeur` ems as far as words allow; a word that is too wide stands alone on its line.
    std::vector<Morceau> coupe(float largeur_max) const {
        std::vector<Morceau> lignes;
        for (const std::string_view p : texte::lignes(texte_)) {
            const auto debut = static_cast<std::size_t>(p.data() - texte_.data());
            coupe_paragraphe({debut, debut + p.size()}, largeur_max, lignes);
        }
        return lignes;
    }

    /// How many lines of a size fit a height.
    int lignes_possibles(int taille, const Place& place) const {
        const float ligne = hauteur_ * static_cast<float>(taille);
        const int n =
            static_cast<int>((static_cast<float>(place.hauteur) + jambage * static_cast<float>(taille)) / ligne);
        const bool une = place.taille_d_une_ligne > 0 && taille > place.taille_d_une_ligne;
        const int au_plus = une ? 1 : place.lignes_max;
        return au_plus > 0 ? std::min(n, au_plus) : n;
    }

    bool tient(const std::vector<Morceau>& lignes, int taille, const Place& place) const {
        const float largeur_max = static_cast<float>(place.largeur) / static_cast<float>(taille);
        return static_cast<int>(lignes.size()) <= lignes_possibles(taille, place) &&
               std::all_of(lignes.begin(), lignes.end(), [&](const Morceau& l) { return largeur(l) <= largeur_max; });
    }

  private:
    Police police_;
    std::string_view texte_;
    std::vector<float> cumul_;  ///< width of the first n characters
    float hauteur_ = 1;

    unsigned char octet(std::size_t i) const { return static_cast<unsigned char>(texte_[i]); }

    /// The end of a word, with the sign behind a blank that French sets after it: that begins no line where there is
    /// room.
    std::size_t fin_du_mot(std::size_t mot, std::size_t fin_max, float largeur_max) const {
        const std::size_t fin = std::min(texte_.find(' ', mot), fin_max), signe = fin + 1;
        const bool double_ = signe < fin_max && signes_doubles.find(texte_[signe]) != std::string_view::npos;
        const bool seul = double_ && (signe + 1 == fin_max || texte_[signe + 1] == ' ');
        return seul && largeur({mot, signe + 1}) <= largeur_max ? signe + 1 : fin;
    }

    /// Blanks at the beginning of a paragraph stay, those at the end of a line go.
    void coupe_paragraphe(Morceau p, float largeur_max, std::vector<Morceau>& lignes) const {
        while (p.fin > p.debut && texte_[p.fin - 1] == ' ') --p.fin;
        Morceau ligne = {p.debut, p.debut};
        for (std::size_t i = p.debut; i < p.fin;) {
            std::size_t mot = i;
            while (mot < p.fin && texte_[mot] == ' ') ++mot;
            const std::size_t fin = fin_du_mot(mot, p.fin, largeur_max);
            if (ligne.fin > ligne.debut && largeur({ligne.debut, fin}) > largeur_max) {
                lignes.push_back(ligne);
                ligne.debut = mot;
            }
            ligne.fin = i = fin;
        }
        lignes.push_back(ligne);
    }
};

/// The longest beginning that fits with "…" behind it.
std::string raccourci(std::string ligne, Police police, int taille, int largeur) {
    const auto trop_long = [&] { return largeur_texte(police, taille, ligne + suite) > static_cast<float>(largeur); };
    while (!ligne.empty() && (ligne.back() == ' ' || trop_long())) ligne.pop_back();
    return trop_long() ? ligne : ligne + suite;
}

/// Cuts what does not fit even at the smallest size.
void tronque(MiseEnLignes& m, const Mesure& mesure, const Place& place) {
    const auto possibles = static_cast<std::size_t>(std::max(1, mesure.lignes_possibles(m.taille, place)));
    const bool trop = m.lignes.size() > possibles;
    if (trop) m.lignes.resize(possibles);
    for (std::string& l : m.lignes) {
        const bool derniere = trop && &l == &m.lignes.back();
        if (derniere || largeur_texte(mesure.police(), m.taille, l) > static_cast<float>(place.largeur)) {
            l = raccourci(std::move(l), mesure.police(), m.taille, place.largeur);
        }
    }
}

MiseEnLignes calcule(Police police, int taille, std::string_view t, const Place& place) {
    const Mesure mesure(police, t.substr(0, longueur_max));
    const int minimale = std::clamp(std::min(taille, place.taille_minimale), 1, taille_max);
    MiseEnLignes m{std::clamp(taille, minimale, taille_max), {}};
    // A size far beyond the room needs no trial of each size in between.
    m.taille = std::max(minimale, std::min(m.taille, place.hauteur));
    for (;; --m.taille) {
        const auto lignes = mesure.coupe(static_cast<float>(place.largeur) / static_cast<float>(m.taille));
        const bool tient = mesure.tient(lignes, m.taille, place);
        if (!tient && m.taille > minimale) continue;
        for (const auto& l : lignes) m.lignes.emplace_back(mesure.texte(l));
        if (!tient) tronque(m, mesure, place);
        return m;
    }
}

}  // namespace

const MiseEnLignes& met_en_lignes(Police police, int taille, std::string_view t, const Place& place) {
    static std::unordered_map<std::string, MiseEnLignes> faites;
    static std::string cle;
    cle.assign(t);
    for (const int n : {static_cast<int>(police), taille, place.largeur, place.hauteur, place.lignes_max,
                        place.taille_minimale, place.taille_d_une_ligne}) {
        cle.append(reinterpret_cast<const char*>(&n), sizeof n);
    }
    if (const auto i = faites.find(cle); i != faites.end()) return i->second;
    if (faites.size() >= mises_max) faites.clear();
    return faites.emplace(cle, calcule(police, taille, t, place)).first->second;
}

}  // namespace ecran
