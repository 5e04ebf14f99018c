// Draws the icon of the program with its own painter: a file of four sizes for Windows, one picture for Linux.
// Usage: icone DIRECTORY
#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STBI_WRITE_NO_STDIO
#include <stb_image_write.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/peinture/toile.h"

namespace {

using Octets = std::vector<unsigned char>;

constexpr char32_t cloche = 0xEB49;  // a dish under its cover
constexpr int tailles[] = {16, 32, 48, 256};
constexpr int taille_linux = 256;

/// The picture upon a ground of one colour.
ecran::Image dessine(int taille, ecran::Couleur fond) {
    ecran::Image image{taille, taille, std::pmr::vector<std::uint32_t>(static_cast<std::size_t>(taille) * taille)};
    const ecran::Zone tout{0, 0, taille, taille};
    ecran::Toile toile(image, tout);
    toile.remplit(tout, fond);
    toile.arrondi(tout, taille * 7 / 32, ecran::tous_coins, ecran::palette::vert);
    toile.icone(cloche, taille * 13 / 16, taille / 2, taille / 2, ecran::palette::blanc);
    return image;
}

/// Red, green, blue and opacity of each pixel: what differs between a black and a white ground lets the ground through.
Octets pixels(int taille) {
    const ecran::Image sur_noir = dessine(taille, ecran::palette::noir),
                       sur_blanc = dessine(taille, ecran::palette::blanc);
    Octets r;
    for (std::size_t i = 0; i < sur_noir.pixels.size(); ++i) {
        const unsigned noir = sur_noir.pixels[i];
        const unsigned opacite = 255 - ((sur_blanc.pixels[i] >> 8 & 255) - (noir >> 8 & 255));
        for (const int decalage : {16, 8, 0}) {
            const unsigned c = noir >> decalage & 255;
            r.push_back(static_cast<unsigned char>(opacite == 0 ? 0 : std::min(255u, c * 255 / opacite)));
        }
        r.push_back(static_cast<unsigned char>(opacite));
    }
    return r;
}

Octets png(int taille) {
    Octets r;
    const auto recoit = [](void* vers, void* octets, int nombre) {
        const auto* debut = static_cast<const unsigned char*>(octets);
        static_cast<Octets*>(vers)->insert(static_cast<Octets*>(vers)->end(), debut, debut + nombre);
    };
    const Octets p = pixels(taille);
    return stbi_write_png_to_func(recoit, &r, taille, taille, 4, p.data(), taille * 4) != 0 ? r : Octets();
}

/// The lowest byte first.
void ajoute(Octets& vers, unsigned valeur, int octets) {
    for (int i = 0; i < octets; ++i) vers.push_back(static_cast<unsigned char>(valeur >> (8 * i)));
}

/// The picture as the icons of all systems take it: rows from the bottom, then the one-bit mask, left blank.
Octets bmp(int taille) {
    Octets r;
    const unsigned cote = static_cast<unsigned>(taille), masque = (cote + 31) / 32 * 4 * cote;
    ajoute(r, 40, 4);
    ajoute(r, cote, 4);
    ajoute(r, cote * 2, 4);
    ajoute(r, 1, 2);
    ajoute(r, 32, 2);
    ajoute(r, 0, 4);
    ajoute(r, cote * cote * 4 + masque, 4);
    for (int i = 0; i < 4; ++i) ajoute(r, 0, 4);
    const Octets p = pixels(taille);
    for (unsigned y = cote; y-- > 0;) {
        for (unsigned x = 0; x < cote; ++x) {
            const unsigned char* point = &p[(y * cote + x) * 4];
            for (const int couleur : {2, 1, 0, 3}) r.push_back(point[couleur]);
        }
    }
    r.resize(r.size() + masque);
    return r;
}

Octets ico() {
    Octets entete, suite;
    const unsigned nombre = std::size(tailles);
    ajoute(entete, 0, 2);
    ajoute(entete, 1, 2);
    ajoute(entete, nombre, 2);
    for (const int taille : tailles) {
        const Octets image = taille < 256 ? bmp(taille) : png(taille);
        const unsigned cote = static_cast<unsigned>(taille) % 256;  // 0 stands for 256
        ajoute(entete, cote, 1);
        ajoute(entete, cote, 1);
        ajoute(entete, 0, 2);
        ajoute(entete, 1, 2);
        ajoute(entete, 32, 2);
        ajoute(entete, static_cast<unsigned>(image.size()), 4);
        ajoute(entete, 6 + 16 * nombre + static_cast<unsigned>(suite.size()), 4);
        suite.insert(suite.end(), image.begin(), image.end());
    }
    entete.insert(entete.end(), suite.begin(), suite.end());
    return entete;
}

bool ecrit(const std::string& chemin, const Octets& octets) {
    std::ofstream f(chemin, std::ios::binary);
    f.write(reinterpret_cast<const char*>(octets.data()), static_cast<std::streamsize>(octets.size()));
    return !octets.empty() && f.flush().good();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "icone DIRECTORY\n";
        return 2;
    }
    const std::string repertoire = argv[1];
    return ecrit(repertoire + "/orvalune.ico", ico()) && ecrit(repertoire + "/orvalune.png", png(taille_linux)) ? 0 : 1;
}
