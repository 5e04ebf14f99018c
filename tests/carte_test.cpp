// orvalune-carte, the real program on real folders: what it makes of sheets, how it goes back, what it refuses.
#include <functional>
#include <map>
#include <random>

#include "platform/systeme/texte.h"
#include "rejeux.h"

namespace {

namespace fs = std::filesystem;
using namespace tests;

const std::vector<std::string> fichiers_du_reseau = {"orvalune.wdo", "progppb.wdo", "w_styl72.wdo", "worvalune.wdo"};

class Carte : public testing::Test {
  protected:
    Terrain t;
    Carte() { fs::create_directories(t.chemin() / "reseau"); }

    /// Runs the program in the directory of the test.
    Issue lance(const std::string& arguments) const {
#ifdef _WIN32
        const std::string va = "cd /d \"" + t.chemin().string() + "\" && ";
#else
        const std::string va = "cd \"" + t.chemin().string() + "\" && ";
#endif
        return t.lance("\"" CARTE "\" " + arguments, va);
    }
    void reussit(const std::string& arguments) const {
        const Issue r = lance(arguments);
        EXPECT_EQ(r.statut, 0) << arguments << "\n" << r.sortie << r.erreurs;
    }
    /// The lines that a run says, and its status.
    void dit(const std::string& arguments, int statut, const std::string& attendu) const {
        const Issue r = lance(arguments);
        EXPECT_EQ(r.statut, statut) << arguments << "\n" << r.erreurs;
        EXPECT_EQ(r.sortie, attendu) << arguments;
    }
    void pose_tableau(const std::string& nom, const std::string& contenu) const {
        t.pose("carte/" + nom, contenu);
    }
    /// Sheets that are right and small.
    void petite_carte() const {
        pose_tableau("serveurs.csv", "Numéro;Nom\n1;Sophie\n");
        pose_tableau("familles.csv", "Numéro;Nom\n1;Entrées\n2;Viandes\n");
        pose_tableau("articles.csv",
                     "Référence;Libellé;Prix;Famille\n8880000000024;Entrecôte;24,50;2\n8880000000284;Salade;6,5;1\n");
    }
    std::string ligne_du_catalogue(const std::string& debut) const {
        const std::string c = t.lis("reseau/worvalune.wdo");
        const auto p = c.find(debut);
        return p == std::string::npos ? "" : c.substr(p, c.find("\r\n", p) - p);
    }
    void memes_fichiers(const std::string& a, const std::string& b, const std::vector<std::string>& noms) const {
        for (const std::string& nom : noms) {
            EXPECT_FALSE(t.lis(a + "/" + nom).empty()) << nom;
            EXPECT_TRUE(t.lis(a + "/" + nom) == t.lis(b + "/" + nom)) << a << ", " << b << ": " << nom;
        }
    }
};

TEST_F(Carte, ToutesLesFautesSontDitesEtRienNEstEcrit) {
    pose_tableau("serveurs.csv",
                 "Numéro;Nom;Couleur;Âge\n21;Sophie;bleu;3\n2;;lilas;\n2;Marc;#C24B45;\n\n3;Zoë ★;;\nx;A;;\n");
    pose_tableau(
        "familles.csv",
        "Numéro;Nom;Couleur;Sous-groupe de\n121;A;;\n25;B;;\n1;Entrées;;\n1;Encore;;\n5;C;;1\n35;a|b;;9\n2;V;;\n");
    pose_tableau("articles.csv",
                 "Référence;Libellé;Prix;Famille;Menu;Impression\n8880000000024;Entrecôte;douze;2;;\n"
                 "8,88E+12;A;1;1;;\n888;B;-1;121;;\n8880000000024;Salade {verte};1.234;1;;\n8880000000031;;;;;98\n"
                 "8880000000048;Menu;15;1;prix fixe;\n8880000000055;Formule;12,50 €;1;composé;3\n"
                 "8880000000062;Autre;3;1;peut-être;\n8880000000079;Seul;3;1;prix fixe;\n;Sans;3;1;prix fixe;\n");
    pose_tableau("tables.csv", "Table\n0\n5-3\n1-4\n4\n1000\nbar\n");
    pose_tableau("menus.csv",
                 "Menu;Service;Plat;Quantité\n8880000000048;Entrée;8880000000999;\n8880000000048;;Soupe;\n"
                 "8880000000048;Plat;Soupe;2\n8880000000055;Plat;8880000000024;\n8880000000055;;Soupe;0\n"
                 "8880000000062;Plat;Soupe;\n8880000009999;Plat;Soupe;\n");
    pose_tableau("details.csv", "Catégorie;Libellé;Fond;Code\nA;A;mauvais;\nA;B;;35\n;C;;\nB;" + std::string(41, 'x') +
                                    ";;\nC;C;;40\nD;D;;40\n");
    pose_tableau(
        "touches.csv",
        "Page;Case;Libellé;Action;Image;Taille;Largeur;Couleur\n50;1;A;famille 1;;;;\n0;96;A;famille 7;;;;\n"
        "0;1;A;page 50;poison;0;10;#12345\n0;1;A;page 7;50;;;\n0;2;A;article 888;;;;\n0;3;A;sous-groupe 6;;;;\n"
        "0;4;A;va;;;;\n0;5;A;;;;;\n");
    dit("fabrique carte reseau", 1, scenario("../carte/fautes.txt"));
    EXPECT_TRUE(t.fichiers("reseau", "").empty());
}

/// What counts is how many there are.
TEST_F(Carte, CeQuiNAPlusDePlace) {
    petite_carte();
    const auto rangees = [](int n, const std::string& debut, const std::string& fin, int premier = 1) {
        std::string r;
        for (int i = premier; i < premier + n; ++i) r += debut + std::to_string(i) + fin;
        return r;
    };
    const std::string menu = "8880000000048;";
    pose_tableau("articles.csv", "Référence;Libellé;Prix;Famille;Menu\n" + menu + "Menu;15;1;prix fixe\n" +
                                     rangees(301, "8880000001", ";x;1;2;\n", 100));
    pose_tableau("menus.csv",
                 "Menu;Service;Plat\n" + rangees(7, menu + "S", ";Soupe\n") + rangees(17, menu + "S1;P", "\n"));
    pose_tableau("details.csv", "Catégorie;Libellé\n" + rangees(17, "A;", "\n") + rangees(20, "C", ";x\n"));
    pose_tableau("entete.csv", "Ligne\n" + rangees(16, "ligne ", "\n"));
    dit("fabrique carte reseau", 1,
        "articles.csv, ligne 303, colonne Famille : « 2 » a déjà 300 articles, les tablettes n'en montrent pas plus ; "
        "mettez celui-ci dans une autre famille\n"
        "menus.csv, ligne 8, colonne Service : « S7 » est un septième service ; un menu en a six au plus\n"
        "menus.csv, ligne 24, colonne Plat : « P16 » est un dix-septième plat ; un service en a seize au plus\n"
        "menus.csv, ligne 25, colonne Plat : « P17 » est un dix-septième plat ; un service en a seize au plus\n"
        "details.csv, ligne 17, colonne Libellé : « 16 » est de trop : une catégorie a quinze lignes, son titre "
        "compris ; "
        "commencez-en une autre\n"
        "details.csv, ligne 18, colonne Libellé : « 17 » est de trop : une catégorie a quinze lignes, son titre "
        "compris ; "
        "commencez-en une autre\n"
        "details.csv, ligne 38, colonne Catégorie : « C20 » est une vingt et unième catégorie ; gardez-en vingt "
        "au plus\n"
        "entete.csv, ligne 17, colonne Ligne : « ligne 16 » est de trop ; gardez 15 lignes au plus\n"
        "8 fautes ; rien n'a été écrit. Corrigez les tableaux et recommencez.\n");
}

TEST_F(Carte, UnTableauIllisibleEstNomme) {
    petite_carte();
    fs::remove(t.chemin() / "carte/serveurs.csv");
    pose_tableau("familles.csv", "Numéro;Couleur;numero\n1;rouge;2\n");
    pose_tableau("articles.csv",
                 "Référence,Libellé,Prix,Famille\n8880000000024,\"Entrecôte,24.50,2\n8880000000284,Salade,6,50,1\n");
    pose_tableau("tables.csv", std::string("T\0a\0b\0", 6));
    pose_tableau("menus.csv", "");
    pose_tableau("details.csv", "Catégorie,Libellé\nA,B,C\n");
    pose_tableau("entete.csv", "\xEF\xBB\xBFLigne\nCafé\nPur\xC3\n");
    fs::create_directories(t.chemin() / "carte/touches.csv");
    dit("fabrique carte reseau", 1,
        "serveurs.csv : ce tableau manque ; « orvalune-carte modele » en écrit un exemple\n"
        "familles.csv, ligne 1 : il manque la colonne « Nom » ; écrivez ce titre dans la première ligne\n"
        "familles.csv, ligne 1 : la colonne « numero » est là deux fois ; gardez-en une seule\n"
        "articles.csv, ligne 2 : un guillemet n'est pas fermé ; ajoutez celui qui manque\n"
        "tables.csv : ce n'est pas un fichier CSV ; enregistrez-le au format « CSV UTF-8 »\n"
        "menus.csv, ligne 1 : la ligne des titres est vide ; écrivez-y les titres des colonnes\n"
        "details.csv, ligne 2 : « C » est dans une colonne sans titre ; mettez entre guillemets le texte qui contient "
        "le "
        "séparateur\n"
        "touches.csv : accès refusé ; fermez-le dans le tableur et recommencez\n"
        "entete.csv, ligne 3 : un caractère est abîmé ; enregistrez de nouveau ce tableau au format « CSV UTF-8 »\n"
        "9 fautes ; rien n'a été écrit. Corrigez les tableaux et recommencez.\n");
}

/// However a spreadsheet has written them, the same sheets make the same bytes.
TEST_F(Carte, ToutesLesEcrituresDunTableauSeValent) {
    petite_carte();
    reussit("fabrique carte reseau");
    const std::string voulu = t.lis("reseau/worvalune.wdo");
    EXPECT_EQ(voulu,
              page1252("#SERV#01 Sophie\r\n#FAMI#01 Entrées\r\n#FAMI#02 Viandes\r\n"
                       "#ARTI#000018880000000024  |DES:Entrecôte|PVE:24.50|FA1:2|FA2:0\r\n"
                       "#ARTI#000028880000000284  |DES:Salade|PVE:6.50|FA1:1|FA2:0\r\n#CCOF#000\r\n#CCOU#00\r\n"));
    const std::string articles[] = {
        "\xEF\xBB\xBF\"Référence\n(13 chiffres)\",LIBELLE,prix (en "
        "euros),Famille\r\n8880000000024,Entrecôte,24.50,2\r\n\r\n"
        "8880000000284,Salade,\"6,50 €\",1\r\n",
        page1252("Famille\tPrix\tLibellé\tRéférence\tNotes\n2\t24,5 €\tEntrecôte\t8880000000024\tgras\n"
                 "1\t 6.5 \tSalade\t8880000000284\t\n"),
        "Prix;Famille;Libellé;Référence;Menu;Couleur\r24,50\xE2\x80\xAF€;2;\"Entrecôte\";8880000000024;;0\r"
        "6,50;1;Salade;8880000000284;non;blanc\r"};
    for (const std::string& contenu : articles) {
        pose_tableau("articles.csv", contenu);
        reussit("fabrique carte reseau");
        EXPECT_EQ(t.lis("reseau/worvalune.wdo"), voulu) << contenu;
    }
    pose_tableau("articles.csv",
                 "Référence;Libellé;Prix;Famille;Couleur\n8880000000024;\"Côte\nde \"\"bœuf\"\"\";1 234,5;2;"
                 "#c24b45\n8880000000284;Salade;0;1;7\n");
    reussit("fabrique carte reseau");
    EXPECT_EQ(ligne_du_catalogue("#ARTI#00001"),
              page1252("#ARTI#000018880000000024  |DES:Côte de \"bœuf\"|PVE:1234.50|FA1:2|FA2:0|COU:1"));
    EXPECT_EQ(ligne_du_catalogue("#ARTI#00002"), "#ARTI#000028880000000284  |DES:Salade|PVE:0.00|FA1:1|FA2:0|COU:7");
}

TEST_F(Carte, LExempleRevientParLesFichiers) {
    reussit("modele carte");
    reussit("fabrique carte reseau");
    reussit("verifie reseau");
    reussit("exporte reseau retour");
    const auto noms = t.fichiers("carte", ".csv");
    EXPECT_EQ(noms.size(), 7U);
    EXPECT_EQ(t.fichiers("retour", ""), noms);
    memes_fichiers("carte", "retour", noms);
    // Sheets are never written over, and what is the same already stays untouched.
    EXPECT_EQ(lance("modele carte").statut, 2);
    EXPECT_EQ(lance("exporte reseau retour").statut, 2);
    memes_fichiers("carte", "retour", noms);
    const auto avant = fs::last_write_time(t.chemin() / "reseau/progppb.wdo");
    // A sub-group has one key.
    t.pose("double/worvalune.wdo", t.lis("reseau/worvalune.wdo") + "#ARTI#00099#SG#0001       |DES:Rouges|FA1:1\r\n");
    const Issue r = lance("exporte double encore");
    EXPECT_EQ(r.statut, 1);
    EXPECT_NE(r.sortie.find("famille 6 : ses sous-groupes seront écrits autrement, ou derrière"), std::string::npos)
        << r.sortie;
    // Of files that are cut short what is there comes back.
    const std::string styles = t.lis("reseau/w_styl72.wdo"), touches = t.lis("reseau/progppb.wdo");
    for (const auto& [choix, cases] : {std::pair<std::size_t, std::size_t>{0, 0}, {22, 14}}) {
        fs::remove_all(t.chemin() / "encore");
        t.pose("double/worvalune.wdo", t.lis("reseau/worvalune.wdo"));
        t.pose("double/w_styl72.wdo", styles.substr(0, choix * 128));
        t.pose("double/progppb.wdo", touches.substr(0, cases * 256));
        const Issue coupes = lance("exporte double encore");
        EXPECT_EQ(coupes.statut, 1);
        for (const auto& [nom, reste, entier] : {std::tuple{"w_styl72.wdo", choix * 128, "64128 : les derniers choix"},
                                                 {"progppb.wdo", cases * 256, "1280000 : les dernières pages"}})
            EXPECT_NE(
                coupes.sortie.find(std::string(nom) + " : a " + std::to_string(reste) + " octets au lieu de " + entier),
                std::string::npos)
                << coupes.sortie;
        const bool gardes = choix > 0;
        EXPECT_EQ(t.lis("encore/details.csv").find(";Saignante") != std::string::npos, gardes);
        EXPECT_EQ(t.lis("encore/touches.csv").find("0;13;Desserts;famille 4;") != std::string::npos, gardes);
    }
    reussit("fabrique retour reseau");
    EXPECT_EQ(fs::last_write_time(t.chemin() / "reseau/progppb.wdo"), avant);
}

TEST_F(Carte, LaDemonstrationEstFaiteDeSesTableaux) {
    fs::copy(fs::path(SOURCES) / "demo", t.chemin() / "demo", fs::copy_options::recursive);
    reussit("fabrique demo/carte reseau");
    memes_fichiers("reseau", "demo", fichiers_du_reseau);
    memes_fichiers("reseau", "demo/reseau", {"orvalune.wdo", "w_styl72.wdo", "worvalune.wdo"});
    reussit("verifie reseau");
    reussit("exporte demo retour");
    memes_fichiers("demo/carte", "retour", t.fichiers("demo/carte", ".csv"));
}

std::string cite(std::string t) {
    for (auto p = t.find('"'); p != std::string::npos; p = t.find('"', p + 2)) t.insert(p, 1, '"');
    return '"' + t + '"';
}

/// Sheets by chance, all of whose cells can be meant.
class Hasard {
  public:
    explicit Hasard(unsigned graine) : moteur_(graine) {}

