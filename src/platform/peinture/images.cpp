#include "platform/peinture/images.h"

#include <array>

#include "platform/controles/apparence.h"

namespace ecran {
namespace {

struct Ligne {
    int numero;
    ImageDeTouche image;
};

/// The picture set below 50: functions of the terminal, then what a restaurant serves.
constexpr Ligne serie[] = {
    {1, {0xE56C, "fourchette et couteau"}},
    {2, {0xEACC, "œuf"}},
    {3, {0xEA35, "légumes"}},
    {4, {0xF1E9, "tapas"}},
    {5, {0xF1F5, "bol de riz"}},
    {6, {0xEA64, "nouilles"}},
    {7, {0xE842, "brochette"}},
    {8, {0xF1F4, "plateau"}},
    {9, {0xE7E9, "gâteau"}},
    {10, {0xEAAC, "biscuit"}},
    {11, {0xEAC6, "table"}},
    {12, {0xE8AC, "quitter"}},
    {13, {0xE896, "familles"}},
    {14, {0xEFEF, "café et soucoupe"}},
    {15, {0xEA67, "serveur"}},
    {16, {0xE561, "couverts"}},
    {17, {0xE5C8, "page suivante"}},
    {18, {0xE5C4, "page précédente"}},
    {19, {0xE7D3, "soupe"}},
    {20, {0xEA47, "grillade"}},
    {21, {0xF1EA, "poisson"}},
    {22, {0xEF6E, "note"}},
    {23, {0xE163, "envoyer"}},
    {24, {0xE166, "retour"}},
    {25, {0xE552, "pizza"}},
    {26, {0xEA61, "burger"}},
    {27, {0xEA69, "glace"}},
    {28, {0xEA19, "carte des menus"}},
    {29, {0xF1E8, "verre de vin"}},
    {30, {0xEA0A, "envoi en attente"}},
    {31, {0xEA60, "bière et bouteille"}},
    {32, {0xE540, "cocktail"}},
    {33, {0xE541, "tasse de café"}},
    {34, {0xEA53, "croissant"}},
    {35, {0xF1F3, "chope"}},
    {36, {0xE544, "boisson fraîche"}},
    {37, {0xEA1B, "thé"}},
    {38, {0xEA54, "petit-déjeuner"}},
    {39, {0xEA57, "dîner"}},
    {40, {0xE57A, "restauration rapide"}},
    {41, {0xEA74, "à emporter"}},
    {42, {0xF00C, "assiette et couverts"}},
    {43, {0xEB49, "cloche de service"}},
    {44, {0xE838, "étoile"}},
    {45, {0xE87D, "coup de cœur"}},
    {46, {0xEB41, "menu enfant"}},
    {47, {0xEF55, "plat épicé"}},
    {48, {0xEB3B, "glaçons"}},
    {49, {0xEF63, "encaissement"}},
};

constexpr Ligne dialogues[] = {
    {image_valider, {0xE5CA, "valider"}},
    {image_fermer, {0xE5CD, "fermer"}},
    {image_retour_arriere, {0xE14A, "retour arrière"}},
    {image_gauche, {0xE5C4, "vers la gauche"}},
    {image_droite, {0xE5C8, "vers la droite"}},
    {image_haut, {0xE5D8, "vers le haut"}},
    {image_bas, {0xE5DB, "vers le bas"}},
    {image_liste, {0xE896, "liste"}},
    {image_corbeille, {0xE872, "effacer"}},
    {image_gomme, {0xE14A, "effacer la ligne", palette::gris}},
    {image_plus, {0xE145, "plus"}},
    {image_moins, {0xE15B, "moins"}},
    {image_wifi, {0xE63E, "réseau"}},
    {image_wifi_coupe, {0xE648, "réseau coupé"}},
    {image_outils, {0xE869, "outils"}},
    {image_maison, {0xE88A, "accueil"}},
    {image_pave, {0xE0BC, "pavé numérique"}},
    {image_envoyer, {0xE163, "envoyer"}},
    {image_page, {0xE880, "chercher une page"}},
    {image_copier, {0xE14D, "copier"}},
    {image_coller, {0xE14F, "coller"}},
    {image_couper, {0xE14E, "couper"}},
    {image_reglettes, {0xE429, "réglettes"}},
    {image_aucune, {0xF116, "aucune image"}},
    {image_palette, {0xE40A, "palette"}},
    {image_ecran, {0xE85B, "écran"}},
    {image_attention, {0xE002, "attention"}},
    {image_defaut, {0xE8BA, "par défaut"}},
    {image_historique, {0xE889, "suivi des commandes"}},
    {image_en_attente, {0xEF4A, "en attente", palette::ambre, true}},
    {image_deposee, {0xEF4A, "déposée", palette::bleu, true}},
    {image_collectee, {0xEF4A, "collectée", palette::vert, true}},
    {image_a_verifier, {0xEF4A, "à vérifier", palette::rouge, true}},
};

constexpr auto table = [] {
    std::array<ImageDeTouche, nb_images> t{};
    for (const Ligne& l : serie) {
        t[static_cast<std::size_t>(l.numero)] = l.image;
        ImageDeTouche grande = l.image;
        grande.grande = true;
        t[static_cast<std::size_t>(l.numero + decalage_grand)] = grande;
    }
    for (const Ligne& l : dialogues) t[static_cast<std::size_t>(l.numero)] = l.image;
    return t;
}();

}  // namespace

const ImageDeTouche& image_de_touche(int numero) {
    return table[numero >= 0 && numero < nb_images ? static_cast<std::size_t>(numero) : 0];
}

}  // namespace ecran
