// The painter: what is painted anew is the same as the whole painted anew, nothing leaves its key, every text can be
// read, and no form, however damaged, does harm.
#include "platform/peinture/peintre.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <set>
#include <string>

#include "platform/peinture/elements.h"
#include "platform/peinture/images.h"
#include "platform/peinture/polices.h"
#include "platform/systeme/texte.h"

namespace {

using namespace ecran;

constexpr int largeur = 320, hauteur = 240;
constexpr int px = twips_par_pixel;

constexpr Role roles[] = {Role::rien,    Role::papier,       Role::bandeau,  Role::carte,   Role::touche, Role::action,
                          Role::aller,   Role::detruire,     Role::attendre, Role::note,    Role::vide,   Role::entete,
                          Role::ligne,   Role::titre_groupe, Role::pastille, Role::choisie, Role::champ,  Role::boite,
                          Role::clavier, Role::touche_douce, Role::repos,    Role::compte};

class Hasard {
  public:
    explicit Hasard(unsigned graine) : suite_(graine) {}
    int entre(int a, int b) { return std::uniform_int_distribution<int>(a, b)(suite_); }
    bool pile() { return entre(0, 1) == 1; }
    template <typename T, std::size_t N>
    const T& un_de(const T (&t)[N]) {
        return t[static_cast<std::size_t>(entre(0, static_cast<int>(N) - 1))];
    }
    std::string texte() {
        std::string t;
        for (int n = entre(0, 30); n > 0; --n) t += static_cast<char>(entre(0, 5) == 0 ? ' ' : entre(33, 255));
        return t;
    }
    Aspect aspect() {
        Aspect a;
        a.role = un_de(roles);
        a.texte = texte();
        if (entre(0, 3) == 0) a.image = entre(1, nb_images - 1);
        if (entre(0, 3) == 0) a.fond = palette::chiffres[entre(0, 9)];
        if (entre(0, 5) == 0) a.encre = palette::bleu;
        a.police = entre(0, 40);
        a.gras = pile();
        a.alignement = static_cast<Alignement>(entre(0, 2));
        a.place_image = static_cast<PlaceImage>(entre(0, 2));
        a.marge_haut = entre(0, 3) == 0 ? entre(0, 20 * px) : 0;
        if (entre(0, 5) == 0) a.marge_gauche = a.marge_droite = entre(0, 30 * px);
        a.trait = pile();
        return a;
    }
    Cadre cadre() {
        return {entre(-20, largeur) * px, entre(-20, hauteur) * px + entre(0, 14), entre(0, 200) * px,
                entre(0, 150) * px + entre(0, 14)};
    }

