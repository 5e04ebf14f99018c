// All screens at the sizes that tablets have, in the order of the manual's pictures and of the contact sheets: no
// caption leaves its key or lies under something else, and a finger that slides off a key does nothing.
#include <cmath>
#include <deque>
#include <set>

#include "atelier.h"
#include "data/catalogue.h"
#include "main_screen/form1.h"
#include "platform/ecran/boucle.h"
#include "platform/peinture/composition.h"
#include "platform/rejeu/rejeu.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/locale.h"
#include "platform/systeme/ouvrier.h"
#include "platform/systeme/texte.h"

namespace {

using namespace ecran;
using Sorte = Evenement::Sorte;
namespace fs = std::filesystem;

const fs::path sources = fs::absolute(SOURCES);  // before any test goes elsewhere, perhaps to another drive

/// What a caption blackens.
Zone encre(const Element& e) {
    Zone tout;
    parcourt_lignes(e, [&](const LignePeinte& l) {
        float x = l.x;
        unsigned char avant = 0;
        for (const char c : l.texte) {
            const auto octet = static_cast<unsigned char>(c);
            x += crenage(e.police, l.taille, avant, octet);
            const Glyphe& g = glyphe(e.police, l.taille, point_peint(octet));
            const int gauche = static_cast<int>(std::floor(x)) + g.gauche, haut = std::lround(l.y) + g.haut;
            const Zone z = {gauche, haut, gauche + g.largeur, haut + g.hauteur};
            if (!z.vide()) tout = tout.vide() ? z : reunion(tout, z);
            x += g.avance;
            avant = octet;
        }
    });
    return tout;
}

class Oeil final : public Pilote {
  public:
    explicit Oeil(const std::string& scenario) : rejeu_(scenario, ".") {}

    Evenement prochain() override {
        regarde();
        if (gestes_.empty() && !avant_.empty()) {
            EXPECT_EQ(empreintes(), avant_) << "a finger that slid off has changed " << nom_;
            avant_.clear();
        }
        if (gestes_.empty() && !pose_ && vus_.insert(nom_).second) glisse_partout();
        const Evenement e = gestes_.empty() ? rejeu_.prochain() : gestes_.front();
        if (!gestes_.empty()) gestes_.pop_front();
        pose_ = e.sorte == Sorte::appui || (pose_ && e.sorte != Sorte::relache);
        return e;
    }
    void juge() const {
        EXPECT_EQ(rejeu_.statut(), rejeu::tout_tient);
        EXPECT_GE(vus_.size(), 20U);
    }

  private:
    rejeu::Rejeu rejeu_;
    std::vector<Element> liste_;  ///< of the form on top
    std::string nom_;
    std::deque<Evenement> gestes_;
    std::vector<std::uint64_t> avant_;
    std::set<std::string> vus_;
    bool pose_ = false;

    std::vector<std::uint64_t> empreintes() const {
        std::vector<std::uint64_t> r;
        for (const Element& e : liste_) r.push_back(e.empreinte);
        return r;
    }

    void regarde() {
        Forme* pile[] = {forme_du_dessus()};
        const Controle* titre = pile[0]->cherche("label_haut");
        nom_ = pile[0]->nom + " " + (titre != nullptr ? texte::vers_utf8(titre->aspect.texte) : "");
        liste_.clear();
        compose(pile, {}, largeur_ecran() / twips_par_pixel, hauteur_ecran() / twips_par_pixel, 1, liste_);
        if (etat::service && pile[0]->nom == "Form1") return;  // the technician's buttons lie upon the main screen
        for (auto e = liste_.begin(); e != liste_.end(); ++e) {
            if (e->sorte == Element::Sorte::texte) examine(*e, {e + 1, liste_.end()});
        }
    }

    /// What a caption stands on: the ground of its key or cell, else what it may blacken.
    Zone touche_de(const Element& e) const {
        for (const Element& f : liste_) {
            const auto part = static_cast<Part>(f.ordre & 0xFF);
            if (f.ordre >> 8 == e.ordre >> 8 && (part == Part::bord || part == Part::fond)) return f.zone;
        }
        return e.zone;
    }
    /// A row of a list may be cut at the list's lower edge.
    static bool est_coupee(const Zone& touche) {
        const Forme& f = *forme_du_dessus();
        return std::any_of(f.controles.begin(), f.controles.end(), [&](const auto& c) {
            const int bas = (f.cadre.haut + c->cadre.bas()) / twips_par_pixel;
            return c->visible && c->grille.defile && std::abs(bas - touche.bas) <= 2;
        });
    }

