#include "terrain.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>

#include "platform/systeme/texte.h"

#ifndef _WIN32
#include <sys/wait.h>
#endif

namespace tests {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t record_reglages = 20, record_touches = 256;

void ecrit_fichier(const fs::path& p, std::string_view contenu) {
    std::ofstream f(p, std::ios::binary);
    f.write(contenu.data(), static_cast<std::streamsize>(contenu.size()));
    if (!f) throw std::runtime_error("cannot write " + p.string());
}

void pose_champ(std::string& record, std::size_t debut, std::size_t longueur, std::string_view texte) {
    record.replace(debut, longueur, texte::complete(texte, longueur));
}

int statut_de(int rc) {
#ifdef _WIN32
    return rc;
#else
    return WIFEXITED(rc) ? WEXITSTATUS(rc) : 128 + WTERMSIG(rc);
#endif
}

}  // namespace

std::string lis(const fs::path& p) {
    std::ostringstream contenu;
    contenu << std::ifstream(p, std::ios::binary).rdbuf();
    return std::move(contenu).str();
}

#ifndef _WIN32
int attend_la_fin(pid_t fils) {
    int statut = 0;
    if (fils < 0 || ::waitpid(fils, &statut, 0) != fils || !WIFEXITED(statut)) return -1;
    return WEXITSTATUS(statut);
}
#endif

std::string page1252(std::string_view utf8) {
    const auto t = texte::depuis_utf8(utf8);
    if (!t) throw std::runtime_error("not in the code page: " + std::string(utf8));
    return *t;
}

Terrain::Terrain() {
    std::random_device hasard;
    do {
        chemin_ = fs::temp_directory_path() / ("orvalune_" + std::to_string(hasard()));
    } while (!fs::create_directories(chemin_));
}

Terrain::~Terrain() {
    std::error_code ignoree;
    fs::remove_all(chemin_, ignoree);
}

void Terrain::pose(const std::string& nom, std::string_view contenu) const {
    fs::create_directories((chemin_ / nom).parent_path());
    ecrit_fichier(chemin_ / nom, contenu);
}

void Terrain::copie(const Terrain& autre) const {
    for (const auto& e : fs::recursive_directory_iterator(autre.chemin_)) {
        const fs::path vers = chemin_ / fs::relative(e.path(), autre.chemin_);
        if (e.is_directory()) fs::create_directories(vers);
        if (e.is_regular_file()) ecrit_fichier(vers, tests::lis(e.path()));
    }
}

std::string Terrain::lis(const std::string& nom) const {
    return tests::lis(chemin_ / nom);
}

bool Terrain::existe(const std::string& nom) const {
    return fs::exists(chemin_ / nom);
}

std::vector<std::string> Terrain::fichiers(const std::string& repertoire, std::string_view fin) const {
    std::vector<std::string> noms;
    if (!fs::exists(chemin_ / repertoire)) return noms;
    for (const auto& e : fs::directory_iterator(chemin_ / repertoire)) {
        if (e.path().filename().string().ends_with(fin)) noms.push_back(e.path().filename().string());
    }
    std::sort(noms.begin(), noms.end());
    return noms;
}

void Terrain::regle(int record, std::string_view valeur) const {
    std::string store = lis("wwinqx42.wdo");
    if (store.empty()) store.assign(2000 * record_reglages, ' ');
    store.replace(static_cast<std::size_t>(record - 1) * record_reglages, record_reglages,
                  texte::complete(valeur, record_reglages));
    pose("wwinqx42.wdo", store);
}

void Terrain::touche(int page, int ligne, std::string_view libelle, std::string_view action, std::string_view forme,
                     std::string_view image, std::string_view couleur, std::string_view taille) const {
    std::string programme = lis("progppb.wdo");
    if (programme.empty()) {
        for (int i = 0; i < 5000; ++i) programme += std::string(254, ' ') + "\r\n";
    }
    std::string r(254, ' ');
    pose_champ(r, 15, 40, libelle);
    pose_champ(r, 55, 2, forme);
    pose_champ(r, 59, 4, image);
    pose_champ(r, 63, 1, "1");
    pose_champ(r, 64, 3, taille);
    pose_champ(r, 67, 10, couleur);
    pose_champ(r, 154, 100, action);
    programme.replace(static_cast<std::size_t>(page * 100 + ligne - 1) * record_touches, 254, r);
    pose("progppb.wdo", programme);
}