  private:
    std::mt19937 suite_;
};

void remplit_grille(Hasard& h, Controle& c) {
    Grille& g = c.grille;
    g.dimensionne(h.entre(1, 9), h.entre(1, 4));
    for (Aspect& a : g.cellules) a = h.aspect();
    g.espace = h.pile() ? rythme : 0;
    g.hauteur_ligne = h.pile() ? h.entre(8, 40) * px : 0;
    if (h.entre(0, 3) == 0) g.hauteurs.assign(static_cast<std::size_t>(g.lignes), h.entre(5, 40) * px);
    g.lignes_fixes = g.hauteur_ligne > 0 ? h.entre(0, 1) : 0;
    g.defile = h.pile();
    g.reglee = h.pile();
    g.premiere_ligne = g.hauteur_ligne > 0 ? h.entre(0, g.lignes - 1) : 0;
    if (h.pile()) g.largeurs.assign(static_cast<std::size_t>(g.colonnes), h.entre(0, 60) * px);
    if (g.colonnes == 1) g.flots = h.entre(1, 2);
}

void remplit(Hasard& h, Forme& f) {
    constexpr Genre genres[] = {Genre::etiquette, Genre::image, Genre::champ,  Genre::bouton,
                                Genre::case_,     Genre::forme, Genre::grille, Genre::liste};
    f.cadre = {h.entre(0, 40) * px, h.entre(0, 40) * px, h.entre(50, largeur) * px, h.entre(50, hauteur) * px};
    f.role = h.pile() ? Role::papier : h.pile() ? Role::boite : Role::clavier;
    f.voile = h.pile();
    for (int i = 0; i < 8; ++i) {
        Controle& c = f.ajoute({"c", i, h.un_de(genres), h.cadre(), ""});
        c.aspect = h.aspect();
        c.curseur = h.entre(-1, 40);
        c.coche = h.pile();
        if (c.est_grille()) remplit_grille(h, c);
    }
}

/// Changes one thing, as a screen does between two turns.
void change(Hasard& h, Forme& f, Appui& appui) {
    Controle& c = *f.controles[static_cast<std::size_t>(h.entre(0, static_cast<int>(f.controles.size()) - 1))];
    const int l = c.est_grille() ? h.entre(0, c.grille.lignes - 1) : -1;
    const int k = c.est_grille() ? h.entre(0, c.grille.colonnes - 1) : -1;
    const std::function<void()> changements[] = {
        [&] { c.visible = !c.visible; },
        [&] { c.cadre = h.cadre(); },
        [&] { (l >= 0 ? c.grille.cellule(l, k) : c.aspect) = h.aspect(); },
        [&] { (l >= 0 ? c.grille.cellule(l, k) : c.aspect).texte = h.texte(); },
        [&] {
            appui = h.pile() ? Appui{&f, {&c, l, k}} : Appui{};
        },
        [&] { c.grille.defile_de(h.entre(-3, 3), c.cadre); },
        [&] { f.visible = h.entre(0, 3) != 0; },
    };
    h.un_de(changements)();
}

class Ecran {
  public:
    explicit Ecran(double echelle = 1) {
        peintre.dimensionne(static_cast<int>(largeur * echelle), static_cast<int>(hauteur * echelle), echelle);
    }
    std::vector<Zone> peint(std::vector<Forme*> pile, const Appui& appui = {}) {
        const auto zones = peintre.peint(pile, appui);
        return {zones.begin(), zones.end()};
    }
    const std::pmr::vector<std::uint32_t>& pixels() const { return peintre.image().pixels; }
    std::uint32_t pixel(int x, int y) const {
        return pixels()[static_cast<std::size_t>(y) * static_cast<std::size_t>(peintre.image().largeur) +
                        static_cast<std::size_t>(x)];
    }
    Peintre peintre;
};

bool dans(const Zone& z, int x, int y) {
    return x >= z.gauche && x < z.droite && y >= z.haut && y < z.bas;
}

/// A form of the whole screen.
Forme fond() {
    Forme f;
    f.cadre = {0, 0, largeur * px, hauteur * px};
    return f;
}

}  // namespace

TEST(Peintre, UnRepeintPartielVautUnRepeintEntier) {
    for (unsigned graine = 1; graine <= 25; ++graine) {
        Hasard h(graine);
        Forme dessous = fond(), dessus;
        remplit(h, dessous);
        remplit(h, dessus);
        std::vector<Forme*> pile = {&dessous};
        Appui appui;
        Ecran peu_a_peu(graine % 3 == 0 ? 1.5 : 1), entier(graine % 3 == 0 ? 1.5 : 1);
        for (int tour = 0; tour < 25; ++tour) {
            const auto avant = peu_a_peu.pixels();
            const auto zones = peu_a_peu.peint(pile, appui);
            entier.peintre.oublie();
            entier.peint(pile, appui);
            ASSERT_EQ(peu_a_peu.pixels(), entier.pixels()) << "graine " << graine << ", tour " << tour;
            const int large = peu_a_peu.peintre.image().largeur;
            const std::uint32_t *p = avant.data(), *apres = peu_a_peu.pixels().data();
            const auto nombre = static_cast<int>(std::min(avant.size(), peu_a_peu.pixels().size()));
            for (int i = 0; i < nombre; ++i) {
                if (p[i] == apres[i]) continue;
                const auto la = [&](const Zone& z) { return dans(z, i % large, i / large); };
                ASSERT_TRUE(std::any_of(zones.begin(), zones.end(), la)) << "pixel changé hors des zones annoncées";
            }
            for (int n = h.entre(0, 3); n > 0; --n) change(h, h.pile() ? dessous : dessus, appui);
            if (h.entre(0, 4) == 0) pile = pile.size() == 1 ? std::vector{&dessous, &dessus} : std::vector{&dessous};
            if (h.entre(0, 7) > 0) continue;
            const int l = largeur - h.entre(0, 40);  // the screen turns under the pictures that are kept
            for (Ecran* e : {&peu_a_peu, &entier}) e->peintre.dimensionne(l, hauteur, e->peintre.echelle());
        }
    }
}

