// The dialogs around an order: table and covers, keypad, message box, reset, screen format.
#include <array>

#include "rejeux.h"

namespace {

using tests::Issue;
using tests::photographie;
using tests::Terrain;
using tests::tient;
using tests::tient_texte;

/// Width and height that a PNG file says it has.
std::pair<int, int> taille_png(const std::string& png) {
    const auto entier = [&](std::size_t i) {
        int n = 0;
        for (std::size_t k = i; k < i + 4 && k < png.size(); ++k) n = n * 256 + static_cast<unsigned char>(png[k]);
        return n;
    };
    return {entier(16), entier(20)};
}

TEST(Table, LeNumeroEtLesCouverts) {
    Terrain t;
    t.restaurant();
    tient(t, "table.txt");
    tient(t, "table_au_clavier.txt");
}

TEST(Table, SeulNonArreteLaVerification) {
    for (const char* valeur : {"NON", " NON"}) {
        Terrain t;
        t.restaurant();
        t.regle(55, valeur);
        tient(t, "table_libre.txt");
    }
    for (const char* valeur : {"", "OUI", "non", "#I#NON", "NON!"}) {
        Terrain t;
        t.restaurant();
        t.regle(55, valeur);
        EXPECT_EQ(t.joue_fichier("table_libre.txt").statut, 1) << valeur;
    }
}

TEST(Table, SansPlanDeSalleTouteTableEstInconnueSaufZero) {
    Terrain t;
    t.restaurant();
    t.pose("reseau/worvalune.wdo", "#SERV#01 Sophie\r\n");
    tient(t, "table_sans_plan.txt");
}

TEST(Pave, LesTouchesEtLesMasques) {
    Terrain t;
    t.restaurant();
    tient(t, "pave.txt");
    t.regle(200, "OUI");
    tient_texte(t, "touche \"Sophie\"\ntouche logil\nattend 100\nlit ecran\n");
    EXPECT_NE(t.lis("sortie"), "clav_num\n") << "no code is asked for";
}

/// The caption grows with the box: sizes 1, 5 and 10 are factors 1.0, 1.4 and 1.9, cut on a screen too small for it.
TEST(Boite, LesGenresEtLesTailles) {
    const struct {
        const char *taille, *ecran, *resolution;
        int police;
    } cas[] = {
        {"#I#1", "1280x800", "#I#0:01280:00770", 24},  {"#I#5", "1280x800", "#I#0:01280:00770", 34},
        {"#I#10", "1280x800", "#I#0:01280:00770", 43}, {"#I#10", "1920x1080", "#I#0:01920:01050", 46},
        {"#I#9", "1920x1080", "#I#0:01920:01050", 43}, {"", "1280x800", "#I#0:01280:00770", 24},
        {"#I#10", "600x1024", "#I#0:00554:00770", 19},
    };
    for (const auto& c : cas) {
        SCOPED_TRACE(std::string(c.taille) + " " + c.ecran);
        Terrain t;
        t.restaurant();
        t.regle(2, c.resolution);
        t.regle(50, c.taille);
        tient(t, "boites.txt", std::string("--ecran ") + c.ecran);
        tient_texte(t, "touche \"Sophie\"\ntouche label_bas\nverifie police Label1 " + std::to_string(c.police) + "\n",
                    std::string("--ecran ") + c.ecran);
        if (*c.taille == 0) {
            EXPECT_EQ(t.lis("wwinqx42.wdo").substr(980, 20), "#I#1                ");
        }
    }
}

/// Each dialog, by the touches that lead to it from the home page with a line in the note.
constexpr std::array<std::pair<const char*, const char*>, 10> dialogues = {{
    {"Form1", ""},
    {"ch_numtab", "touche \"Table\"\n"},
    {"lis_tbb", "touche \"Table\"\ntouche \"Liste\"\n"},
    {"clav_num", "touche \"Table\"\ntouche \"Autres\"\nattend 100\n"},
    {"sel_arti", "touche btx(5)\n"},
    {"eta_com", "touche \"Note\"\n"},
    {"sai_detail", "touche btx(5)\ntouche \"A\"\n"},
    {"ch_outils", "touche \"Outils\"\nattend 300\n"},
    {"menufor", "touche Command6\n"},
    {"suivi", "touche logosuiv\n"},
}};
constexpr const char* note_d_une_ligne =
    "touche \"Sophie\"\ntouche \"Table\"\ntouche g3 0 0\ntouche g1 0 1\ntouche \"Valider\"\ntouche btx(5)\n"
    "touche bt_droi\ntouche \"Valider\"\n";
constexpr const char* question =
    "touche label_bas\nverifie ecran mini_97\n"
    "verifie Label1 \"Confirmez la réinitialisation du logiciel, les données saisies seront perdues ?\"\n";

TEST(Reinitialisation, NonGardeLeDialogueOuiArreteSansRienEcrire) {
    Terrain t;
    t.restaurant();
    for (const auto& [nom, chemin] : dialogues) {
        SCOPED_TRACE(nom);
        const std::string debut = std::string(note_d_une_ligne) + chemin + "verifie ecran " + nom + "\n" + question;
        for (const char* refus : {"touche \"Non\"\n", "touche btc(5)\n"}) {
            tient_texte(t,
                        debut + refus + "verifie ecran " + nom + "\n" +
                            "verifie Form1.label_etat \"Sophie · Table 001 · 2 couverts · 1 ligne · 49.00\"\n",
                        "--service");
        }
        const auto avant = photographie(t);
        tient_texte(t, debut + "touche \"Oui\"\nverifie arret\n", "--service");
        EXPECT_TRUE(photographie(t) == avant);
        EXPECT_FALSE(t.existe("prov.txt"));
    }
}

class Format : public testing::Test {
  protected:
    Terrain t;
    Format() {
        t.restaurant();
        t.regle(2, "");
    }
    std::string record() const { return t.lis("wwinqx42.wdo").substr(20, 20); }
    /// Size of the form at a later start.
    std::pair<int, int> ensuite(const std::string& ecran) const {
        tient_texte(t, "verifie ecran Form1\ncapture forme.png\n", "--ecran " + ecran);
        return taille_png(t.lis("forme.png"));
    }
};

TEST_F(Format, LesDeuxImages) {
    using Taille = std::pair<int, int>;
    tient_texte(t, "verifie ecran porpay\ntouche Image1\nverifie ecran Form1\ncapture forme.png\n");
    EXPECT_EQ(record(), "#I#0:00554:00770    ");
    EXPECT_EQ(taille_png(t.lis("forme.png")), Taille(554, 770)) << "it counts at once";
    EXPECT_EQ(ensuite("1280x800"), Taille(554, 770));
    t.regle(2, "");
    tient_texte(t, "touche Image2\nverifie ecran Form1\n", "--ecran 1920x1200");
    EXPECT_EQ(record(), "#I#0:01920:01170    ");
    EXPECT_EQ(ensuite("1920x1200"), Taille(1920, 1170));
}

TEST_F(Format, LaResolutionTapee) {
    using Taille = std::pair<int, int>;
    tient(t, "resolution_tapee.txt");
    EXPECT_EQ(record(), "#I#101024:00600     ");
    EXPECT_EQ(ensuite("1280x800"), Taille(1024, 600));
    t.regle(2, "#I#110000:00768");
    EXPECT_EQ(ensuite("1280x800"), Taille(800, 768)) << "five digits are not read back; the width's default stands in";
}

TEST_F(Format, UneReponseVideLaisseLeChoixOuvert) {
    tient(t, "resolution_vide.txt");
    EXPECT_EQ(record(), std::string(20, ' '));
}

/// The same scenario on the same ground gives the same files and the same pictures, byte for byte.
TEST(Jumeaux, DeuxRejeuxDonnentLesMemesOctets) {
    std::array<std::map<std::string, std::string>, 2> vues;
    for (auto& vue : vues) {
        Terrain t;
        t.restaurant();
        tient(t, "jumeaux.txt");
        vue = photographie(t);
    }
    EXPECT_EQ(vues[0].size(), vues[1].size());
    EXPECT_GE(vues[0].size(), 19U);
    for (const auto& [nom, contenu] : vues[0]) EXPECT_TRUE(contenu == vues[1][nom]) << nom;
    EXPECT_NE(vues[0]["table.png"], vues[0]["table_tapee.png"]) << "a picture shows what was typed";
}

}  // namespace
