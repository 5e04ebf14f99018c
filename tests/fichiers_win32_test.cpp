// Files of Windows as other programs and shares leave them: held open without sharing, on "\\server\share", too deep
// for the plain calls. Under the emulator a share is a directory of its prefix, elsewhere the administrator's own one.
#include <windows.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <thread>

#include "atelier.h"
#include "data/livraison.h"
#include "data/reseau.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/ouvrier.h"
#include "platform/systeme/processus.h"
#include "platform/systeme/texte.h"
#include "platform/systeme/texte_win32.h"
#include "rejeux.h"

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using fichiers::Issue;
using fichiers::Remplace;
using livraison::Sort;
using Noms = std::vector<std::string>;

std::string page(const fs::path& p) {
    return texte::etroit_tolerant(p.wstring());
}

/// Another program that has a file open, and lets others do so much with it.
class Tenu {
  public:
    explicit Tenu(const std::string& chemin, DWORD partage = 0)
        : h_(CreateFileW(texte::large(chemin).c_str(), GENERIC_READ, partage, nullptr, OPEN_EXISTING, 0, nullptr)) {
        EXPECT_NE(h_, INVALID_HANDLE_VALUE) << chemin;
    }
    ~Tenu() { lache(); }
    Tenu(const Tenu&) = delete;
    Tenu& operator=(const Tenu&) = delete;
    void lache() {
        if (h_ != INVALID_HANDLE_VALUE) CloseHandle(std::exchange(h_, INVALID_HANDLE_VALUE));
    }
    /// In a while: as soon as that is so, or when nobody waits for it any more.
    std::jthread lache_quand(std::function<bool()> moment) {
        return std::jthread([this, moment = std::move(moment)] {
            for (int i = 0; i < 2000 && !moment(); ++i) std::this_thread::sleep_for(5ms);
            lache();
        });
    }

  private:
    HANDLE h_;
};

/// One order, by the worker's own function.
Sort livre(const std::string& repertoire, const std::string& fichier) {
    return livraison::livre({repertoire, "TABLETTE01"}, fichier).sort;
}

class Occupe : public tests::Atelier {
  protected:
    Occupe() {
        fs::create_directory("reseau");
        ouvrier::abandonne();
        etat::repertoire_reseau = etat::repertoire_test = "reseau";
    }
    ~Occupe() override { ouvrier::abandonne(); }

    Noms attendent() const { return terrain.fichiers(".", "-A-"); }
    Noms livrees() const { return terrain.fichiers("reseau", ".txt"); }
    static void passe() {
        reseau::passe();
        while (!ouvrier::attends(5000)) continue;
    }
};

using RestaurantTenu = tests::Restaurant;

TEST_F(Occupe, CeQuiEstLivreMaisNePeutEtreSupprimeNEstPasLivreDeuxFois) {
    terrain.pose("a_.-A-", "commande a");
    Tenu lecteur("a_.-A-", FILE_SHARE_READ);
    passe();
    EXPECT_EQ(livrees(), Noms{"a_.txt"});
    EXPECT_EQ(attendent(), Noms{"a_.-A-"});
    const auto debut = std::chrono::steady_clock::now();
    for (int i = 0; i < 10; ++i) EXPECT_EQ(reseau::commandes_en_attente(), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - debut, 1s) << "the screen does not wait for the other program";
    fs::remove("reseau/a_.txt");  // the router has collected it
    passe();
    EXPECT_TRUE(livrees().empty());
    lecteur.lache();
    passe();
    EXPECT_TRUE(attendent().empty());
    EXPECT_TRUE(livrees().empty());
}

TEST_F(Occupe, UnFichierTenuDansLeRepertoireReseauNEstNiEcraseNiPerdu) {
    terrain.pose("a_.-A-", "commande a");
    terrain.pose("reseau/a_.txt", "commande a");
    Tenu routeur("reseau/a_.txt");
    EXPECT_EQ(livre("reseau", "a_.-A-"), Sort::tenue) << "nobody can tell whether it is the same order";
    routeur.lache();
    EXPECT_EQ(livre("reseau", "a_.-A-"), Sort::deposee);
    EXPECT_EQ(livrees(), Noms{"a_.txt"});

    terrain.pose("worvalune.wdo", "ancien");
    terrain.pose("reseau/worvalune.wdo", "neuf");
    Tenu copieur("reseau/worvalune.wdo");
    EXPECT_FALSE(livraison::copie_catalogue("reseau").entiere);
    EXPECT_EQ(terrain.lis("worvalune.wdo"), "ancien");
    copieur.lache();
    terrain.pose("reseau/w_styl72.wdo", "choix");
    Tenu styles("reseau/w_styl72.wdo");
    EXPECT_FALSE(livraison::copie_catalogue("reseau").entiere) << "the choices are to be fetched again";
    EXPECT_EQ(terrain.lis("worvalune.wdo"), "neuf");
}