/// A box comes upon pages that a finger was on, or not, and that change with it; what is kept of earlier ones resembles
/// them in some places.
TEST(Peintre, UneBoiteSePoseSurLaPage) {
    Forme page = fond(), boite;
    for (int i = 0; i < 8; ++i) {
        const Cadre cadre = {i * 39 * px, 0, 35 * px, 150 * px};
        page.ajoute({.nom = "b", .index = i, .genre = Genre::bouton, .cadre = cadre, .role = Role::touche});
    }
    boite.role = Role::boite;
    boite.voile = true;
    boite.cadre = {60 * px, 30 * px, 200 * px, 70 * px};
    Ecran e;
    const auto touche = [&](int i) { return page.controles[static_cast<std::size_t>(i)].get(); };
    for (int tour = 0; tour < 30; ++tour) {
        for (int n = 0; n <= tour % 5; ++n) {
            for (int i = 2; i < 8; ++i) touche(i)->aspect.fond = palette::chiffres[1 + (tour + n) % 7];
            e.peint({&page}, {&page, {touche(3), -1, -1}});
            e.peint({&page});
        }
        if (tour % 3 > 0) e.peint({&page}, {&page, {touche(tour % 3 * 5 - 5), -1, -1}});
        e.peint({&page, &boite});
        Ecran neuf;
        neuf.peint({&page, &boite});
        ASSERT_EQ(e.pixels(), neuf.pixels()) << "tour " << tour;
    }
    // Its shadow is darkest along its edge, and ends.
    const auto lumiere = [&](int y) { return contraste(static_cast<Couleur>(e.pixel(160, y)), palette::noir); };
    for (int y = 101; y < 140; ++y) EXPECT_LE(lumiere(y), lumiere(y + 1)) << y;
    EXPECT_GT(lumiere(140), lumiere(101) * 1.3);
}

TEST(Peintre, RienNeSortDUneTouche) {
    constexpr int ombre = 2;
    for (unsigned graine = 100; graine < 400; ++graine) {
        Hasard h(graine);
        Forme f = fond();
        Ecran e;
        e.peint({&f});
        Controle& c = f.ajoute({.nom = "b", .genre = Genre::bouton, .cadre = h.cadre()});
        c.aspect = h.aspect();
        if (!est_touche(c.aspect.role)) c.aspect.role = Role::touche;
        c.aspect.texte = h.pile() ? "Anticonstitutionnellement" : h.texte();
        e.peint({&f});
        const Zone touche = {c.cadre.gauche / px, c.cadre.haut / px, c.cadre.droite() / px + 1,
                             c.cadre.bas() / px + 1 + ombre};
        for (int y = 0; y < hauteur; ++y) {
            for (int x = 0; x < largeur; ++x) {
                ASSERT_TRUE(dans(touche, x, y) || e.pixel(x, y) == static_cast<std::uint32_t>(palette::papier))
                    << "graine " << graine << ", pixel " << x << ", " << y;
            }
        }
    }
}

