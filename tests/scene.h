// A screen opened in this process as its caller opens it, with the small restaurant around it, and touched as a finger
// would.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "atelier.h"
#include "platform/ecran/boucle.h"
#include "rejeux.h"

namespace tests {

/// A scenario in short, its steps on lines or between " > ": a control or cell to touch ("g1 2 0", "btc(5)", "Label6"),
/// a caption ("Valider"), the text that one shows ("g1 2 0 = Sans sel"), what is hidden or shown ("sans btc(5)", "avec
/// Text1"), or any command ("attend 100", "tape Sans sel"). Lines behind "# " are for the reader.
std::string route(std::string_view etapes);

/// What a screen is given, what is done on it, and what it gives back.
struct Cas {
    std::string avant, etapes, apres;
};

class Scene : public Atelier {
  protected:
    using Ouvre = std::function<void()>;

    /// A screen of 1280 x 800 with forms of 1280 x 770, store, key program and catalogue open; the clock stands still.
    Scene();
    ~Scene() override;
    /// Another screen, whose forms leave 30 pixels below.
    void ecran_de(int largeur, int hauteur);

    /// Plays a route on the screen that `ouvre` opens, until it closes with the last step. All its checks must hold.
    void joue(const Ouvre& ouvre, std::string_view etapes) const { joue_jusque(Fin::ferme, ouvre, etapes); }
    /// As above, but the last step ends the program.
    void arrete(const Ouvre& ouvre, std::string_view etapes) const { joue_jusque(Fin::arret, ouvre, etapes); }
    /// Shows the screen to `regard`, and closes it.
    void regarde(const Ouvre& ouvre, const std::function<void(ecran::Forme&)>& regard) const;

    /// Cases of a screen that reads and writes a text of the shared state.
    void tiennent(std::string& texte, const Ouvre& ouvre, const std::vector<Cas>& cas) const;
    /// Of one that reads and writes a record of the settings store.
    void reglent(int record, const Ouvre& ouvre, const std::vector<Cas>& cas) const;
    /// Of one that is asked by a call; its answer is "-" when it was abandoned.
    void donnent(const std::function<std::optional<std::string>(const std::string&)>& demande,
                 const std::vector<Cas>& cas) const;

    std::string reglage(int record) const;

  private:
    enum class Fin { ferme, arret, inacheve };
    int largeur_ = 0, hauteur_ = 0;
    Fin fin_de(const Ouvre& ouvre, ecran::Pilote& pilote) const;
    void joue_jusque(Fin fin, const Ouvre& ouvre, std::string_view etapes) const;
};

}  // namespace tests
