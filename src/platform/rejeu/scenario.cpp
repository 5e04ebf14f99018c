#include "platform/rejeu/scenario.h"

#include <charconv>

#include "platform/systeme/texte.h"

namespace rejeu {
namespace {

/// Reads the quoted text that starts at `i` (on its quote) and moves `i` behind it; false when it is not closed, or
/// when a "\" stands before anything but a quote or another "\".
bool lis_cite(std::string_view t, std::size_t& i, std::string& sortie) {
    for (++i; i < t.size(); ++i) {
        if (t[i] == '"') return ++i, true;
        if (t[i] == '\\') {
            ++i;
            if (i >= t.size() || (t[i] != '"' && t[i] != '\\')) return false;
        }
        sortie += t[i];
    }
    return false;
}

bool est_blanc(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

}  // namespace

Ligne decoupe(std::string_view utf8) {
    Ligne r;
    std::size_t i = 0;
    while (true) {
        while (i < utf8.size() && est_blanc(utf8[i])) ++i;
        if (i >= utf8.size() || (r.mots.empty() && utf8[i] == '#')) return r;
        Mot mot;
        if (utf8[i] == '"') {
            std::string brut;
            if (!lis_cite(utf8, i, brut)) return {{}, "texte sans guillemet fermant, ou \\ devant un autre signe"};
            const auto page = texte::depuis_utf8(brut);
            if (!page) return {{}, "caractère hors de la page 1252"};
            mot = {*page, true};
            if (i < utf8.size() && !est_blanc(utf8[i])) return {{}, "texte suivi sans blanc"};
        } else {
            const auto debut = i;
            while (i < utf8.size() && !est_blanc(utf8[i])) ++i;
            mot = {std::string(utf8.substr(debut, i - debut)), false};
        }
        r.mots.push_back(std::move(mot));
    }
}

std::optional<int> lis_entier(std::string_view mot) {
    int n = 0;
    const auto [fin, erreur] = std::from_chars(mot.data(), mot.data() + mot.size(), n);
    if (erreur != std::errc() || fin != mot.data() + mot.size() || n < 0) return std::nullopt;
    return n;
}

std::optional<Nom> lis_nom(std::string_view mot) {
    Nom r;
    if (const auto point = mot.find('.'); point != std::string_view::npos) {
        r.forme = mot.substr(0, point);
        mot.remove_prefix(point + 1);
        if (r.forme.empty()) return std::nullopt;
    }
    if (const auto parenthese = mot.find('('); parenthese != std::string_view::npos) {
        if (!mot.ends_with(')')) return std::nullopt;
        const auto index = lis_entier(mot.substr(parenthese + 1, mot.size() - parenthese - 2));
        if (!index) return std::nullopt;
        r.index = *index;
        mot = mot.substr(0, parenthese);
    }
    r.controle = mot;
    if (r.controle.empty()) return std::nullopt;
    return r;
}

}  // namespace rejeu
