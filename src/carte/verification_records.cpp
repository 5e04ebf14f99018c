// The files of fixed records: what the tablets make of the style file and of the key program.
#include <algorithm>

#include "carte/verification.h"
#include "carte/verification_interne.h"
#include "data/lignes.h"
#include "data/nombres.h"
#include "data/programme_touches.h"
#include "data/styles.h"
#include "platform/controles/apparence.h"
#include "platform/peinture/images.h"
#include "platform/systeme/texte.h"

namespace verification {
namespace {

using programme_touches::Champ;
using programme_touches::Ligne;
namespace marque = programme_touches::marque;

constexpr std::int32_t couleur_max = 0xFFFFFF;

/// A file of fixed records: its length when it is whole, and what one that is cut short lacks.
struct Fixe {
    std::string_view nom;
    std::size_t longueur;
    std::string_view manque;
};
constexpr Fixe fichier_styles = {styles::nom_fichier, styles::code_max* styles::longueur_record,
                                 "les derniers choix manquent"};
const Fixe fichier_touches = {programme_touches::nom_fichier, programme_touches::contenu_vide().size(),
                              "les dernières pages sont vides"};

void examine_longueur(Pertes& p, std::string_view contenu, const Fixe& fixe) {
    if (contenu.size() == fixe.longueur) return;
    p.dit("a " + std::to_string(contenu.size()) + " octets au lieu de " + std::to_string(fixe.longueur) + " : " +
          std::string(contenu.size() < fixe.longueur ? fixe.manque : "la suite n'est pas lue"));
}

/// Whether the detail screen shows this choice.
bool est_montre(int code) {
    const int colonne = code / styles::records_par_categorie;
    return colonne >= 1 && colonne <= styles::categories &&
           code % styles::records_par_categorie < styles::choix_par_categorie;
}

void examine_couleurs(Pertes& p, const styles::Style& s, const std::string& qui) {
    if (s.fond < 0 || s.fond > couleur_max || s.texte < 0 || s.texte > couleur_max)
        p.dit(qui + "sa couleur dépasse trois octets, le reste n'est pas lu");
    const auto couleur = [](std::int32_t c) { return ecran::depuis_bgr(c & couleur_max); };
    if (ecran::contraste(couleur(s.fond), couleur(s.texte)) < ecran::contraste_lisible)
        p.dit(qui + "son encre se lirait mal sur ce fond, la tablette en prend une autre");
}

/// A key that leads to an article: the catalogue completes what it holds.
void examine_article(Pertes& p, std::string_view argument, const catalogue::Tables& t, const std::string& qui) {
    if (catalogue::est_sous_groupe(argument)) return;
    const std::string complet = catalogue::complete_article(t, argument);
    const auto est_la = [&](std::string_view debut) {
        return std::any_of(t.articles.begin(), t.articles.end(), [&](const auto& famille) {
            return std::any_of(famille.begin(), famille.end(),
                               [&](std::string_view a) { return a.starts_with(debut); });
        });
    };
    if (est_la(complet)) return;
    if (argument.size() >= lignes::longueur_reference && est_la(argument.substr(0, lignes::longueur_reference)))
        return p.dit(qui + "elle garde une ancienne fiche de l'article, et non celle du catalogue");
    p.dit(qui + "son article n'est pas au catalogue");
}

class Programme {
  public:
    Programme(std::string_view contenu, const catalogue::Tables& tables, Pertes& pertes)
        : contenu_(contenu), tables_(tables), p_(pertes) {}

    void examine_page(int page) {
        for (int i = 1; i <= programme_touches::records_par_page; ++i) {
            const Ligne l = programme_touches::lis_dans(contenu_, page, i);
            p_.ligne(static_cast<std::size_t>(page * programme_touches::records_par_page + i));
            const std::string qui = "page " + std::to_string(page) + ", case " + std::to_string(i) +
                                    (l.libelle().empty() ? "" : ", " + entre_guillemets(l.libelle())) + " : ";
            if (i == programme_touches::ligne_des_titres || est_vide(l)) continue;
            if (i > programme_touches::lignes_par_page)
                p_.dit(qui + "une page n'a que 95 cases, celle-ci n'est pas lue");
            else if (!l.visible())
                p_.dit(qui + "« Visu » n'est pas 1, la touche est cachée");
            else
                examine(l, qui);
        }
    }

