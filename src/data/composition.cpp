#include "data/composition.h"

#include <algorithm>
#include <utility>

#include "platform/systeme/texte.h"

namespace composition {
namespace {

constexpr std::string_view apres_nom = "µ"_t, apres_choix = "¦"_t;

/// The label of "reference|label"; without "|" the whole text.
std::string libelle(std::string_view choix) {
    const auto barre = choix.find('|');
    return std::string(texte::rogne(barre == std::string_view::npos ? choix : choix.substr(barre + 1)));
}

bool a_des_choix(const Service& s) {
    return std::any_of(s.choix.begin(), s.choix.end(), [](const std::string& c) { return !c.empty(); });
}

/// Adds a choice to the last course; when that is full, to a course of the same name behind it.
void ajoute_choix(std::vector<Service>& services, std::string_view choix) {
    if (services.back().choix.size() == choix_par_service) {
        Service suite{services.back().nom, {}};
        services.push_back(std::move(suite));
    }
    services.back().choix.push_back(libelle(choix));
}

/// Takes the choices at the beginning of a text; what stands behind the last is left.
void prend_choix(std::string_view& texte, std::vector<Service>& services) {
    for (auto p = texte.find(apres_choix); p != std::string_view::npos; p = texte.find(apres_choix)) {
        ajoute_choix(services, texte.substr(0, p));
        texte.remove_prefix(p + apres_choix.size());
    }
}

}  // namespace

std::vector<Service> services(std::string_view composition) {
    std::vector<Service> r(1);
    for (bool fini = false; !fini;) {
        const auto p = composition.find(apres_nom);
        fini = p == std::string_view::npos;
        std::string_view reste = composition.substr(0, p);
        prend_choix(reste, r);
        if (fini && texte::contient(reste, "|")) ajoute_choix(r, reste);  // the text breaks off within a choice
        if (!fini) {
            r.push_back({std::string(texte::rogne(reste)), {}});
            composition.remove_prefix(p + apres_nom.size());
        }
    }
    std::erase_if(r, [](const Service& s) { return !a_des_choix(s); });
    return r;
}

}  // namespace composition
