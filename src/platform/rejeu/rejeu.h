// Plays a scenario: touches the screens as a finger would, moves the virtual clock, checks what is shown.
#pragma once

#include <deque>
#include <functional>
#include <span>
#include <sstream>
#include <string>
#include <vector>

#include "platform/ecran/boucle.h"
#include "platform/rejeu/scenario.h"

namespace rejeu {

/// Exit statuses of a replay.
enum Statut { tout_tient = 0, verification_fausse = 1, faute_usage = 2, fin_prematuree = 3 };

class Rejeu final : public ecran::Pilote {
  public:
    /// `fichier` is a path (page 1252), or "-" for standard input, where each command is answered on standard output.
    /// `captures` is the directory of the PNG files; `routeur` collects what the terminal has deposited.
    Rejeu(std::string fichier, std::string captures, std::function<void()> routeur = {});

    /// False when the scenario file cannot be read.
    bool lisible() const;

    ecran::Evenement prochain() override;

    /// After the program has ended by itself: the commands that may still follow.
    void apres_arret();
    /// The exit status: of several faults, the first of 2, 3, 1 counts.
    int statut() const;

  private:
    /// A step of a touch or wait: an event, or the passing of time.
    struct Geste {
        bool attente = false;
        std::int64_t ms = 0;
        ecran::Evenement evenement;
    };
    /// What a command yields: a text for `lit`, or a fault.
    struct Reponse {
        enum class Sorte { bien, faux, faute } sorte = Sorte::bien;
        std::string texte;
        bool a_lire = false;  ///< the text of `lit`, which may be empty
    };
    using Mots = std::vector<Mot>;
    struct Commande;
    static const Commande commandes[];
    static const Commande verifications[];

    std::string fichier_, captures_;
    std::function<void()> routeur_;
    bool collecte_ = false;  ///< the simulated router takes whatever is deposited
    std::istringstream flux_fichier_;
    bool lisible_ = true;
    std::istream* flux_;
    bool interactif_;
    int numero_ligne_ = 0;
    std::string ligne_;
    bool arrete_ = false, reponse_due_ = false;
    Reponse reponse_;
    std::deque<Geste> gestes_;
    bool vu_[4] = {};

    bool lis_ligne();
    bool continue_geste(ecran::Evenement& evenement);
    void repond();
    void signale(const Reponse& r);
    Reponse execute(const Mots& mots);
    static const Commande* trouve(std::span<const Commande> table, const Mots& mots, std::size_t mot, Reponse& faute);
    Reponse choisit(std::span<const Commande> table, const Mots& mots, std::size_t mot);
    static Reponse verifie_forme(const Mots& mots);
    bool permise_apres_arret(const Mots& mots) const;

    Reponse touche(const Mots& m);
    Reponse tient(const Mots& m);
    Reponse tape(const Mots& m);
    Reponse attend(const Mots& m);
    Reponse regle_heure(const Mots& m);
    Reponse regle_reseau(const Mots& m);
    Reponse verifie(const Mots& m);
    Reponse lit(const Mots& m);
    Reponse capture(const Mots& m);
    Reponse coupe(const Mots& m);
    Reponse tourne(const Mots& m);
    Reponse reveille(const Mots& m);
    Reponse regle_routeur(const Mots& m);

    Reponse verifie_ecran(const Mots& m);
    Reponse verifie_visible(const Mots& m);
    Reponse verifie_image(const Mots& m);
    Reponse verifie_couleur(const Mots& m);
    Reponse verifie_police(const Mots& m);
    Reponse verifie_lignes(const Mots& m);
    Reponse verifie_lance(const Mots& m);
    Reponse verifie_separateur(const Mots& m);
    Reponse verifie_arret(const Mots& m);
    Reponse verifie_texte(const Mots& m);

    void appuie(int x, int y, std::int64_t duree_ms);
    Reponse appuie_sur(const Mots& m, std::size_t fin, int ms);
    void pousse_attente(std::int64_t ms);
};

}  // namespace rejeu