TEST(Peintre, UneToucheChangeeNeSalitQuElle) {
    Forme f = fond();
    std::vector<Controle*> touches;
    for (int i = 0; i < 12; ++i) {
        const Cadre cadre = {(i % 4 * 80 + 5) * px, (i / 4 * 80 + 5) * px, 70 * px, 70 * px};
        touches.push_back(&f.ajoute({.nom = "b",
                                     .index = i,
                                     .genre = Genre::bouton,
                                     .cadre = cadre,
                                     .texte = "Touche",
                                     .role = Role::touche,
                                     .police = 12,
                                     .gras = true}));
    }
    Ecran e;
    e.peint({&f});
    EXPECT_TRUE(e.peint({&f}).empty()) << "rien n'a changé";

    const Zone cinq = {85, 85, 155, 157}, dix = {165, 165, 235, 237};
    const auto appuyee = e.peint({&f}, {&f, {touches[5], -1, -1}});
    EXPECT_EQ(appuyee, std::vector<Zone>{cinq});
    // The finger slides to another key while the first one's caption changes: both, and nothing between them.
    touches[5]->aspect.texte = "Autre";
    EXPECT_EQ(e.peint({&f}, {&f, {touches[10], -1, -1}}), (std::vector<Zone>{cinq, dix}));
    touches[5]->visible = false;
    EXPECT_EQ(e.peint({&f}, {&f, {touches[10], -1, -1}}), std::vector<Zone>{cinq});
    // A control that comes in below the others does not shift what lies above it.
    touches[0]->visible = false;
    e.peint({&f});
    touches[0]->visible = true;
    EXPECT_EQ(e.peint({&f}), (std::vector<Zone>{{5, 5, 75, 77}}));
}

TEST(Peintre, UneTouchePresseeSeVoit) {
    for (const Role role : roles) {
        if (!est_touche(role)) continue;
        Forme f = fond();
        Controle& c = f.ajoute({.nom = "b", .genre = Genre::bouton, .cadre = {600, 600, 3000, 1500}, .role = role});
        Ecran e;
        e.peint({&f});
        const auto avant = e.pixel(140, 90);
        e.peint({&f}, {&f, {&c, -1, -1}});
        EXPECT_GE(contraste(static_cast<Couleur>(avant), static_cast<Couleur>(e.pixel(140, 90))), 1.1)
            << "rôle " << static_cast<int>(role);
    }
}

/// Nine keys of ten decide, a mark does not, a key with a size of its own stands apart, and no page goes below seven
/// tenths of the size set.
TEST(Peintre, LesTouchesDUnePageOntUneTaille) {
    const auto tailles = [](std::vector<std::string_view> legendes, Role premiere = Role::touche) {
        Forme f = fond();
        legendes.resize(10, "Riz");
        for (const std::string_view t : legendes) {
            Aspect& a =
                f.ajoute({.nom = "btx", .genre = Genre::bouton, .cadre = {0, 0, 216 * px, 100 * px}, .texte = t})
                    .aspect;
            a = {.texte = a.texte, .role = premiere, .police = 30, .gras = true, .accord = true};
            premiere = Role::touche;
        }
        f.ajoute(
            {.nom = "btx", .genre = Genre::bouton, .cadre = {0, 0, 80 * px, 30 * px}, .texte = "Riz", .police = 15});
        f.controles.back()->aspect.accord = true;
        std::vector<Element> liste;
        Forme* pile[] = {&f};
        compose(pile, {}, largeur, hauteur, 1, liste);
        std::set<int> r;
        for (const Element& e : liste)
            if (!e.texte.empty()) r.insert(e.taille);
        return r;
    };
    const int seule = met_en_lignes(Police::grasse, 40, "Andouillette", {200, 92}).taille;
    ASSERT_TRUE(seule > 28 && seule < 40) << seule;
    EXPECT_EQ(tailles({"Anticonstitutionnellement"}), (std::set{20, 40}));
    EXPECT_EQ(tailles({"Andouillette", "Andouillette"}), (std::set{20, seule}));
    EXPECT_EQ(tailles({"Andouillette", "Andouillette"}, Role::choisie), (std::set{20, seule}));
    EXPECT_EQ(tailles({"Un deux trois quatre cinq six", "Andouillette"}), (std::set{20, seule})) << "of four lines";
    EXPECT_EQ(tailles({"Anticonstitutionnellement", "Intergouvernementalisation"}), (std::set{20, 28}));
}

