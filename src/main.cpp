// Command line, then the main screen.
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/etat.h"
#include "data/journal.h"
#include "data/reglages.h"
#include "dialogs/mini_97.h"
#include "main_screen/form1.h"
#include "platform/console/console.h"
#include "platform/ecran/boucle.h"
#include "platform/rejeu/rejeu.h"
#include "platform/rejeu/scenario.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/instance.h"
#include "platform/systeme/locale.h"
#include "platform/systeme/ouvrier.h"
#include "platform/systeme/processus.h"
#include "platform/systeme/texte.h"

namespace {

constexpr console::Programme programme = {
    "orvalune [--dossier REP] [--fenetre | --plein-ecran] [--rejoue FICHIER|-] [--captures REP]\n"
    "         [--ecran LxH] [--separateur C] [--machine NOM] [--horloge \"AAAA-MM-JJ hh:mm:ss\"]\n"
    "         [--service] [--journal] [--version] [--aide]\n"
    "\n"
    "  --dossier REP     répertoire de travail (par défaut : le répertoire courant)\n"
    "  --fenetre         dans une fenêtre ; --plein-ecran : sur tout l'écran (par défaut)\n"
    "  --rejoue FICHIER  joue un scénario, sans fenêtre ; - lit les commandes sur l'entrée standard\n"
    "  --captures REP    répertoire des captures PNG du scénario\n"
    "  --ecran LxH       taille de l'écran d'un rejeu, ou de la fenêtre, en pixels\n"
    "  --separateur C    séparateur décimal du système simulé d'un rejeu\n"
    "  --machine NOM     machine simulée d'un rejeu, d'où vient le code de la tablette\n"
    "  --horloge DATE    date et heure où commence un rejeu\n"
    "  --service         montre les touches du technicien\n"
    "  --journal         affiche les 200 dernières lignes du journal du répertoire de travail\n",
    "Orvalune " ORVALUNE_VERSION " (" ORVALUNE_EDITION ")\n",
};

constexpr std::size_t lignes_du_journal = 200;

struct Options {
    std::string dossier, captures;
    std::optional<std::string> rejoue;
    bool fenetre = false;
    int largeur = 1280, hauteur = 800;
    char separateur = '.';
    std::optional<std::string> machine;
    horloge::DateHeure debut;
    bool service = false;
    bool montre_aide = false, montre_version = false, montre_journal = false;
};

bool lis_taille(const std::string& t, Options& o) {
    constexpr int cote_min = 100, cote_max = 16384;
    const auto x = std::min(t.find('x'), t.size());
    const auto largeur = rejeu::lis_entier(std::string_view(t).substr(0, x));
    const auto hauteur = rejeu::lis_entier(std::string_view(t).substr(std::min(x + 1, t.size())));
    const auto va = [](const std::optional<int>& n) { return n && *n >= cote_min && *n <= cote_max; };
    if (!va(largeur) || !va(hauteur)) return false;
    o.largeur = *largeur;
    o.hauteur = *hauteur;
    return true;
}

bool lis_horloge(const std::string& t, Options& o) {
    const auto d = horloge::depuis_texte(t);
    if (d) o.debut = *d;
    return d.has_value();
}

bool lis_separateur(const std::string& t, Options& o) {
    if (t.size() != 1) return false;
    o.separateur = t[0];
    return true;
}

struct Option {
    const char* nom;
    bool avec_valeur;
    bool (*lis)(const std::string& valeur, Options& o);
};
const Option options[] = {
    {"--dossier", true, [](const std::string& v, Options& o) { return o.dossier = v, !v.empty(); }},
    {"--rejoue", true, [](const std::string& v, Options& o) { return o.rejoue = v, !v.empty(); }},
    {"--captures", true, [](const std::string& v, Options& o) { return o.captures = v, !v.empty(); }},
    {"--ecran", true, lis_taille},
    {"--separateur", true, lis_separateur},
    {"--machine", true, [](const std::string& v, Options& o) { return o.machine = v, !v.empty(); }},
    {"--horloge", true, lis_horloge},
    {"--fenetre", false, [](const std::string&, Options& o) { return o.fenetre = true; }},
    {"--plein-ecran", false, [](const std::string&, Options& o) { return o.fenetre = false, true; }},
    {"--service", false, [](const std::string&, Options& o) { return o.service = true; }},
    {"--journal", false, [](const std::string&, Options& o) { return o.montre_journal = true; }},
    {"--version", false, [](const std::string&, Options& o) { return o.montre_version = true; }},
    {"--aide", false, [](const std::string&, Options& o) { return o.montre_aide = true; }},
};

/// To standard error; on a tablet, where nobody reads that, in a box. A replay waits for nobody.
void dit(const std::string& message, bool en_rejeu = false) {
    std::cerr << message << "\n";
    if (!en_rejeu) console::montre(message);
}

/// Nothing when an option is unknown or lacks a right value: that is said.
std::optional<Options> lis_options(const std::vector<std::string>& mots) {
    Options o;
    for (std::size_t i = 0; i < mots.size(); ++i) {
        const Option* trouvee = nullptr;
        for (const Option& option : options) {
            if (mots[i] == option.nom) trouvee = &option;
        }
        const bool complete = trouvee != nullptr && (!trouvee->avec_valeur || i + 1 < mots.size());
        const std::string& nom = mots[i];
        if (!complete || !trouvee->lis(trouvee->avec_valeur ? mots[++i] : std::string(), o)) {
            dit("Option inconnue ou incomplète : " + texte::vers_utf8(nom) + "\n\n" + programme.aide,
                std::find(mots.begin(), mots.end(), "--rejoue") != mots.end());
            return std::nullopt;
        }
    }
    return o;
}

/// The scenario and the captures are named from where the program was started; everything else from the working
/// directory.
void fixe_chemins(Options& o) {
    const bool ailleurs = !o.dossier.empty() && o.dossier != ".";
    if (ailleurs && o.rejoue && *o.rejoue != "-") o.rejoue = fichiers::absolu(*o.rejoue);
    if (o.captures.empty()) return;
    if (ailleurs) o.captures = fichiers::absolu(o.captures);
    if (!fichiers::existe(o.captures)) static_cast<void>(fichiers::cree_repertoire(o.captures));
}

void simule_le_monde(const Options& o) {
    horloge::rend_virtuelle(o.debut);
    processus::enregistre_seulement(true);
    if (o.machine) processus::simule_machine(*o.machine);
    locale_systeme::simule(o.separateur);
    ouvrier::attend_toujours(true);
}

/// The window that the options ask for; null when there can be none, which is said.
std::unique_ptr<ecran::Fenetre> cree_fenetre(const Options& o) {
    if (o.rejoue && !o.fenetre) return ecran::cree_fenetre_muette(o.largeur, o.hauteur);
    std::string refus;
    auto fenetre = ecran::cree_fenetre(o.fenetre ? ecran::Mode::fenetre : ecran::Mode::plein_ecran, "Orvalune",
                                       o.largeur, o.hauteur, refus);
    if (!fenetre)
        dit(refus.empty() ? "Aucun écran n'a été trouvé, vérifiez l'affichage et relancez." : refus,
            o.rejoue.has_value());
    return fenetre;
}

/// What the order router does, in the place of which a replay does it.
void collecte() {
    for (const std::string& nom : fichiers::liste(etat::repertoire_reseau, "*.txt"))
        static_cast<void>(fichiers::supprime_sans_attendre(fichiers::joint(etat::repertoire_reseau, nom)));
}

/// The screens, until the program ends by itself or its replay does. False when it ended because it lost its screen.
bool sert(bool dossier_utilisable, rejeu::Rejeu* joue) {
    try {
        if (!dossier_utilisable) {
            mini_97::informe(
                "Le répertoire de travail est introuvable, le logiciel s'arrête : prévenez le technicien !"_t);
            return true;
        }
        journal::note("démarrage d'Orvalune " ORVALUNE_VERSION " (" ORVALUNE_EDITION ")"_t);
        form1::montre_form1();
    } catch (const ecran::FinDuProgramme& fin) {
        if (fin.cause == ecran::FinDuProgramme::Cause::arret && dossier_utilisable) journal::note("arrêt"_t);
        reglages::ferme();
        if (joue != nullptr && fin.cause == ecran::FinDuProgramme::Cause::arret) joue->apres_arret();
        return fin.cause != ecran::FinDuProgramme::Cause::panne;
    }
    return true;
}

/// The terminal in its working directory, until it ends.
int ouvre(const Options& o, bool dossier_utilisable) {
    if (o.rejoue) simule_le_monde(o);
    etat::service = o.service;
    // Before any file of the directory is touched. A replay has a simulated world to itself.
    std::unique_ptr<instance::Prise> prise;
    bool appelee = false;
    if (dossier_utilisable && !o.rejoue && !(prise = instance::prend(appelee))) {
        if (!appelee)
            dit("Orvalune est déjà ouvert et ne répond pas, ou un autre utilisateur s'en sert : fermez-le d'abord.");
        return 0;
    }

    std::unique_ptr<rejeu::Rejeu> joue;
    if (o.rejoue) joue = std::make_unique<rejeu::Rejeu>(*o.rejoue, o.captures.empty() ? "." : o.captures, collecte);
    if (joue && !joue->lisible()) {
        std::cerr << "scénario illisible : " << console::ligne(texte::vers_utf8(*o.rejoue)) << "\n";
        return rejeu::faute_usage;
    }
    auto fenetre = cree_fenetre(o);
    if (!fenetre) return rejeu::faute_usage;
    if (!o.rejoue) console::detache();
    // At once: a start that a slow medium holds up answers, too.
    if (prise) prise->ecoute([f = fenetre.get()] { f->vient_devant(); });
    ecran::ouvre_ecran(std::move(fenetre), joue.get());
    const bool bien = sert(dossier_utilisable, joue.get());
    if (prise) prise->cesse();
    reglages::ferme();
    ecran::ferme_ecran();
    ouvrier::abandonne();
    if (!bien) return EXIT_FAILURE;
    return joue ? joue->statut() : EXIT_SUCCESS;
}

/// Goes into the working directory, and does there what was asked for. Without it the terminal alone opens, to say so.
int travaille(const Options& o) {
    const bool dossier_utilisable = o.dossier.empty() || fichiers::entre_dans(o.dossier);
    if (!dossier_utilisable) {
        std::cerr << "répertoire de travail introuvable : " << console::ligne(texte::vers_utf8(o.dossier)) << "\n";
        if (o.rejoue || o.montre_journal) return rejeu::faute_usage;
    }
    if (!o.montre_journal) return ouvre(o, dossier_utilisable);
    const std::string lignes = journal::fin(lignes_du_journal);
    for (const std::string_view l : texte::lignes(lignes)) std::cout << console::ligne(texte::vers_utf8(l)) << "\r\n";
    return 0;
}

int lance(const std::vector<std::string>& mots) {
    auto options_lues = lis_options(mots);
    if (!options_lues) return rejeu::faute_usage;
    if (options_lues->montre_aide || options_lues->montre_version)
        return console::presente(programme, options_lues->montre_aide);
    fixe_chemins(*options_lues);
    return travaille(*options_lues);
}

}  // namespace

#ifdef _WIN32
int wmain(int argc, wchar_t** argv) {
#else
int main(int argc, char** argv) {
#endif
    console::rattache();
    return lance(console::mots(argc, argv));
}
