#include "vue.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "data/etat.h"
#include "data/programme_touches.h"
#include "data/reglages.h"
#include "main_screen/form1.h"
#include "platform/ecran/boucle.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/locale.h"
#include "platform/systeme/ouvrier.h"
#include "platform/systeme/processus.h"

namespace banc {
namespace {

namespace fs = std::filesystem;

constexpr int articles_de_viandes = 96, familles = 14, famille_viandes = 2;

class FenetreVue final : public ecran::Fenetre {
  public:
    FenetreVue(int largeur, int hauteur) : taille_{largeur, hauteur, 1} {}
    ecran::TailleEcran taille() const override { return taille_; }
    bool se_voit() const override { return true; }
    ecran::Evenement attend(int) override { return {}; }
    void montre(const ecran::Image&, std::span<const ecran::Zone>) override {}
    void reveille() override {}
    void vient_devant() override {}

  private:
    ecran::TailleEcran taille_;
};

/// The settings of a waiter who sees as much as he can: the whole screen, 8 by 6 articles a page, no password.
void regle() {
    constexpr std::pair<int, const char*> valeurs[] = {{reglages::record_resolution, "#I#0:09999:09999"},
                                                       {reglages::touches_articles + 1, "#I#1"},
                                                       {reglages::touches_articles + 2, "#I#1"},
                                                       {reglages::touches_articles + 3, "#I#48"},
                                                       {reglages::colonnes_grille, "#I#8"},
                                                       {reglages::lignes_grille, "#I#6"},
                                                       {reglages::sans_mot_de_passe, "OUI"}};
    if (!reglages::ouvre()) return;
    for (const auto& [record, valeur] : valeurs) static_cast<void>(reglages::ecrit(record, valeur));
    reglages::ferme();
}

/// What another measure has left in the shared state goes.
void oublie_le_service() {
    reglages::ferme();
    programme_touches::ferme();
    std::fill(etat::lignes_note.begin(), etat::lignes_note.end(), std::string());
    etat::nb_lignes_note = etat::numero_serveur = etat::numero_page = etat::page_programme = 0;
    etat::nom_serveur.clear();
    etat::texte_table.clear();
    etat::table_couverts.clear();
}

}  // namespace

std::unique_ptr<ecran::Fenetre> cree_fenetre_vue(int largeur, int hauteur) {
    return std::make_unique<FenetreVue>(largeur, hauteur);
}

std::string catalogue_de(int articles) {
    std::string t = "#SERV#01 Sophie\r\n#TABL#1\r\n#FAMI#02 Viandes\r\n";
    for (int n = famille_viandes + 1; n <= familles; ++n)
        t += (n < 10 ? "#FAMI#0" : "#FAMI#") + std::to_string(n) + " Famille " + std::to_string(n) + "\r\n";
    for (int i = 0; i < articles; ++i) {
        const int autre = famille_viandes + 1 + i % (familles - famille_viandes);
        const std::string numero = std::to_string(i);
        t += "#ARTI#00000" + std::to_string(8880000000000 + i) + "  |DES:Article " + numero +
             "|PVE:12.50|FA1:" + std::to_string(i < articles_de_viandes ? famille_viandes : autre) +
             "|FA2:0|COU:" + std::to_string(i % 10) + "\r\n";
    }
    return t;
}

void copie_demonstration(int articles) {
    fs::copy(fs::path(SOURCES) / "demo", ".", fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    if (articles > 0) {
        for (const char* nom : {"worvalune.wdo", "reseau/worvalune.wdo"})
            std::ofstream(nom, std::ios::binary) << catalogue_de(articles);
    }
}

void pose_restaurant(int articles) {
    copie_demonstration(articles);
    regle();
}

void simule_le_monde() {
    oublie_le_service();
    horloge::rend_virtuelle({});
    processus::enregistre_seulement(true);
    locale_systeme::simule('.');
    ouvrier::attend_toujours(true);
}

void rend_le_monde() {
    horloge::rend_reelle();
    processus::enregistre_seulement(false);
    ouvrier::attend_toujours(false);
}

void ouvre(int largeur, int hauteur, ecran::Pilote& pilote) {
    ecran::ouvre_ecran(cree_fenetre_vue(largeur, hauteur), &pilote);
    try {
        form1::montre_form1();
    } catch (const ecran::FinDuProgramme&) {
        oublie_le_service();
    }
    ecran::ferme_ecran();
    ouvrier::abandonne();
}

}  // namespace banc
