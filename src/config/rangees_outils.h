// The rows of the toolbox: what each is called, what it edits, and what the manager is asked.
#pragma once

#include <string_view>

#include "platform/systeme/texte.h"

namespace ch_outils {

/// A code is a kind of six characters, and behind it the record for the kinds that edit one; empty: a heading.
struct Rangee {
    std::string_view libelle, code, invite;
};

inline constexpr Rangee rangees[] = {
    {"Grille générale d'affichage"_t, "", ""},
    {"Nb de colonnes", "#SW42#25", "Entrez le nb de colonnes"},
    {"Nb de lignes", "#SW42#26", "Entrez le nb de lignes"},
    {"Paramètres Ecran Serveurs"_t, "", ""},
    {"Grosseur ecriture Serveur", "#SX42#10", ""},
    {"Largeur touches Serveur", "#SW42#11", ""},
    {"Hauteur touches Serveur", "#SW42#12", ""},
    {"Nb de touches par page", "#SW42#13", ""},
    {"Paramètres Ecran Familles"_t, "", ""},
    {"Grosseur ecriture Famille", "#SX42#20", ""},
    {"Largeur touches familles", "#SW42#21", ""},
    {"Hauteur touches familles", "#SW42#22", ""},
    {"Nb de touches par page", "#SW42#23", ""},
    {"Paramètres Ecran Articles"_t, "", ""},
    {"Grosseur ecriture Articles", "#SX42#5", ""},
    {"Largeur touches Serveur", "#SW42#6", ""},  // of the article keys, as the next row: known by these names
    {"Hauteur touches Serveur", "#SW42#7", ""},
    {"Nb de touches par page", "#SW42#8", ""},
    {"Paramètres Ecran Note"_t, "", ""},
    {"Grosseur ecriture Note", "#SX42#30", ""},
    {"Paramètres Détail article"_t, "", ""},
    {"Taille ecriture Article", "#SX42#40", ""},
    {"Taille ecriture détail"_t, "#SX42#41", ""},
    {"Taille Saisie Complements", "#SX42#42", ""},
    {"Gestion des Tables", "", ""},
    {"Taille Liste des Table", "#SX42#60", ""},
    {"Nb de colonnes", "#SW42#61", ""},
    {"Nb de lignes affichées"_t, "#SW42#62", ""},
    {"Vérification du N° de table"_t, "#ON42#55", ""},
    {"Paramètres généraux"_t, "", ""},
    {"Taille boite dialogue (1 à 10)"_t, "#SW42#50", ""},
    {"Taille N° de Table"_t, "#SX42#51", ""},
    {"Gestion des couleurs", "#COUL#", ""},
    {"Résolution de l'écran"_t, "#RESO#", ""},
    {"Reconnexion Serveur", "#RCOC#", ""},
    {"Icone Max", "#ON42#201", ""},
    {"Annuler le mot de passe Outils", "#ON42#200", ""},
    {"Mode test Table T:001 C:01", "#ON42#202", ""},
    {"Connexion de la tablette", "", ""},
    {"Identifier la tablette", "#IDEN#", ""},
    {"Mise à jour"_t, "", ""},
    {"Mise à jour Win_Orvalune"_t, "#MAJJ#", ""},
};

}  // namespace ch_outils