TEST(Peintre, CeQuiEstCacheNeSePeintPas) {
    Forme f = fond();
    Controle& g =
        f.ajoute({.nom = "g", .genre = Genre::grille, .cadre = {0, 0, largeur * px, 100 * px}, .role = Role::carte});
    g.grille.dimensionne(5, 3);
    g.grille.largeurs = {100 * px, 0, 220 * px};
    for (Aspect& a : g.grille.cellules) a.role = Role::ligne;
    g.grille.hauteur_ligne = 50 * px;
    Ecran e;
    e.peint({&f});
    g.grille.cellule(0, 1).texte = "colonne cachée";
    g.grille.cellule(4, 0).texte = "sous la liste";
    EXPECT_TRUE(e.peint({&f}).empty());
    g.grille.cellule(1, 0).texte = "en vue";
    const auto zones = e.peint({&f});
    ASSERT_EQ(zones.size(), 1U);
    EXPECT_GE(zones[0].haut, 50);
    EXPECT_LE(zones[0].bas, 100);
}

/// The rows that a list does not have are seen as its own empty ones would be.
TEST(Peintre, UneListeRegleeMontreDesLignesVides) {
    const auto peinte = [](int lignes, bool reglee) {
        Forme f = fond();
        Controle& g = f.ajoute(
            {.nom = "g", .genre = Genre::grille, .cadre = {40 * px, 40 * px, 200 * px, 150 * px}, .role = Role::carte});
        Aspect modele;
        modele.role = Role::ligne;
        modele.trait = true;
        g.grille.dimensionne(lignes, 3, modele);
        g.grille.cellule(0, 0).role = Role::entete;
        g.grille.lignes_fixes = 1;
        g.grille.hauteur_ligne = 40 * px;
        g.grille.hauteurs.assign(static_cast<std::size_t>(lignes), 40 * px);
        g.grille.hauteurs[0] = 20 * px;
        g.grille.defile = true;
        g.grille.reglee = reglee;
        Ecran e;
        e.peint({&f});
        return e.pixels();
    };
    const auto trois = peinte(4, true);  // what fits, and ten pixels more
    EXPECT_EQ(peinte(1, true), trois);
    EXPECT_EQ(peinte(2, true), trois);
    EXPECT_EQ(peinte(4, false), trois);
    EXPECT_NE(peinte(2, false), trois);
    EXPECT_EQ(peinte(9, true), peinte(9, false)) << "a full list has its own lines";
}

/// Frames, sizes and contents that do not fit each other: what is painted after them is what it always is.
/// Frames and sizes that no screen has: what is painted after them is what it always is.
TEST(Peintre, LesEntreesAbimeesNeFontRien) {
    constexpr int limites[] = {-1000000, -1, 0, 1, 14, 15, 1000000};
    Forme saine = fond();
    saine.ajoute(
        {.nom = "b", .genre = Genre::bouton, .cadre = {150, 150, 1500, 900}, .texte = "Note", .role = Role::note});
    Ecran e(2), temoin(2);
    for (const int l : limites) {
        for (const int h : limites) {
            Forme f = fond();
            for (const Role role : roles) {
                for (const Genre genre : {Genre::bouton, Genre::champ, Genre::case_, Genre::grille}) {
                    Controle& c = f.ajoute({"c", -1, genre, {-l, h, l, h}, "Texte", role, 9999, true});
                    c.aspect.image = image_valider;
                    c.curseur = 9999;
                    c.grille.dimensionne(3, 2, c.aspect);
                    c.grille.espace = rythme;
                }
            }
            f.cadre.largeur = l;
            e.peint({&f});
        }
    }
    e.peint({&saine});
    temoin.peint({&saine});
    EXPECT_EQ(e.pixels(), temoin.pixels());
}

