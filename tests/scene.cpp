#include "scene.h"

#include <algorithm>
#include <cctype>

#include "data/catalogue.h"
#include "data/styles.h"
#include "platform/rejeu/rejeu.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/processus.h"
#include "platform/systeme/texte.h"

namespace tests {
namespace {

constexpr std::string_view entre_etapes = " > ", montre = " = ";
constexpr std::string_view commandes[] = {"verifie", "attend", "tient", "reseau", "heure", "capture", "tourne"};
constexpr int sous_la_forme = 30;  ///< pixels of the screen that no form uses

std::string cite(std::string_view t) {
    std::string r = "\"";
    for (const char c : t) r += (c == '"' || c == '\\' ? "\\" : "") + std::string(1, c);
    return r + "\"";
}

/// Whether a step names a control or a cell: these begin with a small letter, or are one of a kind ("Label6").
bool nomme(std::string_view etape) {
    constexpr std::string_view sortes[] = {"Label", "Text", "Command", "Image", "Check", "List1"};
    return std::islower(static_cast<unsigned char>(etape[0])) != 0 ||
           (std::isdigit(static_cast<unsigned char>(etape.back())) != 0 &&
            std::any_of(std::begin(sortes), std::end(sortes), [&](auto sorte) { return etape.starts_with(sorte); }));
}

std::string commande(std::string_view etape) {
    constexpr std::string_view cles[] = {"retour", "entree", "echappement"};
    const auto parmi = [](const auto& mots, std::string_view mot) {
        return std::find(std::begin(mots), std::end(mots), mot) != std::end(mots);
    };
    const auto blanc = std::min(etape.find(' '), etape.size() - 1);
    const std::string mot(etape.substr(0, blanc)), suite(etape.substr(blanc + 1));
    if (mot == "tape") return "tape " + (parmi(cles, suite) ? suite : cite(suite));
    if (mot == "sans" || mot == "avec") return "verifie visible " + suite + (mot == "sans" ? " non" : " oui");
    if (parmi(commandes, mot)) return std::string(etape);
    if (etape.ends_with(" =")) return "verifie " + std::string(etape.substr(0, etape.size() - 1)) + "\"\"";
    if (const auto egal = etape.find(montre); egal != std::string_view::npos) {
        return "verifie " + std::string(etape.substr(0, egal)) + " " + cite(etape.substr(egal + montre.size()));
    }
    return "touche " + (nomme(etape) ? std::string(etape) : cite(etape));
}

/// Shows the form on top to a test, then closes it.
struct Regard final : ecran::Pilote {
    const std::function<void(ecran::Forme&)>& regard;
    explicit Regard(const std::function<void(ecran::Forme&)>& r) : regard(r) {}
    ecran::Evenement prochain() override {
        ecran::Forme& f = *ecran::forme_du_dessus();
        regard(f);
        f.ferme();
        return {};
    }
};

}  // namespace

std::string route(std::string_view etapes) {
    std::string r;
    for (std::string_view ligne : texte::lignes(etapes)) {
        ligne.remove_prefix(std::min(ligne.find_first_not_of(' '), ligne.size()));
        if (ligne.starts_with("# ")) continue;
        while (!ligne.empty()) {
            const auto fin = std::min(ligne.find(entre_etapes), ligne.size());
            r += commande(ligne.substr(0, fin)) + "\n";
            ligne.remove_prefix(std::min(fin + entre_etapes.size(), ligne.size()));
        }
    }
    return r;
}

Scene::Scene() {
    horloge::rend_virtuelle({});
    terrain.restaurant();
    terrain.pose("worvalune.wdo", terrain.lis("reseau/worvalune.wdo"));
    EXPECT_TRUE(reglages::ouvre());
    EXPECT_TRUE(programme_touches::prepare());
    EXPECT_TRUE(styles::init_styles());
    catalogue::charge_catalogue();
    processus::enregistre_seulement(true);
    ecran_de(1280, 800);
}

Scene::~Scene() {
    processus::enregistre_seulement(false);
    horloge::rend_reelle();
}

void Scene::ecran_de(int largeur, int hauteur) {
    largeur_ = etat::largeur_ecran = largeur;
    hauteur_ = hauteur;
    etat::hauteur_ecran = hauteur - sous_la_forme;
}

Scene::Fin Scene::fin_de(const Ouvre& ouvre, ecran::Pilote& pilote) const {
    Fin fin = Fin::ferme;
    ecran::ouvre_ecran(ecran::cree_fenetre_muette(largeur_, hauteur_), &pilote);
    try {
        ouvre();
    } catch (const ecran::FinDuProgramme& f) {
        fin = f.cause == ecran::FinDuProgramme::Cause::arret ? Fin::arret : Fin::inacheve;
    }
    ecran::ferme_ecran();
    return fin;
}

void Scene::joue_jusque(Fin fin, const Ouvre& ouvre, std::string_view etapes) const {
    SCOPED_TRACE(std::string(etapes));
    terrain.pose("scenario.txt", route(etapes));
    rejeu::Rejeu rejeu("scenario.txt", ".");
    EXPECT_EQ(fin_de(ouvre, rejeu), fin);
    rejeu.apres_arret();
    EXPECT_EQ(rejeu.statut(), rejeu::tout_tient);
}

void Scene::regarde(const Ouvre& ouvre, const std::function<void(ecran::Forme&)>& regard) const {
    Regard pilote(regard);
    EXPECT_EQ(fin_de(ouvre, pilote), Fin::ferme);
}

void Scene::tiennent(std::string& texte, const Ouvre& ouvre, const std::vector<Cas>& cas) const {
    for (const Cas& c : cas) {
        texte = page1252(c.avant);
        joue(ouvre, c.etapes);
        EXPECT_EQ(texte, page1252(c.apres)) << c.etapes;
    }
}

void Scene::reglent(int record, const Ouvre& ouvre, const std::vector<Cas>& cas) const {
    for (const Cas& c : cas) {
        static_cast<void>(reglages::ecrit(record, c.avant));
        joue(ouvre, c.etapes);
        EXPECT_EQ(reglage(record), texte::complete(c.apres, 20)) << c.etapes;
    }
}

void Scene::donnent(const std::function<std::optional<std::string>(const std::string&)>& demande,
                    const std::vector<Cas>& cas) const {
    for (const Cas& c : cas) {
        std::optional<std::string> r;
        joue([&] { r = demande(page1252(c.avant)); }, c.etapes);
        EXPECT_EQ(r.value_or("-"), page1252(c.apres)) << c.etapes;
    }
}

std::string Scene::reglage(int record) const {
    return terrain.lis("wwinqx42.wdo").substr(static_cast<std::size_t>(record - 1) * 20, 20);
}

}  // namespace tests
