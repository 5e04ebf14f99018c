#include "platform/ecran/images_x11.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

namespace ecran {
namespace {

/// Pixels sent in one request: with its head it stays below the 65,535 words that any server takes.
constexpr int pixels_par_envoi = 60000;

}  // namespace

ImagesX11::ImagesX11(const ServeurX11& serveur) : serveur_(serveur) {
    partage_ = serveur.connait(xcb_shm_id);
    if (!partage_) return;
    const xcb_query_extension_reply_t& r = *xcb_get_extension_data(serveur.connexion(), &xcb_shm_id);
    requete_ = r.major_opcode;
    evenement_ = r.first_event + XCB_SHM_COMPLETION;
}

/// The server takes the memory by its descriptor, which reaches into a container as well and leaves nothing behind.
/// Null where the system or the server refuses: an old one, or one on another machine, which no descriptor reaches.
void* ImagesX11::partage(std::size_t taille) {
    xcb_connection_t* c = serveur_.connexion();
    const int fichier = memfd_create("orvalune", MFD_CLOEXEC);
    if (fichier < 0) return nullptr;
    void* debut = MAP_FAILED;
    if (ftruncate(fichier, static_cast<off_t>(taille)) == 0) {
        debut = mmap(nullptr, taille, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_POPULATE, fichier, 0);
    }
    if (debut == MAP_FAILED) {
        close(fichier);
        return nullptr;
    }
    const xcb_shm_seg_t numero = xcb_generate_id(c);
    xcb_generic_error_t* refus = xcb_request_check(c, xcb_shm_attach_fd_checked(c, numero, fichier, 1));  // closes it
    if (refus != nullptr) {
        std::free(refus);
        munmap(debut, taille);
        return nullptr;
    }
    partages_.push_back({debut, taille, numero});
    return debut;
}

void* ImagesX11::do_allocate(std::size_t taille, std::size_t alignement) {
    if (partage_) {
        if (void* debut = partage(taille)) return debut;
        partage_ = false;
    }
    return std::pmr::new_delete_resource()->allocate(taille, alignement);
}

void ImagesX11::do_deallocate(void* debut, std::size_t taille, std::size_t alignement) {
    const auto p = std::find_if(partages_.begin(), partages_.end(), [&](const Partage& x) { return x.debut == debut; });
    if (p == partages_.end()) return std::pmr::new_delete_resource()->deallocate(debut, taille, alignement);
    xcb_shm_detach(serveur_.connexion(), p->numero);
    munmap(p->debut, p->taille);
    partages_.erase(p);
}

void ImagesX11::montre(xcb_window_t fenetre, xcb_gcontext_t contexte, const Image& image, const Zone& z) {
    const auto p = std::find_if(partages_.begin(), partages_.end(),
                                [&](const Partage& x) { return x.debut == image.pixels.data(); });
    if (p == partages_.end()) return envoie(fenetre, contexte, image, z);
    const auto court = [](int n) { return static_cast<std::int16_t>(n); };
    const auto large = [](int n) { return static_cast<std::uint16_t>(n); };
    xcb_shm_put_image(serveur_.connexion(), fenetre, contexte, large(image.largeur), large(image.hauteur),
                      large(z.gauche), large(z.haut), large(z.droite - z.gauche), large(z.bas - z.haut),
                      court(z.gauche), court(z.haut), serveur_.couleurs().profondeur, XCB_IMAGE_FORMAT_Z_PIXMAP, 1,
                      p->numero, 0);
    ++en_lecture_;
}

void ImagesX11::envoie(xcb_window_t fenetre, xcb_gcontext_t contexte, const Image& image, const Zone& z) {
    const int largeur = z.droite - z.gauche;
    const int rangs = std::max(1, pixels_par_envoi / largeur);
    for (int haut = z.haut; haut < z.bas; haut += rangs) {
        const int bas = std::min(haut + rangs, z.bas);
        envoi_.clear();
        for (int y = haut; y < bas; ++y) {
            const auto* debut = image.pixels.data() + static_cast<std::size_t>(y) * image.largeur + z.gauche;
            envoi_.insert(envoi_.end(), debut, debut + largeur);
        }
        xcb_put_image(serveur_.connexion(), XCB_IMAGE_FORMAT_Z_PIXMAP, fenetre, contexte,
                      static_cast<std::uint16_t>(largeur), static_cast<std::uint16_t>(bas - haut),
                      static_cast<std::int16_t>(z.gauche), static_cast<std::int16_t>(haut), 0,
                      serveur_.couleurs().profondeur, static_cast<std::uint32_t>(envoi_.size() * 4),
                      reinterpret_cast<const std::uint8_t*>(envoi_.data()));
    }
}

void ImagesX11::regarde(const xcb_generic_event_t& e) {
    if (en_lecture_ == 0) return;
    const bool lue = (e.response_type & 0x7F) == evenement_;
    const auto& faute = reinterpret_cast<const xcb_generic_error_t&>(e);
    const bool refusee = e.response_type == 0 && faute.major_code == requete_ && faute.minor_code == XCB_SHM_PUT_IMAGE;
    if (lue || refusee) --en_lecture_;
}

}  // namespace ecran