Terrain& Terrain::restaurant() {
    fs::create_directories(reseau());
    pose("wfichdir.wdo", "reseau\r\n");
    regle(2, "#I#0:01280:00770");
    regle(25, "#I#12");
    regle(26, "#I#6");
    for (const int premier : {5, 10, 20}) {
        regle(premier + 1, "#I#3");
        regle(premier + 2, "#I#2");
        regle(premier + 3, "#I#12");
    }
    pose("reseau/orvalune.wdo", "#DIR#C:\\Orvalune\r\n");
    pose("reseau/worvalune.wdo",
         page1252("#SERV#01 Sophie\r\n#SERV#02 Marc\r\n#SERV#07 Élodie\r\n"
                  "#FAMI#01 Entrées\r\n#FAMI#02 Viandes|COU:1\r\n#FAMI#03 Menus\r\n#FAMI#04 Sous-groupes\r\n"
                  "#ARTI#000018880000000024  |DES:Entrecôte 300 g|PVE:24.50|FA1:2|FA2:0|COU:1\r\n"
                  "#ARTI#000028880000000031  |DES:Magret de canard|PVE:22.00|FA1:2|FA2:0|COU:2\r\n"
                  "#ARTI#000038880000000048  |DES:Salade|PVE:7.90|FA1:1|FA2:0\r\n"
                  "#ARTI#000048880000000574  |DES:Menu 15 Euros|PVE:15.00|FA1:3|FA2:99|"
                  "¤¤8880000000284  xSaladeð5ð1Ð8880000000307  xLasagnesð0ð2Ð\r\n"
                  "#ARTI#00005#SG#0005|DES:Bières pression|FA1:4\r\n"
                  "#ARTI#000068880000000611  |DES:Demi|PVE:3.50|FA1:35|FA2:0\r\n"
                  "#TABL#1\r\n#TABL#012\r\n#TABL#015\r\n#CCOF#04\r\n#CCOU#0660000\r\n"));
    touche(0, 1, "Viandes", "#FAMI#02", "22", "20", "4541378");
    touche(0, 3, page1252("Entrées"), "#FAMI#01");
    touche(0, 5, page1252("Entrecôte"), "#AJOU#8880000000024", "22", "16");
    touche(0, 7, "Page 1", "#PAGE#1");
    touche(0, 9, "Outils", "#OUTI#");
    touche(0, 11, "Rien", "#TOUC#");
    touche(1, 1, "Accueil", "#PAGE#0");
    return *this;
}

std::string entre(const fs::path& p) {
    return "\"" + p.string() + "\"";
}

constexpr int rien_de_lance = 9009;  ///< what the shell of Windows answers when it could not start a program

Issue Terrain::lance(const std::string& commande, const std::string& avant) const {
    std::string ligne = avant + commande + " >" + entre(chemin_ / "sortie") + " 2>" + entre(chemin_ / "erreurs");
#ifdef _WIN32
    ligne = "\"" + ligne + "\"";
#endif
    Issue r;
    // Under load the emulator's shell now and then starts no program at all, and says so.
    for (int essai = 0; essai < 3; ++essai) {
        r.statut = statut_de(std::system(ligne.c_str()));
        if (r.statut != rien_de_lance) break;
    }
    r.sortie = lis("sortie");
    r.erreurs = lis("erreurs");
    std::erase(r.sortie, '\r');  // what Windows adds to line ends
    std::erase(r.erreurs, '\r');
    return r;
}

Issue Terrain::joue(const std::string& scenario, const std::string& options, const std::string& avant) const {
    ecrit_fichier(chemin_ / "scenario.txt", scenario);
    return lance(entre(PROGRAMME) + " --dossier " + entre(chemin_) + " --rejoue " + entre(chemin_ / "scenario.txt") +
                     " --captures " + entre(chemin_) + " " + options,
                 avant);
}

Issue Terrain::cuisine(const std::string& options) const {
    return lance(entre(CUISINE) + " " + entre(reseau()) + " --une-fois " + options);
}

Issue Terrain::joue_fichier(const std::string& nom, const std::string& options) const {
    return joue(scenario(nom), options);
}

std::string scenario(const std::string& nom) {
    const std::string s = tests::lis(fs::path(SOURCES) / "tests" / "scenarios" / nom);
    if (s.empty()) throw std::runtime_error("no scenario " + nom);
    return s;
}

}  // namespace tests
