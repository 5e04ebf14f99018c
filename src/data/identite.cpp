#include "data/identite.h"

#include <cstdint>
#include <random>
#include <string_view>

#include "platform/systeme/fichiers.h"
#include "platform/systeme/processus.h"
#include "platform/systeme/texte.h"

namespace identite {
namespace {

constexpr std::string_view signes = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
constexpr std::size_t longueur = 10;
constexpr std::string_view fichier_secours = "identite.wdo";

std::string en_signes(std::uint64_t v) {
    std::string r;
    for (std::size_t i = 0; i < longueur; ++i, v /= signes.size()) r += signes[v % signes.size()];
    return r;
}

/// FNV-1a, then a last mixing: near identifiers give far codes.
std::uint64_t empreinte(std::string_view t) {
    std::uint64_t h = 0xCBF29CE484222325;
    for (const char c : t) h = (h ^ static_cast<unsigned char>(c)) * 0x100000001B3;
    h = (h ^ (h >> 33)) * 0xFF51AFD7ED558CCD;
    return h ^ (h >> 33);
}

bool est_un_code(std::string_view t) {
    return t.size() == longueur && t.find_first_not_of(signes) == std::string_view::npos;
}

std::string code_garde() {
    std::string t;
    if (fichiers::lis_tout(fichier_secours, t, 1024) == fichiers::Issue::fait) {
        const auto lignes = texte::lignes(t);
        if (!lignes.empty() && est_un_code(lignes[0])) return std::string(lignes[0]);
    }
    std::random_device hasard;
    const std::string neuf = en_signes((static_cast<std::uint64_t>(hasard()) << 32) ^ hasard());
    static_cast<void>(fichiers::ecrit_tout(fichier_secours, neuf + "\r\n", fichiers::Remplace::oui));
    return neuf;
}

std::string derive() {
    const std::string machine = processus::identifiant_machine();
    return machine.empty() ? code_garde() : en_signes(empreinte(machine));
}

}  // namespace

const std::string& code() {
    static const std::string c = derive();
    return c;
}

}  // namespace identite
