// The key program "progppb.wdo": 5000 records of 256 bytes, 50 pages of 100; lines 1 to 95 of a page are its keys, line
// 98 its two titles.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/systeme/fichiers.h"

namespace programme_touches {

inline constexpr std::string_view nom_fichier = "progppb.wdo";
inline constexpr int nb_pages = 50, records_par_page = 100, lignes_par_page = 95, ligne_des_titres = 98;
inline constexpr std::uint64_t longueur_vide = 250;  ///< up to this length the file counts as not filled

/// How the code of a key begins: what it does.
namespace marque {
inline constexpr std::string_view fonction = "#FONC#", page = "#PAGE#", accueil = "#MENU#", familles = "#LFAM#",
                                  familles_suivantes = "#SUIF#", familles_precedentes = "#RETF#",
                                  serveurs_suivants = "#SUIS#", serveurs_precedents = "#RETS#", famille = "#FAMI#",
                                  inerte = "#TOUC#", articles_suivants = "#SUIT#", articles_precedents = "#RETO#",
                                  serveur = "#SERV#", article = "#AJOU#", outils = "#OUTI#";
inline constexpr std::string_view toutes[] = {fonction,
                                              page,
                                              accueil,
                                              familles,
                                              familles_suivantes,
                                              familles_precedentes,
                                              serveurs_suivants,
                                              serveurs_precedents,
                                              famille,
                                              inerte,
                                              articles_suivants,
                                              articles_precedents,
                                              serveur,
                                              article,
                                              outils};
inline constexpr std::size_t longueur = fonction.size();
}  // namespace marque

/// The fields of a line. Those that the editor does not show keep their bytes.
enum class Champ { reference, libelle, lh, image, visible, taille, couleur, action };

/// One line; the record's bytes as they stand in the file.
struct Ligne {
    std::string record;  ///< may be shorter than a whole record
    bool lue = true;     ///< false: the medium did not give the record, which then is not written either

    /// A field without the blanks around it.
    std::string_view champ(Champ c) const;
    /// Puts a text into a field, cut or padded to its length; the record becomes whole.
    void pose(Champ c, std::string_view texte);

    std::string_view reference() const { return champ(Champ::reference); }
    std::string_view libelle() const { return champ(Champ::libelle); }
    std::string_view action() const { return champ(Champ::action); }
    bool visible() const { return champ(Champ::visible) == "1"; }
    int largeur() const;           ///< cells, the first digit of "LH", at least 1
    int hauteur() const;           ///< cells, the second digit, at least 1
    int image() const;             ///< picture number, 0: none
    bool marque() const;           ///< the "N" behind the picture number: a mark on the key
    int taille() const;            ///< font size in points, 0: that of the families
    std::int32_t couleur() const;  ///< red in the low byte, -1: the plain key
};

/// The content of a file without any key; and a line of a content, written into it or read from it.
std::string contenu_vide();
void pose_dans(std::string& contenu, int page, int numero, const Ligne& ligne);
Ligne lis_dans(std::string_view contenu, int page, int numero);
/// Length of a field in bytes.
std::size_t longueur(Champ c);
/// The part of an article's record that an action holds behind its marker; the catalogue completes it.
std::string_view abrege(std::string_view article);

/// Opens the file and creates it blank when it is missing or not filled. False when it can be neither.
bool prepare();
void ferme();

/// The key lines of a page, line 1 at index 0; empty outside the pages 0 to 49.
std::vector<Ligne> lis_page(int page);
/// Writes key line 1 to 95 of a page 0 to 49, whole and flushed.
fichiers::Issue ecrit_ligne(int page, int numero, const Ligne& ligne);

/// The line of a page's titles: the first in its label, the second in its action.
Ligne lis_titres(int page);
fichiers::Issue ecrit_titres(int page, const Ligne& ligne);

}  // namespace programme_touches
