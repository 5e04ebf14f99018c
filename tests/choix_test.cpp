// Details and menus on the screens, with the files and compositions that a router may send.
#include <random>

#include "data/commande.h"
#include "data/complements.h"
#include "data/etat.h"
#include "data/lignes.h"
#include "platform/systeme/texte.h"
#include "rejeux.h"

namespace {

using tests::page1252;
using tests::Terrain;
using tests::tient;
using tests::tient_texte;

using Remarques = std::vector<std::string>;

constexpr const char* debut = "touche \"Sophie\"\ntouche \"Table\"\ntouche g3 0 0\ntouche g1 0 1\ntouche \"Valider\"\n";
constexpr const char* quitte = "touche \"Quitter\"\ntouche \"Oui\"\nverifie arret\n";
constexpr std::size_t record = 128;

std::string fois(int n, const std::string& t) {
    std::string r;
    for (int i = 0; i < n; ++i) r += t;
    return r;
}

class Choix : public testing::Test {
  protected:
    Terrain t;
    Choix() { t.restaurant(); }

    /// Adds a fixed-price menu to the catalogue.
    void menu(const std::string& composition) const {
        const std::string catalogue = t.lis("reseau/worvalune.wdo");
        t.pose("reseau/worvalune.wdo", catalogue +
                                           page1252("#ARTI#000078880000000581  |DES:Menu midi|PVE:15.00|FA1:3|"
                                                    "FA2:98|") +
                                           composition + "\r\n");
    }
    /// What the provisional file keeps of the note.
    std::string gardee() const {
        const std::string p = t.lis("prov.txt"), tete = "#SERV#01\r\n#TABL#1\r\n";
        EXPECT_EQ(p.substr(0, tete.size()), tete);
        return p.substr(std::min(p.size(), tete.size()));
    }
    /// The style file with one record replaced.
    void style(std::string fichier, int code, const std::string& libelle, const std::string& texte_fond) const {
        std::string r = std::string(15, ' ') + texte::complete(libelle, 40) + std::string(61, ' ') + texte_fond +
                        std::string(4, '\0');
        t.pose("reseau/w_styl72.wdo", fichier.replace(static_cast<std::size_t>(code - 1) * record, record, r));
    }
};

const std::string midi = "{{Entréeµ8880000000284|Salade de tomates¦" + fois(7, "|¦") + "8880000001090|Buffet¦" +
                         fois(7, "|¦") + "Platµ" + fois(15, "|¦") + "8880000002110|Pâtes {maison}¦µ" + fois(16, "|¦") +
                         "µ1|Steak Frites¦2|Frites¦" + fois(14, "|¦") + "µ" + fois(16, "|¦") + "µ" + fois(16, "|¦") +
                         "}}";

TEST_F(Choix, LesDetailsSePrennentEtSeRendent) {
    tient(t, "details.txt");
    EXPECT_EQ(gardee(), page1252("8880000000024  |DES:Entrecôte 300 g|PVE:24.50|FA1:2|FA2:0|COU:1  ##QUA:002.00##"
                                 "{Bien chaud}{Sauce Poivre}{Riz}\r\n"));
    EXPECT_EQ(t.lis("w_styl72.wdo").size(), 501 * record);
}

TEST_F(Choix, LesPlatsDUnMenuArriventEnCuisine) {
    menu(page1252(midi));
    tient(t, "menu_prix_fixe.txt");
    EXPECT_EQ(tests::sans_identite(t.lis("reseau/2021-05-19-12-30-00_01_001_002_.txt")),
              page1252("#VERSION#2.1\r\n#SERVEUR#01\r\n#TABLE#001\r\n#NBCOUVERT#2 \r\n"
                       "#REF#8880000000581  {2.00}\r\n#COMP#Buffet|Pâtes (maison)|Steak Frites|\r\n#NOTE#\r\n"
                       "#REF#8880000000581  {1.00}\r\n#COMP#\r\n#NOTE#\r\n"));
}

TEST_F(Choix, SansPlatLaLigneResteIntacte) {
    menu(page1252(midi));
    tient_texte(t, std::string(debut) +
                       "touche \"Familles\"\ntouche \"Menus\"\ntouche \"Menu midi\"\ntouche \"Fermer\"\n"
                       "touche \"Valider\"\ntouche g2 0 5\ntouche g2 0 5\n" +
                       quitte);
    EXPECT_EQ(gardee(),
              page1252("8880000000581  |DES:Menu midi|PVE:15.00|FA1:3|FA2:98|" + midi + " ##QUA:001.00##\r\n"));
}

TEST_F(Choix, LEssaiDuMenuComposeFinitLeLogiciel) {
    tient(t, "menu_compose.txt", "--service");
    EXPECT_FALSE(t.existe("prov.txt"));
}

TEST_F(Choix, UneGrillePleineNePrendPlusRien) {
    std::string remplit;
    for (int i = 1; i <= 20; ++i) {
        remplit += "touche g1 " + std::to_string(i) + " 0\ntape \"r" + std::to_string(i) + "\"\ntape entree\n";
    }
    tient_texte(t, std::string(debut) + "touche btx(5)\n" + remplit +
                       "touche \"A\"\ntouche \"Riz\"\nverifie image g1(1) 4 0 0\ntouche \"Fermer\"\n"
                       "verifie lignes g1 21\nverifie g1 20 0 \"r20\"\ntouche g1 3 0\ntouche \"Oui\"\n"
                       "touche \"A\"\ntouche \"Riz\"\nverifie image g1(1) 4 0 101\ntouche \"Fermer\"\n"
                       "verifie g1 19 0 \"r20\"\nverifie g1 20 0 \"Riz\"\ntouche \"Valider\"\n");
}

/// The router's own colours hold, but the text stays readable; a colour beyond three bytes is cut.
TEST_F(Choix, LesCouleursDuFichierRestentLisibles) {
    tient_texte(t, std::string(debut) + "touche btx(5)\ntouche \"A\"\n");
    const std::string initial = t.lis("w_styl72.wdo");
    using namespace std::string_literals;
    style(initial, 22, "Bleu nuit", "\x30\x20\x10\x00\xA0\x20\x30\xFF"s);
    tient_texte(t, std::string(debut) + "touche btx(5)\ntouche \"A\"\nverifie g1(0) 2 0 \"Bleu nuit\"\n" +
                       "verifie couleur g1(0) 2 0 A02030\ntouche \"Bleu nuit\"\nverifie couleur g1(0) 2 0 A02030\n");
    EXPECT_EQ(t.lis("w_styl72.wdo"), t.lis("reseau/w_styl72.wdo")) << "an initialised file is never written";

    // A text in the colour of its ground is painted as one in white on that ground is.
    const auto peint = [&](const std::string& texte, const std::string& fichier) {
        style(initial, 22, "Bleu nuit", texte + "\xA0\x20\x30\x00"s);
        tient_texte(t, std::string(debut) + "touche btx(5)\ntouche \"A\"\ncapture " + fichier + ".png\n");
        return t.lis(fichier + ".png");
    };
    const std::string confondu = peint("\xA0\x20\x30\x00"s, "confondu"), blanc = peint("\xFF\xFF\xFF\x00"s, "blanc");
    EXPECT_TRUE(!blanc.empty() && confondu == blanc);
    EXPECT_NE(peint("\x00\xFF\xFF\x00"s, "jaune"), blanc) << "a readable text keeps its colour";
}

TEST_F(Choix, UnFichierDeStylesCourtOuAbimeNEstJamaisFatal) {
    const std::string ouvre = std::string(debut) +
                              "touche btx(5)\ntouche \"A\"\nverifie ecran sai_detail\ntouche g1(0) 1 0\n" +
                              fois(10, "touche g2 0 1\ntouche g1(1) 14 0\n") + "touche g2 0 5\ntouche \"Valider\"\n" +
                              "touche \"Note\"\ntouche g1 1 0\ntouche \"Valider\"\ntouche \"Fermer\"\n" + quitte;
    std::mt19937 hasard(72);
    const auto octets = [&](std::size_t n) {
        std::string r;
        for (; n > 0; --n) r += static_cast<char>(hasard() & 0xFF);
        return r;
    };
    const std::string tete = texte::complete("#INIT#", record);
    const std::string bruts[] = {"",
                                 "#",
                                 octets(127),
                                 octets(128),
                                 octets(64127),
                                 octets(501 * record),
                                 tete.substr(0, 127),
                                 tete,
                                 tete + octets(22 * record),
                                 tete + std::string(64000, '\0'),
                                 tete + octets(1 << 20)};
    for (const std::string& fichier : bruts) {
        t.pose("w_styl72.wdo", fichier);
        tient_texte(t, ouvre);
        const std::string apres = t.lis("w_styl72.wdo");
        if (fichier.starts_with("#INIT#")) {
            EXPECT_EQ(apres, fichier);
        } else {
            EXPECT_EQ(apres.size(), 501 * record) << fichier.size();
        }
    }
}

TEST_F(Choix, UneCompositionAbimeeNEstJamaisFatale) {
    const std::string sans_fin = midi.substr(0, midi.size() - 2);
    const std::string compositions[] = {"",
                                        "{{",
                                        "{{}}",
                                        "{{Entréeµ1|Seule",
                                        sans_fin,
                                        "{{Eµ" + fois(17, "1|Plat¦") + "Pµ1|Riz¦}}",
                                        "{{" + fois(20000, "µ1|Riz¦") + "}}",
                                        "{{Eµ1|" + std::string(1 << 20, 'x') + "¦}}",
                                        "{{" + std::string(1 << 20, 'x')};
    for (const std::string& c : compositions) {
        Terrain neuf;
        neuf.restaurant();
        neuf.pose("reseau/worvalune.wdo",
                  neuf.lis("reseau/worvalune.wdo") +
                      page1252("#ARTI#000078880000000581  |DES:Menu midi|PVE:15.00|FA1:3|FA2:98|" + c + "\r\n"));
        tient_texte(neuf, std::string(debut) +
                              "touche \"Familles\"\ntouche \"Menus\"\ntouche \"Menu midi\"\nverifie ecran menufor\n"
                              "touche g1 0 0\ntouche g2 0 1\ntouche g1 7 1\ntouche g2 0 5\nverifie Label5 \"15.00 \"\n"
                              "touche \"Valider\"\ntouche \"Note\"\ntouche g1 1 0\nverifie Label5 \"15.00 \"\n"
                              "touche \"Valider\"\n");
    }
}

TEST(Compositions, CeQuiEstLisibleEstLu) {
    const auto lus = [](const std::string& utf8) {
        std::string r;
        for (const lignes::Service& s : lignes::services(page1252(utf8))) {
            r += s.nom + ":";
            for (const std::string& c : s.choix) r += c + ",";
        }
        return r;
    };
    EXPECT_EQ(lus("Eµ1|a¦|¦2|b¦Pµ3|c¦µ|¦Dµ4| d ¦"), "E:a,,b,P:c,D:d,");
    EXPECT_EQ(lus("1|a¦2|b¦"), ":a,b,") << "no name at all";
    EXPECT_EQ(lus("Eµ1|a¦b¦Pµc"), "E:a,b,") << "a choice without reference, and a course that breaks off";
    EXPECT_EQ(lus("Eµ1|a¦2|b"), "E:a,b,");
    EXPECT_EQ(lus("Eµ" + fois(17, "1|a¦") + "Pµ1|b¦"), "E:" + fois(16, "a,") + "E:a,P:b,")
        << "a dish too many for one page stands on another";
    EXPECT_EQ(lus(""), "");
    EXPECT_EQ(lus("Entrée"), "");
    const std::string ouvertes = fois(60000, "{{a##QUA:");
    EXPECT_EQ(lignes::composition(ouvertes), "a") << "many that never end";
}

/// What a router wrote around a label, control characters too, never makes a choice that cannot be taken back.
TEST(Complements, UnChoixSeReprendToujours) {
    for (const std::string libelle : {"Riz", " Riz ", "Riz\t", "\x01Riz \x1F", "{Riz}|"}) {
        complements::prend("8880000000024  |DES:x");
        complements::bascule(libelle);
        EXPECT_TRUE(complements::est_pris(libelle)) << libelle;
        EXPECT_TRUE(complements::est_marque(libelle)) << libelle;
        complements::bascule(libelle);
        EXPECT_FALSE(complements::est_pris(libelle)) << libelle;
        EXPECT_EQ(lignes::validee(etat::texte_travail, 1, complements::rangs()),
                  "8880000000024  |DES:x ##QUA:001.00##");
    }
}

/// Every character that a keyboard can give goes through note, correction and file, and comes back.
TEST_F(Choix, ChaqueSigneDeLaPageReviendraInchange) {
    std::string ecrit, attendu;
    for (int c = 33; c < 256; ++c) {
        const bool manque = c == 0x7F || c == 0x81 || c == 0x8D || c == 0x8F || c == 0x90 || c == 0x9D || c == 0xA0;
        if (!manque) ecrit += static_cast<char>(c);
    }
    std::string frappes, comp = "#COMP#", lignes_lues;
    for (std::size_t i = 0, rang = 1; i < ecrit.size(); i += 30, ++rang) {
        const std::string r = ecrit.substr(i, 30);
        std::string tape;
        for (const char c : texte::vers_utf8(r)) tape += (c == '"' || c == '\\' ? "\\" : "") + std::string(1, c);
        frappes += "touche g1 " + std::to_string(rang) + " 0\ntape \"" + tape + "\"\ntape entree\n";
        comp += lignes::neutralise(r) + "|";
    }
    tient_texte(t, std::string(debut) + "touche btx(5)\n" + frappes +
                       "touche bt_droi\ntouche \"A\"\ntouche \"Béarnaise\"\ntouche \"Fermer\"\ntouche g2 0 5\n" +
                       fois(2, "touche \"Note\"\ntouche g1 1 0\nverifie Label6 \"2\"\ntouche g2 0 5\ntouche g2 0 5\n") +
                       "touche \"Note\"\ntouche \"Envoyer\"\ntouche \"Oui\"\nattend 1500\n");
    EXPECT_EQ(tests::sans_identite(t.lis("reseau/2021-05-19-12-30-00_01_001_002_.txt")),
              "#VERSION#2.1\r\n#SERVEUR#01\r\n#TABLE#001\r\n#NBCOUVERT#2 \r\n#REF#8880000000024  {2.00}\r\n" + comp +
                  page1252("Béarnaise|") + "\r\n#NOTE#\r\n");
}

/// Whatever a waiter types or a catalogue holds, the order file reads block by block, and its remarks are those taken.
TEST(Commandes, LeFichierSeLitToujours) {
    std::mt19937 hasard(98);
    const auto tire = [&](std::size_t n) { return std::uniform_int_distribution<std::size_t>(0, n - 1)(hasard); };
    const std::string_view morceaux[] = {
        "{",   "}",     "|",   "{{",  "}}",    "##QUA:005.00##", "FA2:99", "|FA2:98|", "|DES:", "|PVE:9.50",
        "Ð"_t, "|¤¤"_t, "µ"_t, "¦"_t, "#REF#", "#COMP#",         "#NOTE#", "\t",       "é"_t,   "8880000000024  ",
        " "};
    const auto texte_au_hasard = [&] {
        std::string r;
        for (std::size_t k = tire(8); k > 0; --k) r += morceaux[tire(std::size(morceaux))];
        return r;
    };
    for (int tour = 0; tour < 3000; ++tour) {
        complements::prend("8880000000024  |DES:x" + texte_au_hasard());
        const std::string article = etat::texte_travail;
        for (std::size_t k = tire(4); k > 0; --k) complements::bascule(texte_au_hasard());
        complements::pose(tire(20), texte_au_hasard());
        Remarques prises;
        for (const std::string& r : complements::rangs()) {
            if (!texte::rogne(r).empty()) prises.emplace_back(texte::rogne(r));
        }
        const std::string ligne = lignes::validee(article, 3, complements::rangs());
        ASSERT_EQ(lignes::segments(ligne), prises) << ligne;
        ASSERT_EQ(lignes::composition(ligne).has_value(), lignes::composition(article).has_value()) << ligne;
        // Cut out, a marker in the catalogue's own text lets an open composition run on.
        if (!lignes::quantite(article)) {
            ASSERT_EQ(lignes::composition(ligne), lignes::composition(article)) << ligne;
            ASSERT_EQ(lignes::est_menu_compose(ligne), lignes::est_menu_compose(article)) << ligne;
        }
        etat::lignes_note[1] = ligne;
        etat::nb_lignes_note = 1;
        const std::string fichier = commande::contenu();
        const auto lues = texte::lignes(fichier);
        ASSERT_GE(lues.size(), 8U);
        ASSERT_EQ((lues.size() - 5) % 3, 0U) << fichier;
        for (std::size_t i = 5; i < lues.size(); ++i) {
            constexpr std::string_view bloc[] = {"#REF#", "#COMP#", "#NOTE#"};
            ASSERT_TRUE(lues[i].starts_with(bloc[(i - 5) % 3])) << fichier;
        }
        std::string comp = "#COMP#";
        if (!lignes::est_menu_compose(ligne)) {
            for (const std::string& r : prises) comp += r + "|";
        }
        ASSERT_EQ(lues[6], comp);
    }
    etat::nb_lignes_note = 0;
    etat::lignes_note[1].clear();
}

}  // namespace
