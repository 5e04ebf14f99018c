#include "data/composition.h"

#include <algorithm>
#include <utility>

#include "platform/texte.h"

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

/// Takes the choices at the beginning of a text; what stands behind the last is left.
void prend_choix(std::string_view& texte, Service& s) {
    for (auto p = texte.find(apres_choix); p != std::string_view::npos; p = texte.find(apres_choix)) {
        if (s.choix.size() < choix_par_service) s.choix.push_back(libelle(texte.substr(0, p)));
        texte.remove_prefix(p + apres_choix.size());
    }
}

}  // namespace

std::vector<Service> services(std::string_view composition) {
    std::vector<Service> r;
    Service service;
    for (bool fini = false; !fini;) {
        const auto p = composition.find(apres_nom);
        fini = p == std::string_view::npos;
        std::string_view reste = composition.substr(0, p);
        prend_choix(reste, service);
        if (fini && texte::contient(reste, "|") && service.choix.size() < choix_par_service) {
            service.choix.push_back(libelle(reste));  // the text breaks off within a choice
        }
        if (a_des_choix(service)) r.push_back(std::move(service));
        service = {std::string(texte::rogne(reste)), {}};
        if (!fini) composition.remove_prefix(p + apres_nom.size());
    }
    return r;
}

}  // namespace composition
