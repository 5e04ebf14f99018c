// What every key code does, and how a page of the key program lies on the main screen, in a window that nobody sees.
#include "main_screen/touches.h"

#include "atelier.h"
#include "data/catalogue.h"
#include "data/reseau.h"
#include "main_screen/bandeau.h"
#include "main_screen/form1.h"
#include "main_screen/pages.h"
#include "platform/ecran/boucle.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/locale.h"
#include "platform/systeme/ouvrier.h"

namespace {

/// In the place of the waiter: acts once on the main screen, closes every dialog that opens, then ends the program.
struct Serveur final : ecran::Pilote {
    std::function<void()> agit;
    std::string ouverts;  ///< the dialogs' names, each with a blank behind it

    ecran::Evenement prochain() override {
        ouvrier::termine_en_rejeu();
        ecran::Forme& f = *ecran::forme_du_dessus();
        if (f.nom == "Form1") {
            agit();
            ecran::termine();
        }
        ouverts += f.nom + " ";
        f.ferme();
        return {};
    }
};

class Touches : public tests::Atelier {
  protected:
    Serveur serveur;

    Touches() {
        terrain.restaurant();
        locale_systeme::simule('.');
        horloge::rend_virtuelle({});
        ouvrier::attend_toujours(true);
    }
    ~Touches() override {
        reseau::au_changement({});
        ouvrier::attend_toujours(false);
        horloge::rend_reelle();
    }
    void joue(std::function<void()> agit) {
        serveur.agit = std::move(agit);
        // What a start does once in a process.
        programme_touches::prepare();
        catalogue::catalogue_charge = false;
        ecran::ouvre_ecran(ecran::cree_fenetre_muette(1280, 800), &serveur);
        EXPECT_THROW(form1::montre_form1(), ecran::FinDuProgramme);
        ecran::ferme_ecran();
    }
    static void touche(const std::string& code) {
        if (!code.starts_with('#')) return bandeau::forme()(code).au_toucher();
        etat::code_touche = code;
        touches::touche(0);
    }
};

/// Each from the second page of an article list, with no table: the dialogs that open, the title, the number of the
/// list's page, that of the program's page, the waiter, and whether the settings were read again.
TEST_F(Touches, ChaqueCodeFaitCeQuIlDit) {
    const std::string menu =
        "8880000000581  |DES:Midi|PVE:15.00|FA1:2|FA2:98|{{E\xB5"
        "1|Riz\xA6}}";
    const std::string accueil = "Win_Orvalune 2021-05-19a";
    const std::pair<std::string, std::string> cas[] = {
        {"#FONC# NOTE ", "eta_com Viandes 1 1 Marc"},
        {"#FONC#NOTES", "Viandes 1 1 Marc"},
        {"#FONC#TABLE", "ch_numtab " + accueil + " 1 1 Marc relu"},
        {"#FONC#SERVEUR", accueil + " 0 1 Marc"},
        {"#FONC#GRILLE", "w_prog " + accueil + " 1 1 Marc relu"},
        {"#FONC#FIN", "mini_97 Viandes 1 1 Marc"},
        {"#PAGE#3", accueil + " 1 3 Marc relu"},
        {"#MENU#", "ch_numtab " + accueil + " 0 0 Marc"},
        {"#LFAM#", "ch_numtab Familles 0 1 Marc"},
        {"#FAMI#03", "ch_numtab Menus 0 1 Marc"},
        {"#TOUC#", "Viandes 1 1 Marc"},
        {"#SERV#03", accueil + " 0 1 Luc"},
        {"#SERV#-1", accueil + " 0 1 Sophie"},
        {"#AJOU#" + menu, "menufor sel_arti Viandes 1 1 Marc"},
        {"#AJOU#" + std::string(15, ' ') + "|DES:Rien", "Viandes 1 1 Marc"},
        {"#AJOU##SG#0005", " 0 1 Marc"},
        {"#OUTI#", "ch_outils " + accueil + " 1 1 Marc relu"},
        {"#OUTI", "Viandes 1 1 Marc"},
        {"Command1", "w_prog " + accueil + " 1 1 Marc relu"},
        {"Command3", accueil + " 1 0 Marc relu"},
        {"Command4", "clavv Viandes 1 1 Marc"},
        {"Command5", "eta_com Viandes 1 1 Marc"},
        {"Command6", "menufor Viandes 1 1 Marc"},
        {"Command7", "sai_menu Viandes 1 1 Marc"},
        {"logil", "clav_num Viandes 1 1 Marc"},
        {"logoserv", "mini_97 " + accueil + " 1 1 Marc relu"},
        {"logo", "Viandes 1 1 Marc relu"},
    };
    std::string carte = "#SERV#01 Sophie\r\n#SERV#02 Marc\r\n#SERV#03 Luc\r\n";
    carte += "#FAMI#01 Entrees\r\n#FAMI#02 Viandes\r\n#FAMI#03 Menus\r\n";
    for (const char* famille : {"2", "2", "2", "3", "3", "35", "35"})
        carte += "#ARTI#000018880000000024  |DES:Plat|PVE:1.00|FA1:" + std::string(famille) + "\r\n";
    for (const std::string ou : {"", "reseau/"}) terrain.pose(ou + "worvalune.wdo", carte);
    for (const int par_page : {8, 13, 23}) terrain.regle(par_page, "#I#1");
    joue([&] {
        for (const auto& [code, attendu] : cas) {
            etat::nom_serveur = "Marc";
            etat::texte_table = "   ";
            etat::famille_courante = 2;
            etat::numero_page = etat::page_programme = 1;
            etat::colonnes_grille = 1;
            pages::affiche_articles();
            serveur.ouverts.clear();
            touche(code);
            EXPECT_EQ(serveur.ouverts + bandeau::forme()("label_haut").texte() + " " +
                          std::to_string(etat::numero_page) + " " + std::to_string(etat::page_programme) + " " +
                          etat::nom_serveur + (etat::colonnes_grille == 12 ? " relu" : ""),
                      attendu)
                << code;
        }
    });
}

/// From 500 twips down, cell by cell; with its own size, and with the large pictures where they are chosen.
TEST_F(Touches, UneLigneDuProgrammePrendSaCaseSaTailleEtSonImage) {
    terrain.regle(201, "OUI");
    terrain.touche(0, 14, "Café", "#TOUC#", "31", "15", "", "33");
    joue([&] {
        touche("#SERV#01");
        ecran::Forme& f = bandeau::forme();
        const auto cadre = [&](int k) {
            const ecran::Cadre& c = f("btx", k).cadre;
            return std::vector{c.gauche, c.haut, c.droite(), c.bas()};
        };
        EXPECT_EQ(cadre(1), (std::vector{150, 500, 3175, 3383}));
        EXPECT_EQ(cadre(14), (std::vector{1737, 2016, 6350, 3383}));
        EXPECT_EQ(f("btt", 14).aspect.image, 65);
        EXPECT_EQ(f("btx", 14).aspect.police, 33);
        EXPECT_EQ(f("btx", 1).aspect.police, 18);
        EXPECT_EQ(f("g2").grille.cellule(0, 0).image, 61);
    });
}

}  // namespace
