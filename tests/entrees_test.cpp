// Input files as they may be found: missing, empty, cut, huge, a directory, or any bytes at all. The terminal starts,
// or says why not, and a walk over its screens comes to no harm.
#include <functional>
#include <random>

#include "scene.h"

namespace {

namespace fs = std::filesystem;
using tests::fois;
using tests::Issue;
using tests::route;
using tests::Terrain;
using tests::tient_texte;

/// Ways for a file to be wrong: what its content becomes.
using Degat = std::pair<std::string, std::string (*)(std::string contenu)>;
const Degat degats[] = {
    {"vide", [](std::string) { return std::string(); }},
    {"coupe", [](std::string c) { return c.substr(0, c.size() * 2 / 3 - 1); }},
    {"lignes d'un mega-octet",
     [](std::string) {
         std::string r;
         for (const char* debut : {"#ARTI#00001", "#SERV#01 ", "#FAMI#02 ", "#TABL#", "#CCOF#", "#DIR#"}) {
             r += debut + std::string(1 << 20, 'x') + "\r\n";
         }
         return r;
     }},
    {"hasard",
     [](std::string c) {
         std::mt19937 hasard(static_cast<unsigned>(c.size()) * 7919U);
         c.resize(70000);
         for (char& octet : c) octet = static_cast<char>(hasard() & 0xFF);
         return c;
     }},
    {"octets changes",
     [](std::string c) {
         std::mt19937 hasard(4242);
         for (std::size_t i = 0; i < c.size(); i += 1 + hasard() % 60) c[i] = static_cast<char>(hasard() & 0xFF);
         return c;
     }},
    {"absent", nullptr},
    {"repertoire", nullptr},
};

void abime(const Terrain& t, const std::string& fichier, const Degat& d) {
    if (d.second != nullptr) return t.pose(fichier, d.second(t.lis(fichier)));
    fs::remove(t.chemin() / fichier);
    if (d.first == "repertoire") fs::create_directories(t.chemin() / fichier);
}

/// Touches that may miss, on all the screens of an order's road, and what closes them again.
const std::string promenade = R"(
    Image2 > btc(5) > btc(5) > btc(3) > tape reseau > tape entree > btc(5) > btc(5) > btx(1)
    g2 0 2 > btx(2) > g2 0 1 > g3 0 1 > g2 0 0 > g3 3 2 > g2 0 0 > g1 0 0 > g1 3 2 > attend 100 > g3 0 1 > g2 0 5 > g2 0 5
    btc(3) > g2 0 1 > g2 0 1 > g2 0 0 > btx(1) > btx(1) > bt_droi > g1 1 0 > tape {x| > tape entree > g2 0 5
    btx(2) > g2 0 5 > btx(3) > g2 0 5 > g2 0 1 > btx(1) > g2 0 5
    g2 0 4 > g2 0 0 > g1 1 0 > g1 2 0 > tape entree > g2 0 5 > g2 0 3 > btc(2) > btc(5) > attend 1500 > logo
)" + fois(5, "btc(3) > btc(5) > ttoc(57) > attend 1500 > g2 0 5\n") +
                              "btc(3) > btc(3) > btc(5)";

/// Walks over the screens: the session answers each touch and goes on. At the end the main screen is on top, or the
/// terminal said why it stopped.
void se_promene(const Terrain& t) {
    t.pose("promenade.txt", tests::route(promenade) + "capture fin.png\nlit ecran\n");
    const Issue r = t.joue("", "--rejoue - <\"" + (t.chemin() / "promenade.txt").string() + "\"");
    EXPECT_GE(r.statut, 0);
    EXPECT_LE(r.statut, 3) << r.erreurs;
    EXPECT_TRUE(r.sortie.ends_with("ok Form1\n")) << r.sortie;
}

/// The restaurant after a first day: all files are there, here and in the network directory.
void deja_ouvert(Terrain& t) {
    t.restaurant();
    t.pose("prov.txt", "#SERV#01\r\n#TABL#12\r\n");
    tient_texte(t, "verifie ecran Form1\n");
    t.pose("reseau/w_styl72.wdo", t.lis("w_styl72.wdo"));
}

class Entrees : public testing::Test {
  protected:
    Terrain modele;
    Entrees() { deja_ouvert(modele); }
    /// Terminals like it whose file is damaged here, or in the network directory.
    void abime_tout(const std::string& fichier, bool distant) const {
        for (const Degat& d : degats) {
            SCOPED_TRACE(fichier + (distant ? " du réseau, " : ", ") + d.first);
            Terrain t;
            t.copie(modele);
            // what comes from the network would replace the damaged file here
            if (!distant) fs::remove(t.reseau() / fichier);
            abime(t, distant ? "reseau/" + fichier : fichier, d);
            se_promene(t);
        }
    }
};

TEST_F(Entrees, SansDegatLaPromenadeEnvoieUneCommande) {
    se_promene(modele);
    EXPECT_EQ(modele.fichiers("reseau", ".txt"), std::vector<std::string>{"2021-05-19-12-30-00_02_001_002_.txt"});
}

TEST_F(Entrees, SurLaTablette) {
    for (const char* f :
         {"orvalune.wdo", "worvalune.wdo", "w_styl72.wdo", "progppb.wdo", "wwinqx42.wdo", "wfichdir.wdo", "prov.txt"}) {
        abime_tout(f, false);
    }
}

TEST_F(Entrees, DansLeReseau) {
    for (const char* f : {"worvalune.wdo", "w_styl72.wdo", "Test.res"}) abime_tout(f, true);
}

/// What the waiter must know is said once, and then the terminal serves.
TEST(EntreesManquantes, LeTerminalDitCeQuiManque) {
    const std::string sans_reseau =
        "Le répertoire réseau n'est pas donné, les commandes attendront sur la tablette : prévenez le technicien !";
    const std::string sans_fichiers =
        "Les fichiers du logiciel n'ont pas pu être créés dans le répertoire de travail : prévenez le technicien !";
    const struct {
        std::string fichier;
        Degat degat;
        std::string message;
    } cas[] = {{"wfichdir.wdo", degats[0], sans_reseau},
               {"wfichdir.wdo", {"octets nuls", [](std::string) { return std::string(40, '\0'); }}, sans_reseau},
               {"wfichdir.wdo", {"repertoire", nullptr}, sans_reseau},
               {"progppb.wdo", {"repertoire", nullptr}, sans_fichiers},
               {"w_styl72.wdo", {"repertoire", nullptr}, sans_fichiers}};
    for (const auto& c : cas) {
        SCOPED_TRACE(c.fichier + ", " + c.degat.first);
        Terrain t;
        deja_ouvert(t);
        abime(t, c.fichier, c.degat);
        tient_texte(t, route("Label1 = " + c.message +
                             " > Fermer > Sophie > Table > g3 0 0 > g1 0 0 > Valider > Note > "
                             "Envoyer > Oui > attend 1500"));
        const std::size_t attend = c.message == sans_reseau ? 1 : 0;
        EXPECT_EQ(t.fichiers(".", "-A-").size(), attend);
        EXPECT_EQ(t.fichiers("reseau", ".txt").size(), 1 - attend);
        EXPECT_FALSE(t.existe("Test.res")) << "the working directory never stands in for the network";
    }
}

/// Without a settings store every setting has its default, and the screen format is asked at each start.
TEST(EntreesManquantes, UnMagasinQuiNeSOuvrePas) {
    Terrain t;
    deja_ouvert(t);
    fs::remove(t.chemin() / "wwinqx42.wdo");
    fs::create_directory(t.chemin() / "wwinqx42.wdo");
    for (int depart = 0; depart < 2; ++depart) {
        tient_texte(t, route("verifie ecran porpay > Image2 > Label1 = La résolution n'a pas pu être enregistrée, elle "
                             "reste ce qu'elle était ! > Fermer > "
                             "verifie police btx(1) 14 > Sophie"));
    }
    EXPECT_TRUE(fs::is_directory(t.chemin() / "wwinqx42.wdo"));
}

TEST(EntreesEnormes, CentMegaOctets) {
    for (const char* f : {"worvalune.wdo", "progppb.wdo", "wfichdir.wdo", "reseau/worvalune.wdo"}) {
        SCOPED_TRACE(f);
        Terrain t;
        deja_ouvert(t);
        if (!std::string(f).starts_with("reseau/")) fs::remove(t.reseau() / f);
        t.pose(f, t.lis(f));
        fs::resize_file(t.chemin() / f, 100U << 20);
        se_promene(t);
    }
}

/// As an editor on Windows saves it: a mark before the text, CR LF behind each line.
TEST(Scenario, UneFauteSeDitEntiereEtNEffaceRien) {
    Terrain t;
    t.restaurant();
    const std::string faux = "\xEF\xBB\xBF# Sophie\r\nverifie btx(1) \"x\"\r\n";
    const Issue r = t.joue(faux);
    EXPECT_EQ(r.statut, 1);
    EXPECT_TRUE(r.erreurs.ends_with(":2: verifie btx(1) \"x\" : attendu \"x\", trouvé \"Sophie\"\n")) << r.erreurs;
    t.pose("dialogue.txt", faux);
    const Issue d = t.joue("", "--rejoue - <\"" + (t.chemin() / "dialogue.txt").string() + "\"");
    EXPECT_EQ(d.sortie, "erreur: attendu \"x\", trouvé \"Sophie\"\n");
    EXPECT_EQ(d.statut, 1);
    EXPECT_EQ(t.joue("capture a.png\ntourne 1 1\ncapture a.png\n").statut, 2);
    EXPECT_GT(t.lis("a.png").size(), 1000u) << "the picture from before";

    const std::string fin = "touche \"Sophie\"\ntouche g2 0 5\ntouche \"Oui\"\nverifie arret\n";
    EXPECT_EQ(t.joue(fin + "verifie ecran Form1\n").statut, 3);
    for (const char* faute : {"verifi arret\n", "touche\n", "verifie arret oui\n"})
        EXPECT_EQ(t.joue(fin + faute).statut, 2) << faute;
}

/// Without a directory to work in, nothing is done but to say so.
TEST(SansDossier, LeProgrammeLeDit) {
    Terrain t;
    t.restaurant();
    const Issue r = t.joue("verifie ecran Form1\n", "--dossier \"" + (t.chemin() / "nulle_part").string() + "\"");
    EXPECT_EQ(r.statut, 2);
    EXPECT_TRUE(r.erreurs.starts_with("répertoire de travail introuvable : ")) << r.erreurs;
}

}  // namespace