    void tire(const std::function<void(const std::string&, const std::string&)>& pose) {
        std::string serveurs = "Numéro;Nom;Couleur\n", familles = "Nom;Numéro;Sous-groupe;Couleur\n",
                    tables = "Table\n";
        for (int n = 20; n >= 0; n -= entre(1, 4)) serveurs += rangee({entier(n), libelle(), couleur()});
        for (int n = 0; n <= 20; ++n) familles += rangee({libelle(), entier(n), "", couleur()});
        for (int n = 31; n <= 120; n += entre(1, 30))
            familles += rangee({libelle(), entier(n), entier(entre(0, 20)), couleur()});
        for (int n = 1; n < 900; n += entre(1, 200))
            tables += rangee({entier(n) + un_de({"", "-" + entier(n), "-" + entier(n)})});
        pose("serveurs.csv", serveurs);
        pose("familles.csv", familles);
        pose("tables.csv", tables);
        tire_articles(pose);
        pose("details.csv", details());
        pose("touches.csv", touches());
    }

  private:
    std::mt19937 moteur_;

    int entre(int a, int b) { return std::uniform_int_distribution<int>(a, b)(moteur_); }
    std::string un_de(const std::vector<std::string>& choix) {
        return choix[static_cast<std::size_t>(entre(0, static_cast<int>(choix.size()) - 1))];
    }
    static std::string entier(int n) { return std::to_string(n); }
    static std::string rangee(const std::vector<std::string>& cases) {
        std::string r;
        for (const std::string& c : cases) r += (r.empty() ? "" : ";") + cite(c);
        return r + "\n";
    }
    std::string libelle() {
        std::string r = un_de({"Côte", "Œuf", "\"Maison\"", "Île; flottante", "Thé, citron", "50 %", "l’été", "a"});
        for (int i = entre(0, 2); i > 0; --i) r += un_de({" ", "-", ", "}) + un_de({"de bœuf", "½", "à 5 €", "ÿ", "1"});
        return r;
    }
    std::string couleur() { return un_de({"", "rouge", "Vert", "4", "taupe", "#6E569C"}); }
    std::string teinte() { return un_de({couleur(), "#0A0b0C", "pêche", "noir", "#FFFFFF"}); }
    std::string reference() { return std::to_string(8880000000000 + entre(0, 59) * 7); }

