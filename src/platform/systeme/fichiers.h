// Files of the working directory and of the network directory. Paths are texts of the page 1252, with "/" or "\" as
// separator on every system; a relative path starts at the working directory, which is the process's current one.
// No call throws: a failure is a value, which the caller handles or visibly ignores.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fichiers {

enum class Issue {
    fait,
    absent,     ///< no such file or directory
    existe,     ///< the target exists already, and was not touched
    refuse,     ///< access denied, a directory in place of a file, a read-only medium
    occupe,     ///< another program holds the file (a sharing violation): try again later
    plein,      ///< no space left, quota, file size limit
    trop_long,  ///< the file is longer than the bound that the caller gave
    panne,      ///< anything else: medium or network failure
};

/// Why an operation failed, in French, for people (page 1252).
std::string_view raison(Issue issue);

/// Joins a directory and a name; a separator comes between only when the directory does not end with "\" or "/".
std::string joint(std::string_view repertoire, std::string_view nom);

bool existe(std::string_view chemin);
bool est_repertoire(std::string_view chemin);
/// Whether another program keeps this program from reading and writing the file at the moment (Issue::occupe).
bool est_tenu(std::string_view chemin);
/// Length in bytes; nothing when there is no such file.
std::optional<std::uint64_t> longueur(std::string_view chemin);
/// A plain file as it is found at a path.
struct Trouve {
    std::uint64_t longueur = 0;  ///< bytes
    bool monte = false;          ///< a share, or another file system, is mounted in the place of its directory
};
std::optional<Trouve> trouve(std::string_view chemin);
/// When a file was last written, in seconds since 1970 (UTC); nothing when there is no such file.
std::optional<std::int64_t> modifie_le(std::string_view chemin);
/// Length and time of the last change, as a text that tells a file from a later one of its name; empty without file.
std::string empreinte(std::string_view chemin);
/// Names (without the directory) of the plain files of a directory that match, in name order.
/// `motif` has at most one "*"; letter case of A to Z is ignored. Empty when the directory cannot be read.
std::vector<std::string> liste(std::string_view repertoire, std::string_view motif);
/// Names of the plain files of a directory, in no order; nothing when it cannot be read whole.
std::optional<std::vector<std::string>> entrees(std::string_view repertoire);
/// Whether a name matches such a pattern.
bool correspond(std::string_view nom, std::string_view motif);

/// Reads a whole file of at most `borne` bytes into `contenu` (untouched on failure).
Issue lis_tout(std::string_view chemin, std::string& contenu, std::uint64_t borne = 256u << 20);
/// Reads the first bytes of a file, `nombre` or as many as it has.
Issue lis_debut(std::string_view chemin, std::size_t nombre, std::string& contenu);

/// Whether a file may take the place of an existing one.
enum class Remplace { jamais, oui };
/// Writes a new file whole: temporary name created exclusively beside it, flush, checked close, rename, directory
/// flush. `jamais`: not over an existing file (Issue::existe). On any failure the temporary file is removed and an
/// older file of that name stands as it was.
Issue ecrit_tout(std::string_view chemin, std::string_view contenu, Remplace remplace);

/// Replaces a file that can be made anew by one written beside it. The system puts it on the medium when it likes: a
/// power cut may leave the older file, or none.
Issue remplace_sans_attendre(std::string_view chemin, std::string_view contenu);
/// Creates a file of just that name, fills it and puts it on the medium. Issue::existe: there is one already. Where it
/// fails on the way nothing stays behind.
Issue cree(std::string_view chemin, std::string_view contenu);
/// Appends to a file, which is made when it is missing. Not flushed.
Issue ajoute(std::string_view chemin, std::string_view contenu);

/// Renames without ever replacing (Issue::existe).
Issue renomme(std::string_view de, std::string_view vers);
/// Renames over an older file of that name, if any.
Issue renomme_en_remplacant(std::string_view de, std::string_view vers);
/// Deletes a file for good: it does not come back after a power cut.
Issue supprime(std::string_view chemin);
/// Deletes a file whose coming back after a power cut does no harm.
Issue supprime_sans_attendre(std::string_view chemin);
Issue cree_repertoire(std::string_view chemin);
/// A new empty directory where the system keeps what is soon thrown away; nothing when none can be made.
std::optional<std::string> cree_repertoire_temporaire(std::string_view debut_du_nom);
/// Deletes the plain files of a directory, then the directory itself, which may have had no others.
Issue supprime_repertoire(std::string_view chemin);

/// Temporary files of ecrit_tout() that a power cut left behind in a directory are removed.
void retire_temporaires(std::string_view repertoire);

/// Where the technician's dumps go: a fixed place on Windows, else in the working directory.
#ifdef _WIN32
inline constexpr std::string_view repertoire_maintenance = "C:\\Orvalune";
#else
inline constexpr std::string_view repertoire_maintenance = "maintenance";
#endif

/// The end of the name of every temporary file: it matches neither "*.txt" nor "*.-a-".
inline constexpr std::string_view suffixe_temporaire = ".tmp_";

/// The length of a file that the system does not tell: more than any, so that nobody takes the file for an empty one.
inline constexpr std::uint64_t longueur_inconnue = UINT64_MAX;

/// A file of fixed-length records, kept open for reading and writing. Record numbers start at 1.
class FichierRecords {
  public:
    /// Opens or creates; what may only be read is opened for reading, and a write to it fails. Nothing when none of
    /// these is possible (a directory, no right at all). `ecriture` tells whether it can be written, or why not.
    /// `fin_de_record` is what each record ends with that nobody has written yet; the rest of it is blanks.
    static std::unique_ptr<FichierRecords> ouvre(std::string_view chemin, std::size_t longueur_record, Issue& ecriture,
                                                 std::string_view fin_de_record = "");
    static std::unique_ptr<FichierRecords> ouvre(std::string_view chemin, std::size_t longueur_record);
    virtual ~FichierRecords() = default;
    virtual std::uint64_t longueur() const = 0;
    /// The record's bytes; what lies behind the end of the file is missing, so the text may be shorter or empty.
    /// Nothing when the medium does not give them.
    std::optional<std::string> lis(std::size_t numero) { return lis_suite(numero, 1); }
    /// As above, of so many records in a row, at one stroke.
    virtual std::optional<std::string> lis_suite(std::size_t numero, std::size_t nombre) = 0;
    /// Writes one record whole (cut or padded with blanks) and flushes it to the medium.
    /// A gap behind the old end is filled with unwritten records, never with zero bytes.
    virtual Issue ecrit(std::size_t numero, std::string_view contenu) = 0;
    /// Writes the file from its start in one stroke and flushes it.
    virtual Issue ecrit_depuis_le_debut(std::string_view contenu) = 0;
};

/// Makes `chemin` the working directory of the process. False when it is none or cannot be entered.
bool entre_dans(std::string_view chemin);
/// The working directory, absolute.
std::string repertoire_courant();
/// The path made absolute from the present working directory.
std::string absolu(std::string_view chemin);

}  // namespace fichiers