  private:
    std::string_view contenu_;
    const catalogue::Tables& tables_;
    Pertes& p_;

    static bool est_vide(const Ligne& l) {
        return l.libelle().empty() && l.action().empty() && l.reference().empty() && l.champ(Champ::image).empty();
    }

    void examine(const Ligne& l, const std::string& qui) {
        const auto couleur = l.champ(Champ::couleur);
        if (!couleur.empty() && (l.couleur() < 0 || couleur.find_first_not_of("0123456789") != std::string_view::npos))
            p_.dit(qui + "la couleur " + entre_guillemets(couleur) +
                   (l.couleur() < 0 ? " n'est pas lue" : " se lit " + std::to_string(l.couleur())));
        if (l.image() != 0 && ecran::image_de_touche(l.image()).glyphe == 0)
            p_.dit(qui + "l'image " + std::to_string(l.image()) + " n'existe pas");
        const std::string_view genre = l.action().substr(0, marque::longueur),
                               argument = l.action().substr(genre.size());
        if (texte::rogne(l.action()).empty()) return p_.dit(qui + "l'action manque, la touche ne fait rien");
        if (std::find(std::begin(marque::toutes), std::end(marque::toutes), genre) == std::end(marque::toutes))
            return p_.dit(qui + "l'action " + entre_guillemets(l.action()) + " est inconnue, la touche ne fait rien");
        const double n = nombres::entier(argument);
        if (genre == marque::article) examine_article(p_, argument, tables_, qui);
        if (genre == marque::page && (n < 0 || n >= programme_touches::nb_pages))
            p_.dit(qui + "la page " + nombres::general(n) + " n'existe pas");
        if (genre == marque::famille &&
            (n < 0 || n > catalogue::familles_max || catalogue::articles_de(tables_, static_cast<int>(n)).empty()))
            p_.dit(qui + "la famille " + nombres::general(n) + " n'a pas d'article");
    }
};

}  // namespace

void examine_styles(std::string_view contenu, std::vector<std::string>& vers) {
    Pertes p(styles::nom_fichier, vers);
    if (!styles::est_initialise(contenu))
        return p.dit("ne commence pas par #INIT# : les tablettes le remplacent par leurs choix ordinaires");
    examine_longueur(p, contenu, fichier_styles);
    const auto choix = styles::depuis(contenu);
    for (int code = 2; code <= styles::code_max; ++code) {
        const styles::Style& s = choix[static_cast<std::size_t>(code)];
        if (s.libelle.empty()) continue;
        p.ligne(static_cast<std::size_t>(code));
        const std::string qui = entre_guillemets(s.libelle) + " : ";
        if (est_montre(code))
            examine_couleurs(p, s, qui);
        else
            p.dit(qui + "ce code n'est dans aucune colonne, il n'est pas montré");
    }
}

void examine_touches(std::string_view contenu, const catalogue::Tables& tables, std::vector<std::string>& vers) {
    Pertes p(programme_touches::nom_fichier, vers);
    if (contenu.size() <= programme_touches::longueur_vide)
        return p.dit("n'est pas rempli : la tablette le remplace par des pages vides");
    examine_longueur(p, contenu, fichier_touches);
    Programme programme(contenu, tables, p);
    for (int page = 0; page < programme_touches::nb_pages; ++page) programme.examine_page(page);
}

std::vector<std::string> coupures(const fabrication::Fichiers& f) {
    std::vector<std::string> r;
    const auto examine = [&r](const std::optional<std::string>& contenu, const Fixe& fixe) {
        if (!contenu || contenu->size() >= fixe.longueur) return;
        Pertes p(fixe.nom, r);
        examine_longueur(p, *contenu, fixe);
    };
    examine(f.styles, fichier_styles);
    examine(f.touches, fichier_touches);
    return r;
}

}  // namespace verification
