// The network directory as it fails: away, full, hanging, with other orders in the place, with a catalogue half
// written.
#include "data/reseau.h"

#include "atelier.h"
#include "data/catalogue.h"
#include "data/commande.h"
#include "data/livraison.h"
#include "platform/systeme/epreuve.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/ouvrier.h"
#include "platform/systeme/texte.h"

namespace {

using livraison::Sort;
using ouvrier::Reseau;
using Noms = std::vector<std::string>;

/// One order, by the worker's own function.
Sort livre(const std::string& repertoire, const std::string& fichier) {
    return livraison::livre({repertoire, "TABLETTE01"}, fichier).sort;
}

class ReseauTest : public tests::Atelier {
  protected:
    int signaux = 0;

    ReseauTest() {
        std::filesystem::create_directory("reseau");
        ouvrier::abandonne();
        ouvrier::simule(Reseau::present, 0);
        // The state of an earlier test: the network as it is when the switch is off.
        etat::hors_ligne = true;
        reseau::passe();
        etat::hors_ligne = false;
        terrain.pose("wfichdir.wdo", "  reseau \r\nreste");
        static_cast<void>(reseau::lis_repertoire());
        reseau::au_changement([this] { ++signaux; });
    }
    ~ReseauTest() override {
        reseau::au_changement({});
        ouvrier::abandonne();
        ouvrier::simule(Reseau::present, 0);
        horloge::rend_reelle();
    }

