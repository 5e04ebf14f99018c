#include "dialogs/mini_97.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "data/etat.h"
#include "data/reglages.h"
#include "dialogs/clavv.h"
#include "dialogs/moduclav.h"
#include "platform/ecran/boucle.h"
#include "platform/peinture/images.h"
#include "platform/systeme/texte.h"

namespace mini_97 {
namespace {

using namespace ecran;
using moduclav::px;

constexpr int largeur_base = px(700), hauteur_base = px(300);
constexpr int marge_ecran = px(6);
constexpr int duree_fugitif_ms = 1500;

enum Touche97 { touche_oui = 2, touche_non = 3, touche_fermer = 5 };

/// Places at factor 1.
constexpr Cadre cadre_message = {px(30), px(26), px(640), px(140)};
constexpr Cadre cadre_message_avec_champ = {px(30), px(20), px(640), px(70)};
constexpr Cadre cadre_champ = {px(30), px(98), px(640), px(66)};
constexpr Cadre cadre_oui = {px(30), px(180), px(245), px(96)};
constexpr Cadre cadre_non = {px(295), px(180), px(245), px(96)};
constexpr Cadre cadre_fermer = {px(560), px(180), px(110), px(96)};
constexpr Cadre cadre_fermer_seul = {px(228), px(180), px(245), px(96)};
constexpr Cadre cadre_message_seul = {px(30), px(40), px(640), px(220)};

const Plan plans[] = {
    {.nom = "Label1", .cadre = cadre_message, .police = 24, .gras = true},
    moduclav::champ_de_saisie(cadre_champ, 22),
    moduclav::touche_de_boite({.nom = "btc",
                               .index = touche_oui,
                               .cadre = cadre_oui,
                               .texte = "Oui",
                               .role = Role::aller,
                               .police = 26,
                               .image = image_valider}),
    moduclav::touche_de_boite({.nom = "btc",
                               .index = touche_non,
                               .cadre = cadre_non,
                               .texte = "Non",
                               .role = Role::detruire,
                               .police = 26,
                               .image = image_fermer}),
    {.nom = "btc",
     .index = touche_fermer,
     .genre = Genre::bouton,
     .cadre = cadre_fermer,
     .texte = "Fermer",
     .role = Role::action,
     .police = 14,
     .gras = true,
     .image = image_fermer,
     .etiquette = 2},
};

/// "1." followed by the size less one: sizes 1 to 10 give 1.0 to 1.9, all by joining the digits.
double facteur(int taille) {
    const double suite = std::max(0, taille - 1);
    double diviseur = 10;
    while (diviseur <= suite) diviseur *= 10;
    return 1 + suite / diviseur;
}

/// The factor that still leaves the box on the screen.
double facteur_possible(double voulu) {
    const double l = static_cast<double>(moduclav::largeur() - 2 * marge_ecran) / largeur_base;
    const double h = static_cast<double>(moduclav::hauteur() - 2 * hauteur_bandeau) / hauteur_base;
    return std::max(0.4, std::min({voulu, l, h}));
}

Cadre agrandi(const Cadre& c, double f) {
    const auto n = [f](int v) { return static_cast<int>(std::lround(v * f)); };
    return {n(c.gauche), n(c.haut), n(c.largeur), n(c.hauteur)};
}

class Boite {
  public:
    Boite() {
        forme_.nom = "mini_97";
        forme_.role = Role::boite;
        forme_.voile = true;
        forme_.construit(plans);
        ouvre_texte();
        montre_touches();
        dimensionne();
        branche();
        moduclav::colore(forme_);
    }

    void montre() { montre_modal(forme_); }
    const std::string& texte() { return champ().texte(); }

  private:
    Forme forme_;
    const std::int32_t demande_ = etat::code_dialogue;

    Controle& champ() { return forme_("Text1"); }
    bool saisit() { return champ().visible; }

    void ouvre_texte() {
        moduclav::pose_texte(champ(), moduclav::separe_initial());
        forme_("Label1").texte() = etat::texte_dialogue;
    }

