// The commands of a scenario, one procedure each.
#include <charconv>
#include <cstdio>

#include "platform/rejeu/cible.h"
#include "platform/rejeu/rejeu.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/locale.h"
#include "platform/systeme/ouvrier.h"
#include "platform/systeme/processus.h"
#include "platform/systeme/texte.h"

namespace rejeu {

struct Rejeu::Commande {
    std::string_view nom;
    std::size_t mots_min, mots_max;  ///< the command's own words included
    Reponse (Rejeu::*action)(const Mots&);
};

const Rejeu::Commande Rejeu::commandes[] = {
    {"touche", 2, 4, &Rejeu::touche},
    {"tient", 3, 5, &Rejeu::tient},
    {"tape", 2, 2, &Rejeu::tape},
    {"attend", 2, 2, &Rejeu::attend},
    {"heure", 2, 2, &Rejeu::regle_heure},
    {"reseau", 2, 3, &Rejeu::regle_reseau},
    {"verifie", 2, 6, &Rejeu::verifie},
    {"lit", 2, 4, &Rejeu::lit},
    {"capture", 2, 2, &Rejeu::capture},
    {"fin", 1, 1, &Rejeu::coupe},
    {"tourne", 3, 3, &Rejeu::tourne},
    {"reveille", 1, 1, &Rejeu::reveille},
    {"routeur", 2, 2, &Rejeu::regle_routeur},
};

const Rejeu::Commande Rejeu::verifications[] = {
    {"ecran", 3, 3, &Rejeu::verifie_ecran},   {"visible", 4, 4, &Rejeu::verifie_visible},
    {"image", 4, 6, &Rejeu::verifie_image},   {"couleur", 4, 6, &Rejeu::verifie_couleur},
    {"police", 4, 6, &Rejeu::verifie_police}, {"lignes", 4, 4, &Rejeu::verifie_lignes},
    {"lance", 3, 3, &Rejeu::verifie_lance},   {"separateur", 3, 3, &Rejeu::verifie_separateur},
    {"arret", 2, 2, &Rejeu::verifie_arret},
};

namespace {

using Mots = std::vector<Mot>;

constexpr int cote_max = 10000;  ///< pixels of a screen

/// Words [debut, fin) as NAME [ROW COLUMN]; on failure `faute` tells why.
std::optional<Cible> cible_de(const Mots& m, std::size_t debut, std::size_t fin, std::string& faute) {
    const auto nom = m[debut].cite ? std::nullopt : lis_nom(m[debut].texte);
    if (!nom || (fin - debut != 1 && fin - debut != 3)) return faute = "commande mal formée", std::nullopt;
    std::optional<int> ligne, colonne;
    if (fin - debut == 3) {
        ligne = lis_entier(m[debut + 1].texte);
        colonne = lis_entier(m[debut + 2].texte);
        if (!ligne || !colonne) return faute = "ligne ou colonne illisible", std::nullopt;
    }
    return cherche(*nom, ligne, colonne, faute);
}

std::string entre_guillemets(std::string_view page) {
    return "\"" + texte::vers_utf8(page) + "\"";
}

std::string en_hexa(ecran::Couleur c) {
    char t[16];
    std::snprintf(t, sizeof t, "%06X", static_cast<unsigned>(c) & 0xFFFFFFu);
    return t;
}

}  // namespace

/// The command of a table that a word names, or null; the reason is in `faute`.
const Rejeu::Commande* Rejeu::trouve(std::span<const Commande> table, const Mots& mots, std::size_t mot,
                                     Reponse& faute) {
    faute = {Reponse::Sorte::faute, "commande inconnue"};
    for (const Commande& c : table) {
        if (mots[mot].cite || mots[mot].texte != c.nom) continue;
        if (mots.size() >= c.mots_min && mots.size() <= c.mots_max) return &c;
        faute.texte = "commande mal formée";
    }
    return nullptr;
}

Rejeu::Reponse Rejeu::choisit(std::span<const Commande> table, const Mots& mots, std::size_t mot) {
    Reponse faute;
    const Commande* c = trouve(table, mots, mot, faute);
    return c != nullptr ? (this->*c->action)(mots) : faute;
}

Rejeu::Reponse Rejeu::verifie_forme(const Mots& mots) {
    Reponse faute;
    return trouve(commandes, mots, 0, faute) != nullptr ? Reponse{} : faute;
}

Rejeu::Reponse Rejeu::execute(const Mots& mots) {
    return choisit(commandes, mots, 0);
}

/// Presses a control or cell for `ms`. What stands before the loaded form's name can be read, never touched.
Rejeu::Reponse Rejeu::appuie_sur(const Mots& m, std::size_t fin, int ms) {
    std::string faute = "aucune touche ne porte ce texte";
    if (!m[1].cite && m[1].texte.find('.') != std::string::npos) {
        return {Reponse::Sorte::faute, "le contrôle d'un autre écran se lit, il ne se touche pas"};
    }
    const auto cible = m[1].cite && fin == 2 ? cherche_texte(m[1].texte) : cible_de(m, 1, fin, faute);
    int x = 0, y = 0;
    if (!cible || !point_a_toucher(*cible, x, y, faute)) return {Reponse::Sorte::faute, faute};
    const double echelle = ecran::echelle_courante() / ecran::twips_par_pixel;
    appuie(static_cast<int>((x + cible->forme->cadre.gauche) * echelle),
           static_cast<int>((y + cible->forme->cadre.haut) * echelle), ms);
    return {};
}

Rejeu::Reponse Rejeu::touche(const Mots& m) {
    return appuie_sur(m, m.size(), 0);
}

Rejeu::Reponse Rejeu::tient(const Mots& m) {
    const auto ms = lis_entier(m.back().texte);
    if (!ms || m[1].cite) return {Reponse::Sorte::faute, "commande mal formée"};
    return appuie_sur(m, m.size() - 1, *ms);
}

Rejeu::Reponse Rejeu::tape(const Mots& m) {
    using Sorte = ecran::Evenement::Sorte;
    struct CleNommee {
        std::string_view nom;
        ecran::Cle cle;
    };
    static constexpr CleNommee cles[] = {{"retour", ecran::Cle::retour_arriere},
                                         {"entree", ecran::Cle::entree},
                                         {"echappement", ecran::Cle::echappement}};
    if (m[1].cite) {
        for (const char c : m[1].texte) {
            gestes_.push_back({false, 0, {Sorte::caractere, 0, 0, static_cast<unsigned char>(c)}});
        }
        return {};
    }
    for (const auto& c : cles) {
        if (m[1].texte != c.nom) continue;
        gestes_.push_back({false, 0, {Sorte::cle, 0, 0, 0, c.cle}});
        return {};
    }
    return {Reponse::Sorte::faute, "touche du clavier inconnue"};
}

Rejeu::Reponse Rejeu::attend(const Mots& m) {
    const auto ms = lis_entier(m[1].texte);
    if (!ms) return {Reponse::Sorte::faute, "durée illisible"};
    pousse_attente(*ms);
    return {};
}

Rejeu::Reponse Rejeu::regle_heure(const Mots& m) {
    const auto d = m[1].cite ? horloge::depuis_texte(m[1].texte) : std::nullopt;
    if (!d) return {Reponse::Sorte::faute, "date ou heure illisible"};
    horloge::regle(*d);
    return {};
}

Rejeu::Reponse Rejeu::regle_reseau(const Mots& m) {
    struct Etat {
        std::string_view nom;
        ouvrier::Reseau etat;
    };
    static constexpr Etat etats[] = {{"present", ouvrier::Reseau::present},
                                     {"absent", ouvrier::Reseau::absent},
                                     {"bloque", ouvrier::Reseau::bloque},
                                     {"lent", ouvrier::Reseau::lent}};
    for (const auto& e : etats) {
        if (m[1].texte != e.nom) continue;
        const bool lent = e.etat == ouvrier::Reseau::lent;
        const auto ms = m.size() == 3 ? lis_entier(m[2].texte) : std::nullopt;
        if (lent != ms.has_value() || lent != (m.size() == 3)) break;
        ouvrier::simule(e.etat, ms.value_or(0));
        return {};
    }
    return {Reponse::Sorte::faute, "état du réseau inconnu"};
}

Rejeu::Reponse Rejeu::lit(const Mots& m) {
    if (!m[1].cite && m[1].texte == "ecran" && m.size() == 2) {
        const ecran::Forme* f = ecran::forme_du_dessus();
        return {Reponse::Sorte::bien, f == nullptr ? "" : f->nom, true};
    }
    std::string faute;
    const auto cible = cible_de(m, 1, m.size(), faute);
    if (!cible) return {Reponse::Sorte::faute, faute};
    return {Reponse::Sorte::bien, texte::vers_utf8(texte_lu(cible->aspect().texte)), true};
}

Rejeu::Reponse Rejeu::capture(const Mots& m) {
    const auto nom = m[1].cite ? m[1].texte : texte::depuis_utf8(m[1].texte).value_or("");
    const auto formes = ecran::formes_chargees();
    if (nom.empty() || formes.empty()) return {Reponse::Sorte::faute, "commande mal formée"};
    const ecran::Cadre& c = formes.front()->cadre;
    const double echelle = ecran::echelle_courante() / ecran::twips_par_pixel;
    const ecran::Image& image = ecran::image_courante();
    const ecran::Zone zone{static_cast<int>(c.gauche * echelle), static_cast<int>(c.haut * echelle),
                           std::min(image.largeur, static_cast<int>(c.droite() * echelle)),
                           std::min(image.hauteur, static_cast<int>(c.bas() * echelle))};
    const auto png = ecran::en_png(image, zone);
    const std::string_view contenu(reinterpret_cast<const char*>(png.data()), png.size());
    const bool ecrite = !png.empty() && fichiers::ecrit_tout(fichiers::joint(captures_, nom), contenu,
                                                             fichiers::Remplace::oui) == fichiers::Issue::fait;
    return ecrite ? Reponse{} : Reponse{Reponse::Sorte::faute, "l'image n'a pas pu être écrite"};
}

Rejeu::Reponse Rejeu::tourne(const Mots& m) {
    const auto largeur = lis_entier(m[1].texte), hauteur = lis_entier(m[2].texte);
    const auto convient = [](const std::optional<int>& n) { return n && *n > 0 && *n <= cote_max; };
    if (!convient(largeur) || !convient(hauteur)) return {Reponse::Sorte::faute, "taille illisible"};
    if (!ecran::tourne_ecran(*largeur, *hauteur)) return {Reponse::Sorte::faute, "l'écran montré ne se tourne pas"};
    gestes_.push_back({false, 0, {}});  // the loop takes note before the next command
    return {};
}

Rejeu::Reponse Rejeu::reveille(const Mots&) {
    gestes_.push_back({false, 0, {ecran::Evenement::Sorte::reveil}});
    return {};
}

Rejeu::Reponse Rejeu::regle_routeur(const Mots& m) {
    if (m[1].texte != "collecte" && m[1].texte != "dort")
        return {Reponse::Sorte::faute, "collecte ou dort est attendu"};
    collecte_ = m[1].texte == "collecte";
    return {};
}

Rejeu::Reponse Rejeu::coupe(const Mots&) {
    reponse_ = {};
    reponse_due_ = true;
    repond();
    throw ecran::FinDuProgramme{ecran::FinDuProgramme::Cause::coupure};
}

namespace {

/// The answer of a check, with what was expected and found (both UTF-8).
template <typename R>
R compare(const std::string& attendu, const std::string& trouve) {
    if (attendu == trouve) return {};
    return {R::Sorte::faux, "attendu " + attendu + ", trouvé " + trouve};
}

/// The answer of the check of a number, the last word; `lit` gives nothing of a control that has none.
template <typename R>
R compare_nombre(const Mots& m, std::optional<int> (*lit)(const Cible&)) {
    std::string faute = "nombre illisible";
    const auto cible = cible_de(m, 2, m.size() - 1, faute);
    const auto n = lis_entier(m.back().texte);
    if (!cible || !n) return {R::Sorte::faute, faute};
    const auto trouve = lit(*cible);
    if (!trouve) return {R::Sorte::faute, "ni grille ni liste"};
    return compare<R>(std::to_string(*n), std::to_string(*trouve));
}

}  // namespace

Rejeu::Reponse Rejeu::verifie(const Mots& m) {
    if (m.size() >= 2 && !m[1].cite) {
        for (const Commande& c : verifications) {
            if (m[1].texte == c.nom) return choisit(verifications, m, 1);
        }
    }
    return verifie_texte(m);
}

Rejeu::Reponse Rejeu::verifie_texte(const Mots& m) {
    if (m.size() < 3 || !m.back().cite) return {Reponse::Sorte::faute, "commande mal formée"};
    std::string faute;
    const auto cible = cible_de(m, 1, m.size() - 1, faute);
    if (!cible) return {Reponse::Sorte::faute, faute};
    return compare<Reponse>(entre_guillemets(m.back().texte), entre_guillemets(texte_lu(cible->aspect().texte)));
}

Rejeu::Reponse Rejeu::verifie_ecran(const Mots& m) {
    const ecran::Forme* f = ecran::forme_du_dessus();
    return compare<Reponse>(m[2].texte, f == nullptr ? "(aucun)" : f->nom);
}

Rejeu::Reponse Rejeu::verifie_visible(const Mots& m) {
    std::string faute;
    const auto cible = cible_de(m, 2, 3, faute);
    if (!cible) return {Reponse::Sorte::faute, faute};
    if (m[3].texte != "oui" && m[3].texte != "non") return {Reponse::Sorte::faute, "oui ou non est attendu"};
    return compare<Reponse>(m[3].texte, cible->controle->visible ? "oui" : "non");
}

Rejeu::Reponse Rejeu::verifie_image(const Mots& m) {
    return compare_nombre<Reponse>(m, [](const Cible& c) { return std::optional(c.image()); });
}

Rejeu::Reponse Rejeu::verifie_couleur(const Mots& m) {
    std::string faute = "couleur illisible";
    const auto cible = cible_de(m, 2, m.size() - 1, faute);
    const std::string& t = m.back().texte;
    int couleur = 0;
    const auto lu = std::from_chars(t.data(), t.data() + t.size(), couleur, 16);
    if (!cible || t.size() != 6 || couleur < 0 || lu.ptr != t.data() + t.size()) return {Reponse::Sorte::faute, faute};
    return compare<Reponse>(en_hexa(couleur), en_hexa(cible->fond()));
}

Rejeu::Reponse Rejeu::verifie_police(const Mots& m) {
    return compare_nombre<Reponse>(m, [](const Cible& c) { return std::optional(c.police()); });
}

Rejeu::Reponse Rejeu::verifie_lignes(const Mots& m) {
    return compare_nombre<Reponse>(m, [](const Cible& c) {
        return c.controle->est_grille() ? std::optional(c.controle->grille.lignes) : std::nullopt;
    });
}

Rejeu::Reponse Rejeu::verifie_lance(const Mots& m) {
    const std::string commande = processus::derniere_commande();
    if (!m[2].cite) return {Reponse::Sorte::faute, "commande mal formée"};
    if (texte::contient(commande, m[2].texte) && !commande.empty()) return {};
    return {Reponse::Sorte::faux, "attendu " + entre_guillemets(m[2].texte) + ", trouvé " + entre_guillemets(commande)};
}

Rejeu::Reponse Rejeu::verifie_separateur(const Mots& m) {
    return compare<Reponse>(entre_guillemets(m[2].texte),
                            entre_guillemets(std::string(1, locale_systeme::separateur())));
}

Rejeu::Reponse Rejeu::verifie_arret(const Mots&) {
    if (arrete_) return {};
    return {Reponse::Sorte::faux, "le programme tourne encore"};
}

}  // namespace rejeu
