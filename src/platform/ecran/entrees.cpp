#include "platform/ecran/entrees.h"

#include "platform/systeme/texte.h"

namespace ecran {
namespace {

using Sorte = Evenement::Sorte;

/// Events of which only the last matters when they follow each other.
bool remplace(Sorte precedente, Sorte nouvelle) {
    const bool repetable = nouvelle == Sorte::glisse || nouvelle == Sorte::repeindre || nouvelle == Sorte::reveil ||
                           nouvelle == Sorte::rien || nouvelle == Sorte::fermeture || nouvelle == Sorte::extinction;
    return repetable && precedente == nouvelle;
}

}  // namespace

void Entrees::ajoute(Evenement e) {
    if (!file_.empty() && remplace(file_.back().sorte, e.sorte)) file_.pop_back();
    file_.push_back(e);
}

void Entrees::ajoute(Sorte sorte, int x, int y) {
    Evenement e;
    e.sorte = sorte;
    e.x = x;
    e.y = y;
    ajoute(e);
}

Evenement Entrees::prend() {
    if (file_.empty()) return {};
    const Evenement premier = file_.front();
    file_.pop_front();
    return premier;
}

/// A palm beside the pen is of another sort: it neither acts nor takes the pen's press away. One that comes down alone
/// while one of its own sort still counts shows that the end of that one was lost.
void Entrees::pose(std::uint32_t contact, std::uint32_t sorte, bool seul, int x, int y) {
    if (!seul) return;
    if (premier_ && sorte_ == sorte) perd(*premier_);
    if (premier_) return;
    premier_ = contact;
    sorte_ = sorte;
    ajoute(Sorte::appui, x, y);
}

void Entrees::glisse(std::uint32_t contact, int x, int y) {
    if (premier_ == contact) ajoute(Sorte::glisse, x, y);
}

void Entrees::leve(std::uint32_t contact, int x, int y) {
    if (premier_ != contact) return;
    premier_.reset();
    ajoute(Sorte::relache, x, y);
}

void Entrees::perd(std::uint32_t contact) {
    if (premier_ != contact) return;
    premier_.reset();
    ajoute(Sorte::perdu);
}

void Entrees::perd_tout() {
    if (premier_) perd(*premier_);
}

void Entrees::frappe(char32_t point) {
    const bool commande = point < 0x20 || (point >= 0x7F && point < 0xA0);
    const auto octet = texte::octet(point);
    if (commande || !octet) return;
    Evenement e;
    e.sorte = Sorte::caractere;
    e.code = *octet;
    ajoute(e);
}

void Entrees::presse(Cle cle, bool repetee) {
    if (repetee && cle != Cle::retour_arriere) return;
    Evenement e;
    e.sorte = Sorte::cle;
    e.cle = cle;
    ajoute(e);
}

}  // namespace ecran
