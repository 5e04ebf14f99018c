// The event loop: a stack of modal forms, their timers, one finger. A screen calls montre_modal() and gets control back
// when its form has closed; meanwhile the loop runs the handlers.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>

#include "platform/controles/controles.h"
#include "platform/ecran/fenetre.h"

namespace ecran {

/// Ends the program at once from any depth: thrown by termine(), caught by main alone. Files close on the way.
struct FinDuProgramme {
    enum class Cause {
        arret,    ///< the program ended by itself
        coupure,  ///< the replay cut it, as a power cut would: nothing more is written
        panne,    ///< it has lost its screen
    };
    Cause cause = Cause::arret;
};
[[noreturn]] void termine();

/// Where the loop gets its events when it is not the window: a replay.
class Pilote {
  public:
    virtual ~Pilote() = default;
    /// The next event, called when everything before it has been handled and painted.
    virtual Evenement prochain() = 0;
};

/// Connects the loop to a window; `pilote` may be null.
void ouvre_ecran(std::unique_ptr<Fenetre> fenetre, Pilote* pilote);
void ferme_ecran();
/// The screen's size in twips at its own density. A bottom form that is larger is painted smaller, with all that lies
/// on it.
int largeur_ecran();
int hauteur_ecran();
/// What it shows of the forms, in their twips.
Cadre vue();
/// In a replay: the screen has another size from now on (pixels), as when a tablet is turned. False with a real window.
bool tourne_ecran(int largeur, int hauteur);

/// Puts the form on top and runs the loop until it closes. The form stays loaded meanwhile.
void montre_modal(Forme& forme);
/// Puts the form on the stack without running the loop: the main screen, before its first question.
void charge(Forme& forme);
/// Shows the pending changes now and lets nothing else happen (before a wait).
void peint_maintenant();
/// The loaded forms from bottom to top.
std::span<Forme* const> formes_chargees();
Forme* forme_du_dessus();
Forme* forme_chargee(std::string_view nom);

/// Called when the machine woke up.
void au_reveil(std::function<void()> action);
/// Called when the screen has changed its size or density, once the bottom form alone is loaded.
void au_changement_d_ecran(std::function<void()> action);
/// Called when the system asks the program to end; without it the loop ends it.
void a_la_fermeture(std::function<void()> action);
/// Called when the system may stop at any moment, whatever is shown; nothing must be asked.
void a_l_extinction(std::function<void()> action);

/// The image as painted now, brought up to date first.
const Image& image_courante();
/// Pixels of that image per 15 twips.
double echelle_courante();

/// Fires the timers due at `jusqua` (horloge::millisecondes()) one at a time; true when one fired.
bool tire_minuterie(std::int64_t jusqua);
/// When the next timer, held finger or network answer is due; -1: none.
std::int64_t prochaine_echeance();

}  // namespace ecran
