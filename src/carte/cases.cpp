#include "carte/cases.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <utility>

#include "data/lignes.h"
#include "data/nombres.h"
#include "platform/controles/apparence.h"
#include "platform/peinture/images.h"
#include "platform/systeme/texte.h"

namespace cases {
namespace {

using tableaux::cle;

constexpr double prix_max = 99999.99;
/// What would end a label, a dish, a remark or a component of a note line before its end.
constexpr std::string_view reserves = "|{}µ¦¤Ðð"_t;
constexpr std::string_view noms_des_chiffres = "rouge, orange, jaune, vert, canard, bleu, violet, rose ou taupe";

bool est_chiffre(char c) {
    return c >= '0' && c <= '9';
}

/// "12,50", "12.50", "1 234,5 €": without what groups digits and names the currency.
std::optional<double> montant(std::string t) {
    std::erase_if(t, [](char c) { return c == ' ' || c == '\xA0'; });
    for (const std::string_view monnaie :
         {std::string_view("\x80"), std::string_view("EUR"), std::string_view("eur")}) {
        if (t.ends_with(monnaie)) t.resize(t.size() - monnaie.size());
    }
    std::replace(t.begin(), t.end(), ',', '.');
    const auto point = std::min(t.find('.'), t.size());
    const std::string_view entiers = std::string_view(t).substr(0, point),
                           decimales = std::string_view(t).substr(std::min(point + 1, t.size()));
    const auto chiffres = [](std::string_view s) { return std::all_of(s.begin(), s.end(), est_chiffre); };
    const bool juste = !entiers.empty() && chiffres(entiers) && chiffres(decimales) && decimales.size() <= 2 &&
                       (point == t.size() || !decimales.empty());
    if (!juste || entiers.size() > 7 || nombres::lis(t) > prix_max) return std::nullopt;
    return nombres::lis(t);
}

/// A colour, red high, by "#RRVVBB", a name or a digit.
std::optional<ecran::Couleur> teinte(std::string_view t) {
    if (t.starts_with('#')) {
        int v = 0;
        const auto lu = std::from_chars(t.data() + 1, t.data() + t.size(), v, 16);
        if (t.size() != 7 || lu.ptr != t.data() + t.size() || v < 0) return std::nullopt;
        return v;
    }
    if (t.size() == 1 && est_chiffre(t[0])) return ecran::palette::chiffres[t[0] - '0'];
    const auto i = std::find_if(std::begin(ecran::palette::teintes), std::end(ecran::palette::teintes),
                                [&](const auto& c) { return cle(c.nom) == cle(t); });
    if (i == std::end(ecran::palette::teintes)) return std::nullopt;
    return i->couleur;
}

std::optional<int> image_nommee(std::string_view t) {
    if (const auto n = nombre_entier(t)) return *n < ecran::decalage_grand ? n : std::nullopt;
    const std::string cherchee = cle(t) == "barbecue" ? "grillade" : cle(t);
    for (int n = 1; n < ecran::decalage_grand; ++n) {
        if (cle(texte::depuis_utf8_tolerant(ecran::image_de_touche(n).nom)) == cherchee) return n;
    }
    return std::nullopt;
}

std::string entre_guillemets(std::string_view utf8) {
    return "« " + std::string(utf8) + " »";
}

/// UTF-8 whose line ends, tabs and the narrow blanks of prices are blanks.
std::string en_une_ligne(std::string_view utf8) {
    std::string r(utf8);
    for (const std::string_view fin : {"\xE2\x80\xAF", "\xE2\x80\x89", "\n", "\t"}) {
        for (auto p = r.find(fin); p != std::string::npos; p = r.find(fin, p + 1)) r.replace(p, fin.size(), " ");
    }
    return r;
}

}  // namespace

Lecteur::Lecteur(const tableaux::Tableau& tableau, tableaux::Constats& constats)
    : tableau_(tableau), constats_(constats) {}

bool Lecteur::suivante() {
    juste_ = true;
    for (; rangee_ < tableau_.rangees.size(); ++rangee_) {
        const auto& r = tableau_.rangees[rangee_];
        if (std::all_of(r.begin(), r.end(), [](const std::string& c) { return c.empty(); })) continue;
        ++rangee_;
        return true;
    }
    return false;
}

std::string_view Lecteur::brut(int colonne) const {
    const int place = tableau_.places[static_cast<std::size_t>(colonne)];
    const auto& r = tableau_.rangees[rangee_ - 1];
    return place < 0 || static_cast<std::size_t>(place) >= r.size() ? std::string_view()
                                                                    : r[static_cast<std::size_t>(place)];
}

bool Lecteur::dit(int colonne) const {
    return !texte::rogne(en_une_ligne(brut(colonne))).empty();
}

std::string Lecteur::texte(int colonne, std::size_t max) {
    const std::string utf8 = en_une_ligne(brut(colonne));
    if (const auto etranger = texte::hors_page(utf8); !etranger.empty()) {
        faute(colonne, "contient le caractère « " + std::string(etranger) +
                           " », que les tablettes n'ont pas ; écrivez-le autrement");
        return {};
    }
    const std::string page = texte::depuis_utf8_tolerant(utf8);
    std::string r(texte::rogne(page));
    if (std::any_of(r.begin(), r.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }))
        faute(colonne, "contient un caractère invisible ; ressaisissez ce texte");
    if (r.size() > max)
        faute(colonne,
              "a " + std::to_string(r.size()) + " caractères ; écrivez-en " + std::to_string(max) + " au plus");
    return r;
}

