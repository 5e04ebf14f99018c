// A kitchen for tests: orders as the terminal writes them, and what a printer makes of the bytes that it gets.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "cuisine/service.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/texte.h"
#include "terrain.h"

namespace tests {

/// The name of the order of a table: table 7 was served at the 7th minute.
inline std::string nom_de_commande(int table) {
    char t[64];
    std::snprintf(t, sizeof t, "2021-05-19-12-%02d-00_07_%03d_004_.txt", table % 60, table);
    return t;
}

inline std::string bloc(std::string_view reference, std::string_view suite = "{1.00}",
                        std::string_view remarques = "") {
    return "#REF#" + texte::complete(reference, 15) + std::string(suite) + "\r\n#COMP#" + std::string(remarques) +
           "\r\n#NOTE#\r\n";
}

inline std::string commande_de(int table, std::string_view blocs) {
    char t[128];
    std::snprintf(t, sizeof t, "#ID#ABCDEFGHIJ\r\n#VERSION#2.1\r\n#SERVEUR#07\r\n#TABLE#%03d\r\n#NBCOUVERT#4 \r\n",
                  table);
    return t + std::string(blocs);
}

/// An entrecôte, which is of family 2, and a salad of family 1.
inline std::string commande_simple(int table) {
    return commande_de(table, bloc("8880000000024") + bloc("8880000000048"));
}

/// What came out of a printer: the texts of the tickets, each up to the cut; a part that no cut ends is marked.
struct Papier {
    std::vector<std::string> entiers, restes;

    explicit Papier(std::string_view octets) {
        std::string t;
        for (std::size_t i = 0; i < octets.size(); ++i) {
            const std::string_view suite = octets.substr(i);
            if (suite.starts_with("\x1B@")) finit(restes, t);
            if (suite.starts_with("\x1DVB")) finit(entiers, t);
            if (suite.starts_with("\x10\x04") || suite.starts_with("\x1Dr") || suite.starts_with("\x1D!") ||
                suite.starts_with("\x1Bt") ||
                suite.starts_with("\x1B"
                                  "E")) {
                i += 2;
            } else if (suite.starts_with("\x1DVB")) {
                i += 3;
            } else if (suite.starts_with("\x1B@")) {
                i += 1;
            } else {
                EXPECT_TRUE(suite[0] == '\n' || static_cast<unsigned char>(suite[0]) >= 32) << "an unknown command";
                t += suite[0];
            }
        }
        finit(restes, t);
        for (const std::string& ticket : entiers) EXPECT_TRUE(ticket.ends_with("\nFIN\n")) << ticket;
        for (const std::string& ticket : restes) EXPECT_FALSE(ticket.ends_with("\nFIN\n")) << ticket;
    }

    /// The whole tickets that hold a line.
    std::vector<std::string> avec(const std::string& ligne) const {
        std::vector<std::string> r;
        for (const std::string& t : entiers) {
            if (("\n" + t).find("\n" + ligne + "\n") != std::string::npos) r.push_back(t);
        }
        return r;
    }

  private:
    static void finit(std::vector<std::string>& vers, std::string& t) {
        if (!t.empty()) vers.push_back(t);
        t.clear();
    }
};

inline std::string table_de(int table) {
    char t[16];
    std::snprintf(t, sizeof t, "TABLE %03d", table);
    return t;
}

/// An order is printed once without a mark at most, and again only with one.
inline void verifie_une_fois(const Papier& papier, int table, const std::string& cas) {
    int sans_marque = 0;
    const auto tickets = papier.avec(table_de(table));
    for (const std::string& t : tickets) sans_marque += t.find("\nDUPLICATA\n") == std::string::npos ? 1 : 0;
    EXPECT_GE(tickets.size(), 1U) << cas << ": the order of table " << table << " is lost";
    EXPECT_LE(sans_marque, 1) << cas << ": twice, and nobody is told, table " << table;
}

/// The kitchen of this process on a restaurant, in simulated time.
class Fourneau : public testing::Test {
  protected:
    Terrain t;
    service::Reglages reglages;

    Fourneau() {
        t.restaurant();
        horloge::rend_virtuelle({2021, 5, 19, 14, 0, 0});
        reglages.reseau = t.reseau().string();
        reglages.archive = (t.chemin() / "archive").string();
        reglages.une_fois = true;
        imprime_sur(0, "fichier:" + (t.chemin() / "cuisine.bin").string());
    }
    ~Fourneau() override { horloge::rend_reelle(); }

    void imprime_sur(std::size_t rang, const std::string& adresse) {
        reglages.partage.adresses.resize(std::max(rang + 1, reglages.partage.adresses.size()));
        EXPECT_TRUE(imprimante::lis_adresse(adresse, reglages.partage.adresses[rang])) << adresse;
    }
    void depose(int table, const std::string& contenu) const { t.pose("reseau/" + nom_de_commande(table), contenu); }
    Papier papier(const std::string& fichier = "cuisine.bin") const { return Papier(t.lis(fichier)); }
};

}  // namespace tests
