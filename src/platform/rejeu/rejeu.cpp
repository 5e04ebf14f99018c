#include "platform/rejeu/rejeu.h"

#include <iostream>

#include "platform/systeme/fichiers.h"
#include "platform/systeme/horloge.h"
#include "platform/systeme/ouvrier.h"
#include "platform/systeme/texte.h"

namespace rejeu {

Rejeu::Rejeu(std::string fichier, std::string captures, std::function<void()> routeur)
    : fichier_(std::move(fichier)),
      captures_(std::move(captures)),
      routeur_(std::move(routeur)),
      flux_(&std::cin),
      interactif_(fichier_ == "-") {
    if (interactif_) return;
    std::string contenu;
    lisible_ = fichiers::lis_tout(fichier_, contenu) == fichiers::Issue::fait;
    flux_fichier_.str(std::move(contenu));
    flux_ = &flux_fichier_;
}

bool Rejeu::lisible() const {
    return lisible_;
}

int Rejeu::statut() const {
    for (const int s : {faute_usage, fin_prematuree, verification_fausse}) {
        if (vu_[s]) return s;
    }
    return tout_tient;
}

void Rejeu::pousse_attente(std::int64_t ms) {
    gestes_.push_back({true, horloge::millisecondes() + ms, {}});
}

void Rejeu::appuie(int x, int y, std::int64_t duree_ms) {
    using Sorte = ecran::Evenement::Sorte;
    gestes_.push_back({false, 0, {Sorte::appui, x, y}});
    if (duree_ms > 0) pousse_attente(duree_ms);
    gestes_.push_back({false, 0, {Sorte::relache, x, y}});
}

/// Goes on with a touch or a wait under way. True: `evenement` is what the loop is to handle next.
bool Rejeu::continue_geste(ecran::Evenement& evenement) {
    while (!gestes_.empty()) {
        const Geste g = gestes_.front();
        if (!g.attente) {
            gestes_.pop_front();
            evenement = g.evenement;
            return true;
        }
        const auto maintenant = horloge::millisecondes();
        const auto echeance = ecran::prochaine_echeance();
        if (echeance >= 0 && echeance <= g.ms) {
            if (echeance > maintenant) horloge::avance(echeance - maintenant);
            evenement = {};
            return true;  // the loop fires what is due, then comes back
        }
        if (g.ms > maintenant) horloge::avance(g.ms - maintenant);
        gestes_.pop_front();
    }
    return false;
}

bool Rejeu::lis_ligne() {
    if (!std::getline(*flux_, ligne_)) return false;
    ++numero_ligne_;
    if (ligne_.ends_with('\r')) ligne_.pop_back();
    constexpr std::string_view marque_utf8 = "\xEF\xBB\xBF";
    if (numero_ligne_ == 1 && ligne_.starts_with(marque_utf8)) ligne_.erase(0, marque_utf8.size());
    return true;
}

void Rejeu::signale(const Reponse& r) {
    if (r.sorte == Reponse::Sorte::bien) {
        if (!interactif_ && r.a_lire) std::cout << r.texte << std::endl;
        return;
    }
    vu_[r.sorte == Reponse::Sorte::faute ? faute_usage : verification_fausse] = true;
    if (!interactif_) {
        std::cerr << texte::vers_utf8(fichier_) << ':' << numero_ligne_ << ": " << ligne_ << " : " << r.texte
                  << std::endl;
    }
}

/// Answers the command that has been handled, on standard output, when somebody reads there.
void Rejeu::repond() {
    if (!reponse_due_) return;
    reponse_due_ = false;
    if (!interactif_) return;
    const bool bien = reponse_.sorte == Reponse::Sorte::bien;
    std::cout << (bien ? "ok" : "erreur: ") << (bien && reponse_.a_lire ? " " : "") << reponse_.texte << std::endl;
}

ecran::Evenement Rejeu::prochain() {
    while (true) {
        ouvrier::termine_en_rejeu();
        if (collecte_ && routeur_) routeur_();
        ecran::Evenement evenement;
        if (continue_geste(evenement)) return evenement;
        repond();
        if (!lis_ligne()) throw ecran::FinDuProgramme{ecran::FinDuProgramme::Cause::coupure};
        Ligne ligne = decoupe(ligne_);
        if (ligne.mots.empty() && ligne.faute.empty()) continue;
        reponse_ = ligne.faute.empty() ? execute(ligne.mots) : Reponse{Reponse::Sorte::faute, ligne.faute};
        reponse_due_ = true;
        signale(reponse_);
        if (reponse_.sorte == Reponse::Sorte::faute && !interactif_) {
            throw ecran::FinDuProgramme{ecran::FinDuProgramme::Cause::coupure};
        }
    }
}

bool Rejeu::permise_apres_arret(const Mots& mots) const {
    if (mots[0].texte == "fin") return true;
    if (mots[0].texte != "verifie" || mots.size() < 2 || mots[1].cite) return false;
    const std::string& quoi = mots[1].texte;
    return quoi == "lance" || quoi == "separateur" || quoi == "arret";
}

void Rejeu::apres_arret() {
    arrete_ = true;
    gestes_.clear();
    repond();
    if (interactif_) std::cout << "arret" << std::endl;
    while (lis_ligne()) {
        const Ligne ligne = decoupe(ligne_);
        if (ligne.mots.empty() && ligne.faute.empty()) continue;
        reponse_due_ = true;
        if (ligne.faute.empty() && ligne.mots[0].texte == "fin") {
            reponse_ = {};
            return repond();
        }
        reponse_ = ligne.faute.empty() ? verifie_forme(ligne.mots) : Reponse{Reponse::Sorte::faute, ligne.faute};
        const bool bien_formee = reponse_.sorte == Reponse::Sorte::bien;
        if (bien_formee && permise_apres_arret(ligne.mots)) {
            reponse_ = execute(ligne.mots);
        } else if (bien_formee) {
            reponse_ = {Reponse::Sorte::faux, "le programme est terminé"};
            vu_[fin_prematuree] = true;
        }
        signale(reponse_);
        repond();
        if (!interactif_ && (vu_[fin_prematuree] || vu_[faute_usage])) return;
    }
}

}  // namespace rejeu
