// Plays a scenario upon the restaurant in the working directory, every turn painted. Usage: rejeu_peint SCENARIO WxH
#include <cstdio>

#include "platform/rejeu/rejeu.h"
#include "vue.h"

int main(int nombre, char** mots) {
    int largeur = 0, hauteur = 0;
    if (nombre != 3 || std::sscanf(mots[2], "%dx%d", &largeur, &hauteur) != 2) return rejeu::faute_usage;
    banc::simule_le_monde();
    rejeu::Rejeu scenario(mots[1], ".");
    banc::ouvre(largeur, hauteur, scenario);
    return scenario.statut();
}