    void tire_articles(const std::function<void(const std::string&, const std::string&)>& pose) {
        std::string articles = "Référence;Libellé;Prix;Famille;Couleur;Menu;Impression\n",
                    menus = "Menu;Service;Plat;Quantité;Prix\n";
        for (int n = 0; n < 60; ++n) {
            const std::string la = std::to_string(8880000000000 + n * 7),
                              menu = n % 6 ? "" : un_de({"prix fixe", "Composé"});
            const std::string prix = entier(entre(0, 999)) + un_de({"", ",5", ".05", ",99 €"});
            articles += rangee(
                {la, libelle(), prix, entier(entre(0, 20)), couleur(), menu, menu.empty() ? entier(entre(0, 97)) : ""});
            for (int i = entre(1, 20); menu == "Composé" && i > 0; --i)
                menus += rangee({la, "", reference(), un_de({"", "2", "12"}), un_de({"", "4,5"})});
            // A course ends with a dish; places before it may be empty.
            for (int s = entre(1, 6); menu == "prix fixe" && s > 0; --s) {
                for (int i = entre(0, 15); i > 0; --i)
                    menus += rangee({la, "Service " + entier(s), un_de({reference(), libelle(), ""}), "", ""});
                menus += rangee({la, "Service " + entier(s), un_de({reference(), libelle()}), "", ""});
            }
        }
        pose("articles.csv", articles);
        pose("menus.csv", menus);
    }

