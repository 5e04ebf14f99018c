// The example that a manager begins with: a whole small restaurant, in the order and the spelling that the files give
// back.
#include "carte/tableaux.h"
#include "platform/systeme/texte.h"
#include "platform/tableur/tableur.h"

namespace tableaux {
namespace {

struct Exemple {
    Feuille feuille;
    std::string_view rangees;
};
constexpr Exemple exemples[] = {
    {Feuille::serveurs,
     "1;Sophie;bleu\n"
     "2;Marc;bleu\n"
     "3;Nadia;orange\n"_t},
    {Feuille::familles,
     "1;Entrées;vert;\n"
     "2;Viandes;rouge;\n"
     "3;Poissons;bleu;\n"
     "4;Desserts;rose;\n"
     "5;Menus;violet;\n"
     "6;Boissons;canard;\n"
     "31;Vins rouges;rouge;6\n"
     "32;Vins blancs;jaune;6\n"_t},
    {Feuille::articles,
     "8880000000284;Salade de tomates;6,50;1;;\n"
     "8880000001021;Œuf mayonnaise;5,90;1;;\n"
     "8880000001038;Soupe à l'oignon;8,50;1;orange;\n"
     "8880000000024;Entrecôte 300 g;24,50;2;rouge;\n"
     "8880000002028;Magret de canard;22,00;2;orange;\n"
     "8880000002035;Lasagnes;14,50;2;;\n"
     "8880000003018;Dos de cabillaud;20,50;3;bleu;\n"
     "8880000003025;Moules marinières;14,90;3;;\n"
     "8880000004015;Crème brûlée;7,50;4;;\n"
     "8880000004022;Mousse au chocolat;6,90;4;taupe;\n"
     "8880000004039;Fromage;8,20;4;jaune;\n"
     "8880000000574;Menu 15 Euros;15,00;5;violet;prix fixe\n"
     "8880000005029;Formule midi;13,90;5;violet;composé\n"
     "8880000006019;Eau gazeuse 50 cl;3,80;6;;\n"
     "8880000006026;Jus d'orange;4,20;6;;\n"
     "8880000006033;Demi;3,80;6;;\n"
     "8880000006040;Expresso;2,20;6;taupe;\n"
     "8880000006057;Carafe d'eau;0,00;6;;\n"
     "8880000031011;Bordeaux 75 cl;24,00;31;rouge;\n"
     "8880000031028;Verre de rouge;4,50;31;rouge;\n"
     "8880000032018;Chablis 75 cl;33,00;32;jaune;\n"
     "8880000032025;Verre de blanc;4,50;32;jaune;\n"_t},
    {Feuille::tables,
     "1-12\n"
     "21-24\n"
     "50\n"_t},
    {Feuille::menus,
     "8880000000574;Entrée;8880000000284\n"
     "8880000000574;Entrée;8880000001021\n"
     "8880000000574;Entrée;8880000001038\n"
     "8880000000574;Plat;8880000002035\n"
     "8880000000574;Plat;8880000003025\n"
     "8880000000574;Dessert;8880000004022\n"
     "8880000000574;Dessert;8880000004039\n"
     "8880000000574;Dessert;Glace au choix\n"
     "8880000005029;;8880000002035\n"
     "8880000005029;;8880000006040\n"_t},
    {Feuille::details,
     "Cuisson;Cuisson;orange;\n"
     "Cuisson;Bleue;;\n"
     "Cuisson;Saignante;;\n"
     "Cuisson;À point;;\n"
     "Cuisson;Bien cuite;;\n"
     "Sauces;Sauces;ciel;\n"
     "Sauces;Béarnaise;;\n"
     "Sauces;Poivre;;\n"
     "Sauces;Moutarde;;\n"
     "Sans;Sans;lin;\n"
     "Sans;Sans sel;;\n"
     "Sans;Sans oignon;;\n"
     "Sans;Sans gluten;;\n"_t},
    {Feuille::touches,
     "0;titre;Accueil;Mon restaurant\n"
     "0;1;Entrées;famille 1;soupe;19;2;2;vert\n"
     "0;3;Viandes;famille 2;grillade;19;2;2;rouge\n"
     "0;5;Poissons;famille 3;poisson;19;2;2;bleu\n"
     "0;7;Desserts;famille 4;glace;19;2;2;rose\n"
     "0;9;Menus;famille 5;carte des menus;19;2;2;violet\n"
     "0;11;Boissons;famille 6;boisson fraîche;19;2;2;canard\n"
     "0;25;Entrecôte;article 8880000000024;grillade;19;2;2;\n"
     "0;27;Expresso;article 8880000006040;tasse de café;19;2;2;\n"
     "0;29;Vins rouges;sous-groupe 31;verre de vin;19;2;2;\n"
     "0;31;Bar;page 1;chope;19;2;2;\n"
     "1;titre;Bar;Au comptoir\n"
     "1;1;Demi;article 8880000006033;chope;19;2;2;\n"
     "1;3;Expresso;article 8880000006040;tasse de café;19;2;2;\n"
     "1;5;Accueil;page 0;retour;19;2;2;\n"_t},
};

}  // namespace

std::vector<std::pair<Feuille, std::string>> exemple() {
    std::vector<std::pair<Feuille, std::string>> r;
    for (const Exemple& e : exemples) {
        bool ferme = true;
        r.emplace_back(e.feuille, ecrit(e.feuille, tableur::decoupe(e.rangees, ';', ferme)));
    }
    return r;
}

}  // namespace tableaux
