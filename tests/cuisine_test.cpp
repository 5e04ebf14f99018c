// What the kitchen prints of the files that it finds, and where these go. Printers that fail are in
// cuisine_imprimantes_posix_test.cpp.
#include <fstream>

#include "fourneau.h"
#include "platform/systeme/epreuve.h"

namespace {

namespace fs = std::filesystem;
using fichiers::epreuve::Operation;
using tests::bloc, tests::Fourneau, tests::lis, tests::nom_de_commande, tests::Papier;

std::string page(std::string_view utf8) {
    return tests::page1252(utf8);
}

class Cuisine : public Fourneau {
  protected:
    std::string texte() const {
        std::string r;
        for (const std::string& ticket : papier().entiers) r += ticket;
        return texte::vers_utf8(r);
    }
};

/// Every kind of line: a remark, a menu with its dishes, a sub-group, a reference that the catalogue lacks; labels
/// broken on words, and what a remark may smuggle in is no command of the printer.
TEST_F(Cuisine, UnTicketLigneParLigne) {
    depose(
        12,
        tests::commande_de(
            12, bloc("8880000000611", "{12.00}") + bloc("8880000000574", page("{2.00}   + ¤¤999999|ÐÐMENU")) +
                    bloc("8880000000048", page("{2.00)  ¤¤5.00|ÐÐMENU")) +
                    bloc("8880000000031", page("{3.00)  ¤¤0.00|ÐÐMENU")) +
                    bloc("8880000000024", "{1.50}", page("Saignante|À point, sans sel, et la sauce à part\x1B@|")) +
                    bloc("9990000000001", "{1.00}", "MOTSANSFINQUIDEPASSELALARGEURDUPAPIER|") + bloc("8880000000048")));
    reglages.papier.colonnes = 32;
    ASSERT_EQ(service::sert(reglages), service::tout_imprime);
    EXPECT_EQ(
        texte(),
        "TABLE 012\n4 couverts   Élodie   12:12:00\nCommande 1\n--------------------------------\n"
        "ENTRÉES\n  1  Salade\n"
        "VIANDES\n1,5  Entrecôte 300 g\n       Saignante\n       À point, sans sel, et la\n       sauce à part @\n"
        "MENUS\n  2  Menu 15 Euros\n       Salade\n       3 x Magret de canard\n"
        "BIÈRES PRESSION\n 12  Demi\n"
        "AUTRES\n  1  9990000000001\n       MOTSANSFINQUIDEPASSELALAR\n       GEURDUPAPIER\n"
        "--------------------------------\nFIN\n");
}

TEST_F(Cuisine, LesOctetsDeLImprimante) {
    const std::string corps = tests::commande_de(3, bloc("8880000000024", "{1.00}", page("Œuf, 5 € ÷ é|")));
    const auto octets = [&](ticket::Page p) {
        fs::remove(t.chemin() / "cuisine.bin");
        depose(3, corps);
        reglages.papier.page = p;
        EXPECT_EQ(service::sert(reglages), service::tout_imprime);
        return t.lis("cuisine.bin");
    };
    using namespace std::string_literals;
    const std::string trait(42, '-');
    const auto attendu = [&](const std::string& choix, const std::string& marque, const std::string& serveur,
                             const std::string& n, const std::string& plat) {
        return "\x1B@\x1Bt"s + choix + "\x1D!\x01TABLE 003\n\x1D!\x00"s + marque + "4 couverts        " + serveur +
               "        12:03:00\nCommande " + n + "\n" + trait +
               "\n\x1B"
               "E\x01VIANDES\n\x1B"
               "E\x00"s +
               plat + trait + "\nFIN\n\x1DVB\x00"s;
    };
    EXPECT_EQ(octets(ticket::Page::p1252),
              attendu("\x10", "", "\xC9lodie", "1", "  1  Entrec\xF4te 300 g\n       \x8Cuf, 5 \x80 \xF7 \xE9\n"));
    EXPECT_EQ(octets(ticket::Page::p858),
              attendu("\x13",
                      "\x1D!\x01"
                      "DUPLICATA\n\x1D!\x00"s,
                      "\x90lodie", "2", "  1  Entrec\x93te 300 g\n       OEuf, 5 \xD5 \xF6 \x82\n"))
        << "and the same order again is marked";
    EXPECT_EQ(t.fichiers("archive/2021-05-19", ".txt").size(), 2U);
}

TEST_F(Cuisine, CeQuiNEstPasUneCommandeEstRejete) {
    const std::string entiere = tests::commande_simple(1);
    const std::pair<const char*, std::string> cas[] = {
        {"vide.txt", ""},
        {"autre.txt", "Bonjour\r\n"},
        {"nulle.txt", std::string(400, '\0')},
        {"version.txt", std::string(entiere).replace(entiere.find("2.1"), 3, "3.0")},
        {"coupee.txt", entiere.substr(0, entiere.size() - 12)},
        {"sans_fin.txt", entiere.substr(0, entiere.size() - 2)},
        {"quantite.txt", std::string(entiere).replace(entiere.find("1.00"), 4, "beau")},
        {"plat.txt", tests::commande_de(1, bloc("8880000000048", page("{2.00)  ¤¤5.00|ÐÐMENU")))},
        {"longue.txt", entiere + std::string(2 << 20, 'x')},
    };
    for (const auto& [nom, contenu] : cas) t.pose(std::string("reseau/") + nom, contenu);
    depose(1, entiere);
    t.pose("reseau/00_00_0_19-05-2021-12-30-00.txt", "#ID#ABCDEFGHIJ\r\n");
    t.pose("reseau/LF.TXT", std::string(entiere).erase(entiere.find('\r'), 1));
    ASSERT_EQ(service::sert(reglages), service::tout_imprime);
    const Papier p = papier();
    EXPECT_EQ(p.avec("TABLE 001").size(), 2U) << "a line may end with LF alone";
    EXPECT_EQ(p.avec(page("FICHIER REJETÉ")).size(), std::size(cas));
    for (const auto& [nom, contenu] : cas) {
        EXPECT_EQ(p.avec(nom).size(), 1U) << nom;
        EXPECT_EQ(t.lis(std::string("archive/rejets/") + nom), contenu);
        const std::string raison =
            t.lis("archive/rejets/" + std::string(nom).replace(std::string(nom).find(".txt"), 4, ".raison.txt"));
        EXPECT_GT(raison.size(), std::string(nom).size() + 4) << nom;
    }
    EXPECT_EQ(t.fichiers("reseau", ".txt").size(), 1U) << "what a tablet says of itself is left to a router";
    EXPECT_TRUE(t.fichiers("archive/en_cours", "").empty());
}

/// Under its name or a numbered one: what has been put away with these bytes is printed with a mark.
TEST_F(Cuisine, CeQuiRevientEstMarque) {
    const std::string autre = tests::commande_de(1, bloc("8880000000048"));
    for (const std::string& contenu : {tests::commande_simple(1), autre, autre, tests::commande_simple(1)}) {
        depose(1, contenu);
        t.pose("reseau/mauvaise.txt", contenu.substr(0, contenu.size() - 12));
        ASSERT_EQ(service::sert(reglages), service::tout_imprime);
    }
    for (const std::string& ligne : {std::string("TABLE 001"), page("FICHIER REJETÉ")}) {
        std::string marques;
        for (const std::string& ticket : papier().avec(ligne))
            marques += ticket.find("\nDUPLICATA\n") == std::string::npos ? '.' : 'D';
        EXPECT_EQ(marques, "..DD") << ligne;
    }
}

/// What cannot be taken, and where nothing can be looked for.
TEST_F(Cuisine, CeQuiResteSeVoitAuStatut) {
    const std::string nom = std::string(210, 'n') + ".txt", raison = "autre.raison.txt";
    t.pose("reseau/" + nom, tests::commande_simple(1));
    EXPECT_EQ(service::sert(reglages), service::reste_a_imprimer);
    EXPECT_EQ(t.lis("reseau/" + nom), tests::commande_simple(1));
    // A rejected file that is called as what is said of another one.
    for (const char* fichier : {"autre.raison.txt", "autre.txt"}) t.pose(std::string("reseau/") + fichier, fichier);
    EXPECT_EQ(service::sert(reglages), service::reste_a_imprimer);
    EXPECT_EQ(t.lis("archive/rejets/autre.raison.txt"), "autre.raison.txt");
    EXPECT_EQ(t.fichiers("archive/rejets", "autre (2).raison.txt").size(), 1U);
    fs::remove(t.reseau() / nom);
    t.pose("reseau/caisse.txt.ABCDEFGHIJ.prise", tests::commande_simple(2));
    testing::internal::CaptureStderr();
    EXPECT_EQ(service::sert(reglages), service::reste_a_imprimer);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("renommez le fichier en caisse.txt\n"), std::string::npos);
    fs::rename(t.reseau(), t.chemin() / "parti");
    EXPECT_EQ(service::sert(reglages), service::impossible);
    fs::rename(t.chemin() / "parti", t.reseau());
    fs::remove_all(t.chemin() / "archive");
    t.pose("archive/en_cours", "");
    EXPECT_EQ(service::sert(reglages), service::impossible) << "it waits, or ends, and does not turn round";
    const tests::Issue dedans = t.cuisine("--archive \"" + t.reseau().string() + "\"");
    EXPECT_NE(dedans.erreurs.find("ne peut pas être le répertoire réseau"), std::string::npos)
        << "it would collect itself";
}

