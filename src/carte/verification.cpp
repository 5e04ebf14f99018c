#include "carte/verification.h"

#include <algorithm>
#include <map>
#include <set>

#include "carte/cases.h"
#include "carte/verification_interne.h"
#include "data/catalogue.h"
#include "data/nombres.h"
#include "data/programme_touches.h"
#include "platform/systeme/texte.h"

namespace verification {
namespace {

using catalogue::Genre;
using catalogue::Ligne;
using catalogue::Sort;

bool que_des_chiffres(std::string_view t) {
    return !t.empty() && t.find_first_not_of("0123456789") == std::string_view::npos;
}

/// A number that is read whole, and shown with two decimals at most.
bool est_un_prix(std::string_view t) {
    if (t.starts_with('-') || t.starts_with('+')) t.remove_prefix(1);
    const auto point = std::min(t.find('.'), t.size());
    const auto decimales = t.substr(std::min(point + 1, t.size()));
    const auto chiffres = [](std::string_view s) { return s.find_first_not_of("0123456789") == s.npos; };
    return t.size() > 0 && chiffres(t.substr(0, point)) && chiffres(decimales) && decimales.size() <= 2;
}

/// What the catalogue's readers make of its lines, one after the other.
class Catalogue {
  public:
    explicit Catalogue(Pertes& pertes) : p_(pertes) {}

    void ligne(std::string_view brute, const Ligne& l, Sort sort) {
        p_.ligne(++numero_);
        if (l.genre == Genre::autre) return autre(brute);
        if (l.genre == Genre::article) return article(brute, l, sort);
        if (l.genre == Genre::couleurs_familles || l.genre == Genre::couleurs_serveurs) return couleurs(l, sort);
        numero(brute, l);
        if (l.genre == Genre::table) return table(l);
        if (sort == Sort::hors_bornes)
            return p_.dit("le numéro " + nombres::general(l.numero) + " est au-delà de 20 : la ligne est ignorée");
        if (sort == Sort::remplace)
            p_.dit("le numéro " + nombres::general(l.numero) + " est déjà plus haut : cette ligne prend sa place");
        if (texte::rogne(catalogue::sans_couleur(l.texte)).empty()) p_.dit("le nom manque : il n'y a pas de touche");
    }

    /// Once all lines are known: sub-groups that lead back to where they stand.
    void cercles() {
        for (const SousGroupe& s : sous_groupes_) {
            const std::string ouverte = "la famille " + std::to_string(s.ouvre);
            p_.ligne(s.ligne);
            if (s.ouvre == s.famille)
                p_.dit("le sous-groupe tourne en rond : il ouvre " + ouverte + ", où il est");
            else if (mene(s.ouvre, s.famille))
                p_.dit("le sous-groupe tourne en rond : " + ouverte + ", qu'il ouvre, ramène à la famille " +
                       std::to_string(s.famille) + ", où il est");
        }
    }

  private:
    Pertes& p_;
    std::size_t numero_ = 0;
    std::set<double> tables_;
    std::set<int> coupees_;  ///< families that a blank record ends
    std::map<std::string, std::size_t> references_;
    struct SousGroupe {
        std::size_t ligne;
        int famille, ouvre;
    };
    std::vector<SousGroupe> sous_groupes_;

    /// Whether sub-groups lead from one family to the other.
    bool mene(int de, int a) const {
        std::vector<int> vues = {de};
        for (std::size_t i = 0; i < vues.size(); ++i) {
            for (const SousGroupe& s : sous_groupes_) {
                if (s.famille == vues[i] && std::find(vues.begin(), vues.end(), s.ouvre) == vues.end())
                    vues.push_back(s.ouvre);
            }
        }
        return std::find(vues.begin(), vues.end(), a) != vues.end();
    }

    void autre(std::string_view brute) {
        if (!texte::rogne(brute).empty())
            p_.dit(entre_guillemets(brute.substr(0, 40)) + " n'est d'aucun genre connu : la ligne est ignorée");
    }

