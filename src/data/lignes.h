// The parts of a note line, which begins as the article's record: label, price, quantity, remarks, components,
// menu courses. Markers count only outside the remarks, so that no remark can change what a line is; a menu composition
// ("{{" to "}}") is no remark and stays in the line as it is.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lignes {

/// The fields of an article's record, in their order.
inline constexpr std::string_view champ_libelle = "|DES:", champ_prix = "|PVE:", champ_famille = "|FA1:",
                                  champ_seconde_famille = "|FA2:", champ_couleur = "|COU:";
/// The second family codes of the two kinds of menus.
inline constexpr int code_prix_fixe = 98, code_compose = 99;
inline constexpr std::size_t longueur_reference = 13;

/// What an article's record says.
struct Fiche {
    std::string reference;  ///< padded to the 15 characters that it stands in
    std::string libelle;
    std::optional<double> prix;
    int famille = 0;
    std::optional<int> seconde_famille;
    int chiffre = 0;    ///< colour digit; 0 is not written
    std::string suite;  ///< texte_composition() or texte_composants(), or nothing
};
std::string texte_fiche(const Fiche& fiche);

/// The first 15 characters: the reference and two blanks.
std::string_view reference(std::string_view ligne);
/// The text behind "|DES:", up to the next "|" or the end of the record; empty without it.
std::string_view libelle(std::string_view ligne);
/// The unit price behind "|PVE:".
std::optional<double> prix(std::string_view ligne);
/// The unit price as keys show it, "0.00"; empty without price.
std::string prix_affiche(std::string_view ligne);
/// The number behind "|FA2:".
std::optional<int> seconde_famille(std::string_view ligne);
/// The digit behind "|COU:", 0 without it.
int chiffre_couleur(std::string_view ligne);
/// The quantity behind "##QUA:".
std::optional<double> quantite(std::string_view ligne);
/// The same, read from the six characters behind the marker.
std::optional<double> quantite_courte(std::string_view ligne);
/// Unit price as it is shown times quantity, to the cent, so that the amounts shown add up to the total; 0 without a
/// price, one piece without a quantity.
double montant(std::string_view ligne);
/// The sum of these lines as the banner and the summary show it, "0.00".
std::string total(std::span<const std::string> note);
/// The remarks, in order, without their braces; one that is never closed runs to the end of the line.
std::vector<std::string> segments(std::string_view ligne);
/// A line that the order file writes as a composed menu.
bool est_menu_compose(std::string_view ligne);
/// A fixed-price menu, whose courses are chosen before the line is completed.
bool est_menu_a_prix_fixe(std::string_view ligne);

/// A component of a composed menu.
struct Composant {
    std::string reference;  ///< 15 characters at most
    std::string libelle;
    double premier = 0;  ///< written as an amount
    double second = 0;   ///< pieces for one menu
};
std::vector<Composant> composants(std::string_view ligne);
std::string texte_composants(std::span<const Composant> composants);

/// The composition's text between "{{" and "}}"; nothing without one.
std::optional<std::string_view> composition(std::string_view ligne);

inline constexpr std::size_t services_par_menu = 6, choix_par_service = 16;

/// A course of a fixed-price menu, with the dishes to choose from.
struct Service {
    std::string nom;
    std::vector<std::string> choix;       ///< labels in their places, choix_par_service at most
    std::vector<std::string> references;  ///< of the articles, in the same places; empty for a free text
};
/// The courses that have a dish, of a composition's text: six times a name, "µ" and sixteen choices, each a reference,
/// "|", a label and "¦"; empty choices keep their place. Whatever separators are missing or too many, each course is
/// found by its "µ"; what cannot be a choice is left out, and a 17th choice begins another course of the same name.
std::vector<Service> services(std::string_view composition);
/// The composition of these courses with its braces; places that are missing are empty.
std::string texte_composition(std::span<const Service> services);

/// The line with a new quantity and new remarks; blank remarks are left out, the others neutralised.
std::string validee(std::string_view ligne, double quantite, std::span<const std::string> remarques);

/// A remark without the characters that the line's syntax needs: "{", "}" and "|" become "(", ")" and "/",
/// and control characters, which would break the order file's lines, blanks.
std::string neutralise(std::string_view remarque);

}  // namespace lignes