/// The program ends while another one still holds the order's file.
TEST_F(RestaurantTenu, CeQuiEstLivreNEstPasLivreParLeDepartSuivant) {
    t.pose("a_.-A-", "commande a");
    Tenu lecteur(page(t.chemin() / "a_.-A-"), FILE_SHARE_READ);
    const std::string part = "touche btx(1)\nverifie image g2 0 4 23\n";
    tests::tient_texte(t, part);
    EXPECT_EQ(t.lis("reseau/a_.txt"), "commande a");
    fs::remove(t.reseau() / "a_.txt");  // the router has collected it
    tests::tient_texte(t, part);
    lecteur.lache();
    tests::tient_texte(t, part);
    tests::tient_texte(t, part);
    EXPECT_TRUE(t.fichiers("reseau", ".txt").empty());
    EXPECT_TRUE(t.fichiers(".", "-").empty()) << "neither the order nor its mark";
}

/// The clock was set back, and the mark of a long gone order cannot be read: the order of its name must not be taken
/// for it.
TEST_F(Occupe, UneMarqueIllisibleNEffaceRien) {
    terrain.pose("a_.-L-", "autre");
    terrain.pose("a_.-A-", "commande a");
    Tenu autre("a_.-L-");
    passe();
    EXPECT_EQ(attendent(), Noms{"a_.-A-"});
    EXPECT_TRUE(reseau::a_reprendre());
    autre.lache();
    passe();
    EXPECT_EQ(livrees(), Noms{"a_.txt"});
    EXPECT_EQ(terrain.fichiers(".", "-").size(), 1U) << "the text of the deposited order, and no mark";
}

/// The others go by; nobody touches the screen, and the order leaves as soon as its file is free.
TEST_F(RestaurantTenu, UneCommandeTenueAttendPuisPartDElleMeme) {
    t.pose("a_.-A-", "commande a");
    t.pose("b_.-A-", "commande b");
    Tenu autre(page(t.chemin() / "a_.-A-"));
    const std::jthread lache = autre.lache_quand([&] { return t.existe("tenu.png"); });
    tests::tient_texte(t, "touche btx(1)\nverifie Label_attente \"1\"\ncapture tenu.png\n" +
                              tests::fois(3, "attend 2000\n") + "verifie visible Label_attente non\n");
    EXPECT_EQ(t.lis("reseau/a_.txt"), "commande a");
    EXPECT_EQ(t.lis("reseau/b_.txt"), "commande b");
}

/// A file of the terminal's that another program holds while it starts, and lets go under its running.
class TenuAuDepart : public tests::Restaurant, public testing::WithParamInterface<const char*> {};

TEST_P(TenuAuDepart, LEcranLeReprendDesQuIlEstLibre) {
    const std::string fichier = GetParam();
    const bool catalogue = fichier == "worvalune.wdo";
    tests::tient_texte(t, "touche btx(1)\ncapture libre.png\n");  // makes what a first start makes
    fs::remove(t.reseau() / "Test.res");
    if (catalogue) fs::remove_all(t.reseau());
    Tenu autre(page(t.chemin() / fichier));
    {
        const std::jthread lache = autre.lache_quand([&] { return t.existe("tenu.png"); });
        tests::tient_texte(t, "verifie ecran mini_97\nverifie Label1 \"Un autre programme utilise " + fichier +
                                  ", le logiciel le lira dès que possible !\"\ntouche btc(5)\nverifie ecran Form1\n" +
                                  (catalogue ? "verifie visible btx(1) non\n" : "verifie btx(1) \"Sophie\"\n") +
                                  "capture tenu.png\nattend 2000\nattend 2000\nattend 2000\n"
                                  "touche btx(1)\nverifie btx(1) \"Viandes\"\ncapture repris.png\n");
    }
    EXPECT_EQ(t.existe("reseau/Test.res"), !catalogue);
    EXPECT_EQ(t.lis("repris.png") == t.lis("libre.png"), !catalogue) << "without the network the row says so";
}
INSTANTIATE_TEST_SUITE_P(Fichiers, TenuAuDepart,
                         testing::Values("progppb.wdo", "worvalune.wdo", "wwinqx42.wdo", "wfichdir.wdo",
                                         "w_styl72.wdo"),
                         [](const auto& p) { return std::string(p.param, std::strlen(p.param) - 4); });

