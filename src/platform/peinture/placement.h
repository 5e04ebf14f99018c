// Where things stand within a control: from twips to pixels, and the places of captions, pictures and marks.
#pragma once

#include <string_view>

#include "platform/controles/controles.h"
#include "platform/peinture/images.h"
#include "platform/peinture/toile.h"

namespace ecran {

/// Ground and text as they are shown: an own colour before that of the role, a readable text upon an own ground.
Couleur fond_montre(const Aspect& a);
Couleur encre_montree(const Aspect& a);

/// The caption as it is painted: the space key says "Espace", "&&" is one "&".
std::string_view legende(const Aspect& a);

/// Where the caption and the picture of a control or cell go, in pixels.
struct PlaceContenu {
    Zone texte;
    int x = 0, y = 0, cote = 0;  ///< middle and em size of the picture
};

/// Where the mark of a chosen key goes: at its right end, or in its upper right corner where that leaves room below it.
struct PlaceMarque {
    Zone disque;
    bool au_bout = false;
};

/// A cell's place in its list, which its margins and its ground depend on.
struct Rang {
    bool liste = false;     ///< on a card, as rows of text
    bool premiere = false;  ///< the first shown column
    bool derniere = false;  ///< the last shown column
};

class Placement {
  public:
    explicit Placement(double echelle) : echelle_(echelle) {}

    /// From now on rectangles are relative to this point, in twips.
    void origine(int x, int y) {
        x_ = x;
        y_ = y;
    }

    int pixels(std::int64_t twips) const;
    /// A length of the design at this scale, at least 1.
    int px(int design) const;
    /// The em size of a font size in points.
    int em(int points) const;
    Zone zone(const Cadre& c) const;

    PlaceContenu contenu(const Zone& z, const Aspect& a, bool avec_texte, const Rang& rang = {}) const;
    PlaceMarque marque(const Zone& z, Alignement alignement) const;
    /// The inside of a text field.
    Zone dans_le_champ(const Zone& z) const;
    /// The box of a check box.
    Zone case_a_cocher(const Zone& z, bool avec_texte) const;

  private:
    double echelle_;
    std::int64_t x_ = 0, y_ = 0;

    Zone place_du_texte(const Zone& z, const Aspect& a, const Rang& rang) const;
    int cote_image(const Zone& z, const Aspect& a, bool avec_texte, bool grande) const;
};

}  // namespace ecran
