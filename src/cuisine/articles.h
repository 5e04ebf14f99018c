// What a ticket takes from the catalogue: labels by reference, families in their order, servers' names.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "data/catalogue.h"

namespace articles {

/// The family of what the catalogue does not know: behind all others.
inline constexpr int sans_famille = -1;

struct Article {
    std::string_view libelle;
    int famille = sans_famille;
};

struct Famille {
    int numero = sans_famille;
    std::string nom;
    int dans = sans_famille;  ///< of a sub-group: the family that opens it
};

/// The catalogue of a directory; `lu` tells whether it could be read.
std::unique_ptr<catalogue::Tables> lis_tables(const std::string& repertoire);

class Articles {
  public:
    explicit Articles(std::unique_ptr<catalogue::Tables> tables);

    /// Null when the catalogue has no such reference.
    const Article* trouve(std::string_view reference) const;
    /// In the catalogue's order, each followed by its sub-groups; last what has no family.
    const std::vector<Famille>& familles() const { return familles_; }
    /// Empty when the catalogue does not name him.
    std::string_view serveur(int numero) const;

  private:
    std::unique_ptr<catalogue::Tables> tables_;  ///< the texts of the others point into it
    std::unordered_map<std::string_view, Article> par_reference_;
    std::vector<Famille> familles_;

    void ajoute_famille(int numero, std::string_view nom, int dans);
    void ajoute_articles(int famille);
};

/// The catalogue of a directory, read anew when its file has changed, and has then stood still for some seconds.
class Carte {
  public:
    explicit Carte(std::string repertoire) : repertoire_(std::move(repertoire)) {}
    /// Reads it when it has changed. False while the file is there, cannot be read, and never could be: one that waits
    /// a moment then prints labels, not references.
    bool relit();
    /// What was read last; it stays while the file cannot be read.
    const Articles& courante() const { return *articles_; }

  private:
    std::string repertoire_;
    std::unique_ptr<Articles> articles_;
    bool lue_ = false;
    int echecs_ = 0;
    std::string empreinte_;        ///< of the file that was read last
    std::string vue_;              ///< of the file that was seen last
    std::int64_t vue_depuis_ = 0;  ///< horloge::millisecondes()
};

}  // namespace articles
