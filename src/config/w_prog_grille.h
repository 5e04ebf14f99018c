// The grid of the key program editor: the columns of a key line, how wide they are, and how a line looks in them.
#pragma once

#include <vector>

#include "data/programme_touches.h"
#include "platform/controles/controles.h"

namespace w_prog_grille {

/// From the left; row 0 is the heading, the lines of the page follow.
enum Colonne { numero, reference, libelle, lh, taille, image, visible, acte, couleur, nb_colonnes };

/// The field that a column shows; `numero` shows none.
programme_touches::Champ champ_de(int colonne);

/// Adds the grid, `g1`, without lines.
void ajoute(ecran::Forme& forme, const ecran::Cadre& cadre);

/// Shows the lines of a page, from the first on.
void remplit(ecran::Grille& grille, const std::vector<programme_touches::Ligne>& lignes);
/// Takes a row over into its line; the fields without a column stay.
void reprend(const ecran::Grille& grille, int rang, programme_touches::Ligne& ligne);

/// Gives all cells the looks of what they say; the row touched last stands out.
void peint(ecran::Grille& grille);

}  // namespace w_prog_grille
