#include "platform/ecran/boucle.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "platform/systeme/horloge.h"
#include "platform/systeme/ouvrier.h"

namespace ecran {
namespace {

/// The one finger, from its press to its release.
struct Doigt {
    Forme* forme = nullptr;  ///< null: no finger down
    Touche touche;
    int x = 0, y = 0;            ///< where it came down, twips of the form
    int premiere_ligne = 0;      ///< first row of the grid at that moment
    std::int64_t maintien = -1;  ///< when the hold counts next, -1: it has, or the control has none
    std::int64_t repos = -1;     ///< when what its lifting will show is made ready, -1: it is
    int actes = 0;               ///< how often it has acted: then letting go does nothing
    bool dessus = false;         ///< still on what it pressed
    bool fait_defiler = false;   ///< it drags the list and touches nothing any more
};

/// A place on the screen, pixels.
struct Point {
    int x = 0, y = 0;
};

/// A touch that has put a form on the stack or taken one off: what comes down there right after is its bounce.
struct Bascule {
    Point point;
    std::int64_t instant = 0;
};

struct Ecran {
    explicit Ecran(std::unique_ptr<Fenetre> f) : fenetre(std::move(f)) {}

    std::unique_ptr<Fenetre> fenetre;
    Pilote* pilote = nullptr;
    Peintre peintre{fenetre->memoire()};
    TailleEcran taille;
    bool tourne = false;  ///< the screen has another size, and the bottom form has not been told yet
    std::vector<Forme*> pile;
    Doigt doigt;
    std::optional<Point> leve;       ///< where the finger was lifted, while what this does is under way
    std::optional<Bascule> bascule;  ///< the last one
    std::function<void()> reveil, fermeture, extinction, changement;
};

std::unique_ptr<Ecran> ecran;

/// A finger that moves further than this drags the list: 20 pixels of a 10-inch tablet.
constexpr int seuil_defilement = 300;
/// By then the pressed key has come to light, and hardly a finger has been lifted.
constexpr int repos_ms = 20;
/// A finger that bounces comes down again within this time and distance: 9 mm of such a tablet.
constexpr int duree_rebond_ms = 200, distance_rebond = 795;

int en_twips(int pixels) {
    return static_cast<int>(pixels * twips_par_pixel / ecran->peintre.echelle());
}

bool meme_taille(const TailleEcran& a, const TailleEcran& b) {
    return a.largeur == b.largeur && a.hauteur == b.hauteur && a.echelle == b.echelle;
}

/// A form that was laid out for a larger screen is painted smaller, so that a finger reaches all of it.
double echelle_utile() {
    const TailleEcran& t = ecran->taille;
    if (ecran->pile.empty()) return t.echelle;
    const Cadre& c = ecran->pile.front()->cadre;
    const auto au_plus = [](int pixels, int twips) {
        return static_cast<double>(pixels) * twips_par_pixel / std::max(1, twips);
    };
    return std::min({t.echelle, au_plus(t.largeur, c.droite()), au_plus(t.hauteur, c.bas())});
}

void dimensionne() {
    const double echelle = echelle_utile();
    if (echelle != ecran->peintre.echelle())
        ecran->peintre.dimensionne(ecran->taille.largeur, ecran->taille.hauteur, echelle);
}

void met_a_jour_image() {
    ecran->fenetre->laisse_peindre();
    dimensionne();
    const Doigt& d = ecran->doigt;
    Appui appui;
    if (d.forme != nullptr && d.dessus && !d.fait_defiler) appui = {d.forme, d.touche};
    const auto zones = ecran->peintre.peint(ecran->pile, appui);
    if (!zones.empty()) ecran->fenetre->montre(ecran->peintre.image(), zones);
}

void prend_taille(const TailleEcran& t) {
    if (meme_taille(t, ecran->taille)) return;
    ecran->taille = t;
    ecran->tourne = true;
    ecran->doigt = {};
    ecran->peintre.dimensionne(t.largeur, t.hauteur, echelle_utile());
}

/// What a handler hangs on may be gone when it returns: a copy is what runs.
template <typename Action, typename... Arguments>
void appelle(const Action& action, Arguments... arguments) {
    if (!action) return;
    const Action copie = action;
    copie(arguments...);
}

void suit_le_doigt(const Doigt& d, int x, int y) {
    const Controle& c = *d.touche.controle;
    appelle(c.au_glisse, x - c.cadre.gauche, y - c.cadre.haut);
}

/// A replay means each of its touches.
bool est_rebond(int x, int y) {
    const auto& b = ecran->bascule;
    if (ecran->pilote != nullptr || !b || horloge::millisecondes() - b->instant >= duree_rebond_ms) return false;
    return std::hypot(en_twips(x - b->point.x), en_twips(y - b->point.y)) <= distance_rebond;
}

void note_bascule() {
    if (ecran->leve) ecran->bascule = {*ecran->leve, horloge::millisecondes()};
}

void pose_doigt(int x, int y) {
    Forme* f = forme_du_dessus();
    if (f == nullptr || !f->visible || est_rebond(x, y)) return;
    ecran->bascule.reset();  // once it has been elsewhere, a finger comes back on purpose
    Doigt d;
    d.x = en_twips(x) - f->cadre.gauche;
    d.y = en_twips(y) - f->cadre.haut;
    d.touche = sous_le_doigt(*f, d.x, d.y);
    if (d.touche.controle == nullptr) return;
    d.forme = f;
    d.dessus = d.touche.controle->reagit();
    d.premiere_ligne = d.touche.controle->grille.premiere_ligne;
    const int tenue = d.touche.controle->duree_de_la_tenue();
    if (tenue >= 0) d.maintien = horloge::millisecondes() + tenue;
    if (ecran->fenetre->se_voit()) d.repos = horloge::millisecondes() + repos_ms;
    ecran->doigt = d;
    suit_le_doigt(d, d.x, d.y);
}

void fait_defiler(Doigt& d, int y) {
    Controle& c = *d.touche.controle;
    if (!c.est_grille() || !c.grille.defile) return;
    if (!d.fait_defiler && std::abs(y - d.y) < seuil_defilement) return;
    d.fait_defiler = true;
    const int pas = std::max(1, c.grille.hauteur_ligne + c.grille.espace);
    c.grille.premiere_ligne = d.premiere_ligne;
    c.grille.defile_de((d.y - y) / pas, c.cadre);
}

void glisse_doigt(int x_pixels, int y_pixels) {
    Doigt& d = ecran->doigt;
    if (d.forme == nullptr) return;
    const int x = en_twips(x_pixels) - d.forme->cadre.gauche;
    const int y = en_twips(y_pixels) - d.forme->cadre.haut;
    fait_defiler(d, y);
    d.dessus = d.touche.controle->reagit() && sous_le_doigt(*d.forme, x, y) == d.touche;
    if (!d.dessus) d.maintien = -1;
    suit_le_doigt(Doigt(d), x, y);
}

/// The key under a finger, as it is read.
struct Lue {
    Touche touche;
    std::string texte;
    int image = 0;
    bool operator==(const Lue&) const = default;
};

Lue lis(const Forme& f, int x, int y) {
    const Touche t = sous_le_doigt(f, x, y);
    if (t.controle == nullptr) return {t, {}};
    const Aspect& a = t.ligne >= 0 ? t.controle->grille.cellule(t.ligne, t.colonne) : t.controle->aspect;
    return {t, a.texte, a.image};
}

void leve_doigt(int x, int y) {
    glisse_doigt(x, y);
    const Doigt d = ecran->doigt;
    ecran->doigt = {};
    if (d.forme == nullptr || d.forme != forme_du_dessus() || !d.dessus || d.fait_defiler) return;
    ecran->leve = {x, y};
    Controle& c = *d.touche.controle;
    if (d.actes > 0 || (c.au_maintien && d.maintien < 0)) return;  // the hold has acted already
    const Lue avant = d.forme->tourne_des_pages ? lis(*d.forme, d.x, d.y) : Lue();
    if (c.est_grille() && d.touche.ligne >= 0) {
        c.grille.ligne = d.touche.ligne;
        c.grille.colonne = d.touche.colonne;
        appelle(c.a_la_cellule, d.touche.ligne, d.touche.colonne);
    }
    appelle(c.au_toucher);
    // Another page may have come under the finger: its bounce is not meant for that.
    const Forme& f = *d.forme;
    if (&f == forme_du_dessus() && f.tourne_des_pages && lis(f, d.x, d.y) != avant) note_bascule();
}

void presse_cle(Forme& f, Cle cle) {
    switch (cle) {
        case Cle::entree:
            return appelle(f.a_l_entree);
        case Cle::echappement:
            return appelle(f.a_l_echappement);
        case Cle::retour_arriere:
            return appelle(f.au_retour_arriere);
    }
}

void traite(const Evenement& e) {
    using Sorte = Evenement::Sorte;
    Forme* f = forme_du_dessus();
    if (f != nullptr && !f->visible) f = nullptr;  // not shown yet: it takes no keys
    switch (e.sorte) {
        case Sorte::rien:
            return;
        case Sorte::appui:
            return pose_doigt(e.x, e.y);
        case Sorte::glisse:
            return glisse_doigt(e.x, e.y);
        case Sorte::relache:
            return leve_doigt(e.x, e.y);
        case Sorte::perdu:
            ecran->doigt = {};
            return;
        case Sorte::caractere:
            if (f != nullptr) appelle(f->a_la_frappe, e.code);
            return;
        case Sorte::cle:
            if (f != nullptr) presse_cle(*f, e.cle);
            return;
        case Sorte::repeindre:
            prend_taille(ecran->fenetre->taille());
            return ecran->peintre.oublie();
        case Sorte::reveil:
            return appelle(ecran->reveil);
        case Sorte::fermeture:
            if (!ecran->fermeture) termine();
            return appelle(ecran->fermeture);
        case Sorte::extinction:
            return appelle(ecran->extinction);
        case Sorte::fin:
            appelle(ecran->extinction);
            termine();
        case Sorte::ecran_perdu:
            appelle(ecran->extinction);
            throw FinDuProgramme{FinDuProgramme::Cause::panne};
    }
}

/// A window that looks on says nothing to a replay but that it ends.
Evenement prochain_du_pilote() {
    while (ecran->fenetre->se_voit()) {
        const Evenement e = ecran->fenetre->attend(0);
        if (e.sorte == Evenement::Sorte::rien) break;
        if (e.sorte == Evenement::Sorte::fin || e.sorte == Evenement::Sorte::ecran_perdu) return e;
    }
    return ecran->pilote->prochain();
}

Evenement prochain_evenement() {
    if (ecran->pilote != nullptr) return prochain_du_pilote();
    const auto echeance = prochaine_echeance();
    if (echeance < 0) return ecran->fenetre->attend(-1);
    return ecran->fenetre->attend(static_cast<int>(std::max<std::int64_t>(0, echeance - horloge::millisecondes())));
}

/// The bottom form lays itself out anew for the screen as it is now, once no dialog lies on it.
void suit_l_ecran() {
    if (!ecran->tourne || ecran->pile.size() != 1) return;
    ecran->tourne = false;
    appelle(ecran->changement);
}

void un_tour() {
    ecran->leve.reset();
    ouvrier::traite_reponses();
    suit_l_ecran();
    for (const Forme* f : ecran->pile)
        if (f->avant_image) f->avant_image();
    if (ecran->fenetre->se_voit()) met_a_jour_image();
    traite(prochain_evenement());
    while (tire_minuterie(horloge::millisecondes())) continue;
}

/// A held key is touched twice a second or so at first, in the end as fast as a number can be read.
int pas_de_repetition(int actes) {
    return actes < 5 ? 250 : actes < 20 ? 100 : 40;
}

/// What a handler opens takes the finger away.
void tient_le_doigt() {
    Doigt& d = ecran->doigt;
    const Controle& c = *d.touche.controle;
    d.maintien = -1;
    if (c.a_la_tenue) {
        const auto copie = c.a_la_tenue;
        const bool agit = copie(d.touche.ligne, d.touche.colonne);
        ecran->doigt.actes = agit ? 1 : 0;
        return;
    }
    ++d.actes;
    if (c.se_repete && !c.se_repete()) return;
    if (c.se_repete) d.maintien = horloge::millisecondes() + pas_de_repetition(d.actes);
    appelle(c.se_repete ? c.au_toucher : c.au_maintien);
}

Minuterie* prochaine_minuterie() {
    Minuterie* choisie = nullptr;
    for (Forme* f : ecran->pile) {
        for (const auto& m : f->minuteries) {
            if (m->actif && (choisie == nullptr || m->echeance < choisie->echeance)) choisie = m.get();
        }
    }
    return choisie;
}

void ouvrier_reveille() {
    if (ecran && ecran->fenetre) ecran->fenetre->reveille();
}

bool est_chargee(const Forme& f) {
    return std::find(ecran->pile.begin(), ecran->pile.end(), &f) != ecran->pile.end();
}

/// Takes a form off the stack on every way out of its modal loop.
struct Charge {
    Forme& forme;
    explicit Charge(Forme& f) : forme(f) {
        if (!est_chargee(f)) charge(f);
    }
    ~Charge() {
        if (!ecran) return;
        std::erase(ecran->pile, &forme);
        note_bascule();
        if (ecran->doigt.forme == &forme) ecran->doigt = {};
    }
    Charge(const Charge&) = delete;
    Charge& operator=(const Charge&) = delete;
};

}  // namespace

void termine() {
    throw FinDuProgramme{};
}

void ouvre_ecran(std::unique_ptr<Fenetre> fenetre, Pilote* pilote) {
    ecran = std::make_unique<Ecran>(std::move(fenetre));
    ecran->pilote = pilote;
    prend_taille(ecran->fenetre->taille());
    ecran->tourne = false;
    ouvrier::previens_par(ouvrier_reveille);
}

void ferme_ecran() {
    ouvrier::previens_par({});
    ecran.reset();
}

int largeur_ecran() {
    return static_cast<int>(ecran->taille.largeur * twips_par_pixel / ecran->taille.echelle);
}
int hauteur_ecran() {
    return static_cast<int>(ecran->taille.hauteur * twips_par_pixel / ecran->taille.echelle);
}

Cadre vue() {
    const double twips = twips_par_pixel / echelle_utile();
    return {0, 0, static_cast<int>(ecran->taille.largeur * twips), static_cast<int>(ecran->taille.hauteur * twips)};
}

bool tourne_ecran(int largeur, int hauteur) {
    if (ecran->fenetre->se_voit()) return false;
    prend_taille({largeur, hauteur, ecran->taille.echelle});
    return true;
}

void charge(Forme& forme) {
    assert(!est_chargee(forme));
    ecran->pile.push_back(&forme);
    ecran->doigt = {};
    note_bascule();
}

void montre_modal(Forme& forme) {
    const Charge chargee(forme);
    while (!forme.fermee) un_tour();
}

void peint_maintenant() {
    if (ecran->fenetre->se_voit()) met_a_jour_image();
}

std::span<Forme* const> formes_chargees() {
    return ecran->pile;
}

Forme* forme_du_dessus() {
    return ecran->pile.empty() ? nullptr : ecran->pile.back();
}

Forme* forme_chargee(std::string_view nom) {
    for (auto i = ecran->pile.rbegin(); i != ecran->pile.rend(); ++i) {
        if ((*i)->nom == nom) return *i;
    }
    return nullptr;
}

void au_reveil(std::function<void()> action) {
    ecran->reveil = std::move(action);
}
void a_la_fermeture(std::function<void()> action) {
    ecran->fermeture = std::move(action);
}
void a_l_extinction(std::function<void()> action) {
    ecran->extinction = std::move(action);
}

void au_changement_d_ecran(std::function<void()> action) {
    ecran->changement = std::move(action);
}

const Image& image_courante() {
    met_a_jour_image();
    return ecran->peintre.image();
}

double echelle_courante() {
    dimensionne();
    return ecran->peintre.echelle();
}

bool tire_minuterie(std::int64_t jusqua) {
    Doigt& d = ecran->doigt;
    if (d.forme != nullptr && d.repos >= 0 && d.repos <= jusqua) {
        d.repos = -1;
        ecran->peintre.prepare();
        return true;
    }
    if (d.forme != nullptr && d.maintien >= 0 && d.maintien <= jusqua && d.dessus && !d.fait_defiler) {
        tient_le_doigt();
        return true;
    }
    Minuterie* m = prochaine_minuterie();
    if (m == nullptr || m->echeance > jusqua) return false;
    m->echeance += std::max(1, m->intervalle_ms);
    appelle(m->au_tic);
    return true;
}

std::int64_t prochaine_echeance() {
    std::int64_t proche = ouvrier::prochaine_echeance();
    const auto compte = [&](std::int64_t t) {
        if (t >= 0 && (proche < 0 || t < proche)) proche = t;
    };
    if (ecran->doigt.forme != nullptr) {
        compte(ecran->doigt.repos);
        compte(ecran->doigt.maintien);
    }
    if (const Minuterie* m = prochaine_minuterie(); m != nullptr) compte(m->echeance);
    return proche;
}

}  // namespace ecran
