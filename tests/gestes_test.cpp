// Every screen: all that reacts lies under the finger and nothing upon it, captions can be read whole, the lower banner
// asks for a restart of the program, and Escape leaves.
#include <algorithm>

#include "config/ch_outils.h"
#include "config/ggcoul.h"
#include "config/lis_bout.h"
#include "config/porpay.h"
#include "config/w_prog.h"
#include "config/w_prog_acte.h"
#include "config/w_prog_coul.h"
#include "data/complements.h"
#include "data/suivi.h"
#include "dialogs/ch_numtab.h"
#include "dialogs/clav_num.h"
#include "dialogs/clavv.h"
#include "dialogs/eta_com.h"
#include "dialogs/lis_tbb.h"
#include "dialogs/menufor.h"
#include "dialogs/mini_97.h"
#include "dialogs/sai_detail.h"
#include "dialogs/sai_menu.h"
#include "dialogs/saisie.h"
#include "dialogs/sel_arti.h"
#include "dialogs/suivi.h"
#include "main_screen/attend_tempo.h"
#include "main_screen/cherche.h"
#include "platform/peinture/polices.h"
#include "scene.h"

namespace {

using namespace ecran;
using tests::page1252;

constexpr int px = twips_par_pixel;
constexpr int doigt = 54 * px;  ///< what a finger does not miss

struct Ecran {
    std::string nom;
    std::function<void()> ouvre;
    bool bandeaux = true, echappe = true;
    int cote = doigt;  ///< the smallest side of its keys on the widest screen
};
const Ecran ecrans[] = {
    {"ch_numtab", ch_numtab::montre_ch_numtab, true, false},
    {"lis_tbb", lis_tbb::montre_lis_tbb},
    {"clav_num", [] { clav_num::demande("", "Combien ?|12"); }},
    {"clav_num", [] { clav_num::demande(clav_num::mode_taille, "Combien ?|14"); }},
    {"clavv", [] { clavv::demande(etat::saisie, "Nom ?|x"); }, false},
    {"eta_com", eta_com::montre_eta_com},
    {"menufor", menufor::montre_menufor},
    {"mini_97", [] { mini_97::informe("Fini !"); }, false},
    {"mini_97", [] { mini_97::demande("Encore ?"); }, false},
    {"mini_97", [] { mini_97::saisit("Nom ?|x"); }, false},
    {"sai_detail", sai_detail::montre_sai_detail},
    {"sai_menu", sai_menu::montre_sai_menu, true, false},
    {"saisie",
     [] {
         saisie::demande({"Nom ?", "KMZ", "", false, {"Choisir", 1, w_prog_coul::demande}});
     },
     false},
    {"sel_arti", sel_arti::montre_sel_arti, true, false},
    {"ch_outils", ch_outils::montre_ch_outils},
    {"ggcoul", ggcoul::montre_ggcoul},
    {"lis_bout", lis_bout::montre_lis_bout},
    {"porpay", porpay::montre_porpay},
    {"w_prog", w_prog::montre_w_prog, true, true, 40 * px},
    {"w_prog_acte", [] { w_prog_acte::demande(); }},
    {"w_prog_coul", [] { w_prog_coul::demande(); }},
    {"attend_tempo", attend_tempo::montre_attend_tempo, false},
    {"suivi", ecran_suivi::montre_suivi},
    {"cherche", [] { cherche::demande("e"); }},
};

class Gestes : public tests::Scene {
  protected:
    Gestes() {
        note({page1252("8880000000024  |DES:Entrecôte 300 g|PVE:24.50|FA1:2|FA2:0 ##QUA:002.00##{Sans sel}")});
        complements::prend(etat::lignes_note[1]);
        terrain.pose("2021-05-19-12-30-00_01_012_004_.-V-", "#TABLE#012\r\n");
        suivi::charge();
        for (int n = 1; n <= 62; ++n) reglages::nombre(n);  // a default is written when it is first read
    }
};

/// A key or cell: within the form, no smaller than `cote`, and found wherever a finger comes down on it.
void est_sous_le_doigt(const Forme& f, Controle& c, const Touche& voulue, const Cadre& z, int cote) {
    SCOPED_TRACE(c.nom + " " + std::to_string(c.index) + ", " + std::to_string(voulue.ligne));
    EXPECT_TRUE(z.gauche >= 0 && z.haut >= 0 && z.droite() <= f.cadre.largeur && z.bas() <= f.cadre.hauteur);
    EXPECT_GE(std::min(z.largeur, z.hauteur), cote);
    for (const int x : {z.gauche + 1, z.droite() - 2}) {
        for (const int y : {z.haut + 1, z.bas() - 2}) {
            const Touche t = sous_le_doigt(f, x, y);
            EXPECT_TRUE(c.au_glisse ? t.controle == &c : t == voulue)
                << "covered by " << (t.controle ? t.controle->nom : "");
        }
    }
}

void tout_se_touche(Forme& f, int cote) {
    for (const auto& p : f.controles) {
        Controle& c = *p;
        if (!c.visible || !(c.reagit() || c.au_glisse) || c.nom.starts_with("label_")) continue;
        if (c.a_la_cellule) {
            Grille& g = c.grille;
            // A row of a list may be cut at its lower edge, its columns be narrow.
            for (int l = g.lignes_fixes;
                 l < std::min(g.lignes, g.defile ? g.lignes_fixes + g.lignes_visibles(c.cadre) : g.lignes); ++l) {
                for (int k = 0; k < g.colonnes; ++k) {
                    const Cadre z = cadre_cellule(c, l, k);
                    if (z.largeur > 0) est_sous_le_doigt(f, c, {&c, l, k}, z, cote);
                }
            }
        } else {
            est_sous_le_doigt(f, c, {&c, -1, -1}, c.cadre, cote);
        }
    }
}

/// Captions stay on the form, and have the size that was set.
void tout_se_lit(Forme& f) {
    for (const auto& a : f.controles) {
        if (!a->visible || a->genre != Genre::etiquette || a->texte().empty()) continue;
        const Cadre& z = a->cadre;
        EXPECT_TRUE(z.gauche >= 0 && z.haut >= 0 && z.droite() <= f.cadre.largeur && z.bas() <= f.cadre.hauteur)
            << a->nom;
        const int taille = a->aspect.police * twips_par_point / px;
        const Police police = a->aspect.gras ? Police::grasse : Police::normale;
        EXPECT_GE(met_en_lignes(police, taille, a->texte(), {z.largeur / px, z.hauteur / px}).taille, taille - 1)
            << a->texte();
    }
}

TEST_F(Gestes, ToutSeToucheEtSeLit) {
    for (const auto& [l, h] : {std::pair(1280, 800), {800, 1310}, {554, 800}}) {
        ecran_de(l, h);
        for (const Ecran& e : ecrans) {
            SCOPED_TRACE(e.nom + " " + std::to_string(l) + " x " + std::to_string(h));
            regarde(e.ouvre, [&](Forme& f) {
                EXPECT_EQ(f.nom, e.nom);
                EXPECT_GE(f.cadre.gauche, 0);
                EXPECT_LE(f.cadre.droite(), l * px);
                EXPECT_LE(f.cadre.bas(), h * px);
                tout_se_touche(f, l == 1280 ? e.cote : 10 * px);
                tout_se_lit(f);
            });
        }
    }
}

/// The banner's service pictures stay in view beside the wait, on the smallest screens too.
TEST_F(Gestes, LAttenteTientSurUnPetitEcran) {
    for (const auto& [l, h] : {std::pair(320, 440), {440, 320}, {480, 464}, {800, 480}}) {
        SCOPED_TRACE(std::to_string(l) + " x " + std::to_string(h));
        ecran_de(l, h);
        etat::hauteur_ecran = std::max(h, 440);  // no form is lower, even on a lower screen
        regarde(attend_tempo::montre_attend_tempo, [h = h](Forme& f) {
            EXPECT_GE(f.cadre.haut, hauteur_bandeau);
            EXPECT_LE(f.cadre.bas(), h * px);
            int bas = 0;
            for (const char* nom : {"Label1", "Label4", "Label3", "p11"}) {
                EXPECT_GE(f(nom).cadre.haut, bas) << nom << " lies upon the part above it";
                bas = f(nom).cadre.bas();
            }
            EXPECT_LT(bas, f.cadre.hauteur);
            EXPECT_GE(f("p11").cadre.hauteur, doigt);
        });
    }
}

TEST_F(Gestes, LaReinitialisationEstDemandeeEtRienNEstEcrit) {
    const std::string question =
        "label_bas > Label1 = Confirmez la réinitialisation du logiciel, les données saisies seront perdues ? > ";
    for (const Ecran& e : ecrans) {
        if (!e.bandeaux) continue;
        SCOPED_TRACE(e.nom);
        const std::string ici = " > verifie ecran " + e.nom + " > ";
        const auto avant = tests::photographie(terrain);
        arrete(e.ouvre, "attend 300 > " + question + "Non" + ici + question + "btc(5)" + ici + question + "Oui");
        EXPECT_TRUE(tests::photographie(terrain) == avant);
        EXPECT_EQ(etat::nb_lignes_note, 1);
    }
    tests::tient_texte(
        terrain,
        tests::route("Sophie > Entrecôte > g2 0 5 > " + question + "Non > " + question + "Oui") + "verifie arret\n");
    EXPECT_FALSE(terrain.existe("prov.txt"));
}

TEST_F(Gestes, EchappementEstLaToucheQuiAbandonne) {
    for (const Ecran& e : ecrans) {
        SCOPED_TRACE(e.nom);
        if (e.echappe) joue(e.ouvre, "attend 300 > verifie ecran " + e.nom + " > tape echappement");
    }
}

}  // namespace
