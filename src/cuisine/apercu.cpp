#include "cuisine/apercu.h"

#include "data/commande.h"
#include "platform/peinture/peintre.h"
#include "platform/peinture/polices.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/texte.h"

// The font that the build embeds for tickets: all its characters are equally wide.
extern "C" {
extern const unsigned char police_fixe_debut[];
}

namespace apercu {
namespace {

using ecran::Couleur;
using ecran::Image;
using ecran::Police;
using ecran::Zone;

constexpr int taille = 20, interligne = 25, marge = 28, marge_haute = 22, bord = 12;
constexpr Couleur table = 0xD9D2C6, papier_blanc = 0xFFFFFF, encre = 0x1F1F1F, ombre = 0xB9B0A0;

int largeur_caractere() {
    return static_cast<int>(ecran::avance(Police::fixe, taille, 'M') + 0.5F);
}

Image vierge(int largeur, int hauteur, Couleur couleur) {
    const auto n = static_cast<std::size_t>(largeur) * static_cast<std::size_t>(hauteur);
    return {largeur, hauteur, std::pmr::vector<std::uint32_t>(n, static_cast<std::uint32_t>(couleur))};
}

/// The characters, each in its column.
void ecrit(Image& image, const std::string& t, int em, int x, int y, int pas) {
    ecran::Toile toile(image, {0, 0, image.largeur, image.hauteur});
    const auto base = static_cast<float>(y) + ecran::metrique(Police::fixe, em).ascendante;
    for (std::size_t i = 0; i < t.size(); ++i) {
        const int gauche = x + static_cast<int>(i) * pas;
        toile.texte(Police::fixe, em, std::string_view(t).substr(i, 1), static_cast<float>(gauche), base, encre);
    }
}

std::uint32_t melange(std::uint32_t a, std::uint32_t b) {
    std::uint32_t r = 0;
    for (const int d : {0, 8, 16}) r |= (((a >> d & 0xFF) + (b >> d & 0xFF)) / 2) << d;
    return r;
}

/// A line of double height: drawn twice as large, then pressed to its width.
void ecrit_haut(Image& image, const std::string& t, int x, int y) {
    const int pas = largeur_caractere();
    const int largeur = pas * static_cast<int>(t.size()), hauteur = 2 * interligne;
    if (largeur == 0) return;
    Image grande = vierge(2 * largeur, hauteur, papier_blanc);
    ecrit(grande, t, 2 * taille, 0, 0, 2 * pas);
    for (int l = 0; l < hauteur; ++l) {
        const auto de = static_cast<std::size_t>(l) * static_cast<std::size_t>(grande.largeur);
        const auto vers = static_cast<std::size_t>(y + l) * static_cast<std::size_t>(image.largeur);
        for (int c = 0; c < largeur; ++c) {
            const auto k = de + static_cast<std::size_t>(2 * c);
            image.pixels[vers + static_cast<std::size_t>(x + c)] = melange(grande.pixels[k], grande.pixels[k + 1]);
        }
    }
}

int hauteur_de(const ticket::Ligne& l) {
    return l.style == ticket::Style::haut ? 2 * interligne : interligne;
}

ticket::Ticket premier_ticket(const commande::Commande& c, std::string_view nom, const articles::Articles& catalogue,
                              const service::Reglages& r) {
    constexpr int numero = 47;  // as good as any
    const auto date = horloge::depuis_nom(nom);
    ticket::Entete entete{numero, false, date.value_or(horloge::maintenant()), ""};
    const auto parties = partage::parties(c, catalogue, r.partage);
    std::vector<const commande::Article*> lignes;
    for (const int n : parties.front().lignes) lignes.push_back(&c.articles[static_cast<std::size_t>(n)]);
    for (std::size_t k = 1; k < parties.size(); ++k) {
        imprimante::Adresse a;
        imprimante::lis_adresse(parties[k].adresse, a);
        entete.ailleurs += (k > 1 ? ", " : "") + a.nom();
    }
    return ticket::compose(c, lignes, catalogue, entete, r.papier);
}

}  // namespace

Image image(const ticket::Ticket& ticket, int colonnes) {
    ecran::apporte_police_fixe(police_fixe_debut);
    int hauteur = 2 * marge_haute;
    for (const ticket::Ligne& l : ticket) hauteur += hauteur_de(l);
    const int largeur = colonnes * largeur_caractere() + 2 * marge;
    Image r = vierge(largeur + 2 * bord, hauteur + 2 * bord, table);
    ecran::Toile toile(r, {0, 0, r.largeur, r.hauteur});
    const Zone papier{bord, bord, bord + largeur, bord + hauteur};
    toile.remplit({papier.gauche + 3, papier.haut + 4, papier.droite + 3, papier.bas + 4}, ombre);
    toile.remplit(papier, papier_blanc);
    int y = papier.haut + marge_haute;
    for (const ticket::Ligne& l : ticket) {
        const int x = papier.gauche + marge;
        if (l.style == ticket::Style::haut)
            ecrit_haut(r, l.texte, x, y);
        else
            ecrit(r, l.texte, taille, x, y, largeur_caractere());
        // What a printer does for bold.
        if (l.style == ticket::Style::gras) ecrit(r, l.texte, taille, x + 1, y, largeur_caractere());
        y += hauteur_de(l);
    }
    return r;
}

bool dessine(const std::string& fichier, const std::string& png, const service::Reglages& r, std::string& faute) {
    constexpr std::uint64_t longueur_max = 1 << 20;
    std::string contenu;
    commande::Commande c;
    const auto lue = fichiers::lis_tout(fichier, contenu, longueur_max);
    faute = fichiers::raison(lue);
    if (lue != fichiers::Issue::fait || commande::lis(contenu, c, faute) != commande::Lecture::entiere) {
        faute = fichier + " : " + faute;
        return false;
    }
    const auto nom = fichier.find_last_of("/\\") + 1;  // npos + 1 is 0
    const std::string ici = nom == 0 ? "." : fichier.substr(0, nom);
    const articles::Articles catalogue(articles::lis_tables(r.reseau.empty() ? ici : r.reseau));
    const Image i = image(premier_ticket(c, std::string_view(fichier).substr(nom), catalogue, r), r.papier.colonnes);
    const auto octets = ecran::en_png(i, {0, 0, i.largeur, i.hauteur});
    const std::string_view texte_png(reinterpret_cast<const char*>(octets.data()), octets.size());
    const auto ecrite = fichiers::ecrit_tout(png, texte_png, fichiers::Remplace::oui);
    faute = png + " : " + std::string(fichiers::raison(ecrite));
    return ecrite == fichiers::Issue::fait;
}

}  // namespace apercu
