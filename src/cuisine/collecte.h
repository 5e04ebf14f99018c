// The road of an order file: out of the network directory, through "en_cours" of the archive, into the folder of its
// day. An order is in one of these places at any moment, wherever the program is cut off:
//
//   1. it is renamed into "en_cours": of two kitchens one succeeds. Where the archive lies on another medium it is
//   renamed
//      in the network directory first, to a name that tells whose it is, then copied, and deleted there;
//   2. it is printed (fiche.h tells how far that has come);
//   3. it is renamed into the folder of its day, and its fiche goes.
//
// A file that is no order takes the same road, into "rejets".
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "cuisine/archive.h"
#include "data/commande.h"
#include "platform/systeme/fichiers.h"
#include "platform/systeme/horloge.h"

namespace collecte {

/// A file that has been taken, and is to be printed.
struct Prise {
    std::string nom;
    horloge::DateHeure date;  ///< in its name, else the file's
    commande::Commande commande;
    std::string faute;  ///< why it is no order; empty for an order
    bool deja = false;  ///< the archive has a file of that name and content already
};

/// By date, then by name.
bool avant(const Prise& a, const Prise& b);

/// What a look gave.
struct Regard {
    bool joignable = false;                           ///< the network directory could be listed
    bool a_suivre = false;                            ///< something may be ready in a moment
    std::vector<Prise> prises;                        ///< new ones, by date
    std::vector<std::string> dits;                    ///< what the kitchen should know, French
    int retenues = 0;                                 ///< taken, and not read or not brought into the archive yet
    int laissees = 0;                                 ///< that cannot be read or taken
    fichiers::Issue archive = fichiers::Issue::fait;  ///< why the archive has refused one of them
};

class Collecte {
  public:
    /// `patience_ms`: how long another kitchen may take to bring over what it has taken, before that is told.
    Collecte(std::string reseau, archive::Archive archive, std::int64_t patience_ms);

    /// Takes the orders that are whole. The first look also gives those that were taken before, and not archived.
    Regard regarde();
    /// Where the fiche of a taken file stands.
    std::string fiche(const Prise& prise) const;
    /// Puts away what has been printed. On failure it stays in progress, to be put away later.
    fichiers::Issue range(const Prise& prise);

  private:
    /// A file of the network directory as it was seen last.
    struct Vue {
        std::uint64_t longueur = 0;
        std::int64_t date = 0;
        std::int64_t depuis = 0;  ///< it has not changed since, horloge::millisecondes()
        bool lue = false;
        commande::Lecture lecture = commande::Lecture::inachevee;
        bool dite = false;  ///< what keeps it there has been told
    };

    /// What has been taken for another archive.
    struct Etrangere {
        std::int64_t depuis = 0;  ///< it is seen, horloge::millisecondes()
        bool dite = false;
    };

    std::string reseau_;
    std::int64_t patience_ms_;
    archive::Archive archive_;
    std::string en_cours_, fin_prise_;
    std::map<std::string, Vue, std::less<>> vues_;
    std::map<std::string, Etrangere, std::less<>> etrangeres_;
    std::set<std::string, std::less<>> connues_;     ///< those in progress that a look has given
    std::set<std::string, std::less<>> illisibles_;  ///< those in progress of which that has been told
    bool a_relire_ = true;                           ///< "en_cours" may hold others

    void suit(const std::vector<std::string>& noms);
    bool est_prete(const std::string& nom, Vue& vue, Regard& regard);
    bool prend(const std::string& nom, Vue& vue, Regard& regard);
    bool est_occupee(const std::string& nom) const;
    void rapatrie(const std::vector<std::string>& noms, Regard& regard);
    void dit_les_etrangeres(const std::vector<std::string>& noms, Regard& regard);
    void rapatrie_une(const std::string& nom, const std::string& prise, Regard& regard);
    bool nomme_la_copie(const std::string& nom) const;
    void lis_en_cours(Regard& regard);
    fichiers::Issue lis_prise(const std::string& nom, Prise& prise) const;
    bool est_rangee(const Prise& prise, const std::string& contenu) const;
    std::string dossier(const Prise& prise) const;
    fichiers::Issue deplace(const Prise& prise, const std::string& dossier);
};

}  // namespace collecte
