// What became of the orders, as the waiter sees it: the list, the sending again, and the amber banner.
#include <algorithm>
#include <cstdio>

#include "atelier.h"
#include "data/suivi.h"
#include "main_screen/bandeau.h"
#include "platform/peinture/placement.h"
#include "platform/peinture/polices.h"
#include "platform/systeme/epreuve.h"
#include "platform/systeme/horloge.h"
#include "rejeux.h"

namespace {

namespace fs = std::filesystem;
using tests::page1252;
using tests::Terrain;
using tests::tient;
using tests::tient_texte;

/// The ends of the files that keep the text of an order to be checked, and of one deposited in "reseau".
constexpr const char *fin_a_verifier = "-V-", *fin_gardee = "dcfc60ce.-T-";
const std::string soir = "--horloge \"2021-05-19 20:15:00\"";

/// An order as the list knows it; the state is written as on the screen.
struct Commande {
    const char *jour, *heure;  ///< "2021-05-19", "20:14:00"
    const char* table;
    int lignes;
    const char *etat, *depuis;  ///< the latter a time of that day

    std::string nom() const {
        std::string n = std::string(jour) + "-" + heure + "_01_" + table + "_004_.";
        std::replace(n.begin(), n.end(), ':', '-');
        return n;
    }
    std::string ligne() const {
        return page1252(std::string(jour) + " " + heure + ";01;" + table + ";004;" + std::to_string(lignes) + ";" +
                        etat + ";" + jour + " " + depuis + ";" + nom() + "\r\n");
    }
};

void pose(const Terrain& t, const std::vector<Commande>& commandes) {
    std::string liste;
    for (const Commande& c : commandes) liste += c.ligne();
    t.pose("suivi.txt", liste);
}

class Suivi : public testing::Test {
  protected:
    Terrain t;
    Suivi() { t.restaurant(); }
    /// No network directory: what is posed in the working directory stays as it is.
    void sans_reseau() const {
        t.pose("worvalune.wdo", t.lis("reseau/worvalune.wdo"));
        fs::remove_all(t.reseau());
    }
    /// Deposited orders that the router leaves where they are.
    void deposees(const std::vector<Commande>& commandes) const {
        pose(t, commandes);
        for (const Commande& c : commandes) {
            t.pose(c.nom() + fin_gardee, "commande\r\n");
            t.pose("reseau/" + c.nom() + "txt", "commande\r\n");
        }
    }
    /// After these commands the text cannot be touched: it is scrolled away.
    void ne_se_touche_pas(const std::string& commandes, const std::string& texte) const {
        EXPECT_EQ(t.joue(commandes + "touche \"" + texte + "\"\n", soir).statut, 2) << texte;
    }
};

TEST_F(Suivi, ChaqueEtatSeLitEtSeuleUneCommandeAVerifierSeRenvoie) {
    sans_reseau();
    const std::vector<Commande> commandes = {
        {"2020-12-31", "07:05:00", "998", 1, "collectée", "07:06:00"},
        {"2021-05-18", "22:59:59", "999", 1, "à vérifier", "23:00:00"},
        {"2021-05-19", "09:07:00", "033", 2, "à vérifier", "09:07:00"},
        {"2021-05-19", "09:08:59", "007", 5, "collectée", "09:09:00"},
        {"2021-05-19", "20:02:00", "021", 12, "collectée", "20:03:00"},
        {"2021-05-19", "20:11:00", "004", 3, "déposée", "20:11:00"},
        {"2021-05-19", "20:14:00", "012", 7, "en attente", "20:14:00"},
    };
    pose(t, commandes);
    t.pose(commandes[6].nom() + "-A-", "commande\r\n");
    t.pose(commandes[5].nom() + fin_gardee, "commande\r\n");
    t.pose(commandes[2].nom() + fin_a_verifier, "commande\r\n");
    tient(t, "suivi.txt", soir);
    tient_texte(t, "touche \"Sophie\"\ntouche logosuiv\nverifie g1 5 3 \"en attente\"\nverifie g1 6 3 \"à vérifier\"\n",
                soir);
    EXPECT_NE(t.lis("journal.txt").find(page1252(" réseau injoignable\r\n")), std::string::npos);
    // Its file has gone, and nothing tells whether it was delivered: nobody knows that the kitchen has it.
    fs::remove(t.chemin() / (commandes[6].nom() + "-A-"));
    tient_texte(t, "touche \"Sophie\"\ntouche logosuiv\nverifie g1 1 3 \"à vérifier\"\n", soir);
}

/// With the router, and with the journal of it, which tells orders by their names alone.
TEST_F(Suivi, UneCommandeSeSuitDeBoutEnBout) {
    tient(t, "suivi_routeur.txt");
    EXPECT_TRUE(t.fichiers(".", "-").empty()) << "no file of the order is left on the tablet";
    const std::string journal = t.lis("journal.txt"), commande = " commande 2021-05-19-12-30-00_01_012_004_. ";
    std::size_t place = 0;
    for (const char* mot : {"écrite", "déposée", "collectée"}) {
        place = journal.find(commande + page1252(mot) + "\r\n", place);
        EXPECT_NE(place, std::string::npos) << mot;
    }
    for (const char* secret : {"Remarque", "Entrecôte", "8880000"})
        EXPECT_EQ(journal.find(page1252(secret)), std::string::npos) << secret;
    EXPECT_EQ(t.joue("", "--journal").sortie.find("d\xC3\xA9marrage d'Orvalune"), 20U);
}

TEST_F(Suivi, SansCommandeLaListeEstVide) {
    tient_texte(t,
                "touche logosuiv\nverifie ecran suivi\nverifie lignes g1 1\ntouche g2 0 0\ntouche g2 0 1\n"
                "touche \"Renvoyer\"\ntouche \"Fermer\"\ntouche \"Fermer\"\nverifie btx(1) \"Sophie\"\n");
}

TEST_F(Suivi, UneLongueListeNePasseAucuneLigne) {
    sans_reseau();
    std::vector<std::string> tables;
    for (int n = 1; n <= 200; ++n) tables.push_back((n < 10 ? "00" : n < 100 ? "0" : "") + std::to_string(n));
    std::vector<Commande> commandes;
    for (const std::string& table : tables)
        commandes.push_back({"2021-05-19", "19:00:00", table.c_str(), 3, "collectée", "19:01:00"});
    pose(t, commandes);
    const std::string ouvre = "touche \"Sophie\"\ntouche logosuiv\nverifie lignes g1 201\n", bas = "touche g2 0 0\n",
                      haut = "touche g2 0 1\n";
    std::string jusqu_au_bout, retour;
    for (int i = 0; i < 25; ++i) jusqu_au_bout += bas, retour += haut;
    // Nine rows are in view: the first touch scrolls to the tenth, and a chosen row does not move the list.
    tient_texte(t,
                ouvre + "touche \"200\"\ntouche \"192\"\n" + bas + "touche \"191\"\ntouche \"183\"\n" +
                    "verifie couleur g1 18 0 DCE6F1\nverifie couleur g1 10 0 FFFFFF\n" + jusqu_au_bout +
                    "touche \"001\"\ntouche \"009\"\n" + haut + "touche \"010\"\n" + retour +
                    "touche \"200\"\ntouche \"Fermer\"\n",
                soir);
    ne_se_touche_pas(ouvre + bas + "touche \"191\"\n", "192");
    ne_se_touche_pas(ouvre + jusqu_au_bout, "010");
}

TEST_F(Suivi, LeBandeauEstAmbreTantQueLaCuisineNaPasCollecte) {
    deposees({{"2021-05-19", "12:20:00", "001", 2, "déposée", "12:20:30"},
              {"2021-05-19", "12:25:00", "002", 2, "déposée", "12:25:00"},
              {"2021-05-19", "12:26:00", "003", 2, "déposée", "12:26:00"}});
    for (const char* couleur : {"", "#I#255"}) {
        t.regle(1701, couleur);
        tient(t, "suivi_ambre.txt");
    }
    // Not yet five minutes: the manager's red, and a hold reaches the title below the state.
    tient_texte(t,
                "touche \"Sophie\"\nverifie couleur label_haut FF0000\nverifie label_etat \"Sophie · 0 ligne · 0.00\"\n"
                "tient label_haut 2000\nverifie visible Command1 oui\n",
                "--horloge \"2021-05-19 12:25:00\"");
    tient_texte(t, "verifie label_etat \"Cuisine : 1 commande non collectée\"\n", "--horloge \"2021-05-19 12:25:30\"");
}

/// The banner in this process, upon a list that the test moves on.
class SuiviVivant : public tests::Atelier {
  protected:
    SuiviVivant() {
        horloge::rend_virtuelle({2021, 5, 19, 20, 15, 0});
        suivi::charge();
        reglages::ouvre();
        prend_taille(1280, 770);
    }
    ~SuiviVivant() override {
        for (const std::string& nom : noms_) suivi::passe_a(nom, suivi::Etat::collectee);
        horloge::rend_reelle();
    }

