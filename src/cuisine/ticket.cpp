#include "cuisine/ticket.h"

#include <algorithm>
#include <utility>

#include "data/nombres.h"
#include "platform/systeme/texte.h"

namespace ticket {
namespace {

constexpr std::size_t retrait_quantite = 3, retrait_libelle = 5, retrait_detail = 7;
constexpr std::size_t fin_de_l_heure = 2;  ///< blanks behind the time
constexpr std::string_view fin = "FIN", duplicata = "DUPLICATA";

struct Remplacant {
    char octet;
    std::string_view par;
};
/// Characters of the page 1252 that the page 858 lacks.
constexpr Remplacant remplacants[] = {
    {'\x82', ","},  {'\x84', "\""}, {'\x85', "..."}, {'\x86', "+"}, {'\x87', "+"}, {'\x88', "^"},  {'\x89', "o/oo"},
    {'\x8A', "S"},  {'\x8B', "<"},  {'\x8C', "OE"},  {'\x8E', "Z"}, {'\x91', "'"}, {'\x92', "'"},  {'\x93', "\""},
    {'\x94', "\""}, {'\x95', "-"},  {'\x96', "-"},   {'\x97', "-"}, {'\x98', "~"}, {'\x99', "TM"}, {'\x9A', "s"},
    {'\x9B', ">"},  {'\x9C', "oe"}, {'\x9E', "z"},   {'\x9F', "Y"},
};

/// The characters that the printer has: no control character reaches it from a file.
std::string imprimable(std::string_view t, Page page) {
    std::string r;
    for (const char c : t) {
        const auto o = static_cast<unsigned char>(c);
        const bool trou = o >= 0x80 && o < 0xA0 && texte::point_de_code(o) == o;
        const auto par = std::find_if(std::begin(remplacants), std::end(remplacants),
                                      [c](const Remplacant& x) { return x.octet == c; });
        if (o < 32 || o == 127 || o == 0xA0) {
            r += ' ';
        } else if (page == Page::p858 && par != std::end(remplacants)) {
            r += par->par;
        } else {
            r += trou ? '?' : c;
        }
    }
    return r;
}

/// Collects the lines, broken to the width of the paper.
class Redaction {
  public:
    explicit Redaction(const Papier& papier)
        : page_(papier.page),
          largeur_(static_cast<std::size_t>(std::clamp(papier.colonnes, colonnes_min, colonnes_max))) {}

    std::size_t largeur() const { return largeur_; }
    std::string imprimable(std::string_view t) const { return ticket::imprimable(t, page_); }

    /// A text behind a head that stands on its first line alone; the others begin below it. Breaks on blanks, and
    /// within a word that is longer than a line.
    void ajoute(std::string tete, std::string_view t, Style style = Style::normal) {
        const std::string propre = imprimable(t);
        std::string_view reste = texte::rogne(propre);
        const std::size_t retrait = tete.size(), place = largeur_ - retrait;
        do {
            const std::size_t n = coupe(reste, place);
            ticket_.push_back(
                {std::exchange(tete, std::string(retrait, ' ')) + std::string(reste.substr(0, n)), style});
            reste = texte::rogne(reste.substr(n));
        } while (!reste.empty());
    }
    void trait() { ticket_.push_back({std::string(largeur_, '-')}); }
    Ticket finit() {
        ticket_.push_back({std::string(fin)});
        return std::move(ticket_);
    }

  private:
    Page page_;
    std::size_t largeur_;
    Ticket ticket_;

