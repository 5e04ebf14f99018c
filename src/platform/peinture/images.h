// The picture set of keys and function rows, and the pictures of the dialogs: one table of number, glyph and name.
#pragma once

#include <cstdint>

namespace ecran {

/// Pictures of the set have numbers 1 to 49; the set with offset 50 holds the same ones drawn larger.
inline constexpr int decalage_grand = 50;
inline constexpr int nb_images = 135;

/// Pictures that the screens use by name.
enum ImageDeDialogue {
    image_valider = 101,
    image_fermer,
    image_retour_arriere,
    image_gauche,
    image_droite,
    image_haut,
    image_bas,
    image_liste,
    image_corbeille,
    image_gomme,
    image_plus,
    image_moins,
    image_wifi,
    image_wifi_coupe,
    image_outils,
    image_maison,
    image_pave,
    image_envoyer,
    image_page,
    image_copier,
    image_coller,
    image_couper,
    image_reglettes,
    image_aucune,
    image_palette,
    image_ecran = 127,
    image_attention,
    image_defaut,
    image_historique,
    image_en_attente,  ///< discs in the colours of an order's states
    image_deposee,
    image_collectee,
    image_a_verifier,
};

struct ImageDeTouche {
    char32_t glyphe = 0;       ///< code point in the icon font, 0: no picture
    const char* nom = "";      ///< what it shows, French, UTF-8, for the picture list and for tests
    std::int32_t teinte = -1;  ///< own colour, -1: the readable ink of the ground
    bool grande = false;       ///< drawn larger
};

/// The picture of a number; one without glyph outside the set.
const ImageDeTouche& image_de_touche(int numero);

}  // namespace ecran