/// Of a damaged fiche nobody knows what has been printed: each part is marked, also the one that a later run prints.
TEST_F(Cuisine, UneFicheAbimeeMarqueTout) {
    std::string faute;
    ASSERT_TRUE(partage::lis("4=fichier:" + (t.chemin() / "bar.bin").string(), reglages.partage, faute)) << faute;
    imprime_sur(0, "fichier:" + (t.chemin() / "absent" / "cuisine.bin").string());
    t.pose("archive/en_cours/" + tests::nom_de_commande(1),
           tests::commande_de(1, bloc("8880000000611") + bloc("8880000000024")));
    t.pose("archive/en_cours/" + tests::nom_de_commande(1) + ".fiche", "#FICHE#1\r\n#TICK");
    EXPECT_EQ(service::sert(reglages), service::reste_a_imprimer);
    imprime_sur(0, "fichier:" + (t.chemin() / "cuisine.bin").string());
    EXPECT_EQ(service::sert(reglages), service::tout_imprime);
    for (const char* fichier : {"bar.bin", "cuisine.bin"}) {
        EXPECT_EQ(papier(fichier).avec("TABLE 001").size(), 1U) << fichier;
        EXPECT_EQ(papier(fichier).avec("DUPLICATA").size(), 1U) << fichier;
    }
}