    void examine(const Element& e, std::span<const Element> apres) const {
        const Zone z = encre(e), touche = touche_de(e), vu = intersection(z, e.zone);
        if (z.vide()) return;
        EXPECT_TRUE(est_coupee(touche) ||
                    (intersection(z, retreci(touche, -1)) == z && intersection(z, retreci(e.zone, -1)) == z))
            << nom_ << ": " << texte::vers_utf8(e.texte) << " leaves its key";
        for (const Element& a : apres) {
            const bool plein = a.sorte == Element::Sorte::aplat || a.sorte == Element::Sorte::rond;
            const Zone dessus = plein ? a.zone : a.sorte == Element::Sorte::texte ? encre(a) : Zone{};
            EXPECT_TRUE(dessus.vide() || intersection(dessus, vu).vide())
                << nom_ << ": " << texte::vers_utf8(e.texte) << " lies under " << texte::vers_utf8(a.texte);
        }
    }

    /// What is touched shows it as long as the finger lies there.
    void se_montre_pressee(Controle& c, int ligne, int colonne) const {
        Forme* pile[] = {forme_du_dessus()};
        std::vector<Element> pressee;
        compose(pile, {pile[0], {&c, ligne, colonne}}, largeur_ecran() / twips_par_pixel,
                hauteur_ecran() / twips_par_pixel, 1, pressee);
        const auto pareil = [](const Element& a, const Element& b) { return a.empreinte == b.empreinte; };
        EXPECT_FALSE(std::equal(pressee.begin(), pressee.end(), liste_.begin(), liste_.end(), pareil))
            << nom_ << ": " << c.nom << " " << ligne << " " << colonne << " shows no finger";
    }

    /// Presses every key and cell that is shown, and leaves the form before letting go.
    void glisse_partout() {
        const Forme& f = *forme_du_dessus();
        const int dehors = f.cadre.droite() / twips_par_pixel + 1;
        for (const auto& c : f.controles) {
            if (!c->visible || !c->reagit() || c->au_glisse) continue;
            const Grille& g = c->grille;
            for (int i = 0; i < (c->est_grille() ? g.lignes * g.colonnes : 1); ++i) {
                const Cadre z = c->est_grille() ? cadre_cellule(*c, i / g.colonnes, i % g.colonnes) : c->cadre;
                if (z.largeur <= 0 || z.hauteur <= 0) continue;
                const int x = (f.cadre.gauche + z.gauche + z.largeur / 2) / twips_par_pixel;
                const int y = (f.cadre.haut + z.haut + z.hauteur / 2) / twips_par_pixel;
                const int ligne = c->est_grille() ? i / g.colonnes : -1,
                          colonne = c->est_grille() ? i % g.colonnes : -1;
                const bool en_vue = f.visible && z.hauteur >= g.hauteur_ligne;
                if (en_vue && (c->au_toucher || (c->a_la_cellule && !g.cellule(ligne, colonne).texte.empty())))
                    se_montre_pressee(*c, ligne, colonne);
                for (const Sorte s : {Sorte::appui, Sorte::glisse, Sorte::relache})
                    gestes_.push_back({s, s == Sorte::appui ? x : dehors, y});
            }
        }
        avant_ = empreintes();
    }
};

class Ecrans : public tests::Atelier, public testing::WithParamInterface<std::tuple<std::pair<int, int>, std::string>> {
  protected:
    Ecrans() {
        fs::copy(sources / "demo", terrain.chemin(), fs::copy_options::recursive);
        locale_systeme::simule('.');
        horloge::rend_virtuelle({});
        ouvrier::attend_toujours(true);
    }
    ~Ecrans() override {
        etat::service = false;
        ouvrier::attend_toujours(false);
        horloge::rend_reelle();
    }
};

TEST_P(Ecrans, ChaqueLegendeEstSurSaToucheEtUnDoigtQuiGlisseNeFaitRien) {
    const auto [taille, nom] = GetParam();
    char format[20];
    std::snprintf(format, sizeof format, "#I#0:%05d:%05d", taille.first, taille.second);
    terrain.regle(reglages::record_resolution, format);
    std::string scenario;
    const std::string lu = terrain.lis((sources / "docs" / nom).string());
    for (const std::string_view l : texte::lignes(lu))
        if (!l.starts_with("capture ")) scenario += std::string(l) + "\n";
    terrain.pose("scenario.txt", scenario);
    programme_touches::prepare();
    catalogue::catalogue_charge = false;
    Oeil oeil("scenario.txt");
    ouvre_ecran(cree_fenetre_muette(taille.first, taille.second), &oeil);
    EXPECT_THROW(form1::montre_form1(), FinDuProgramme);
    ferme_ecran();
    oeil.juge();
}
INSTANTIATE_TEST_SUITE_P(Tablettes, Ecrans,
                         testing::Combine(testing::Values(std::pair(1280, 770), std::pair(800, 800),
                                                          std::pair(1024, 768), std::pair(1920, 1080),
                                                          std::pair(1024, 570), std::pair(554, 770)),
                                          testing::Values("captures.txt", "planches.txt")));

}  // namespace