TEST(Apparence, ToutTexteSeLit) {
    for (const Role role : roles) {
        const Couleur dessous = fond_de(role) == sans_couleur ? palette::papier : fond_de(role);
        EXPECT_GE(contraste(dessous, encre_de(role)), 4.5) << "rôle " << static_cast<int>(role);
    }
    for (const Couleur c : palette::chiffres) EXPECT_GE(contraste(c, encre_lisible(c)), 4.5) << std::hex << c;
    for (int rvb = 0; rvb < 0x1000000; rvb += 0x010F07) EXPECT_GE(contraste(rvb, encre_lisible(rvb)), 4.5);
    EXPECT_NEAR(contraste(palette::blanc, palette::noir), 21, 0.01);
    EXPECT_EQ(encre_lisible(0xC24B45), palette::blanc);
    EXPECT_EQ(encre_lisible(0xF0C64F), palette::encre);
    EXPECT_EQ(encre_lisible(0x4F8F5F), palette::noir);
}

TEST(Polices, ToutCaractereDeLaPageALeSien) {
    for (const Police p : {Police::normale, Police::grasse}) {
        for (unsigned octet = 33; octet < 256; ++octet) {
            const char32_t point = texte::point_de_code(static_cast<unsigned char>(octet));
            if (octet == 127 || (point >= 0x80 && point < 0xA0)) continue;
            EXPECT_TRUE(possede(p, point)) << "octet " << octet;
            const bool blanc = octet == 0xA0;
            EXPECT_EQ(glyphe(p, 20, point).couverture.empty(), blanc) << "octet " << octet;
        }
    }
}

TEST(Polices, LesLegendesPassentALaLigneRetrecissentPuisSeCoupent) {
    const auto met = [](std::string_view t, int l, int h, int lignes_max = 0) {
        return met_en_lignes(Police::grasse, 28, t, {l, h, lignes_max});
    };
    using Lignes = std::vector<std::string>;
    EXPECT_EQ(met("Magret de canard", 400, 100).lignes, Lignes{"Magret de canard"});
    const MiseEnLignes deux = met("Magret de canard", 150, 100);
    EXPECT_EQ(deux.lignes, (Lignes{"Magret de", "canard"}));
    EXPECT_EQ(deux.taille, 28) << "it fits by breaking alone";
    EXPECT_EQ(met("Un\r\nDeux\nTrois   ", 400, 200).lignes, (Lignes{"Un", "Deux", "Trois"}));
    EXPECT_EQ(met("   Saignante", 400, 40).lignes, Lignes{"   Saignante"});

    const int sans_signe = static_cast<int>(largeur_texte(Police::grasse, 28, "Dès que possible"_t)) + 2;
    EXPECT_EQ(met("Dès que possible !"_t, sans_signe, 100).lignes, (Lignes{std::string("Dès que"_t), "possible !"}));

    const MiseEnLignes mot = met("Andouillette", 110, 100);
    EXPECT_EQ(mot.lignes, Lignes{"Andouillette"});
    EXPECT_LT(mot.taille, 28);
    EXPECT_LE(largeur_texte(Police::grasse, mot.taille, "Andouillette"), 110);
    EXPECT_GT(largeur_texte(Police::grasse, mot.taille + 1, "Andouillette"), 110) << "no smaller than needed";

    const MiseEnLignes coupee = met("Anticonstitutionnellement", 60, 100);
    EXPECT_EQ(coupee.taille, taille_lisible);
    ASSERT_EQ(coupee.lignes.size(), 1U);
    EXPECT_TRUE(coupee.lignes[0].starts_with("Anti") && coupee.lignes[0].ends_with("…"_t)) << coupee.lignes[0];
    const MiseEnLignes une = met("Un libellé beaucoup trop long pour une ligne"_t, 90, 100, 1);
    EXPECT_EQ(une.lignes.size(), 1U);
    EXPECT_TRUE(une.lignes[0].ends_with("…"_t));
    // A row is broken only where one line would be much smaller.
    const auto rangee = [](std::string_view t) {
        return met_en_lignes(Police::normale, 27, t, {400, 54, 2, taille_lisible, 18});
    };
    EXPECT_EQ(rangee("Une rangée qui tient presque en une ligne"_t).lignes.size(), 1U);
    const MiseEnLignes longue = rangee("Sans sel, sauce à part et un grand verre d'eau pour l'enfant de la table 12"_t);
    EXPECT_EQ(longue.lignes.size(), 2U);
    EXPECT_GE(longue.taille, 16);
}

