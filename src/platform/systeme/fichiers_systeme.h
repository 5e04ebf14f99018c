// The few file operations that each system does in its own way; fichiers.cpp builds the rest upon them.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/systeme/fichiers.h"

namespace fichiers::systeme {

/// An open file. Closing is checked through ferme(); the destructor closes what is still open.
class Fichier {
  public:
    enum class Ouverture {
        lecture,          ///< existing plain files only; never waits
        creation,         ///< a new file for writing; fails when the name exists
        lecture_ecriture  ///< opened, or created when missing, for both
    };
    /// Null on failure, with the reason in `issue`.
    static std::unique_ptr<Fichier> ouvre(std::string_view chemin, Ouverture mode, Issue& issue);
    virtual ~Fichier() = default;
    /// Bytes, or longueur_inconnue.
    virtual std::uint64_t longueur() = 0;
    /// Reads up to `nombre` bytes at `place`; the count read, or -1.
    virtual std::int64_t lis(std::uint64_t place, char* vers, std::size_t nombre) = 0;
    /// Writes all bytes at `place`.
    virtual Issue ecrit(std::uint64_t place, std::string_view contenu) = 0;
    virtual Issue tronque(std::uint64_t longueur) = 0;
    /// Puts what was written on the medium.
    virtual Issue vide_tampon() = 0;
    virtual Issue ferme() = 0;
};

enum class Nature { absente, fichier, repertoire, autre };
/// `volume`, where it is asked for: the file system that holds it; 0 where none can be told from another.
Nature nature(std::string_view chemin, std::uint64_t& longueur, std::uint64_t* volume = nullptr);
std::optional<std::int64_t> modifie_le(std::string_view chemin);
/// Names of all entries of a directory that are plain files, in any order. Anything but Issue::fait: not all of them.
Issue entrees(std::string_view repertoire, std::vector<std::string>& noms);
/// Renames without ever replacing.
Issue renomme_sans_remplacer(std::string_view de, std::string_view vers);
Issue renomme_en_remplacant(std::string_view de, std::string_view vers);
/// Puts a directory's names on the medium, where the system can; failures are of no account.
void vide_tampon_repertoire(std::string_view repertoire);
Issue supprime(std::string_view chemin);
Issue cree_repertoire(std::string_view chemin);
/// An empty one.
Issue supprime_repertoire(std::string_view chemin);
/// Where temporary files go, absolute.
std::string repertoire_temporaire();
bool entre_dans(std::string_view chemin);
std::string repertoire_courant();
std::string absolu(std::string_view chemin);
/// A number that no other process has at the same time.
unsigned long identite();

}  // namespace fichiers::systeme
