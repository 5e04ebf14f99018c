// The image on its way to the screen. Where the server shares memory with the program, the painter paints right into
// what the server reads; otherwise the pixels are sent.
#pragma once

#include <xcb/xcb.h>
// After it: it stands on the one before.
#include <xcb/shm.h>

#include <cstdint>
#include <memory_resource>
#include <vector>

#include "platform/ecran/serveur_x11.h"
#include "platform/peinture/toile.h"

namespace ecran {

/// As a source of memory it shares each image with the server, or gives the ordinary one where that is not possible.
class ImagesX11 final : public std::pmr::memory_resource {
  public:
    explicit ImagesX11(const ServeurX11& serveur);
    ImagesX11(const ImagesX11&) = delete;
    ImagesX11& operator=(const ImagesX11&) = delete;

    /// Brings a zone of the image, within it, to the same place in the window. Not while the server reads an image.
    void montre(xcb_window_t fenetre, xcb_gcontext_t contexte, const Image& image, const Zone& z);
    /// The zones shown until now are read before anything else: from now on, and until regarde() hears of it, the
    /// server reads the image.
    bool en_lecture() const { return en_lecture_ > 0; }
    /// Hears of the end of a reading, or that there will be none.
    void regarde(const xcb_generic_event_t& e);
    /// The server has gone: it reads nothing any more.
    void abandonne() { en_lecture_ = 0; }

  private:
    struct Partage {
        void* debut;
        std::size_t taille;
        xcb_shm_seg_t numero;
    };

    const ServeurX11& serveur_;
    bool partage_ = false;                      ///< the server takes shared memory
    std::uint8_t requete_ = 0, evenement_ = 0;  ///< the extension's number, and that of the end of a reading
    int en_lecture_ = 0;                        ///< ends that are still to come
    std::vector<Partage> partages_;
    std::vector<std::uint32_t> envoi_;

    void* do_allocate(std::size_t taille, std::size_t alignement) override;
    void do_deallocate(void* debut, std::size_t taille, std::size_t alignement) override;
    bool do_is_equal(const std::pmr::memory_resource& autre) const noexcept override { return this == &autre; }

    void* partage(std::size_t taille);
    void envoie(xcb_window_t fenetre, xcb_gcontext_t contexte, const Image& image, const Zone& z);
};

}  // namespace ecran
