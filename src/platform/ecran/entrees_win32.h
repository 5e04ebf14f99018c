// What the messages of a Windows window say of fingers, pens, mouse, keys and power, as events of the terminal. It
// holds no window, and so can be tried without one.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <vector>

#include "platform/ecran/entrees.h"

namespace ecran {

/// Reads the contacts of a WM_TOUCH message; empty when they cannot be read.
using LectureTouches = std::function<std::vector<TOUCHINPUT>(WPARAM, LPARAM)>;
std::vector<TOUCHINPUT> lis_touches(WPARAM nombre, LPARAM contacts);

/// What a contact is: PT_TOUCH, PT_PEN … Where the system cannot tell, a finger.
using SorteDeContact = std::function<DWORD(DWORD contact)>;
DWORD sorte_de_contact(DWORD contact);

/// The setting of which the system must tell the window that its screen went dark or was lit again.
extern const GUID etat_de_l_ecran;

class EntreesWin32 : public Entrees {
  public:
    explicit EntreesWin32(LectureTouches lecture = lis_touches, SorteDeContact sorte = sorte_de_contact)
        : lecture_(std::move(lecture)), sorte_de_(std::move(sorte)) {}

    /// Queues what the message says. The answer to the message, or nothing when the system must treat it as well.
    std::optional<LRESULT> decode(HWND fenetre, UINT message, WPARAM wp, LPARAM lp);

  private:
    /// Who has been seen to report fingers. The mouse messages that the system makes of them count only before that.
    enum class Source { souris, touches, pointeurs };

    LectureTouches lecture_;
    SorteDeContact sorte_de_;
    Source source_ = Source::souris;
    bool ecran_eteint_ = false;

    std::optional<LRESULT> decode_pointeur(HWND fenetre, UINT message, WPARAM wp, LPARAM lp);
    std::optional<LRESULT> decode_touches(HWND fenetre, WPARAM wp, LPARAM lp);
    std::optional<LRESULT> decode_souris(HWND fenetre, UINT message, WPARAM wp, LPARAM lp);
    std::optional<LRESULT> decode_clavier(UINT message, WPARAM wp, LPARAM lp);
    std::optional<LRESULT> decode_systeme(UINT message, WPARAM wp, LPARAM lp);
    bool est_souris_simulee() const;
    void decode_alimentation(WPARAM wp, LPARAM lp);
};

}  // namespace ecran
