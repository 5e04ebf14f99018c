// Looks at programs from outside, by turns on one display: from the start to the first painted page, the memory that
// they then hold, and from a press to the changed pixel.
// Usage: sonde ROUNDS PRESSES {NAME X Y RRGGBB PROGRAM [ARGUMENTS] --}...
// The page is there when the pixel at X, Y has this colour; the key pressed lies around it. For each program a line:
// name, start (median, ms), resident and proportional memory (median, KiB), press (median and 95th of 100, us).
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Horloge = std::chrono::steady_clock;

constexpr int droite_de_la_touche = 60, bas_de_la_touche = 30;  ///< pixels from the pixel looked at to the finger
constexpr double patience_us = 10e6;
constexpr useconds_t apres_le_depart_us = 200'000, entre_deux_us = 5'000;

struct Programme {
    std::string nom;
    int x = 0, y = 0;
    std::uint32_t couleur = 0;
    std::vector<char*> mots;
    std::vector<double> depart, residente, proportionnelle, appui;
};

xcb_connection_t* connexion;
xcb_window_t racine;
int hauteur_de_l_ecran;

double us_depuis(Horloge::time_point debut) {
    return std::chrono::duration<double, std::micro>(Horloge::now() - debut).count();
}

std::uint32_t pixel(int x, int y) {
    const auto demande = xcb_get_image(connexion, XCB_IMAGE_FORMAT_Z_PIXMAP, racine, static_cast<std::int16_t>(x),
                                       static_cast<std::int16_t>(y), 1, 1, ~0U);
    const std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> r(
        xcb_get_image_reply(connexion, demande, nullptr), std::free);
    if (!r || xcb_get_image_data_length(r.get()) < 4) return ~0U;
    const std::uint8_t* d = xcb_get_image_data(r.get());
    return d[0] | d[1] << 8U | d[2] << 16U;
}

/// Waits until the pixel has this colour, or another one; false when it takes too long.
bool attend_couleur(int x, int y, std::uint32_t couleur, bool voulue, Horloge::time_point debut) {
    while ((pixel(x, y) == couleur) != voulue) {
        if (us_depuis(debut) > patience_us) return false;
    }
    return true;
}

/// What an earlier window has left on the screen goes.
void efface() {
    const xcb_window_t w = xcb_generate_id(connexion);
    const std::uint32_t valeurs[] = {0x123456, 1};
    xcb_create_window(connexion, XCB_COPY_FROM_PARENT, w, racine, 0, 0, 4096, 4096, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, valeurs);
    xcb_map_window(connexion, w);
    xcb_destroy_window(connexion, w);
    pixel(0, 0);
    usleep(entre_deux_us * 4);
}

void envoie(std::uint8_t sorte, std::uint8_t detail, int x, int y) {
    xcb_test_fake_input(connexion, sorte, detail, 0, racine, static_cast<std::int16_t>(x), static_cast<std::int16_t>(y),
                        0);
}

void pose_la_souris(int x, int y) {
    envoie(XCB_MOTION_NOTIFY, 0, x, y);
    xcb_flush(connexion);
    usleep(entre_deux_us);
}

/// Where no key is.
void ecarte_la_souris() {
    pose_la_souris(1, hauteur_de_l_ecran - 1);
}

/// One press, let go beside the key so that it does nothing.
double appuie(const Programme& p) {
    const std::uint32_t avant = pixel(p.x, p.y);
    const auto debut = Horloge::now();
    envoie(XCB_BUTTON_PRESS, 1, 0, 0);
    xcb_flush(connexion);
    const bool change = attend_couleur(p.x, p.y, avant, false, debut);
    const double duree = us_depuis(debut);
    ecarte_la_souris();
    envoie(XCB_BUTTON_RELEASE, 1, 0, 0);
    pose_la_souris(p.x + droite_de_la_touche, p.y + bas_de_la_touche);
    if (!change || !attend_couleur(p.x, p.y, avant, true, Horloge::now())) {
        std::fprintf(stderr, "%s: a press changes nothing\n", p.nom.c_str());
        std::exit(EXIT_FAILURE);
    }
    return duree;
}

void prend_la_memoire(Programme& p, pid_t pid) {
    std::ifstream f("/proc/" + std::to_string(pid) + "/smaps_rollup");
    double kio = 0;
    for (std::string ligne; std::getline(f, ligne);) {
        if (std::sscanf(ligne.c_str(), "Rss: %lf", &kio) == 1) p.residente.push_back(kio);
        if (std::sscanf(ligne.c_str(), "Pss: %lf", &kio) == 1) p.proportionnelle.push_back(kio);
    }
}

void mesure(Programme& p, int appuis) {
    efface();
    ecarte_la_souris();
    const auto debut = Horloge::now();
    pid_t pid = 0;
    if (posix_spawn(&pid, p.mots[0], nullptr, nullptr, p.mots.data(), environ) != 0) std::exit(EXIT_FAILURE);
    if (!attend_couleur(p.x, p.y, p.couleur, true, debut)) {
        std::fprintf(stderr, "%s: no page\n", p.nom.c_str());
        kill(pid, SIGKILL);
        std::exit(EXIT_FAILURE);
    }
    p.depart.push_back(us_depuis(debut) / 1000);
    usleep(apres_le_depart_us);
    prend_la_memoire(p, pid);
    pose_la_souris(p.x + droite_de_la_touche, p.y + bas_de_la_touche);
    for (int i = 0; i < appuis; ++i) p.appui.push_back(appuie(p));
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
}

double rang(std::vector<double> v, double part) {
    if (v.empty()) return 0;
    std::sort(v.begin(), v.end());
    return v[std::min(v.size() - 1, static_cast<std::size_t>(static_cast<double>(v.size()) * part))];
}

std::vector<Programme> lis_programmes(int nombre, char** mots) {
    std::vector<Programme> programmes;
    for (int i = 3; i + 4 < nombre; ++i) {
        Programme p;
        p.nom = mots[i];
        p.x = std::atoi(mots[i + 1]);
        p.y = std::atoi(mots[i + 2]);
        p.couleur = static_cast<std::uint32_t>(std::strtoul(mots[i + 3], nullptr, 16));
        for (i += 4; i < nombre && std::string_view(mots[i]) != "--"; ++i) p.mots.push_back(mots[i]);
        p.mots.push_back(nullptr);
        programmes.push_back(std::move(p));
    }
    return programmes;
}

}  // namespace

int main(int nombre, char** mots) {
    auto programmes = lis_programmes(nombre, mots);
    connexion = xcb_connect(nullptr, nullptr);
    if (programmes.empty() || xcb_connection_has_error(connexion) != 0) return EXIT_FAILURE;
    const xcb_screen_t* ecran = xcb_setup_roots_iterator(xcb_get_setup(connexion)).data;
    racine = ecran->root;
    hauteur_de_l_ecran = ecran->height_in_pixels;
    const int tours = std::atoi(mots[1]), appuis = std::atoi(mots[2]);
    for (int t = 0; t < tours; ++t) {
        // As many presses in every round, one more in the first ones where they do not come out even.
        for (Programme& p : programmes) mesure(p, appuis / tours + (t < appuis % tours ? 1 : 0));
    }
    for (const Programme& p : programmes) {
        std::printf("%s %.3f %.0f %.0f %.0f %.0f\n", p.nom.c_str(), rang(p.depart, 0.5), rang(p.residente, 0.5),
                    rang(p.proportionnelle, 0.5), rang(p.appui, 0.5), rang(p.appui, 0.95));
    }
}
