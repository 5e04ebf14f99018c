#include "dialogs/saisie.h"

#include <algorithm>
#include <utility>

#include "config/clavv.h"
#include "data/etat.h"
#include "dialogs/formes.h"
#include "dialogs/mini_97.h"
#include "platform/ecran/boucle.h"
#include "platform/ecran/images.h"

namespace saisie {
namespace {

using namespace ecran;
using formes::px;

constexpr int largeur_voulue = px(700), hauteur = px(300);
constexpr int marge = px(30), marge_ecran = px(6);
constexpr int largeur_choix = px(150), hauteur_champ = px(66);

enum Touche { touche_accepte = 2, touche_abandonne = 5 };

class Boite {
  public:
    explicit Boite(const Demande& d) : demande_(d) {
        forme_.nom = "saisie";
        forme_.titre = d.titre;
        forme_.role = Role::boite;
        forme_.voile = true;
        const int l = std::min(largeur_voulue, formes::largeur() - 2 * marge_ecran);
        forme_.cadre = {(formes::largeur() - l) / 2, std::max(0, (formes::hauteur() - hauteur) / 2), l, hauteur};
        construit();
        change(d.defaut);
        branche();
        formes::colore(forme_);
    }

    std::optional<std::string> montre() {
        montre_modal(forme_);
        return reponse_;
    }

  private:
    Forme forme_;
    const Demande& demande_;
    std::optional<std::string> reponse_;

    Controle& champ() { return forme_("Text1"); }

    void construit() {
        const int l = forme_.cadre.largeur - 2 * marge;
        const bool choix = static_cast<bool>(demande_.choix.demande);
        const int choisit = std::min(largeur_choix, l / 3);
        const Cadre invite = {marge, px(20), l - px(80), px(70)}, titre = {marge + l - px(80), px(20), px(80), px(70)};
        const Cadre ligne = {marge, px(98), choix ? l - choisit - rythme : l, hauteur_champ};
        const Cadre touche_choix = {ligne.droite() + rythme, ligne.haut, choisit, hauteur_champ};
        const int moitie = (l - rythme) / 2;
        const Cadre gauche = {marge, px(180), moitie, px(96)},
                    droite = {marge + moitie + rythme, px(180), moitie, px(96)};
        const Plan plans[] = {
            {"Label1", -1, Genre::etiquette, invite, demande_.invite, Role::rien, 22, true, Alignement::gauche, 0},
            {"Label2", -1, Genre::etiquette, titre, demande_.titre, Role::rien, 13, false, Alignement::droite, 0},
            {"Text1", -1, Genre::champ, ligne, "", Role::champ, 22, false, Alignement::gauche, 4},
            {"bt_choix", -1, Genre::bouton, touche_choix, demande_.choix.legende, Role::note, 13, true,
             Alignement::centre, 2},
            {"btc", touche_accepte, Genre::bouton, gauche, "Valider", Role::aller, 22, true, Alignement::centre, 5},
            {"btc", touche_abandonne, Genre::bouton, droite, "Annuler", Role::action, 22, true, Alignement::centre, 2},
        };
        forme_.construit(plans);
        forme_("Label2").aspect.encre = palette::gris;
        forme_("bt_choix").visible = choix;
        for (const auto& [c, image] : {std::pair(&forme_("bt_choix"), demande_.choix.image),
                                       std::pair(&forme_("btc", touche_accepte), int{image_valider}),
                                       std::pair(&forme_("btc", touche_abandonne), int{image_fermer})}) {
            c->aspect.image = image;
            c->aspect.place_image = PlaceImage::gauche;
        }
    }

    void change(std::string texte) {
        champ().texte() = std::move(texte);
        champ().curseur = static_cast<int>(champ().texte().size());
    }

    void rend(std::string texte) {
        reponse_ = std::move(texte);
        forme_.ferme();
    }

    void branche() {
        forme_("btc", touche_accepte).au_toucher = forme_.a_l_entree = [this] { rend(champ().texte()); };
        forme_("btc", touche_abandonne).au_toucher = forme_.a_l_echappement = [this] { forme_.ferme(); };
        forme_("bt_choix").au_toucher = [this] {
            if (auto choisi = demande_.choix.demande()) rend(std::move(*choisi));
        };
        champ().au_toucher = [this] { ouvre_clavier(); };
        forme_.a_la_frappe = [this](int c) {
            if (c >= 32) change(champ().texte() + static_cast<char>(c));
        };
        forme_.au_retour_arriere = [this] {
            if (!champ().texte().empty()) change(champ().texte().substr(0, champ().texte().size() - 1));
        };
    }

    void ouvre_clavier() {
        etat::code_dialogue = demande_.chiffres ? mini_97::saisie_majuscules : mini_97::saisie;
        etat::texte_dialogue = std::string(demande_.invite) + "|" + champ().texte();
        clavv::montre_clavv();
        change(etat::texte_dialogue);
    }
};

}  // namespace

std::optional<std::string> demande(const Demande& demande) {
    return Boite(demande).montre();
}

}  // namespace saisie
