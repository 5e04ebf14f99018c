// The style file.
#include "data/styles.h"

#include "essai.h"
#include "platform/systeme/texte.h"

void essaie(std::string_view entree) {
    pose(std::string(styles::nom_fichier), entree);
    exige(styles::init_styles());
    const auto lus = styles::lis();
    exige(lus.size() == 502);
    for (const styles::Style& s : lus) {
        exige(s.libelle.size() <= 40 && texte::rogne(s.libelle) == s.libelle);
        exige(std::none_of(s.libelle.begin(), s.libelle.end(), [](unsigned char c) { return c < ' '; }));
    }
}