// --- a file that is being written ------------------------------------------------------------------------------------

struct Ecrivain {
    std::string fichier, reste;
    int regards_avant_la_suite = 0;
};
Ecrivain ecrivain;

/// What another program writes comes in pieces, one at a look.
fichiers::Issue ecrit_peu_a_peu(Operation operation, std::string_view chemin) {
    if (operation != Operation::liste || !chemin.ends_with("reseau") || ecrivain.reste.empty())
        return fichiers::Issue::fait;
    if (--ecrivain.regards_avant_la_suite > 0) return fichiers::Issue::fait;
    ecrivain.regards_avant_la_suite = 12;
    std::ofstream(ecrivain.fichier, std::ios::binary | std::ios::app) << ecrivain.reste.substr(0, 30);
    ecrivain.reste.erase(0, 30);
    return fichiers::Issue::fait;
}

TEST_F(Cuisine, UnFichierQuOnEcritEncoreAttend) {
    ecrivain = {(t.reseau() / "caisse.txt").string(), tests::commande_simple(9), 0};
    fichiers::epreuve::avant = ecrit_peu_a_peu;
    t.pose("reseau/caisse.txt", "");
    EXPECT_EQ(service::sert(reglages), service::tout_imprime);
    fichiers::epreuve::avant = nullptr;
    EXPECT_EQ(papier().entiers.size(), 1U);
    EXPECT_EQ(papier().avec("TABLE 009").size(), 1U);
}

// --- several printers, numbers ---------------------------------------------------------------------------------------

TEST_F(Cuisine, LesFamillesVontASeveralImprimantes) {
    std::string faute;
    const std::string bar = "fichier:" + (t.chemin() / "bar.bin").string();
    ASSERT_TRUE(partage::lis("4,20-30=" + bar, reglages.partage, faute)) << faute;
    depose(1, tests::commande_de(1, bloc("8880000000611", "{2.00}") + bloc("8880000000024")));
    depose(2, tests::commande_de(2, bloc("8880000000611")));
    depose(3, tests::commande_de(3, bloc("8880000000048")));
    depose(4, tests::commande_de(4, ""));
    ASSERT_EQ(service::sert(reglages), service::tout_imprime);
    const Papier cuisine = papier(), comptoir = papier("bar.bin");
    ASSERT_EQ(cuisine.entiers.size(), 3U);
    ASSERT_EQ(comptoir.entiers.size(), 2U);
    for (const auto& [ticket, a, pas] : {std::tuple{cuisine.entiers[0], "suite : bar.bin\nFIN", "Demi"},
                                         std::tuple{comptoir.entiers[0], "suite : cuisine.bin\nFIN", "Entrec"}}) {
        EXPECT_NE(ticket.find("TABLE 001"), std::string::npos);
        EXPECT_NE(ticket.find("Commande 1\n"), std::string::npos) << "one number an order";
        EXPECT_NE(ticket.find(a), std::string::npos) << ticket;
        EXPECT_EQ(ticket.find(pas), std::string::npos) << ticket;
    }
    EXPECT_EQ(comptoir.entiers[1].find("suite"), std::string::npos);
    EXPECT_NE(cuisine.entiers[2].find("Commande 4\n"), std::string::npos) << "an order without lines is one, too";
    for (const char* faux :
         {"1-=tcp://bar", "5-2=tcp://bar", "121=tcp://bar", "1=tcp://bar:70000", "1", "1=tcp://", "20=tcp://autre"})
        EXPECT_FALSE(partage::lis(faux, reglages.partage, faute)) << faux;
}