    /// The digits of servers, families and tables stand in columns of their own; what stands beside them is not read.
    void numero(std::string_view brute, const Ligne& l) {
        const std::size_t de = catalogue::colonne_numero, chiffres = catalogue::chiffres_du_numero(l.genre);
        const auto champ = texte::rogne(texte::colonnes(brute, de, chiffres));
        const auto suite = texte::colonnes(brute, de + chiffres, 1);
        if (champ.empty() && !que_des_chiffres(suite))
            return p_.dit("le numéro manque : il se lit " + nombres::general(l.numero));
        if (!que_des_chiffres(champ) || que_des_chiffres(suite))
            p_.dit("le numéro " + entre_guillemets(texte::colonnes(brute, de, chiffres + 1)) + " se lit " +
                   nombres::general(l.numero));
    }

    void table(const Ligne& l) {
        if (!tables_.insert(l.numero).second)
            p_.dit("la table " + nombres::general(l.numero) + " est déjà plus haut : elle paraît deux fois");
    }

    void couleurs(const Ligne& l, Sort sort) {
        if (sort == Sort::remplace) p_.dit("des couleurs sont déjà plus haut : cette ligne prend leur place");
        const auto t = texte::rogne(l.texte);
        if (t.size() > std::size_t{catalogue::serveurs_max} + 1)
            p_.dit("il y a plus de 21 chiffres : la suite n'est pas lue");
        const auto p = t.find_first_not_of("0123456789 ");
        if (p != std::string_view::npos) p_.dit("la couleur " + entre_guillemets(t.substr(p, 1)) + " se lit 0");
    }

    void article(std::string_view brute, const Ligne& l, Sort sort) {
        const int famille = static_cast<int>(std::clamp(l.numero, -1.0, 999.0));
        const std::string nom = "la famille " + std::to_string(famille);
        if (sort == Sort::hors_bornes) return p_.dit(nom + " n'est pas entre 0 et 120 : l'article est ignoré");
        if (sort == Sort::en_trop) return p_.dit(nom + " a déjà 300 articles : celui-ci est ignoré");
        if (!texte::contient(brute, lignes::champ_famille))
            p_.dit("sans |FA1: : l'article va dans la famille 0");
        else if (const auto champ = texte::rogne(apres(brute, lignes::champ_famille)); !que_des_chiffres(champ))
            p_.dit((champ.empty() ? "la famille manque : elle" : "la famille " + entre_guillemets(champ)) + " se lit " +
                   std::to_string(famille));
        if (coupees_.contains(famille)) return p_.dit("n'est pas montré : un article vide, plus haut, termine " + nom);
        if (texte::rogne(l.texte).empty()) {
            coupees_.insert(famille);
            return p_.dit("l'article est vide : il termine " + nom);
        }
        libelle(l.texte);
        couleur(l.texte);
        if (catalogue::est_sous_groupe(l.texte)) return sous_groupe(l.texte, famille);
        reference(l.texte);
        prix(l.texte);
        menu(l.texte);
    }

    void libelle(std::string_view record) {
        if (texte::rogne(lignes::libelle(record)).empty()) p_.dit("sans libellé : la touche n'a pas de texte");
    }

    void sous_groupe(std::string_view record, int famille) {
        const int ouvre = catalogue::famille_du_sous_groupe(record);
        sous_groupes_.push_back({numero_, famille, ouvre});
        const std::string lu = catalogue::debut_de_sous_groupe(ouvre);
        if (!record.starts_with(lu))
            p_.dit("le sous-groupe " + entre_guillemets(record.substr(0, lu.size())) + " se lit " + lu);
        if (ouvre < 0 || ouvre > catalogue::familles_max)
            p_.dit("le sous-groupe ouvre la famille " + std::to_string(ouvre) +
                   ", qui n'est pas entre 0 et 120 : sa page est vide");
    }

    void couleur(std::string_view record) {
        const auto champ = apres(record, lignes::champ_couleur);
        if (!champ.empty() && (champ.size() > 1 || !que_des_chiffres(champ)))
            p_.dit("la couleur " + entre_guillemets(champ) + " se lit " +
                   std::to_string(lignes::chiffre_couleur(record)));
    }

    void reference(std::string_view record) {
        const std::string reference(record.substr(0, lignes::longueur_reference));
        if (!cases::est_reference(reference) || texte::colonnes(record, lignes::longueur_reference + 1, 2) != "  ")
            p_.dit("la référence " + entre_guillemets(lignes::reference(record)) +
                   " n'a pas 13 chiffres et deux espaces : la commande portera ces 15 caractères");
        const auto [ou, neuve] = references_.emplace(reference, numero_);
        if (!neuve) p_.dit("la référence " + reference + " est déjà à la ligne " + std::to_string(ou->second));
    }

