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
class Touches : public tests::Atelier, public ecran::Pilote {
  protected:
    std::string vu;  ///< what was noted, in order

    Touches() {
        terrain.restaurant();
        // A run fetches the network's catalogue only once, and other tests are to see that.
        std::filesystem::rename("reseau/worvalune.wdo", "worvalune.wdo");
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
        agit_ = std::move(agit);
        // What a start does once in a process.
        programme_touches::prepare();
        catalogue::catalogue_charge = false;
        ecran::ouvre_ecran(ecran::cree_fenetre_muette(1280, 800), this);
        EXPECT_THROW(form1::montre_form1(), ecran::FinDuProgramme);
        ecran::ferme_ecran();
    }
    void voit(bool change, const std::string& quoi) {
        if (change) vu += (vu.empty() ? "" : ", ") + quoi;
    }
    static void touche(const std::string& code) {
        if (!code.starts_with('#')) return bandeau::forme()(code).au_toucher();
        etat::code_touche = code;
        touches::touche(0);
    }

  private:
    std::function<void()> agit_;

    ecran::Evenement prochain() override {
        ouvrier::termine_en_rejeu();
        ecran::Forme& f = *ecran::forme_du_dessus();
        if (f.nom == "Form1") {
            agit_();
            ecran::termine();
        }
        voit(true, f.nom);
        f.ferme();
        return {};
    }
};

/// Each from the second page of the article list "Viandes", page 1 of the program behind it, without a table, and Marc
/// at the tablet: what changes, and whether the settings are read again.
TEST_F(Touches, ChaqueCodeFaitCeQuIlDit) {
    const std::string menu = "8880000000581  |DES:Midi|PVE:15.00|FA1:2|FA2:98|{{E\xB5\x31|Riz\xA6}}";
    const std::pair<std::string, std::string> cas[] = {{"#FONC# NOTE ", "eta_com"},
                                                       {"#FONC#NOTES", ""},
                                                       {"#FONC#TABLE", "ch_numtab, Accueil, relu"},
                                                       {"#FONC#SERVEUR", "Accueil, liste 0"},
                                                       {"#FONC#GRILLE", "w_prog, Accueil, relu"},
                                                       {"#FONC#FIN", "mini_97"},
                                                       {"#PAGE#3", "Accueil, programme 3, relu"},
                                                       {"#MENU#", "ch_numtab, Accueil, liste 0, programme 0"},
                                                       {"#LFAM#", "ch_numtab, Familles, liste 0"},
                                                       {"#FAMI#03", "ch_numtab, Menus, liste 0"},
                                                       {"#AJOU##SG#0005", "Sous-groupe, liste 0"},
                                                       {"#AJOU#" + menu, "menufor, sel_arti"},
                                                       {"#AJOU#" + std::string(15, ' ') + "|DES:Rien", ""},
                                                       {"#TOUC#", ""},
                                                       {"#SERV#03", "Accueil, liste 0, Luc"},
                                                       {"#SERV#-1", "Accueil, liste 0, Sophie"},
                                                       {"#OUTI#", "ch_outils, Accueil, relu"},
                                                       {"#OUTI", ""},
                                                       {"Command1", "w_prog, Accueil, relu"},
                                                       {"Command3", "Accueil, programme 0, relu"},
                                                       {"Command4", "clavv"},
                                                       {"Command5", "eta_com"},
                                                       {"Command6", "menufor"},
                                                       {"Command7", "sai_menu"},
                                                       {"logil", "clav_num"},
                                                       {"logoserv", "mini_97, Accueil, relu"},
                                                       {"logo", "relu"}};
    std::string carte = "#SERV#01 Sophie\r\n#SERV#02 Marc\r\n#SERV#03 Luc\r\n";
    carte += "#FAMI#01 Entrees\r\n#FAMI#02 Viandes\r\n#FAMI#03 Menus\r\n";
    for (const char* famille : {"2", "2", "2", "3", "3", "35", "35"})
        carte += "#ARTI#000018880000000024  |DES:Plat|PVE:1.00|FA1:" + std::string(famille) + "\r\n";
    terrain.pose("worvalune.wdo", carte);
    for (const int par_page : {8, 13, 23}) terrain.regle(par_page, "#I#1");
    joue([&] {
        for (const auto& [code, attendu] : cas) {
            etat::nom_serveur = "Marc";
            etat::texte_table = "   ";
            etat::famille_courante = 2;
            etat::numero_page = etat::page_programme = 1;
            etat::decalage_images = 1;
            pages::nomme_sous_groupe("");
            pages::affiche_articles();
            vu.clear();
            touche(code);
            const std::string& titre = bandeau::forme()("label_haut").texte();
            voit(titre != "Viandes", titre.starts_with("Win_Orvalune") ? "Accueil"
                                     : titre.empty()                   ? "Sous-groupe"
                                                                       : titre);
            voit(etat::numero_page != 1, "liste " + std::to_string(etat::numero_page));
            voit(etat::page_programme != 1, "programme " + std::to_string(etat::page_programme));
            voit(etat::nom_serveur != "Marc", etat::nom_serveur);
            voit(etat::decalage_images == 0, "relu");
            EXPECT_EQ(vu, attendu) << code;
        }
        // A family without a name is called as the key that opens it.
        etat::famille_courante = 17;
        pages::nomme_sous_groupe("Promo");
        pages::affiche_articles();
        EXPECT_EQ(bandeau::forme()("label_haut").texte(), "Promo");
    });
}

/// From 500 twips down, cell by cell; with its own size, and with the large pictures where they are chosen.
TEST_F(Touches, UneLigneDuProgrammePrendSaCaseSaTailleEtSonImage) {
    terrain.regle(201, "OUI");
    terrain.touche(0, 14, "Café", "#TOUC#", "31", "15", "", "33");
    joue([&] {
        touche("#SERV#01");
        ecran::Forme& f = bandeau::forme();
        const auto cadre = [&](const char* nom, int k) {
            const ecran::Cadre& c = f(nom, k).cadre;
            return std::vector{c.gauche, c.haut, c.droite(), c.bas()};
        };
        EXPECT_EQ(cadre("btx", 1), (std::vector{150, 500, 3175, 3383}));
        EXPECT_EQ(cadre("btx", 14), (std::vector{1737, 2016, 6350, 3383}));
        EXPECT_EQ(cadre("btt", 14), (std::vector{1737, 2016, 6350, 2927})) << "above the caption";
        EXPECT_EQ(f("btt", 14).aspect.image, 65);
        EXPECT_EQ(f("btx", 14).aspect.police, 33);
        EXPECT_EQ(f("btx", 1).aspect.police, 18);
        EXPECT_EQ(f("g2").grille.cellule(0, 0).image, 61);
    });
}

}  // namespace