TEST(Polices, ToutCeQuiEstMisEnLignesTient) {
    Hasard h(7);
    for (int i = 0; i < 2000; ++i) {
        const Police p = h.pile() ? Police::grasse : Police::normale;
        const int l = h.entre(12, 300), ht = h.entre(10, 120);
        const std::string t = h.texte();
        const MiseEnLignes m = met_en_lignes(p, h.entre(9, 60), t, {l, ht});
        std::string lu;
        for (const std::string& ligne : m.lignes) {
            EXPECT_LE(largeur_texte(p, m.taille, ligne), static_cast<float>(l) + 0.01F) << t;
            lu += ligne;
        }
        const bool coupee = lu.find('\x85') != std::string::npos;
        std::erase(lu, ' ');
        std::string voulu = t;
        std::erase(voulu, ' ');
        EXPECT_TRUE(coupee || lu == voulu) << "no character may be lost: " << t;
        if (m.lignes.size() > 1) {
            EXPECT_LE(metrique(p, m.taille).hauteur * static_cast<float>(m.lignes.size()) -
                          0.15F * static_cast<float>(m.taille),
                      static_cast<float>(ht) + 0.01F);
        }
    }
}

TEST(Images, LesNumerosFixesEtUneCarteDeRestaurant) {
    constexpr int fixes[] = {11, 12, 13, 15, 16, 17, 18, 20, 21, 22, 23, 24, 25, 30};
    for (const int n : fixes) EXPECT_NE(image_de_touche(n).glyphe, 0U) << n;
    std::set<char32_t> differentes;
    for (int n = 1; n < nb_images; ++n) {
        const ImageDeTouche& i = image_de_touche(n);
        if (i.glyphe == 0) continue;
        EXPECT_TRUE(possede(Police::images, i.glyphe)) << n;
        EXPECT_FALSE(glyphe(Police::images, 48, i.glyphe).couverture.empty()) << n;
        EXPECT_TRUE(texte::depuis_utf8(i.nom).has_value() && *i.nom != '\0') << n;
        if (n >= decalage_grand) continue;
        differentes.insert(i.glyphe);
        EXPECT_EQ(image_de_touche(n + decalage_grand).glyphe, i.glyphe);
        EXPECT_TRUE(image_de_touche(n + decalage_grand).grande && !i.grande);
    }
    EXPECT_GE(differentes.size(), 40U);
    for (const int n : {-1, 0, nb_images, 1 << 30}) EXPECT_EQ(image_de_touche(n).glyphe, 0U);
}

TEST(Images, UnePngSeDecodeEnLImage) {
    Forme f = fond();
    Ecran e;
    e.peint({&f});
    const auto png = en_png(e.peintre.image(), {10, 10, 40, 30});
    ASSERT_GT(png.size(), 57U);
    const std::vector<unsigned char> tete(png.begin(), png.begin() + 24);
    const std::vector<unsigned char> attendue = {0x89, 'P', 'N', 'G', 13, 10, 26, 10, 0, 0, 0, 13,
                                                 'I',  'H', 'D', 'R', 0,  0,  0,  30, 0, 0, 0, 20};
    EXPECT_EQ(tete, attendue);
    EXPECT_TRUE(en_png(e.peintre.image(), {400, 10, 500, 30}).empty());
}
