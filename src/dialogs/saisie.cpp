#include "dialogs/saisie.h"

#include <algorithm>
#include <utility>

#include "data/etat.h"
#include "dialogs/clavv.h"
#include "dialogs/formes.h"
#include "dialogs/mini_97.h"
#include "platform/ecran/boucle.h"
#include "platform/peinture/images.h"

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
        const int l = forme_.cadre.largeur - 2 * marge, moitie = (l - rythme) / 2;
        construit_champ(l);
        const Cadre gauche = {marge, px(180), moitie, px(96)};
        const Cadre droite = {gauche.droite() + rythme, px(180), moitie, px(96)};
        const Plan plans[] = {
            formes::touche_de_boite({.nom = "btc",
                                     .index = touche_accepte,
                                     .cadre = gauche,
                                     .texte = "Valider",
                                     .role = Role::aller,
                                     .police = 22,
                                     .image = image_valider}),
            formes::touche_de_boite({.nom = "btc",
                                     .index = touche_abandonne,
                                     .cadre = droite,
                                     .texte = "Annuler",
                                     .role = Role::action,
                                     .police = 22,
                                     .image = image_fermer}),
        };
        forme_.construit(plans);
    }

    /// Prompt and title, and below them the field with the chooser's key beside it, if there is one.
    void construit_champ(int l) {
        const bool choix = static_cast<bool>(demande_.choix.demande);
        const int choisit = std::min(largeur_choix, l / 3);
        const Cadre invite = {marge, px(20), l - px(80), px(70)}, titre = {invite.droite(), px(20), px(80), px(70)};
        const Cadre ligne = {marge, px(98), choix ? l - choisit - rythme : l, hauteur_champ};
        const Cadre touche_choix = {ligne.droite() + rythme, ligne.haut, choisit, hauteur_champ};
        const Plan plans[] = {
            {.nom = "Label1",
             .cadre = invite,
             .texte = demande_.invite,
             .police = 22,
             .gras = true,
             .alignement = Alignement::gauche},
            {.nom = "Label2",
             .cadre = titre,
             .texte = demande_.titre,
             .police = 13,
             .alignement = Alignement::droite,
             .encre = palette::gris},
            formes::champ_de_saisie(ligne, 22),
            formes::touche_de_boite({.nom = "bt_choix",
                                     .cadre = touche_choix,
                                     .texte = demande_.choix.legende,
                                     .role = Role::note,
                                     .police = 13,
                                     .image = demande_.choix.image,
                                     .visible = choix}),
        };
        forme_.construit(plans);
    }

    void change(std::string texte) { formes::pose_texte(champ(), std::move(texte)); }

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