TEST_F(Cuisine, LeNumeroSurvitAUnFichierAbime) {
    const auto numero = [&](int table) {
        depose(table, tests::commande_simple(table));
        EXPECT_EQ(service::sert(reglages), service::tout_imprime);
        const std::string ticket = papier().avec(tests::table_de(table)).at(0);
        return std::stoi(ticket.substr(ticket.find("Commande ") + 9));
    };
    EXPECT_EQ(numero(1), 1);
    EXPECT_EQ(numero(2), 2);
    t.pose("archive/numero.txt", "#NUMERO#9");
    EXPECT_EQ(numero(3), 3);
    t.pose("archive/numero_copie.txt", std::string(12, '\0'));
    EXPECT_EQ(numero(4), 4);
    t.pose("archive/numero.txt", "");
    t.pose("archive/numero_copie.txt", "");
    EXPECT_EQ(numero(5), 1) << "it works on";
    for (const char* fichier : {"archive/numero.txt", "archive/numero_copie.txt"})
        t.pose(fichier, "#NUMERO#2147483647#\r\n");
    EXPECT_EQ(numero(6), 1) << "a number that no ticket has had";
    static int refus;
    refus = 5;
    fichiers::epreuve::avant = [](Operation, std::string_view chemin) {
        return chemin.find("numero") != std::string_view::npos && --refus > 0 ? fichiers::Issue::panne
                                                                              : fichiers::Issue::fait;
    };
    EXPECT_EQ(numero(7), 2) << "what cannot be read for a moment is not damaged";
    fichiers::epreuve::avant = nullptr;
}

// --- the real program ------------------------------------------------------------------------------------------------

/// From the waiters' fingers to the kitchen's paper: the recorded lunch gives the tickets that the demonstration shows.
TEST(CuisineDeDemonstration, LeDejeunerDonneSesTickets) {
    const tests::Terrain t;
    const fs::path demo = fs::path(SOURCES) / "demo";
    for (const auto& e : fs::recursive_directory_iterator(demo)) {
        const std::string nom = fs::relative(e.path(), demo).generic_string();
        if (nom.ends_with(".wdo")) t.pose(nom, lis(e.path()));
    }
    ASSERT_EQ(t.joue(lis(demo / "service.txt")).statut, 0);
    const tests::Issue r = t.cuisine("--ecran");
    EXPECT_EQ(r.statut, 0) << r.erreurs;
    EXPECT_EQ(r.sortie, lis(demo / "tickets.txt"));
    EXPECT_EQ(t.fichiers("reseau/archive/2021-05-19", "_.txt").size(), 13U);
    EXPECT_EQ(t.cuisine("--ecran").sortie, "") << "all has been taken";
}

TEST(CuisineDeDemonstration, LaLigneDeCommande) {
    tests::Terrain t;
    t.restaurant();
    std::string commande = tests::commande_simple(1);
    t.pose("reseau/" + tests::nom_de_commande(1), commande.replace(commande.find("001\r\n"), 3, "\x1B]0;x\x07\x9D"));
    const std::string dit = t.cuisine("--une-fois --imprimante fichier:" + (t.chemin() / "papier").string()).erreurs;
    EXPECT_NE(dit.find("table ?]0;x??"), std::string::npos) << "what drives a terminal is not shown: " << dit;
    for (const char* faux : {"--colonnes 31", "--colonnes 65", "--page 850", "--imprimante bar", "--familles 1=2",
                             "autre", "--apercu un", "--inconnue"}) {
        const tests::Issue r = t.cuisine(faux);
        EXPECT_EQ(r.statut, 2) << faux;
        EXPECT_NE(r.erreurs.find("orvalune-cuisine [RÉPERTOIRE]"), std::string::npos) << faux;
    }
    EXPECT_NE(t.cuisine("--aide").sortie.find("--familles"), std::string::npos);
    t.pose("reseau/a.txt", tests::commande_simple(7));
    const std::string image = (t.chemin() / "a.png").string();
    EXPECT_EQ(t.cuisine("--apercu \"" + (t.reseau() / "a.txt").string() + "\" \"" + image + "\"").statut, 0);
    EXPECT_TRUE(lis(image).starts_with("\x89PNG"));
    EXPECT_TRUE(t.existe("reseau/a.txt")) << "a picture takes nothing away";
    EXPECT_EQ(t.cuisine("--imprimante \"fichier:" + (t.chemin() / "nulle_part" / "a").string() + "\"").statut, 1);
    EXPECT_TRUE(t.existe("reseau/archive/en_cours/a.txt")) << "it waits";
    EXPECT_EQ(t.cuisine("--ecran").sortie.substr(0, 10), "TABLE 007\n");
}

}  // namespace