    void montre_touches() {
        champ().visible = demande_ == saisie || demande_ == saisie_majuscules;
        const bool question = demande_ == oui_non || saisit();
        forme_("btc", touche_oui).visible = question;
        forme_("btc", touche_non).visible = question;
        forme_("btc", touche_fermer).visible = demande_ != fugitif;
        if (question) return;
        Controle& fermer = forme_("btc", touche_fermer);
        fermer.cadre = cadre_fermer_seul;
        fermer.aspect.police = 22;
        fermer.aspect.place_image = PlaceImage::gauche;
    }

    void dimensionne() {
        const double f = facteur_possible(facteur(reglages::nombre(reglages::taille_boites)));
        const Cadre boite = agrandi({0, 0, largeur_base, hauteur_base}, f);
        forme_.cadre = {(moduclav::largeur() - boite.largeur) / 2, (moduclav::hauteur() - boite.hauteur) / 2,
                        boite.largeur, boite.hauteur};
        if (saisit()) forme_("Label1").cadre = cadre_message_avec_champ;
        if (demande_ == fugitif) forme_("Label1").cadre = cadre_message_seul;
        for (const auto& c : forme_.controles) {
            c->cadre = agrandi(c->cadre, f);
            c->aspect.police = std::max(8, static_cast<int>(std::lround(c->aspect.police * f)));
        }
    }

    void branche() {
        for (const int touche : {touche_oui, touche_non, touche_fermer}) {
            forme_("btc", touche).au_toucher = [this, touche] { repond(touche); };
        }
        champ().au_toucher = [this] { ouvre_clavier(); };
        forme_.a_la_frappe = [this](int c) { frappe(c < 32 ? ' ' : static_cast<char>(c)); };
        forme_.a_l_entree = [this] { frappe(' '); };
        forme_.au_retour_arriere = [this] { efface(); };
        forme_.a_l_echappement = [this] {
            if (forme_("btc", touche_fermer).visible) repond(touche_fermer);
        };
        if (demande_ != fugitif) return;
        forme_.ajoute_minuterie("Timer1").sonne_une_fois(duree_fugitif_ms, [this] { repond(touche_fermer); });
    }

    void repond(int touche) {
        if (touche == touche_oui) etat::code_dialogue = oui;
        if (touche == touche_non) etat::code_dialogue = non;
        etat::texte_dialogue = touche == touche_fermer ? "" : std::string(texte::rogne(champ().texte()));
        forme_.ferme();
    }

    void frappe(char c) {
        if (!saisit()) return;
        champ().texte().insert(static_cast<std::size_t>(champ().curseur), 1, c);
        ++champ().curseur;
    }

    void efface() {
        if (!saisit() || champ().curseur == 0) return;
        champ().texte().erase(static_cast<std::size_t>(--champ().curseur), 1);
    }

    /// The keyboard works through the same shared request, which stands aside meanwhile.
    void ouvre_clavier() {
        const std::int32_t code = etat::code_dialogue;
        const std::string message = etat::texte_dialogue;
        etat::code_dialogue = demande_ == saisie_majuscules ? saisie_majuscules : saisie;
        etat::texte_dialogue = message + "|" + champ().texte();
        clavv::montre_clavv();
        moduclav::pose_texte(champ(), etat::texte_dialogue);
        etat::code_dialogue = code;
        etat::texte_dialogue = message;
    }
};

void pose(std::int32_t code, std::string_view message) {
    etat::code_dialogue = code;
    etat::texte_dialogue = message;
    montre_mini_97();
}

}  // namespace

void montre_mini_97() {
    Boite().montre();
}

void informe(std::string_view message) {
    pose(information, message);
}
bool demande(std::string_view question) {
    pose(oui_non, question);
    return etat::code_dialogue == oui;
}
std::optional<std::string> saisit(std::string_view question) {
    etat::code_dialogue = saisie;
    etat::texte_dialogue = question;
    Boite boite;
    boite.montre();
    if (etat::code_dialogue != oui) return std::nullopt;
    return boite.texte();
}
void annonce(std::string_view message) {
    pose(fugitif, message);
}

}  // namespace mini_97
