#include "dialogs/suivi.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "data/nombres.h"
#include "data/reseau.h"
#include "data/suivi.h"
#include "dialogs/formes.h"
#include "dialogs/mini_97.h"
#include "platform/ecran/boucle.h"
#include "platform/peinture/images.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/texte.h"

namespace ecran_suivi {
namespace {

using namespace ecran;
using formes::px;

constexpr int hauteur_ligne = px(60), hauteur_entete = px(46);

constexpr int case_renvoie = 3;
constexpr std::int64_t secondes_par_jour = 24 * 60 * 60;
const formes::ToucheDeBarre barre[6] = {
    formes::touche_bas, formes::touche_haut, {}, {"Renvoyer", image_envoyer, Role::aller}, {}, formes::touche_ferme};

enum Colonne { heure, table, nombre, sort };
struct Entete {
    std::string_view titre;
    int largeur, largeur_etroite;  ///< thousandths of the list's width; the last one takes what is left
};
constexpr Entete entetes[] = {{"Heure", 175, 170}, {"Table", 206, 150}, {"Lignes", 190, 170}, {"État"_t, 0, 0}};
constexpr int nb_colonnes = static_cast<int>(std::size(entetes));

/// Sizes in points and a margin in twips, which the narrow forms have less room for.
struct Mesures {
    int police, police_entete, marge;
};
Mesures mesures() {
    return formes::est_etroit() ? Mesures{18, 14, px(4)} : Mesures{20, 16, px(20)};
}

/// What the cell of a state shows, in the order of the enumeration; some say since when.
struct Vue {
    int image;
    std::string_view texte;
    bool avec_heure;
};
constexpr Vue vues[] = {{image_en_attente, "en attente", false},
                        {image_deposee, "déposée "_t, true},
                        {image_collectee, "collectée "_t, true},
                        {image_a_verifier, "à vérifier"_t, false}};

/// Why an order was not sent again, and what to do; in the order of the enumeration.
constexpr std::string_view refus[] = {
    "", "Cette commande attend déjà sur la tablette, suivez-la dans la liste !"_t,
    "Le texte de la commande n'est plus sur la tablette, reprenez-la si la cuisine ne l'a pas !"_t,
    "La commande n'a pas pu être remise en attente, réessayez ou appelez le technicien !"_t};

std::string heure_et_minute(const horloge::DateHeure& d) {
    return nombres::entier_complete(d.heure, 2) + ":" + nombres::entier_complete(d.minute, 2);
}

/// When an order was written: its day stands before the time when that is not today.
std::string quand(const horloge::DateHeure& d) {
    const auto jour_de = [](const horloge::DateHeure& x) { return horloge::jour(x); };
    const horloge::DateHeure maintenant = horloge::maintenant();
    if (jour_de(d) == jour_de(maintenant)) return heure_et_minute(d);
    const bool hier = jour_de(d) == jour_de(horloge::plus_secondes(maintenant, -secondes_par_jour));
    const std::string jour =
        hier ? "hier" : nombres::entier_complete(d.jour, 2) + "/" + nombres::entier_complete(d.mois, 2);
    return jour + " " + heure_et_minute(d);
}

/// The order of that name where it is to be checked, else null.
const suivi::Ligne* a_verifier(std::string_view nom) {
    const auto& lignes = suivi::lignes();
    const auto l = std::find_if(lignes.rbegin(), lignes.rend(), [nom](const suivi::Ligne& x) { return x.nom == nom; });
    return l != lignes.rend() && l->etat == suivi::Etat::a_verifier ? &*l : nullptr;
}

class Suivi;
Suivi* ouvert = nullptr;

class Suivi {
  public:
    Suivi() {
        forme_.nom = "suivi";
        formes::encadre(forme_, "Suivi des commandes", formes::version);
        construit();
        remplit();
        branche();
        ouvert = this;
    }
    ~Suivi() { ouvert = nullptr; }
    Suivi(const Suivi&) = delete;
    Suivi& operator=(const Suivi&) = delete;

    void montre() { montre_modal(forme_); }