std::string Lecteur::nom(int colonne, std::size_t max) {
    if (!dit(colonne)) manque(colonne, "il manque un texte ; écrivez-le dans cette case");
    return texte(colonne, max);
}

std::string Lecteur::libelle(int colonne) {
    std::string r = texte(colonne);
    const auto p = r.find_first_of(reserves);
    if (p != std::string::npos)
        faute(colonne, "contient le signe « " + texte::vers_utf8(r.substr(p, 1)) +
                           " », réservé aux fichiers ; écrivez-le autrement");
    if (texte::contient(r, "##QUA")) faute(colonne, "contient « ##QUA », réservé aux notes ; écrivez-le autrement");
    return r;
}

int Lecteur::entier(int colonne, int min, int max, std::optional<int> sans) {
    if (!dit(colonne) && sans) return *sans;
    const std::string bornes = "de " + std::to_string(min) + " à " + std::to_string(max);
    if (!dit(colonne)) {
        manque(colonne, "il manque un nombre ; écrivez-le, " + bornes);
        return min;
    }
    const auto v = nombre_entier(texte(colonne));
    if (v && *v >= min && *v <= max) return *v;
    faute(colonne, "n'est pas un nombre " + bornes + " ; écrivez par exemple " +
                       std::to_string(std::max(min, std::min(12, max))));
    return min;
}

double Lecteur::prix(int colonne, std::optional<double> sans) {
    if (!dit(colonne) && sans) return *sans;
    if (!dit(colonne)) {
        manque(colonne, "il manque un prix ; écrivez par exemple 12,50, ou 0 pour un article gratuit");
        return 0;
    }
    const auto v = montant(texte(colonne));
    if (!v) faute(colonne, "n'est pas un prix ; écrivez par exemple 12,50");
    return v.value_or(0);
}

std::string Lecteur::reference(int colonne) {
    const std::string t = texte(colonne);
    if (est_reference(t)) return t;
    if (t.empty())
        manque(colonne, "il manque une référence ; écrivez 13 chiffres, par exemple 8880000000024");
    else if (t.find_first_of("eE+,.") != std::string::npos)
        faute(colonne,
              "est une référence que le tableur a arrondie ; donnez à la colonne le format « Texte » et "
              "ressaisissez les 13 chiffres");
    else
        faute(colonne, "n'est pas une référence ; écrivez 13 chiffres, par exemple 8880000000024");
    return {};
}