/// A virus scanner looks at a file for a moment: what the waiter does meanwhile succeeds all the same.
TEST_F(Occupe, CeQuiNEstTenuQuUnMomentReussit) {
    const auto pendant = [&](const std::string& nom, auto agit) {
        Tenu antivirus(nom);
        const std::jthread lache = antivirus.lache_quand([n = 0]() mutable { return ++n > 12; });
        return agit();
    };
    terrain.pose("a", "un");
    terrain.pose("r", std::string(400, ' '));
    std::string lu;
    EXPECT_EQ(pendant("a", [&] { return fichiers::lis_tout("a", lu); }), Issue::fait);
    EXPECT_TRUE(pendant("r", [] { return fichiers::FichierRecords::ouvre("r", 20)->ecrit(1, "#I#1") == Issue::fait; }));
    EXPECT_EQ(pendant("a", [] { return fichiers::renomme("a", "b"); }), Issue::fait);
    EXPECT_EQ(pendant("b", [] { return fichiers::supprime("b"); }), Issue::fait);
    terrain.pose("c", "trois");
    Tenu longtemps("c");
    EXPECT_EQ(fichiers::renomme("c", "d"), Issue::occupe);
    EXPECT_EQ(fichiers::supprime("c"), Issue::occupe);
    EXPECT_EQ(fichiers::lis_tout("c", lu), Issue::occupe);
    EXPECT_EQ(fichiers::ecrit_tout("c", "autre", Remplace::jamais), Issue::existe);
    EXPECT_EQ(fichiers::ecrit_tout("c", "autre", Remplace::oui), Issue::occupe);
    longtemps.lache();
    EXPECT_EQ(terrain.lis("c"), "trois");
    EXPECT_EQ(fichiers::liste(".", "*"), (Noms{"c", "r"})) << "no temporary file stays behind";
}

/// A share with accents and blanks in its path, which a test may take away and bring back.
class Partage : public tests::Atelier {
  protected:
    fs::path vrai;    ///< where the share's directory lies on this machine
    std::string unc;  ///< its network path

    void SetUp() override {
        const char* prefixe = std::getenv("WINEPREFIX");
        const std::string serveur = "orvalune-essai-" + std::to_string(GetCurrentProcessId());
        if (prefixe != nullptr) {
            serveur_ = fs::path("Z:" + std::string(prefixe)) / "dosdevices" / "unc" / serveur;
            vrai = serveur_ / "partage" / L"Salle d'\u00E9t\u00E9";
            fs::create_directories(vrai);
            unc = "\\\\" + serveur + "\\partage\\" + page(vrai.filename());
        } else {
            vrai = terrain.chemin() / L"Salle d'\u00E9t\u00E9";
            fs::create_directories(vrai);
            std::string lecteur = page(terrain.chemin().root_name()).substr(0, 1) + "$";
            unc = "\\\\localhost\\" + lecteur + "\\" + page(vrai.relative_path());
        }
        if (prefixe == nullptr && !fichiers::est_repertoire(unc)) GTEST_SKIP() << "no share here: " << unc;
        ASSERT_TRUE(fichiers::est_repertoire(unc)) << unc;
        etat::repertoire_reseau = etat::repertoire_test = unc;
    }
    ~Partage() override {
        std::error_code ignoree;
        if (!serveur_.empty()) fs::remove_all(serveur_, ignoree);
    }

  private:
    fs::path serveur_;
};

TEST_F(Partage, ToutSeFaitParUnCheminReseau) {
    const std::string nom("Café à 3 €.txt"_t), chemin = unc + "\\" + nom;
    ASSERT_EQ(fichiers::ecrit_tout(chemin, "un", Remplace::jamais), Issue::fait);
    EXPECT_TRUE(fs::exists(vrai / texte::large(nom)));
    EXPECT_EQ(fichiers::ecrit_tout(fichiers::joint(unc + "/", nom), "deux", Remplace::jamais), Issue::existe);
    EXPECT_EQ(fichiers::ecrit_tout(chemin, "trois", Remplace::oui), Issue::fait);
    EXPECT_EQ(fichiers::longueur(chemin), 5u);
    EXPECT_EQ(fichiers::absolu(chemin), chemin);
    EXPECT_EQ(fichiers::renomme(chemin, fichiers::joint(unc, "b")), Issue::fait);
    EXPECT_TRUE(livraison::ecrit_sonde(unc, 1, "19-05-2021"));
    EXPECT_EQ(fichiers::supprime(fichiers::joint(unc, "b")), Issue::fait);

    const std::string avant = fichiers::repertoire_courant();
    ASSERT_TRUE(fichiers::entre_dans(unc)) << "the working directory may be a share, too";
    EXPECT_EQ(fichiers::ecrit_tout("c.-A-", "c", Remplace::jamais), Issue::fait);
    EXPECT_EQ(livraison::liste_locale()->en_attente, Noms{"c.-A-"});
    EXPECT_EQ(fichiers::repertoire_courant(), unc);
    ASSERT_TRUE(fichiers::entre_dans(avant));
    EXPECT_EQ(fichiers::liste(unc, "*"), (Noms{"Test.res", "c.-A-"}));
}