    static void passe() {
        reseau::passe();
        while (!ouvrier::attends(5000)) continue;
    }
    Noms attendent() const { return terrain.fichiers(".", "-A-"); }
    Noms livrees() const { return terrain.fichiers("reseau", ".txt"); }
    Noms restes() const { return terrain.fichiers("reseau", "_"); }
};

TEST_F(ReseauTest, LeRepertoireEstLaPremiereLigne) {
    EXPECT_TRUE(reseau::repertoire_connu());
    EXPECT_EQ(etat::repertoire_reseau, "reseau");
    EXPECT_EQ(etat::repertoire_test, "reseau");
    ASSERT_EQ(reseau::ecrit_repertoire("\\\\serveur\\com\xE9"), fichiers::Issue::fait);
    std::string attendu = "\\\\serveur\\com\xE9\r\n";
    for (int i = 0; i < 11; ++i) attendu += " \r\n";
    EXPECT_EQ(terrain.lis("wfichdir.wdo"), attendu);

    etat::record_test = 5;
    terrain.pose("wfichdir.wdo", "");
    EXPECT_EQ(reseau::lis_repertoire(), fichiers::Issue::fait);
    EXPECT_EQ(etat::repertoire_reseau, "");
    EXPECT_EQ(etat::record_test, 1);
    std::filesystem::remove("wfichdir.wdo");
    EXPECT_FALSE(reseau::repertoire_connu());
    EXPECT_EQ(reseau::lis_repertoire(), fichiers::Issue::absent);
}

TEST_F(ReseauTest, LaSondeEcritSaDate) {
    for (const std::string r : {"reseau", "reseau/", "reseau\\"}) {
        ASSERT_TRUE(livraison::ecrit_sonde(r, 2, "19-05-2021")) << r;
        EXPECT_EQ(terrain.lis("reseau/Test.res"), std::string(64, ' ') + "19-05-2021" + std::string(54, ' '));
        std::filesystem::remove("reseau/Test.res");
    }
    EXPECT_FALSE(livraison::ecrit_sonde("", 1, "x"));
    EXPECT_FALSE(livraison::ecrit_sonde("ailleurs", 1, "x"));
    EXPECT_FALSE(std::filesystem::exists("Test.res"));
    std::filesystem::create_directory("reseau/Test.res");
    EXPECT_FALSE(livraison::ecrit_sonde("reseau", 1, "x"));
}

TEST_F(ReseauTest, UneCommandeEstLivreeEntiereEtUneSeuleFois) {
    terrain.pose("a_.-A-", "un\r\n");
    EXPECT_EQ(livre("reseau", "a_.-A-"), Sort::deposee);
    EXPECT_EQ(terrain.lis("reseau/a_.txt"), "un\r\n");
    EXPECT_TRUE(attendent().empty());
    EXPECT_EQ(livre("reseau", "a_.-A-"), Sort::attend) << "it vanished meanwhile";

    terrain.pose("a_.-A-", "un\r\n");  // delivered, but the power went before the local file was deleted
    EXPECT_EQ(livre("reseau", "a_.-A-"), Sort::deposee);
    EXPECT_TRUE(attendent().empty());

    for (const std::string autre : {"deux\r\n", "un\r", "un\r\n.", ""}) {
        terrain.pose("a_.-A-", autre);
        EXPECT_EQ(livre("reseau", "a_.-A-"), Sort::attend);
        EXPECT_EQ(terrain.lis("reseau/a_.txt"), "un\r\n") << "never written over";
        EXPECT_EQ(terrain.lis("a_.-A-"), autre);
    }
    std::filesystem::remove("reseau/a_.txt");  // the router has collected it
    EXPECT_EQ(livre("reseau", "a_.-A-"), Sort::deposee);

    std::filesystem::create_directory("reseau/b_.txt");
    terrain.pose("b_.-a-", "x");
    EXPECT_EQ(livre("reseau", "b_.-a-"), Sort::attend);
    EXPECT_EQ(livre("ailleurs", "b_.-a-"), Sort::reseau_perdu);
    EXPECT_EQ(livre("", "b_.-a-"), Sort::reseau_perdu);
    EXPECT_EQ(livre("reseau", "-A"), Sort::attend);
    EXPECT_EQ(terrain.lis("b_.-a-"), "x");
    EXPECT_TRUE(restes().empty());
}

TEST_F(ReseauTest, LeCatalogueNEstRemplaceQueParUnCatalogueEntier) {
    terrain.pose("worvalune.wdo", "ancien");
    terrain.pose("orvalune.wdo", "entete");
    EXPECT_FALSE(livraison::copie_catalogue("reseau").entiere);
    terrain.pose("reseau/worvalune.wdo", "");
    terrain.pose("reseau/orvalune.wdo", "neuf");
    EXPECT_FALSE(livraison::copie_catalogue("reseau").entiere);
    EXPECT_EQ(terrain.lis("worvalune.wdo"), "ancien") << "an empty file is one that is just being written";
    EXPECT_EQ(terrain.lis("orvalune.wdo"), "neuf");
    EXPECT_FALSE(livraison::copie_catalogue("ailleurs").entiere);
    EXPECT_FALSE(livraison::copie_catalogue("").entiere);
    EXPECT_FALSE(std::filesystem::exists("w_styl72.wdo"));

    terrain.pose("reseau/worvalune.wdo", std::string(3 << 20, 'c'));
    EXPECT_TRUE(livraison::copie_catalogue("reseau/").entiere);
    EXPECT_EQ(terrain.lis("worvalune.wdo").size(), std::size_t{3} << 20);
    const auto quand = std::filesystem::last_write_time("worvalune.wdo") - std::chrono::hours(1);
    std::filesystem::last_write_time("worvalune.wdo", quand);
    EXPECT_TRUE(livraison::copie_catalogue("reseau").entiere);
    EXPECT_EQ(std::filesystem::last_write_time("worvalune.wdo"), quand) << "what is the same is not written again";
}

TEST_F(ReseauTest, UnePasseLivreToutCeQuiPeutPartir) {
    for (const std::string n : {"a", "b", "c", "d"}) terrain.pose(n + "_.-A-", "commande " + n);
    terrain.pose("reseau/b_.txt", "une autre");
    std::filesystem::create_directory("z_.-A-");
    EXPECT_FALSE(reseau::joignable()) << "nothing is known yet";
    passe();
    EXPECT_TRUE(reseau::joignable());
    EXPECT_EQ(livrees(), (Noms{"a_.txt", "b_.txt", "c_.txt", "d_.txt"}));
    EXPECT_EQ(terrain.lis("reseau/b_.txt"), "une autre");
    EXPECT_EQ(reseau::commandes_en_attente(), 1);
    EXPECT_GE(signaux, 4);
    EXPECT_EQ(terrain.lis("reseau/Test.res").size(), 64u);

    std::filesystem::remove("reseau/b_.txt");
    passe();
    EXPECT_EQ(reseau::commandes_en_attente(), 0);
    EXPECT_EQ(terrain.lis("reseau/b_.txt"), "commande b");
}

/// The clock was set back: the order has the name of one that was delivered long ago.
TEST_F(ReseauTest, UnReseauPleinEstLaEtLeJournalDitPourquoiLaCommandeReste) {
    terrain.pose("a_.-A-", "a");
    fichiers::epreuve::avant = [](auto operation, std::string_view chemin) {
        const bool depose = operation == fichiers::epreuve::Operation::ouvre && chemin.ends_with(".tmp_");
        return depose && chemin.starts_with("reseau") ? fichiers::Issue::plein : fichiers::Issue::fait;
    };
    for (int i = 0; i < 2; ++i) passe();
    fichiers::epreuve::avant = nullptr;
    EXPECT_EQ(reseau::commandes_en_attente(), 1);
    const std::string journal = terrain.lis("journal.txt");
    EXPECT_NE(journal.find("commande a_. retenue : plus de place"), std::string::npos) << journal;
    EXPECT_EQ(journal.find("injoignable"), std::string::npos) << journal;
    passe();
    EXPECT_EQ(livrees(), Noms{"a_.txt"});
}

TEST_F(ReseauTest, UneMarqueDeLivraisonNeVautQuePourSaCommande) {
    terrain.pose("a_.-L-", "ancienne");
    terrain.pose("a_.-A-", "commande a");
    terrain.pose("b_.-L-", "commande b");
    terrain.pose("b_.-A-", "commande b");
    terrain.pose("c_.-L-", "partie");
    passe();
    EXPECT_EQ(livrees(), Noms{"a_.txt"}) << "b was delivered by an earlier run";
    EXPECT_TRUE(attendent().empty());
    EXPECT_TRUE(terrain.fichiers(".", "-L-").empty());
}

TEST_F(ReseauTest, CeQuUneLivraisonCoupeeALaisseEstRetire) {
    const std::string cle = ".dcfc60ceTABLETTE0100000001.tmp_";  // directory, tablet, delivery
    const Noms autres = {"a_.txt.123-4.tmp_", "a_.txt.dcfc60ceTABLETTE0200000001.tmp_", "b_.txt" + cle};
    for (const std::string& nom : autres) terrain.pose("reseau/" + nom, "x");
    terrain.pose("reseau/a_.txt" + cle, "x");
    livraison::Local local;
    local.en_attente = {"a_.-A-", "-A-"};
    ASSERT_TRUE(livraison::fait_le_point({"reseau", "TABLETTE01"}, local, {}));
    EXPECT_EQ(restes(), autres) << "those of other tablets and orders stay";
}

TEST_F(ReseauTest, UneCommandeEcritePendantLaPassePartAussi) {
    terrain.pose("a_.-A-", "a");
    bool ajoutee = false;
    reseau::au_changement([&] {
        if (std::exchange(ajoutee, true)) return;
        terrain.pose("0_.-A-", "plus tard");
        reseau::passe();
    });
    passe();
    EXPECT_TRUE(ajoutee);
    EXPECT_EQ(livrees(), (Noms{"0_.txt", "a_.txt"}));
}

/// The switch goes off while the order travels: that one ends, the next one stays.
TEST_F(ReseauTest, LInterrupteurArreteLaPasseEntreDeuxCommandes) {
    terrain.pose("a_.-A-", "a");
    terrain.pose("b_.-A-", "b");
    reseau::au_changement([&] { etat::hors_ligne = etat::hors_ligne || !livrees().empty(); });
    passe();
    EXPECT_EQ(livrees(), Noms{"a_.txt"});
    EXPECT_EQ(attendent(), Noms{"b_.-A-"});
    EXPECT_FALSE(reseau::joignable());
}

TEST_F(ReseauTest, UnReseauQuiSeBloqueCompteCommeAbsent) {
    terrain.pose("a_.-A-", "a");
    passe();
    ASSERT_TRUE(reseau::joignable());
    terrain.pose("b_.-A-", "b");
    horloge::rend_virtuelle({});
    ouvrier::simule(Reseau::bloque, 0);
    reseau::passe();
    EXPECT_TRUE(reseau::joignable()) << "the last known state, at once";
    horloge::avance(1999);
    ouvrier::traite_reponses();
    EXPECT_TRUE(reseau::joignable());
    horloge::avance(1);
    ouvrier::traite_reponses();
    EXPECT_FALSE(reseau::joignable());
    reseau::passe();  // while the first one hangs nothing is started
    horloge::avance(60000);
    ouvrier::traite_reponses();
    EXPECT_EQ(reseau::commandes_en_attente(), 1);

    ouvrier::simule(Reseau::present, 0);
    while (!ouvrier::attends(5000)) continue;
    EXPECT_FALSE(reseau::joignable()) << "an answer that comes too late is none";
    passe();
    EXPECT_TRUE(reseau::joignable());
    EXPECT_EQ(reseau::commandes_en_attente(), 0);
}

TEST_F(ReseauTest, LaTabletteSIdentifie) {
    horloge::rend_virtuelle({2021, 5, 19, 12, 30, 45});
    int reponses = 0, reussites = 0;
    const auto compte = [&](bool ecrit) {
        ++reponses;
        reussites += ecrit;
    };
    const auto envoie = [&] {
        reseau::envoie_identification(compte);
        while (!ouvrier::attends(5000)) continue;
    };
    envoie();
    EXPECT_EQ(reussites, 1);
    EXPECT_EQ(terrain.lis("reseau/00_00_0_19-05-2021-12-30-45.txt"), "#ID#" + commande::identite() + "\r\n");
    std::filesystem::remove_all("reseau");
    envoie();
    etat::hors_ligne = true;
    envoie();
    EXPECT_EQ(reponses, 3);
    EXPECT_EQ(reussites, 1);
}

/// Last, since the catalogue is fetched once in a run until there is another one; what is fresh is told once.
TEST_F(ReseauTest, UnCatalogueAttenduVientDesQuIlEstEntier) {
    static_cast<void>(reseau::catalogue_frais());
    passe();
    EXPECT_FALSE(reseau::catalogue_frais()) << "there is none";
    terrain.pose("reseau/worvalune.wdo", "#SERV#01 Sophie\r\n");
    passe();
    EXPECT_EQ(terrain.lis("worvalune.wdo"), "#SERV#01 Sophie\r\n");
    EXPECT_TRUE(reseau::catalogue_frais());
    EXPECT_FALSE(reseau::catalogue_frais());
    passe();
    EXPECT_FALSE(reseau::catalogue_frais());
    terrain.pose("reseau/worvalune.wdo", "#SERV#01 Marc\r\n");
    passe();
    EXPECT_EQ(terrain.lis("worvalune.wdo"), "#SERV#01 Marc\r\n") << "the manager has made another one";
    EXPECT_TRUE(reseau::catalogue_frais());
    passe();
    EXPECT_FALSE(reseau::catalogue_frais());
    for (const char* nom : {"worvalune.wdo", "reseau/worvalune.wdo"}) terrain.pose(nom, "#SERV#01 Luc et Anne\r\n");
    passe();
    EXPECT_TRUE(reseau::catalogue_frais()) << "nobody has read it, though it is here already";

    const auto demarre = [] {
        reseau::commence_la_connexion();
        catalogue::charge_catalogue();
        reseau::attend_la_connexion();
        while (!ouvrier::attends(5000)) continue;
        return reseau::catalogue_frais();
    };
    EXPECT_FALSE(demarre()) << "it has been read just now";
    terrain.pose("reseau/worvalune.wdo", "#SERV#01 Sophie\r\n");
    EXPECT_TRUE(demarre());
    EXPECT_EQ(terrain.lis("worvalune.wdo"), "#SERV#01 Sophie\r\n");
}

}  // namespace
