#include "dialogs/clav_num.h"

#include <algorithm>
#include <array>

#include "data/etat.h"
#include "data/nombres.h"
#include "data/reglages.h"
#include "dialogs/formes.h"
#include "platform/ecran/boucle.h"
#include "platform/peinture/images.h"
#include "platform/systeme/texte.h"

namespace clav_num {
namespace {

using namespace ecran;
using formes::px;

constexpr int lignes = 4, colonnes = 3;
constexpr int largeur_max = px(624), hauteur_carte = px(110);
constexpr int garde_ms = 100;
constexpr int police_invite = 18, police_valeur = 44;

constexpr std::array<std::string_view, 12> chiffres = {"1", "2", "3", "4", "5", "6", "7", "8", "9", "C", "0", "."};
/// Font sizes on offer; the thirteenth has no key.
constexpr std::array<std::string_view, 13> tailles = {"14", "18", "24", "28", "34", "38", "44",
                                                      "48", "54", "58", "64", "68", "74"};
/// Grounds of the size keys, in reading order: what `Picture1` shows at (column x 75, row x 75) twips.
constexpr std::array<int, 12> chiffres_couleur = {1, 2, 3, 4, 5, 6, 7, 8, 9, 6, 4, 2};

enum CaseBarre { efface = 0, valide = 5 };
const formes::ToucheDeBarre barre[6] = {
    {"Effacer", image_retour_arriere, Role::detruire}, {}, {}, {}, {}, formes::touche_valide};

class Pave {
  public:
    Pave() : mode_(etat::texte_travail) {
        etat::texte_travail.clear();
        forme_.nom = "clav_num";
        forme_.visible = false;
        formes::encadre(forme_, "Saisie numérique"_t, formes::version);
        construit();
        separe_valeur();
        branche();
        formes::colore(forme_);
    }

    void montre() { montre_modal(forme_); }
    bool validee() const { return validee_; }

  private:
    Forme forme_;
    std::string mode_;
    bool validee_ = false;

    bool choix_de_taille() const { return mode_ == mode_taille; }
    bool masquee() const { return mode_ == mode_cache; }
    std::string& valeur() { return forme_("Label5").texte(); }

    void construit() {
        const Cadre zone = formes::contenu();
        const int l = std::min(largeur_max, zone.largeur);
        const Cadre carte = {zone.gauche + (zone.largeur - l) / 2, zone.haut, l, hauteur_carte};
        const Cadre ligne_invite = {carte.gauche + px(18), carte.haut + px(6), l - px(36), px(40)};
        const Cadre ligne_valeur = {carte.gauche + px(18), carte.haut + px(44), l - px(36), px(62)};
        const Cadre touches = {carte.gauche, carte.bas() + rythme, l, zone.bas() - carte.bas() - rythme};
        formes::ajoute_carte(forme_, {"Shape1", "Label2", "Label5"},
                             {.carte = carte,
                              .titre = ligne_invite,
                              .valeur = ligne_valeur,
                              .police_titre = police_invite,
                              .police_valeur = police_valeur,
                              .alignement_titre = Alignement::gauche,
                              .alignement_valeur = Alignement::droite});
        forme_("Label5").visible = !masquee();
        const Plan plans[] = {
            {.nom = "Label3",
             .cadre = ligne_valeur,
             .police = police_valeur,
             .gras = true,
             .alignement = Alignement::droite,
             .visible = masquee()},
            {.nom = "Picture1", .genre = Genre::image, .visible = false},
            {.nom = "g3",
             .genre = Genre::grille,
             .cadre = touches,
             .police = reglages::nombre(reglages::police_table),
             .gras = true,
             .etiquette = 3},
        };
        forme_.construit(plans);
        formes::ajoute_barre(forme_, barre);
        remplit_touches();
    }

    void remplit_touches() {
        Controle& g3 = forme_("g3");
        const std::span<const std::string_view> faces = choix_de_taille() ? std::span<const std::string_view>(tailles)
                                                                          : std::span<const std::string_view>(chiffres);
        formes::remplit_touches(g3, lignes, colonnes, faces, g3.aspect.police);
        for (std::size_t i = 0; i < g3.grille.cellules.size(); ++i) {
            Aspect& a = g3.grille.cellules[i];
            if (a.texte == "C") a.role = Role::touche_douce;
            if (!choix_de_taille()) continue;
            a.fond = palette::chiffres[chiffres_couleur[i]];
            a.encre = encre_lisible(a.fond);
            a.police = static_cast<int>(nombres::lis(a.texte));
        }
    }

    void separe_valeur() {
        change(formes::separe_initial());
        forme_("Label2").texte() = etat::texte_dialogue;
    }

    void branche() {
        forme_("g3").a_la_cellule = [this](int l, int c) {
            if (forme_.visible) touche(std::string(forme_("g3").grille.texte(l, c)));
        };
        forme_("g2").a_la_cellule = [this](int, int c) {
            if (forme_.visible && c == efface) change("");
            if (forme_.visible && c == valide) rend();
        };
        forme_.a_la_frappe = [this](int c) {
            if (!choix_de_taille() && ((c >= '0' && c <= '9') || c == '.'))
                touche(std::string(1, static_cast<char>(c)));
        };
        forme_.au_retour_arriere = [this] {
            if (!choix_de_taille()) recule();
        };
        forme_.a_l_entree = [this] { rend(); };
        forme_.a_l_echappement = [this] { forme_.ferme(); };
        forme_.ajoute_minuterie("Timer1").sonne_une_fois(garde_ms, [this] { forme_.visible = true; });
    }

    void change(std::string texte) {
        forme_("Label3").texte() = std::string(texte.size(), '*');
        valeur() = std::move(texte);
    }

    void recule() {
        if (!valeur().empty()) change(valeur().substr(0, valeur().size() - 1));
    }

    void touche(const std::string& face) {
        if (face.empty()) return;
        if (choix_de_taille()) {
            forme_("Label5").aspect.police = static_cast<int>(nombres::lis(face));
            return change(face);
        }
        if (face == "C") return recule();
        change(valeur() + face);
    }

    void rend() {
        etat::texte_dialogue = valeur();
        validee_ = true;
        forme_.ferme();
    }
};

}  // namespace

std::optional<std::string> demande(std::string_view mode, std::string_view invite) {
    etat::texte_travail = mode;
    etat::texte_dialogue = invite;
    Pave pave;
    pave.montre();
    if (!pave.validee()) return std::nullopt;
    return etat::texte_dialogue;
}

}  // namespace clav_num