    static void prend_taille(int largeur, int hauteur) {
        etat::largeur_ecran = largeur;
        etat::hauteur_ecran = hauteur;
    }
    std::string commande(int table, suivi::Etat etat) {
        char nom[64];
        std::snprintf(nom, sizeof nom, "2021-05-19-20-15-00_01_%03d_004_.", table);
        suivi::ajoute(nom, 3);
        suivi::passe_a(nom, etat);
        return noms_.emplace_back(nom);
    }
    /// The banner as on the main screen, with the state of an order in hand.
    static ecran::Forme& bandeau_de(int largeur, int hauteur) {
        prend_taille(largeur, hauteur);
        bandeau::construit([](ecran::Forme& f) { f.ajoute({.nom = "Label_num"}); });
        bandeau::titre_accueil();
        bandeau::place();
        bandeau::affiche_etat();
        return bandeau::forme();
    }

  private:
    std::vector<std::string> noms_;
};

TEST_F(SuiviVivant, LeBandeauRedevientCommeAvant) {
    using ecran::palette::ambre;
    for (const char* couleur : {"", "#I#255"}) {  // none of the manager's, then red
        SCOPED_TRACE(couleur);
        ASSERT_EQ(reglages::ecrit(reglages::fonds + 1, couleur), fichiers::Issue::fait);
        ecran::Forme& f = bandeau_de(1280, 770);
        const ecran::Aspect avant = f("label_haut").aspect, logo = f("logosuiv").aspect;
        EXPECT_TRUE(f("label_etat").laisse_passer);
        const std::string nom = commande(12, suivi::Etat::deposee);
        horloge::avance(5 * 60 * 1000 - 1);
        bandeau::affiche_etat();
        EXPECT_EQ(f("label_haut").aspect.fond, avant.fond);
        horloge::avance(1);
        bandeau::affiche_etat();
        EXPECT_EQ(f("label_haut").aspect.fond, ambre);
        EXPECT_NE(f("label_bas").aspect.fond, ambre);
        EXPECT_FALSE(f("label_etat").laisse_passer);
        for (const char* nom_controle : {"label_haut", "label_etat", "logosuiv", "logoserv", "logil", "logo"})
            EXPECT_GE(ecran::contraste(f(nom_controle).aspect.encre, ambre), 4.5) << nom_controle;
        bandeau::colore();
        EXPECT_EQ(f("label_haut").aspect.fond, ambre) << "the manager's colours do not hide it";
        suivi::passe_a(nom, suivi::Etat::collectee);
        bandeau::affiche_etat();
        EXPECT_EQ(f("label_haut").aspect, avant);
        EXPECT_EQ(f("logosuiv").aspect, logo);
        EXPECT_TRUE(f("label_etat").laisse_passer);
    }
}

/// What "Renvoyer" says depends on it.
TEST_F(SuiviVivant, UnRenvoiRefuseDitPourquoi) {
    const std::string nom = commande(12, suivi::Etat::a_verifier);
    terrain.pose(nom + "-V-", "commande\r\n");
    fichiers::epreuve::avant = [](auto, std::string_view) { return fichiers::Issue::refuse; };
    EXPECT_EQ(suivi::renvoie(nom), suivi::Renvoi::echec);
    fichiers::epreuve::avant = nullptr;
    terrain.pose(nom + "-A-", "commande\r\n");
    EXPECT_EQ(suivi::renvoie(nom), suivi::Renvoi::deja_en_attente);
}

}  // namespace