    std::string details() {
        std::string r = "Catégorie;Libellé;Fond;Encre\n";
        for (int c = entre(1, 20); c > 0; --c) {
            const std::string categorie = "Catégorie " + entier(c);
            r += rangee({categorie, "", teinte(), teinte()});
            for (int i = entre(0, 14); i > 0; --i) r += rangee({categorie, libelle(), teinte(), teinte()});
        }
        return r;
    }

    std::string touches() {
        std::string r = "Page;Case;Libellé;Action;Image;Taille;Largeur;Hauteur;Couleur\n";
        for (const int page : {0, 7, 49}) {
            r += rangee({entier(page), "Titre", libelle(), libelle(), "", "", "", "", ""});
            for (int k = entre(1, 5); k <= 95; k += entre(1, 20))
                r += rangee({entier(page), entier(k), libelle(),
                             un_de({"famille 3", "page 7", "article " + reference(), "#FONC#NOTE", "sous-groupe 31"}),
                             un_de({"", "7", "Poisson", "grillade N", "N"}), un_de({"", "9", "120"}), un_de({"", "2"}),
                             un_de({"", "3"}), teinte()});
        }
        return r;
    }
};

TEST_F(Carte, ToutCeQueLesTableauxPeuventDireRevient) {
    for (unsigned graine = 1; graine <= 5; ++graine) {
        SCOPED_TRACE(graine);
        Hasard(graine).tire([&](const std::string& nom, const std::string& contenu) { pose_tableau(nom, contenu); });
        fs::remove_all(t.chemin() / "retour"), fs::remove_all(t.chemin() / "encore");
        fs::create_directories(t.chemin() / "refait");
        reussit("fabrique carte reseau");
        reussit("exporte reseau retour");
        reussit("fabrique retour refait");
        memes_fichiers("reseau", "refait", fichiers_du_reseau);
        reussit("exporte refait encore");
        memes_fichiers("retour", "encore", t.fichiers("retour", ".csv"));
    }
}

TEST_F(Carte, CeQueLesTablettesPerdentEstDitParLigne) {
    reussit("modele carte");
    reussit("fabrique carte reseau");
    std::string entete;
    for (int i = 0; i < 17; ++i) entete += "ligne\r\n";
    t.pose("reseau/orvalune.wdo", entete);
    std::string catalogue =
        "#SERV#01 Sophie\r\n#SERV#21 Zoë\r\n#SERV#1  Marc\r\n#SERV#012Nadia\r\n#FAMI#02 Viandes\r\n#FAMI#03\r\n"
        "#XXXX#\x1B[2J\r\n\r\n#ARTI#000018880000000024  |DES:Entrecôte|PVE:24,50|FA1:2|FA2:1|COU:12\r\n"
        "#ARTI#00002888  |DES:Salade|FA1:x2\r\n#ARTI#000038880000000031  |DES:|PVE:1|FA1:130\r\n"
        "#ARTI#000048880000000048  |DES:Menu|PVE:1.5.0|FA1:5|FA2:98|{{Entréeµ|Soupe¦\r\n"
        "#ARTI#000058880000000055  |DES:Menu|PVE:15.00|FA1:5|FA2:98\r\n#ARTI#000068880000000062  "
        "|DES:Midi|PVE:9|FA1:5|FA2:99\r\n"
        "#ARTI#00007          |FA1:6\r\n#ARTI#00008               \r\n#ARTI#000098880000000086  |DES:Thé|PVE:2\r\n"
        "#ARTI#000108880000000024  |DES:Double|PVE:|FA1:7\r\n#TABL#1234\r\n#TABL#x\r\n#TABL#123\r\n"
        "#CCOF#0123456789012345678901\r\n#CCOF#0x\r\n#ARTI#00011#SG#9999       |DES:Vins|FA1:2\r\n"
        "#ARTI#00012#SG#0005       |DES:Rouges|FA1:2\r\n#ARTI#00013#SG#0006       |DES:Loire|FA1:35\r\n"
        "#ARTI#00014#SG#0005       |DES:Retour|FA1:36\r\n#ARTI#00015#SG#0007       |DES:Encore|FA1:37\r\n";
    t.pose("reseau/worvalune.wdo", page1252(catalogue));
    std::string styles = t.lis("reseau/w_styl72.wdo").substr(0, 500 * 128);
    styles.replace(35 * 128 + 15, 5, "Perdu").replace(20 * 128 + 116, 4, "\xFF\xFF\xFF\0", 4);
    t.pose("reseau/w_styl72.wdo", styles);
    t.pose("progppb.wdo", t.lis("reseau/progppb.wdo"));
    t.touche(0, 1, "Rien", "#VIDE#");
    t.touche(0, 2, "Vieux", "#AJOU#8880000000024  |DES:Autre");
    t.touche(0, 3, "Parti", "#AJOU#8880000000999");
    t.touche(0, 4, "Loin", "#PAGE#50", "22", "100", "rouge");
    t.touche(0, 5, "Vide", "#FAMI#99");
    t.touche(0, 97, "Dehors", "#FAMI#02");
    t.pose("reseau/progppb.wdo", t.lis("progppb.wdo").replace(16 * 256 + 63, 1, "0"));
    const Issue r = lance("verifie reseau");
    EXPECT_EQ(r.statut, 1);
    const std::string attendu = scenario("../carte/pertes.txt");
    EXPECT_EQ(r.sortie.substr(0, attendu.size()), attendu);
    EXPECT_NE(r.sortie.find("\nServeurs : Nadia\n"), std::string::npos) << r.sortie;
    // What is no such file at all.
    t.pose("reseau/worvalune.wdo", catalogue);
    t.pose("reseau/w_styl72.wdo", std::string(501 * 128, ' '));
    t.pose("reseau/progppb.wdo", "vide");
    const std::string entiers = lance("verifie reseau").sortie;
    for (const std::string dite : {"worvalune.wdo : est en UTF-8 : ", "w_styl72.wdo : ne commence pas par #INIT# : ",
                                   "progppb.wdo : n'est pas rempli : "})
        EXPECT_NE(entiers.find(dite), std::string::npos) << dite;
    fs::remove(t.chemin() / "reseau/worvalune.wdo");
    EXPECT_EQ(lance("verifie reseau").statut, 2);
}

TEST_F(Carte, LeTerminalLitCeQuiAEteFait) {
    reussit("modele carte");
    reussit("fabrique carte reseau");
    t.restaurant();
    t.regle(25, "#I#6");
    t.regle(26, "#I#8");
    t.pose("progppb.wdo", t.lis("reseau/progppb.wdo"));
    reussit("fabrique carte reseau");
    tient(t, "carte.txt");
    EXPECT_EQ(sans_identite(t.lis("reseau/2021-05-19-12-30-00_03_021_002_.txt")),
              page1252("#VERSION#2.1\r\n#SERVEUR#03\r\n#TABLE#021\r\n#NBCOUVERT#2 \r\n"
                       "#REF#8880000000024  {1.00}\r\n#COMP#À point|\r\n#NOTE#\r\n"
                       "#REF#8880000000574  {1.00}\r\n#COMP#Soupe à l'oignon|Glace au choix|\r\n#NOTE#\r\n"
                       "#REF#8880000005029  {1.00}   + ¤¤999999|ÐÐMENU\r\n#COMP#\r\n#NOTE#\r\n"
                       "#REF#8880000002035  {1.00)  ¤¤0.00|ÐÐMENU\r\n#COMP#\r\n#NOTE#\r\n"
                       "#REF#8880000006040  {1.00)  ¤¤0.00|ÐÐMENU\r\n#COMP#\r\n#NOTE#\r\n"));
}

/// The PNG pictures of a page, decoded, by what stands under them.
std::map<std::string, std::string> images_de(const std::string& page) {
    const std::string avant = "<img alt=\"", entre = "\" src=\"data:image/png;base64,",
                      signes = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::map<std::string, std::string> r;
    for (auto p = page.find(avant); p != std::string::npos; p = page.find(avant, p + 1)) {
        const auto titre = p + avant.size(), milieu = page.find(entre, titre), debut = milieu + entre.size();
        std::string& png = r[page.substr(titre, milieu - titre)];
        unsigned v = 0;
        int bits = 0;
        for (auto i = debut; signes.find(page[i]) != std::string::npos; ++i) {
            v = (v << 6 | static_cast<unsigned>(signes.find(page[i]))) & 0xFFFF;
            if ((bits += 6) >= 8) png += static_cast<char>(v >> (bits -= 8));
        }
    }
    return r;
}

/// The page shows the very pictures of the terminal.
TEST_F(Carte, LApercuMontreCeQueLeTerminalDessine) {
    fs::copy(fs::path(SOURCES) / "demo", t.chemin() / "demo", fs::copy_options::recursive);
    reussit("apercu demo/carte page.html");
    const auto images = images_de(t.lis("page.html"));
    EXPECT_EQ(images.size(), 49U);
    Terrain demo;
    fs::copy(fs::path(SOURCES) / "demo", demo.chemin(), fs::copy_options::recursive);
    tient_texte(demo,
                "capture serveurs.png\ntouche \"Karim\"\ncapture accueil.png\ntouche g2 0 0\ntouche g3 0 0\n"
                "touche g1 0 0\ntouche g2 0 5\ntouche \"Menus\"\ntouche \"Menu enfant\"\ntouche g2 0 1\n"
                "capture menu.png\n");
    for (const auto& [titre, fichier] : std::map<std::string, std::string>{
             {"Serveurs", "serveurs.png"}, {"L'accueil", "accueil.png"}, {"Menu enfant, 2 sur 3", "menu.png"}})
        EXPECT_TRUE(images.count(titre) && images.at(titre) == demo.lis(fichier)) << titre;
    EXPECT_EQ(fs::exists(t.chemin() / "wwinqx42.wdo"), false) << "it works in a directory of its own";
}

TEST_F(Carte, LApercuDitLesFautesEtMontreLeReste) {
    petite_carte();
    pose_tableau("serveurs.csv", "Numéro;Nom\n1;<Zoë> ★\n");
    const Issue r = lance("apercu carte page.html");
    EXPECT_EQ(r.statut, 1) << r.erreurs;
    const std::string page = t.lis("page.html");
    EXPECT_NE(page.find("<li>serveurs.csv, ligne 2, colonne Nom : « &lt;Zoë&gt; ★ » contient"), std::string::npos);
    const auto images = images_de(page);
    EXPECT_EQ(images.size(), 4U) << "servers, families, two families";
    for (const auto& [titre, png] : images) EXPECT_EQ(taille_png(png), std::pair(1280, 770)) << titre;
    EXPECT_EQ(lance("apercu nulle_part page.html").statut, 2);
    EXPECT_EQ(lance("").statut, 2);
}

#ifndef _WIN32
/// On Windows the installer's test does it, by the entry of the start menu.
TEST_F(Carte, UnDossierVideRecoitLExempleEtSOuvre) {
    fs::create_directories(t.chemin() / "tmp");
    fs::create_directories(t.chemin() / "ma carte");
    t.pose("bin/xdg-open", "#!/bin/sh\nprintf %s \"$1\" >ouvert\n");
    fs::permissions(t.chemin() / "bin/xdg-open", fs::perms::owner_all);
    const Issue r =
        t.lance("\"" CARTE "\" 'ma carte' >rien && timeout 20 cat ouvert",
                "cd '" + t.chemin().string() + "' && mkfifo ouvert && TMPDIR=$PWD/tmp PATH=$PWD/bin:$PATH ");
    EXPECT_EQ(r.statut, 0) << r.erreurs;
    EXPECT_EQ(t.fichiers("ma carte", ".csv").size(), 7U);
    const fs::path page = r.sortie;
    EXPECT_EQ(page.filename(), "carte.html");
    EXPECT_EQ(images_de(t.lis(fs::relative(page, t.chemin()).string())).size(), 17U);
}
#endif

}  // namespace