    void prix(std::string_view record) {
        const auto p = lignes::prix(record);
        const auto champ = texte::rogne(apres(record, lignes::champ_prix));
        if (!p)
            p_.dit("sans |PVE: : l'article n'a pas de prix");
        else if (champ.empty())
            p_.dit("le prix manque : il se lit " + nombres::montant(*p));
        else if (!est_un_prix(champ))
            p_.dit("le prix " + entre_guillemets(champ) + " se lit " + nombres::montant(*p));
    }

    void menu(std::string_view record) {
        if (lignes::est_menu_compose(record) && lignes::composants(record).empty())
            p_.dit("ce menu composé n'a pas de plat : la commande n'en portera pas");
        if (!lignes::est_menu_a_prix_fixe(record)) return;
        const auto texte = lignes::composition(record);
        if (!texte) return p_.dit("ce menu à prix fixe n'a pas de composition : il n'y a rien à choisir");
        const auto compte = [&](std::string_view signe) { return std::count(texte->begin(), texte->end(), signe[0]); };
        const bool entier = compte("µ"_t) == std::ptrdiff_t{lignes::services_par_menu} &&
                            compte("¦"_t) == std::ptrdiff_t{lignes::services_par_menu * lignes::choix_par_service};
        if (entier && texte::contient(record, "}}")) return;
        std::size_t plats = 0;
        const auto services = lignes::services(*texte);
        for (const auto& s : services)
            plats += static_cast<std::size_t>(
                std::count_if(s.choix.begin(), s.choix.end(), [](const auto& c) { return !c.empty(); }));
        p_.dit("la composition n'a pas six services de seize places : services lus, " +
               std::to_string(services.size()) + " ; plats lus, " + std::to_string(plats));
    }
};

void examine_octets(Pertes& p, std::string_view contenu) {
    const bool accents = std::any_of(contenu.begin(), contenu.end(), [](char c) { return (c & 0x80) != 0; });
    if (accents && texte::est_utf8(contenu))
        p.dit("est en UTF-8 : les accents seront montrés autrement, « Ã© » pour « é » ; il faut la page de code 1252");
    if (contenu.find('\0') != std::string_view::npos) p.dit("contient des octets nuls");
}

void examine_entete(Pertes& p, std::string_view contenu) {
    std::size_t numero = 0, gardees = 0;
    for (const std::string_view l : texte::lignes(contenu)) {
        ++numero;
        if (texte::rogne(l).empty() || ++gardees <= catalogue::lignes_entete_gardees) continue;
        p.ligne(numero);
        p.dit("est au-delà de 15 lignes : elle n'est pas gardée");
    }
}

// What a waiter sees.

using Lignes = std::vector<std::string>;

std::string utf8(std::string_view page) {
    return texte::vers_utf8(page);
}

/// Behind the number of a page; a page may have none.
std::string titre_de(std::string_view page) {
    return page.empty() ? "" : " " + entre_guillemets(page);
}

/// "un", "deux, trois": the texts that are not empty.
std::string enumere(const Lignes& textes) {
    std::string r;
    for (const std::string& t : textes) {
        if (!t.empty()) r += (r.empty() ? "" : ", ") + t;
    }
    return r.empty() ? "aucun" : r;
}

void vue_menu(std::string_view record, Lignes& r) {
    for (const auto& s : lignes::services(lignes::composition(record).value_or(""))) {
        Lignes plats;
        for (const auto& plat : s.choix) plats.push_back(utf8(plat));
        r.push_back("      " + utf8(s.nom) + " : " + enumere(plats));
    }
    for (const auto& c : lignes::composants(record))
        r.push_back("      " + nombres::general(c.second) + " " + utf8(c.libelle));
}

void vue_famille(const catalogue::Tables& t, int famille, const std::string& nom, Lignes& r) {
    const auto articles = catalogue::articles_de(t, famille);
    r.push_back("  " + std::to_string(famille) + " " + nom + (articles.empty() ? " : aucun article" : ""));
    for (const auto record : articles) {
        const auto prix = lignes::prix_affiche(record);
        r.push_back("    " + utf8(lignes::libelle(record)) + (prix.empty() ? "" : "  " + prix));
        vue_menu(record, r);
    }
}

void vue_familles(const catalogue::Tables& t, Lignes& r) {
    r.push_back("Familles :");
    std::set<int> vues;
    const auto montre = [&](int n, std::string_view nom) {
        if (!texte::rogne(nom).empty() && vues.insert(n).second) vue_famille(t, n, utf8(texte::rogne(nom)), r);
    };
    for (int n = 0; n <= catalogue::familles_nommees_max; ++n) {
        const std::string_view nom = t.noms_familles[static_cast<std::size_t>(n)];
        montre(n, catalogue::sans_couleur(nom));
    }
    for (const auto& famille : t.articles) {
        for (const auto record : famille) {
            if (catalogue::est_sous_groupe(record))
                montre(catalogue::famille_du_sous_groupe(record), lignes::libelle(record));
        }
    }
    for (int n = 0; n <= catalogue::familles_max; ++n) {
        if (!catalogue::articles_de(t, n).empty()) montre(n, "(sans touche)");
    }
}

void vue_details(std::string_view contenu, Lignes& r) {
    r.push_back("Détails :");
    const auto choix = styles::depuis(contenu);
    for (int categorie = 0; categorie < styles::categories; ++categorie) {
        Lignes libelles;
        for (int i = 0; i < styles::choix_par_categorie; ++i)
            libelles.push_back(utf8(choix[static_cast<std::size_t>(styles::premier_code(categorie) + i)].libelle));
        if (enumere(libelles) != "aucun") r.push_back("  " + enumere(libelles));
    }
}

void vue_touches(std::string_view contenu, Lignes& r) {
    for (int page = 0; page < programme_touches::nb_pages; ++page) {
        Lignes libelles;
        for (int i = 1; i <= programme_touches::lignes_par_page; ++i) {
            const auto l = programme_touches::lis_dans(contenu, page, i);
            if (l.visible()) libelles.push_back(utf8(l.libelle()));
        }
        const std::string touches = enumere(libelles);
        const auto titres = programme_touches::lis_dans(contenu, page, programme_touches::ligne_des_titres);
        if (touches != "aucun")
            r.push_back("Page " + std::to_string(page) + titre_de(titres.libelle()) + " : " + touches);
    }
}

}  // namespace

std::vector<std::string> pertes(const fabrication::Fichiers& f) {
    std::vector<std::string> r;
    Pertes entete(catalogue::fichier_entete, r), catalogue(catalogue::fichier_catalogue, r);
    examine_octets(entete, f.entete);
    examine_entete(entete, f.entete);
    examine_octets(catalogue, f.catalogue);
    Catalogue c(catalogue);
    const auto t = catalogue::depuis(
        f.entete, f.catalogue, [&c](std::string_view brute, const Ligne& l, Sort sort) { c.ligne(brute, l, sort); });
    c.cercles();
    catalogue.ligne(0);
    if (std::none_of(t->noms_serveurs.begin(), t->noms_serveurs.end(),
                     [](const auto& n) { return !texte::rogne(n).empty(); }))
        catalogue.dit("ne nomme aucun serveur");
    if (f.styles) examine_styles(*f.styles, r);
    if (f.touches) examine_touches(*f.touches, *t, r);
    return r;
}

Lignes vue(const fabrication::Fichiers& f) {
    const auto t = catalogue::depuis(f.entete, f.catalogue);
    Lignes r, serveurs, tables;
    for (const std::string& nom : t->noms_serveurs) serveurs.push_back(utf8(texte::rogne(nom)));
    for (const std::string& numero : catalogue::tables(*t)) tables.push_back(numero);
    r.push_back("Serveurs : " + enumere(serveurs));
    vue_familles(*t, r);
    r.push_back("Tables : " + (tables.empty() ? "aucune" : enumere(tables)));
    if (f.styles && styles::est_initialise(*f.styles)) vue_details(*f.styles, r);
    if (f.touches) vue_touches(*f.touches, r);
    return r;
}

std::string entre_guillemets(std::string_view page) {
    return "« " + texte::vers_utf8(page) + " »";
}

std::string_view apres(std::string_view record, std::string_view champ) {
    const auto p = record.find(champ);
    if (p == std::string_view::npos) return {};
    const auto suite = record.substr(p + champ.size());
    return suite.substr(0, suite.find('|'));
}

}  // namespace verification