    static std::size_t coupe(std::string_view t, std::size_t place) {
        if (t.size() <= place) return t.size();
        const auto blanc = t.rfind(' ', place);
        return blanc == std::string_view::npos || blanc == 0 ? place : blanc;
    }
};

std::string quantite(double v) {
    std::string t = nombres::general(v);
    std::replace(t.begin(), t.end(), '.', ',');
    return t;
}

/// Covers at the left, the server in the middle, the time at the right; what does not fit has a line of its own.
void ajoute_qui(Redaction& r, std::string_view couverts, std::string_view serveur, std::string_view heure) {
    const std::string nom = r.imprimable(serveur);
    std::string ligne = r.imprimable(couverts) + (couverts == "0" || couverts == "1" ? " couvert" : " couverts");
    const std::size_t place_heure = r.largeur() - fin_de_l_heure - heure.size();
    const std::size_t place_nom = (r.largeur() - std::min(nom.size(), r.largeur())) / 2;
    const bool tient = ligne.size() < place_nom && place_nom + nom.size() < place_heure;
    if (tient) ligne = texte::complete(ligne, place_nom) + nom;
    ligne = texte::complete(ligne, std::max(place_heure, ligne.size() + 1)) + std::string(heure);
    r.ajoute("", ligne);
    if (!tient) r.ajoute("", nom);
}

void ajoute_article(Redaction& r, const commande::Article& a, const articles::Articles& catalogue) {
    const auto libelle = [&catalogue](const std::string& reference) {
        const articles::Article* const connu = catalogue.trouve(reference);
        return connu == nullptr || connu->libelle.empty() ? std::string_view(reference) : connu->libelle;
    };
    const std::string n = quantite(a.quantite);
    std::string tete = std::string(retrait_quantite - std::min(n.size(), retrait_quantite), ' ') + n;
    tete.resize(std::max(retrait_libelle, tete.size() + 1), ' ');
    if (tete.size() > r.largeur() / 2) {
        r.ajoute("", n);  // a quantity without sense
        tete.assign(retrait_libelle, ' ');
    }
    r.ajoute(tete, libelle(a.reference));
    const std::string retrait(retrait_detail, ' ');
    for (const commande::Plat& p : a.plats) {
        const std::string nombre = p.nombre == a.quantite ? "" : quantite(p.nombre) + " x ";
        r.ajoute(retrait, nombre + std::string(libelle(p.reference)));
    }
    for (const std::string& remarque : a.remarques) r.ajoute(retrait, remarque);
}

std::string heure(const horloge::DateHeure& d) {
    constexpr std::size_t longueur_date = 11;
    return horloge::lisible(d).substr(longueur_date);
}

}  // namespace

Ticket compose(const commande::Commande& commande, const std::vector<const commande::Article*>& lignes,
               const articles::Articles& catalogue, const Entete& entete, const Papier& papier) {
    Redaction r(papier);
    r.ajoute("", "TABLE " + commande.table, Style::haut);
    if (entete.duplicata) r.ajoute("", duplicata, Style::haut);
    const std::string_view nom = catalogue.serveur(commande.serveur);
    const std::string numero = "serveur " + nombres::entier_complete(commande.serveur, 2);
    ajoute_qui(r, commande.couverts, nom.empty() ? std::string_view(numero) : nom, heure(entete.date));
    r.ajoute("", "Commande " + std::to_string(entete.numero));
    r.trait();
    for (const articles::Famille& f : catalogue.familles()) {
        bool premiere = true;
        for (const commande::Article* const a : lignes) {
            const articles::Article* const connu = catalogue.trouve(a->reference);
            if ((connu == nullptr ? articles::sans_famille : connu->famille) != f.numero) continue;
            if (std::exchange(premiere, false)) r.ajoute("", texte::majuscules(f.nom), Style::gras);
            ajoute_article(r, *a, catalogue);
        }
    }
    r.trait();
    if (!entete.ailleurs.empty()) r.ajoute("suite : ", entete.ailleurs);
    return r.finit();
}

Ticket de_rejet(std::string_view fichier, std::string_view raison, bool deja, const Papier& papier) {
    Redaction r(papier);
    r.ajoute("", "FICHIER REJETÉ"_t, Style::haut);
    if (deja) r.ajoute("", duplicata, Style::haut);
    r.ajoute("", fichier);
    r.ajoute("", raison);
    r.ajoute("", "Ce n'est pas une commande entière : demandez en salle."_t);
    r.trait();
    return r.finit();
}

std::string en_texte(const Ticket& ticket) {
    std::string r;
    for (const Ligne& l : ticket) r += l.texte + "\n";
    return r;
}

}  // namespace ticket
