#include "cuisine/fiche.h"

#include <algorithm>
#include <iterator>

#include "cuisine/compteur.h"
#include "data/nombres.h"
#include "platform/systeme/texte.h"

namespace fiche {
namespace {

using fichiers::Issue;

constexpr std::uint64_t longueur_max = 1 << 20;
constexpr std::string_view debut = "#FICHE#1", numero = "#TICKET#", partie = "#PARTIE#", lignes = "#LIGNES#",
                           etat = "#ETAT#", fin = "#FIN#";
constexpr std::string_view etats[] = {"ATTEND", "COMMENCE", "FINI"};

std::vector<int> lis_liste(std::string_view t) {
    std::vector<int> r;
    while (!t.empty()) {
        r.push_back(nombres::entier_int(t));
        t.remove_prefix(std::min(t.find(' '), t.size() - 1) + 1);
    }
    return r;
}

bool prend(std::string_view l, Fiche& f) {
    if (l.starts_with(numero)) {
        f.numero = nombres::entier_int(l.substr(numero.size()));
        return f.numero >= 0 && f.numero <= compteur::numero_max;
    }
    if (l.starts_with(partie)) {
        f.parties.push_back({std::string(l.substr(partie.size())), {}, Etat::attend, false});
        return true;
    }
    if (f.parties.empty()) return false;
    if (l.starts_with(lignes)) {
        f.parties.back().lignes = lis_liste(l.substr(lignes.size()));
        return true;
    }
    const auto e = std::find(std::begin(etats), std::end(etats), l.substr(std::min(l.size(), etat.size())));
    if (!l.starts_with(etat) || e == std::end(etats)) return false;
    f.parties.back().etat = static_cast<Etat>(e - std::begin(etats));
    return true;
}

}  // namespace

Issue lis(std::string_view chemin, Fiche& f) {
    std::string contenu;
    const Issue issue = fichiers::lis_tout(chemin, contenu, longueur_max);
    f = {};
    if (issue == Issue::trop_long) return Issue::fait;
    if (issue != Issue::fait) return issue;
    const auto l = texte::lignes(contenu);
    bool juste = l.size() >= 2 && l.front() == debut && l.back() == fin;
    for (std::size_t i = 1; juste && i + 1 < l.size(); ++i) juste = prend(l[i], f);
    if (!juste) f = {};
    return Issue::fait;
}

Issue ecrit(std::string_view chemin, const Fiche& f) {
    std::string t = std::string(debut) + "\r\n" + std::string(numero) + std::to_string(f.numero) + "\r\n";
    for (const Partie& p : f.parties) {
        std::string liste;
        for (const int n : p.lignes) liste += (liste.empty() ? "" : " ") + std::to_string(n);
        t.append(partie).append(p.adresse).append("\r\n");
        t.append(lignes).append(liste).append("\r\n");
        t.append(etat).append(etats[static_cast<std::size_t>(p.etat)]).append("\r\n");
    }
    return fichiers::ecrit_tout(chemin, t.append(fin).append("\r\n"), fichiers::Remplace::oui);
}

}  // namespace fiche
