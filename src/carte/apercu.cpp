#include "carte/apercu.h"

#include <utility>

#include "carte/fabrication.h"
#include "carte/fichiers_carte.h"
#include "carte/parcours.h"
#include "data/programme_touches.h"
#include "data/reglages.h"
#include "data/reseau.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/processus.h"
#include "platform/systeme/texte.h"

namespace apercu {
namespace {

using fichiers::Issue;

constexpr std::string_view reseau = "reseau", scenario = "apercu.txt", sortie = "sortie.txt";
constexpr int marge_ecran = 30;  ///< what the whole screen has below the forms
constexpr reglages::Resolution format = {1280, 770};

/// A working directory that is gone afterwards; the process is in it meanwhile.
class Atelier {
  public:
    Atelier()
        : avant_(fichiers::repertoire_courant()), chemin_(fichiers::cree_repertoire_temporaire("orvalune-carte-")) {}
    Atelier(const Atelier&) = delete;
    Atelier& operator=(const Atelier&) = delete;
    ~Atelier() {
        reglages::ferme();
        static_cast<void>(fichiers::entre_dans(avant_));
        if (!chemin_) return;
        static_cast<void>(fichiers::supprime_repertoire(fichiers::joint(*chemin_, reseau)));
        static_cast<void>(fichiers::supprime_repertoire(*chemin_));
    }
    bool entre() const {
        return chemin_ && fichiers::entre_dans(*chemin_) && fichiers::cree_repertoire(reseau) == Issue::fait;
    }

  private:
    std::string avant_;
    std::optional<std::string> chemin_;
};

bool pose(std::string_view nom, std::string_view contenu) {
    return fichiers::ecrit_tout(nom, contenu, fichiers::Remplace::oui) == Issue::fait;
}

/// A tablet's own, beside the sheets or above them, as where these lie in its working directory; else those of one that
/// has set nothing.
bool pose_reglages(std::string_view dossier) {
    for (const std::string_view la : {"", ".."}) {
        std::string siens;
        const std::string chemin = fichiers::joint(fichiers::joint(dossier, la), reglages::nom_fichier);
        if (fichiers::lis_tout(chemin, siens) != Issue::fait) continue;
        if (!pose(reglages::nom_fichier, siens)) return false;
        break;
    }
    if (!reglages::ouvre()) return false;
    if (!reglages::resolution_choisie()) static_cast<void>(reglages::ecrit_resolution(format, reglages::Forme::image));
    return reglages::ecrit(reglages::verification_table, "NON") == Issue::fait;  // the quick table is none of theirs
}

std::string taille_de_l_ecran() {
    const auto r = reglages::resolution();
    return std::to_string(r.largeur) + "x" + std::to_string(r.hauteur + marge_ecran);
}

/// Plays one scenario; what went wrong, UTF-8, or nothing.
std::string joue(const parcours::Partie& partie, const std::string& ecran) {
    const std::string programme =
        processus::repertoire_du_programme() + "orvalune" + std::string(processus::fin_de_programme);
    if (!fichiers::existe(programme))
        return "le terminal n'est pas à côté de ce programme (" + texte::vers_utf8(programme) +
               ") ; installez-les dans le même dossier";
    if (!pose(programme_touches::nom_fichier, partie.touches) || !pose(scenario, partie.scenario))
        return "le dossier temporaire ne peut pas être écrit";
    const auto statut =
        processus::execute({programme, "--rejoue", std::string(scenario), "--captures", ".", "--ecran", ecran}, sortie);
    std::string dit;
    if (statut == 0) return dit;
    static_cast<void>(fichiers::lis_tout(sortie, dit));
    return statut ? "le terminal s'est arrêté en dessinant : " + dit : "le terminal n'a pas pu être lancé";
}

}  // namespace

Resultat dessine(const carte::Carte& carte, std::string_view dossier) {
    const std::string absolu = fichiers::absolu(dossier);
    const Atelier atelier;
    Resultat r;
    const fabrication::Fichiers f = fabrication::fabrique(carte);
    const auto muet = [](const std::string&) {};
    if (!atelier.entre() || !pose_reglages(absolu) || !pose(::reseau::nom_fichier, std::string(reseau) + "\r\n") ||
        fichiers_carte::ecrit(reseau, f, muet).second != Issue::fait) {
        r.faute = "le dossier temporaire ne peut pas être écrit";
        return r;
    }
    const auto parties = parcours::compose(carte, f);
    const std::string ecran = taille_de_l_ecran();
    reglages::ferme();
    for (const parcours::Partie& p : parties) {
        const std::string faute = p.scenario.empty() ? "" : joue(p, ecran);
        if (r.faute.empty()) r.faute = faute;
        for (const parcours::Vue& v : p.vues) {
            if (r.sections.empty() || r.sections.back().titre != v.section) r.sections.push_back({v.section, {}});
            std::string png;
            if (!v.fichier.empty()) static_cast<void>(fichiers::lis_tout(v.fichier, png));
            r.sections.back().images.push_back({v.titre, std::move(png), !v.fichier.empty()});
        }
    }
    return r;
}

}  // namespace apercu
