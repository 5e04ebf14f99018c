#include "cuisine/escpos.h"

#include "platform/systeme/texte.h"

namespace escpos {
namespace {

using namespace std::string_view_literals;
using ticket::Style;

constexpr std::string_view initialise = "\x1B@"sv, page_1252 = "\x1Bt\x10"sv, page_858 = "\x1Bt\x13"sv;
constexpr std::string_view gras =
                               "\x1B"
                               "E\x01"sv,
                           maigre =
                               "\x1B"
                               "E\x00"sv;
constexpr std::string_view double_hauteur = "\x1D!\x01"sv, hauteur_simple = "\x1D!\x00"sv;
constexpr std::string_view coupe = "\x1DVB\x00"sv;  ///< past the last line, then through the paper

struct Habit {
    std::string_view avant, apres;
};
/// By Style.
constexpr Habit habits[] = {{"", ""}, {gras, maigre}, {double_hauteur, hauteur_simple}};

constexpr unsigned char premier_latin = 0xA0, euro_1252 = 0x80, euro_858 = 0xD5, florin_1252 = 0x83, florin_858 = 0x9F;
/// The page 858 for the characters A0 to FF of the page 1252.
constexpr unsigned char latin_858[] = {
    0xFF, 0xAD, 0xBD, 0x9C, 0xCF, 0xBE, 0xDD, 0xF5, 0xF9, 0xB8, 0xA6, 0xAE, 0xAA, 0xF0, 0xA9, 0xEE,
    0xF8, 0xF1, 0xFD, 0xFC, 0xEF, 0xE6, 0xF4, 0xFA, 0xF7, 0xFB, 0xA7, 0xAF, 0xAC, 0xAB, 0xF3, 0xA8,
    0xB7, 0xB5, 0xB6, 0xC7, 0x8E, 0x8F, 0x92, 0x80, 0xD4, 0x90, 0xD2, 0xD3, 0xDE, 0xD6, 0xD7, 0xD8,
    0xD1, 0xA5, 0xE3, 0xE0, 0xE2, 0xE5, 0x99, 0x9E, 0x9D, 0xEB, 0xE9, 0xEA, 0x9A, 0xED, 0xE8, 0xE1,
    0x85, 0xA0, 0x83, 0xC6, 0x84, 0x86, 0x91, 0x87, 0x8A, 0x82, 0x88, 0x89, 0x8D, 0xA1, 0x8C, 0x8B,
    0xD0, 0xA4, 0x95, 0xA2, 0x93, 0xE4, 0x94, 0xF6, 0x9B, 0x97, 0xA3, 0x96, 0x81, 0xEC, 0xE7, 0x98,
};
static_assert(sizeof latin_858 == 0x100 - premier_latin);

char en_858(char c) {
    const auto o = static_cast<unsigned char>(c);
    if (o == euro_1252) return static_cast<char>(euro_858);
    if (o == florin_1252) return static_cast<char>(florin_858);
    return o < premier_latin ? c : static_cast<char>(latin_858[o - premier_latin]);
}

}  // namespace

std::string octets(const ticket::Ticket& ticket, ticket::Page page) {
    std::string r(initialise);
    r += page == ticket::Page::p858 ? page_858 : page_1252;
    for (const ticket::Ligne& l : ticket) {
        const Habit& h = habits[static_cast<std::size_t>(l.style)];
        r += h.avant;
        for (const char c : l.texte) r += page == ticket::Page::p858 ? en_858(c) : c;
        r.append("\n").append(h.apres);
    }
    r += coupe;
    return r;
}

Reponse lis_reponse(std::string_view demande, unsigned char octet) {
    constexpr unsigned char fixes = 0x93, fixes_du_direct = 0x12, fixes_en_suite = 0x90;
    constexpr unsigned char bit_hors_ligne = 0x08, bits_papier = 0x60, bits_papier_en_suite = 0x0C;
    if (demande == demande_apres) {
        if ((octet & fixes_en_suite) != 0) return Reponse::aucune;
        return (octet & bits_papier_en_suite) != 0 ? Reponse::sans_papier : Reponse::prete;
    }
    if ((octet & fixes) != fixes_du_direct) return Reponse::aucune;
    if (demande == demande_papier) return (octet & bits_papier) != 0 ? Reponse::sans_papier : Reponse::prete;
    return (octet & bit_hors_ligne) != 0 ? Reponse::hors_ligne : Reponse::prete;
}

}  // namespace escpos
