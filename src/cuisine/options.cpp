#include "cuisine/options.h"

#include <algorithm>

#include "data/nombres.h"
#include "data/reseau.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/texte.h"

namespace options {

const char* const aide =
    "orvalune-cuisine [RÉPERTOIRE] [--imprimante tcp://HÔTE[:9100] | --imprimante fichier:CHEMIN | --ecran]\n"
    "                 [--familles LISTE=IMPRIMANTE]... [--colonnes 42] [--page 1252|858] [--archive DOSSIER]\n"
    "                 [--sans-etat] [--une-fois] [--version] [--aide]\n"
    "orvalune-cuisine [RÉPERTOIRE] --apercu COMMANDE.txt IMAGE.png [--colonnes 42]\n"
    "\n"
    "Collecte les commandes déposées dans le répertoire réseau et imprime un ticket pour chacune.\n"
    "\n"
    "  RÉPERTOIRE         le répertoire réseau ; sans lui, celui que nomme wfichdir.wdo du répertoire courant\n"
    "  --imprimante       où vont les tickets : une imprimante du réseau (port 9100), un fichier ou un port\n"
    "  --ecran            écrit les tickets sur la sortie standard (par défaut)\n"
    "  --familles         envoie ces familles à une autre imprimante, par exemple 1-5,12=tcp://bar ;\n"
    "                     peut se répéter\n"
    "  --colonnes N       largeur du papier en caractères, de 32 à 64\n"
    "  --page N           page de codes de l'imprimante, 1252 (par défaut) ou 858\n"
    "  --archive DOSSIER  où vont les commandes collectées ; par défaut, le dossier archive du répertoire réseau\n"
    "  --sans-etat        n'interroge pas l'imprimante ; ce qu'elle a reçu compte comme imprimé\n"
    "  --une-fois         s'arrête dès qu'il ne reste rien à faire, ou qu'une imprimante n'imprime pas\n"
    "  --apercu           dessine en image le ticket d'un fichier de commande\n";

namespace {

using Valeurs = std::vector<std::string>;

/// The options while they are read: what depends on others comes last.
struct Lecture {
    Options options;
    Valeurs familles;
    std::string faute;
};

bool prend_imprimante(Lecture& l, const Valeurs& v) {
    return imprimante::lis_adresse(v[0], l.options.reglages.partage.adresses.front());
}
bool prend_colonnes(Lecture& l, const Valeurs& v) {
    const bool nombre = v[0].find_first_not_of("0123456789") == std::string::npos;
    const int n = nombres::entier_int(v[0]);
    l.options.reglages.papier.colonnes = n;
    return nombre && n >= ticket::colonnes_min && n <= ticket::colonnes_max;
}
bool prend_page(Lecture& l, const Valeurs& v) {
    l.options.reglages.papier.page = v[0] == "858" ? ticket::Page::p858 : ticket::Page::p1252;
    return v[0] == "858" || v[0] == "1252";
}
bool prend_apercu(Lecture& l, const Valeurs& v) {
    l.options.apercu_de = v[0];
    l.options.apercu_vers = v[1];
    return !v[0].empty() && !v[1].empty();
}

struct Option {
    const char* nom;
    std::size_t valeurs;
    bool (*prend)(Lecture& l, const Valeurs& v);
};
const Option connues[] = {
    {"--imprimante", 1, prend_imprimante},
    {"--ecran", 0, [](Lecture& l, const Valeurs&) { return l.options.reglages.partage.adresses[0] = {}, true; }},
    {"--familles", 1, [](Lecture& l, const Valeurs& v) { return l.familles.push_back(v[0]), true; }},
    {"--colonnes", 1, prend_colonnes},
    {"--page", 1, prend_page},
    {"--archive", 1, [](Lecture& l, const Valeurs& v) { return l.options.reglages.archive = v[0], !v[0].empty(); }},
    {"--sans-etat", 0, [](Lecture& l, const Valeurs&) { return !(l.options.reglages.avec_etat = false); }},
    {"--une-fois", 0, [](Lecture& l, const Valeurs&) { return l.options.reglages.une_fois = true; }},
    {"--apercu", 2, prend_apercu},
    {"--version", 0, [](Lecture& l, const Valeurs&) { return l.options.montre_version = true; }},
    {"--aide", 0, [](Lecture& l, const Valeurs&) { return l.options.montre_aide = true; }},
};

bool prend_mot(Lecture& l, const Valeurs& mots, std::size_t& i) {
    const std::string& mot = mots[i];
    if (!mot.starts_with("--")) {
        if (!l.options.reglages.reseau.empty() || mot.empty()) return false;
        l.options.reglages.reseau = mot;
        return true;
    }
    const auto o = std::find_if(std::begin(connues), std::end(connues), [&](const Option& x) { return mot == x.nom; });
    if (o == std::end(connues) || mots.size() - i - 1 < o->valeurs) return false;
    const auto debut = mots.begin() + static_cast<std::ptrdiff_t>(i) + 1;
    i += o->valeurs;
    return o->prend(l, {debut, debut + static_cast<std::ptrdiff_t>(o->valeurs)});
}

/// The network directory of the terminal that works in the same directory, if one does.
std::string repertoire_du_terminal() {
    std::string contenu;
    if (fichiers::lis_tout(reseau::nom_fichier, contenu, 1 << 16) != fichiers::Issue::fait) return {};
    const auto lignes = texte::lignes(contenu);
    return lignes.empty() ? std::string() : std::string(texte::rogne(lignes[0]));
}

std::string sans_separateur(std::string chemin) {
    while (chemin.size() > 1 && (chemin.back() == '/' || chemin.back() == '\\')) chemin.pop_back();
    return chemin;
}

bool complete(Lecture& l) {
    service::Reglages& r = l.options.reglages;
    if (r.reseau.empty()) r.reseau = repertoire_du_terminal();
    if (r.reseau.empty() && l.options.apercu_de.empty()) {
        l.faute =
            std::string("il manque le répertoire réseau ; donnez-le, ou lancez depuis le dossier de wfichdir.wdo"_t);
        return false;
    }
    if (r.archive.empty()) r.archive = fichiers::joint(r.reseau, "archive");
    if (sans_separateur(fichiers::absolu(r.archive)) == sans_separateur(fichiers::absolu(r.reseau))) {
        l.faute = std::string("l'archive ne peut pas être le répertoire réseau lui-même ; donnez un dossier à elle"_t);
        return false;
    }
    return std::all_of(l.familles.begin(), l.familles.end(),
                       [&](const std::string& f) { return partage::lis(f, r.partage, l.faute); });
}

}  // namespace

std::optional<Options> lis(const std::vector<std::string>& mots, std::string& faute) {
    Lecture l;
    for (std::size_t i = 0; i < mots.size(); ++i) {
        const std::size_t debut = i;
        if (prend_mot(l, mots, i)) continue;
        faute = std::string("Option inconnue ou incomplète : "_t) + mots[debut];
        return std::nullopt;
    }
    const bool a_travailler = !l.options.montre_aide && !l.options.montre_version;
    if (a_travailler && !complete(l)) {
        faute = l.faute;
        return std::nullopt;
    }
    return l.options;
}

}  // namespace options
