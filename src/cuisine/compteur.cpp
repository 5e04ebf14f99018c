#include "cuisine/compteur.h"

#include <algorithm>

#include "data/nombres.h"
#include "platform/systeme/horloge.h"

namespace compteur {
namespace {

using fichiers::Issue;

constexpr std::string_view debut = "#NUMERO#", fin = "#\r\n";

/// -1: damaged, or not there; `issue` tells which, or that it cannot be read at the moment.
int lis(const std::string& fichier, Issue& issue) {
    constexpr std::uint64_t longueur_max = 64;
    std::string t;
    issue = fichiers::lis_tout(fichier, t, longueur_max);
    if (issue != Issue::fait) return -1;
    const int n = nombres::entier_int(std::string_view(t).substr(std::min(t.size(), debut.size())));
    return t == std::string(debut) + std::to_string(n) + std::string(fin) && n >= 0 && n <= numero_max ? n : -1;
}

/// Whether another attempt may give more.
bool est_passager(Issue issue) {
    return issue != Issue::fait && issue != Issue::absent && issue != Issue::trop_long;
}

}  // namespace

Compteur::Compteur(const std::string& archive)
    : fichier_(fichiers::joint(archive, "numero.txt")), copie_(fichiers::joint(archive, "numero_copie.txt")) {}

bool Compteur::relit() {
    constexpr std::int64_t patience_ms = 10000;
    if (lu_) return true;
    Issue issue = Issue::fait, issue_copie = Issue::fait;
    const int a = lis(fichier_, issue), b = lis(copie_, issue_copie);
    if (a < 0 && (est_passager(issue) || est_passager(issue_copie))) {
        if (!illisible_depuis_) illisible_depuis_ = horloge::millisecondes();
        if (horloge::millisecondes() - *illisible_depuis_ < patience_ms) return false;
    }
    lu_ = true;
    dernier_ = std::max({dernier_, a, b});
    perdu_ = a < 0 && b < 0 && (issue != Issue::absent || issue_copie != Issue::absent);
    return true;
}

void Compteur::connait(int numero) {
    dernier_ = std::max(dernier_, numero);
}

Issue Compteur::retient(int numero) {
    connait(numero);
    const std::string t = std::string(debut) + std::to_string(dernier_) + std::string(fin);
    const Issue issue = fichiers::ecrit_tout(fichier_, t, fichiers::Remplace::oui);
    if (issue == Issue::fait) static_cast<void>(fichiers::remplace_sans_attendre(copie_, t));
    return issue;
}

}  // namespace compteur