    /// The list as it is now; the chosen row and the place in it stay.
    void remplit() {
        Controle& g1 = forme_("g1");
        Grille& g = g1.grille;
        const int premiere = g.premiere_ligne;
        g.dimensionne(0, nb_colonnes);
        noms_.clear();
        ajoute_entetes(g);
        const std::vector<suivi::Ligne>& commandes = suivi::lignes();
        for (auto l = commandes.rbegin(); l != commandes.rend(); ++l) ajoute_commande(g, *l);
        g.hauteurs.assign(static_cast<std::size_t>(g.lignes), hauteur_ligne);
        g.hauteurs[0] = hauteur_entete;
        g.premiere_ligne = premiere;
        g.defile_de(0, g1.cadre);
        const auto a_renvoyer = [](const suivi::Ligne& l) { return l.etat == suivi::Etat::a_verifier; };
        const bool une = std::any_of(commandes.begin(), commandes.end(), a_renvoyer);
        forme_("g2").grille.cellule(0, case_renvoie).role = une ? Role::aller : Role::repos;
        formes::colore(forme_);
    }

  private:
    Forme forme_;
    std::vector<std::string> noms_;  ///< of the orders, row by row below the headings
    std::string choisie_;            ///< name of the chosen order

    void construit() {
        Controle& g1 = forme_.ajoute(formes::liste("g1", formes::contenu(), mesures().police));
        Grille& g = g1.grille;
        g.lignes_fixes = 1;
        g.hauteur_ligne = hauteur_ligne;
        g.defile = g.reglee = true;
        int reste = g1.cadre.largeur;
        for (const Entete& e : entetes) {
            g.largeurs.push_back(g1.cadre.largeur * (formes::est_etroit() ? e.largeur_etroite : e.largeur) / 1000);
            reste -= g.largeurs.back();
        }
        g.largeurs.back() = reste;
        formes::ajoute_barre(forme_, barre);
        formes::repose_aux_bouts(forme_);
    }

    static void ajoute_entetes(Grille& g) {
        g.ajoute_ligne({.role = Role::entete,
                        .police = mesures().police_entete,
                        .gras = true,
                        .alignement = Alignement::gauche,
                        .marge_gauche = mesures().marge});
        for (int c = 0; c < nb_colonnes; ++c) g.cellule(0, c).texte = entetes[c].titre;
    }

    void ajoute_commande(Grille& g, const suivi::Ligne& commande) {
        const int l = g.ajoute_ligne({.role = commande.nom == choisie_ ? Role::ligne_touchee : Role::ligne,
                                      .alignement = Alignement::gauche,
                                      .marge_gauche = mesures().marge,
                                      .trait = true});
        noms_.push_back(commande.nom);
        g.cellule(l, heure).texte = quand(commande.ecrite);
        g.cellule(l, table).texte = commande.table;
        g.cellule(l, table).gras = true;
        g.cellule(l, nombre).texte = std::to_string(commande.lignes);
        const Vue& v = vues[static_cast<std::size_t>(commande.etat)];
        Aspect& a = g.cellule(l, sort);
        a.texte = v.texte;
        if (v.avec_heure) a.texte += heure_et_minute(commande.depuis);
        a.image = v.image;
        a.place_image = PlaceImage::gauche;
        a.gras = commande.etat == suivi::Etat::a_verifier;
    }

    void branche() {
        forme_("g1").a_la_cellule = [this](int ligne, int) {
            if (ligne < 1) return;
            choisie_ = noms_[static_cast<std::size_t>(ligne - 1)];
            remplit();
        };
        forme_("g2").a_la_cellule = [this](int, int colonne) {
            formes::defile_par_page(forme_, colonne);
            if (colonne == case_renvoie) renvoie_la_choisie();
            if (colonne == formes::case_ferme) forme_.ferme();
        };
        forme_.a_l_echappement = [this] { forme_.ferme(); };
    }

    /// The waiter alone can know whether the kitchen has it. While he is being asked its state may change.
    void renvoie_la_choisie() {
        const suivi::Ligne* l = a_verifier(choisie_);
        if (l == nullptr) return mini_97::informe("Touchez d'abord la ligne d'une commande « à vérifier » !"_t);
        const std::string nom = l->nom;
        if (!mini_97::demande(std::string("La cuisine a peut-être déjà la commande de la table "_t) + l->table +
                              std::string(", la renvoyer quand même ?"_t)))
            return;
        if (a_verifier(nom) == nullptr) return;
        const suivi::Renvoi r = suivi::renvoie(nom);
        if (r != suivi::Renvoi::fait) return mini_97::informe(refus[static_cast<std::size_t>(r)]);
        reseau::passe();
        remplit();
    }
};

}  // namespace

void montre_suivi() {
    Suivi().montre();
}

void rafraichit() {
    if (ouvert != nullptr) ouvert->remplit();
}

}  // namespace ecran_suivi
