#include "cuisine/compteur.h"

#include <algorithm>

#include "data/nombres.h"

namespace compteur {
namespace {

using fichiers::Issue;

constexpr std::string_view debut = "#NUMERO#", fin = "#\r\n";

/// -1: damaged, or not there.
int lis(const std::string& fichier) {
    constexpr std::uint64_t longueur_max = 64;
    std::string t;
    if (fichiers::lis_tout(fichier, t, longueur_max) != Issue::fait) return -1;
    const int n = nombres::entier_int(std::string_view(t).substr(std::min(t.size(), debut.size())));
    return t == std::string(debut) + std::to_string(n) + std::string(fin) && n >= 0 && n <= numero_max ? n : -1;
}

}  // namespace

Compteur::Compteur(const std::string& archive)
    : fichier_(fichiers::joint(archive, "numero.txt")), copie_(fichiers::joint(archive, "numero_copie.txt")) {
    const int a = lis(fichier_), b = lis(copie_);
    dernier_ = std::max({a, b, 0});
    perdu_ = a < 0 && b < 0 && (fichiers::existe(fichier_) || fichiers::existe(copie_));
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
