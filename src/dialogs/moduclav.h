// What every form uses, the message box and the keyboard too: the working size, the banners, the manager's colours, and
// the end of the program.
#pragma once

#include <string>
#include <string_view>

#include "platform/controles/controles.h"
#include "platform/systeme/processus.h"

namespace moduclav {

/// Design pixels as twips.
constexpr int px(int pixels) {
    return pixels * ecran::twips_par_pixel;
}

/// Working size of every form, in twips.
int largeur();
int hauteur();
/// The forms are taller than wide, or too narrow for the wide layouts.
bool est_etroit();

/// Lays out `label_haut` and `label_bas` (made when the form lacks them) over the working width and sets their texts.
void bandeaux(ecran::Forme& forme, std::string_view haut, std::string_view bas);

/// Cuts etat::texte_dialogue at its first "|", so that the prompt is left; gives the initial text that stood behind it.
std::string separe_initial();

/// The contrast below which a text cannot be told from its ground; it then keeps a readable colour.
inline constexpr double contraste_min = 2;
/// Gives an aspect a ground and a text that the manager has set, sans_couleur where he has not; all screens paint both
/// so.
void met_couleurs(ecran::Aspect& aspect, ecran::Couleur fond, ecran::Couleur encre);
/// Gives the controls the colours that the manager has set for their tags; called last when a form opens.
void colore(ecran::Forme& forme);
/// The tag of a key or cell: those that say go, destroy or head a list have their own, an empty place has 0, all others
/// have `sinon`.
int etiquette_de(ecran::Role role, int sinon);
/// The plan of a box's key made whole: a big button with its picture at the left, and the tag of its role.
ecran::Plan touche_de_boite(ecran::Plan plan);
/// The plan of `Text1`, the field that a text is typed into.
ecran::Plan champ_de_saisie(const ecran::Cadre& cadre, int police);
/// Puts a text into a field, the caret behind it.
void pose_texte(ecran::Controle& champ, std::string texte);
/// Ground and text of a key with a colour digit, 0 to 9: the manager's colours, else the palette's.
void colore_chiffre(ecran::Aspect& aspect, int chiffre);

/// Ends the program at once; files close on the way.
[[noreturn]] void quitte();
/// Closes the files, which the other may change, starts a program by its command line and ends this one. Returns, with
/// the files open again, when it cannot be started.
void passe_la_main(std::string_view commande, processus::Fenetre fenetre);

}  // namespace moduclav