int Lecteur::chiffre(int colonne) {
    const std::string t = texte(colonne);
    if (t.empty() || cle(t) == "aucune") return 0;
    const auto c = teinte(t);
    const auto i = std::find(std::begin(ecran::palette::chiffres), std::end(ecran::palette::chiffres), c.value_or(-1));
    if (i != std::end(ecran::palette::chiffres)) return static_cast<int>(i - std::begin(ecran::palette::chiffres));
    faute(colonne,
          "n'est pas une couleur de touche ; écrivez " + std::string(noms_des_chiffres) + ", ou un chiffre de 0 à 9");
    return 0;
}

std::int32_t Lecteur::couleur(int colonne, std::int32_t sans) {
    const std::string t = texte(colonne);
    if (t.empty() || cle(t) == "aucune") return sans;
    if (const auto c = teinte(t)) return ecran::vers_bgr(*c);
    faute(colonne, "n'est pas une couleur ; écrivez par exemple rouge, 1 ou #C24B45");
    return sans;
}

int Lecteur::image(int colonne, bool& marque) {
    std::string t = texte(colonne);
    marque = t == "N" || t.ends_with(" N");
    if (marque) t = texte::rogne(std::string_view(t).substr(0, t.size() - 1));
    if (t.empty()) return 0;
    const auto n = image_nommee(t);
    if (!n) faute(colonne, "n'est pas une image ; écrivez un numéro de 1 à 49 ou un nom, par exemple poisson");
    return n.value_or(0);
}

std::string Lecteur::situe(int colonne, std::string_view message) const {
    const auto& f = tableaux::forme(tableau_.feuille);
    return tableaux::situe(f.fichier, rangee_, f.colonnes[static_cast<std::size_t>(colonne)].nom, message);
}

void Lecteur::faute(int colonne, std::string_view message) {
    manque(colonne, entre_guillemets(en_une_ligne(brut(colonne))) + " " + std::string(message));
}

void Lecteur::manque(int colonne, std::string_view message) {
    juste_ = false;
    constats_.fautes.push_back(situe(colonne, message));
}

void Lecteur::faute_de(std::size_t ligne, int colonne, std::string_view message) {
    const std::size_t ici = std::exchange(rangee_, ligne);
    faute(colonne, message);
    rangee_ = ici;
}

void Lecteur::remarque(int colonne, std::string_view message) {
    constats_.remarques.push_back(situe(colonne, message));
}

bool est_reference(std::string_view texte) {
    return texte.size() == lignes::longueur_reference && std::all_of(texte.begin(), texte.end(), est_chiffre);
}

std::optional<int> nombre_entier(std::string_view t) {
    int v = 0;
    const auto lu = std::from_chars(t.data(), t.data() + t.size(), v);
    if (t.empty() || lu.ec != std::errc() || lu.ptr != t.data() + t.size() || !est_chiffre(t[0])) return std::nullopt;
    return v;
}

std::string prix_ecrit(double prix) {
    std::string r = nombres::montant(prix);
    std::replace(r.begin(), r.end(), '.', ',');
    return r;
}

std::string chiffre_ecrit(int chiffre) {
    return chiffre > 0 && chiffre < 10 ? texte::minuscules(ecran::palette::teintes[chiffre - 1].nom) : std::string();
}

std::string couleur_ecrite(std::int32_t bgr) {
    const ecran::Couleur c = ecran::depuis_bgr(bgr & 0xFFFFFF);
    for (const auto& t : ecran::palette::teintes) {
        if (t.couleur == c) return texte::minuscules(t.nom);
    }
    constexpr std::string_view hexa = "0123456789ABCDEF";
    std::string r = "#";
    for (int decalage = 20; decalage >= 0; decalage -= 4) r += hexa[static_cast<std::size_t>((c >> decalage) & 0xF)];
    return r;
}

std::string image_ecrite(int image, bool marque) {
    std::string r;
    if (image > 0)
        r = image < ecran::decalage_grand ? texte::depuis_utf8_tolerant(ecran::image_de_touche(image).nom)
                                          : std::to_string(image);
    if (marque) r += r.empty() ? "N" : " N";
    return r;
}

}  // namespace cases