TEST_F(Partage, UnPartageQuiPartEntreDeuxCommandesLesFaitAttendre) {
    terrain.pose("a_.-A-", "a");
    terrain.pose("b_.-A-", "b");
    EXPECT_EQ(livre(unc, "a_.-A-"), Sort::deposee);
    const fs::path parti = vrai.parent_path() / "parti";
    fs::rename(vrai, parti);
    EXPECT_FALSE(livraison::ecrit_sonde(unc, 1, "19-05-2021"));
    EXPECT_EQ(livre(unc, "b_.-A-"), Sort::reseau_perdu);
    EXPECT_EQ(livre("\\\\serveur-inconnu\\carte", "b_.-A-"), Sort::reseau_perdu);
    EXPECT_FALSE(livraison::depose(unc, "c.txt", "c"));
    EXPECT_EQ(terrain.lis("b_.-A-"), "b");
    fs::rename(parti, vrai);
    EXPECT_EQ(livre(unc, "b_.-A-"), Sort::deposee);
    EXPECT_EQ(fichiers::liste(unc, "*"), (Noms{"a_.txt", "b_.txt"}));
}

TEST_F(Partage, UneCommandeDuServiceArriveSurLePartage) {
    tests::Terrain t;
    t.restaurant();
    for (const auto& e : fs::directory_iterator(t.reseau())) fs::copy_file(e.path(), vrai / e.path().filename());
    fs::remove_all(t.reseau());
    t.pose("wfichdir.wdo", unc + "\\\r\n \r\n");
    tests::tient(t, "commande.txt");
    EXPECT_EQ(fichiers::liste(unc, "*.txt"), Noms{"2021-05-19-12-30-00_01_012_004_.txt"});
    EXPECT_TRUE(t.fichiers(".", "-A-").empty());
}

/// Directories in each other, deeper than the plain calls go, and than the workshop's own removal would.
class Profond : public tests::Atelier {
  protected:
    std::string rep = fichiers::repertoire_courant();

    void SetUp() override {
        for (int i = 0; i < 6; ++i) {
            rep += "\\" + std::string(60, static_cast<char>('a' + i));
            ASSERT_EQ(fichiers::cree_repertoire(rep), Issue::fait) << rep.size();
        }
    }
    ~Profond() override {
        const std::size_t fond = fichiers::repertoire_courant().size();
        for (; rep.size() > fond; rep.erase(rep.rfind('\\'))) {
            EXPECT_TRUE(RemoveDirectoryW((L"\\\\?\\" + texte::large(rep)).c_str())) << rep;
        }
    }
};

TEST_F(Profond, UnCheminPlusLongQueLesAppelsSimplesVautUnAutre) {
    const std::string nom = rep + "/2021-05-19-12-30-00_01_012_004_.";
    ASSERT_EQ(fichiers::ecrit_tout(nom + "-A-", "commande", Remplace::jamais), Issue::fait);
    EXPECT_EQ(fichiers::ecrit_tout(nom + "-A-", "autre", Remplace::jamais), Issue::existe);
    EXPECT_EQ(fichiers::renomme(nom + "-A-", nom + "txt"), Issue::fait);
    EXPECT_EQ(fichiers::liste(rep, "*.txt").size(), 1u);
    EXPECT_TRUE(livraison::ecrit_sonde(rep, 1, "19-05-2021"));
    EXPECT_EQ(fichiers::absolu(rep), rep);
    for (const std::string& f : {rep + "/Test.res", nom + "txt"}) EXPECT_EQ(fichiers::supprime(f), Issue::fait) << f;

    // From a working directory that is itself nearly as long, a plain name makes the path too long.
    const std::string avant = fichiers::repertoire_courant(), presque = rep.substr(0, rep.rfind('\\', 224));
    ASSERT_TRUE(fichiers::entre_dans(presque)) << presque.size();
    const std::string long_nom = std::string(150, 'n') + ".-A-";
    EXPECT_EQ(fichiers::ecrit_tout(long_nom, "x", Remplace::jamais), Issue::fait);
    EXPECT_EQ(livraison::liste_locale()->en_attente, Noms{long_nom});
    EXPECT_EQ(fichiers::supprime(long_nom), Issue::fait);
    ASSERT_TRUE(fichiers::entre_dans(avant));
}

}  // namespace
