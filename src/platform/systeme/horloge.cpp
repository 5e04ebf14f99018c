#include "platform/systeme/horloge.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#ifdef _WIN32
#include <windows.h>
#endif

namespace horloge {
namespace {

struct Virtuelle {
    bool active = false;
    DateHeure base;  ///< what the clock showed at `base_ms`
    std::int64_t base_ms = 0, ms = 0;
};
Virtuelle virtuelle;

constexpr int jours_par_mois[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

int jours_du_mois(int annee, int mois) {
    const bool bissextile = (annee % 4 == 0 && annee % 100 != 0) || annee % 400 == 0;
    return jours_par_mois[mois - 1] + (mois == 2 && bissextile ? 1 : 0);
}

void jour_suivant(DateHeure& d) {
    if (++d.jour <= jours_du_mois(d.annee, d.mois)) return;
    d.jour = 1;
    if (++d.mois <= 12) return;
    d.mois = 1;
    ++d.annee;
}

void jour_precedent(DateHeure& d) {
    if (--d.jour >= 1) return;
    if (--d.mois < 1) {
        d.mois = 12;
        --d.annee;
    }
    d.jour = jours_du_mois(d.annee, d.mois);
}

bool est_valide(const DateHeure& d) {
    return d.annee >= 1 && d.annee <= 9999 && d.mois >= 1 && d.mois <= 12 && d.jour >= 1 &&
           d.jour <= jours_du_mois(d.annee, d.mois) && d.heure >= 0 && d.heure < 24 && d.minute >= 0 && d.minute < 60 &&
           d.seconde >= 0 && d.seconde < 60;
}

template <typename... Arguments>
std::string ecrit(const char* format, Arguments... arguments) {
    char tampon[80];
    std::snprintf(tampon, sizeof tampon, format, arguments...);
    return tampon;
}

std::int64_t reelles() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

}  // namespace

DateHeure maintenant() {
    if (virtuelle.active) return plus_secondes(virtuelle.base, (virtuelle.ms - virtuelle.base_ms) / 1000);
#ifdef _WIN32
    SYSTEMTIME t;  // the system's own zone, whatever the environment says
    GetLocalTime(&t);
    return {t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond};
#else
    return locale(std::time(nullptr));
#endif
}

DateHeure locale(std::int64_t secondes) {
    const auto t = static_cast<std::time_t>(secondes);
    std::tm tm{};
#ifdef _WIN32
    if (localtime_s(&tm, &t) != 0) return {};
#else
    if (localtime_r(&t, &tm) == nullptr) return {};
#endif
    return {tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec > 59 ? 59 : tm.tm_sec};
}

std::int64_t millisecondes() {
    return virtuelle.active ? virtuelle.ms : reelles();
}

std::optional<DateHeure> depuis_texte(std::string_view t) {
    constexpr std::string_view forme = "0000-00-00 00:00:00";
    const auto convient = [](char c, char f) { return f == '0' ? c >= '0' && c <= '9' : c == f; };
    if (!std::equal(t.begin(), t.end(), forme.begin(), forme.end(), convient)) return std::nullopt;
    const auto nombre = [t](std::size_t debut, std::size_t longueur) {
        int n = 0;
        for (const char c : t.substr(debut, longueur)) n = n * 10 + (c - '0');
        return n;
    };
    const DateHeure d{nombre(0, 4), nombre(5, 2), nombre(8, 2), nombre(11, 2), nombre(14, 2), nombre(17, 2)};
    if (!est_valide(d)) return std::nullopt;
    return d;
}

std::optional<DateHeure> depuis_nom(std::string_view nom) {
    constexpr std::string_view forme = "yyyy-mm-dd-hh-nn-ss";
    std::string t(nom.substr(0, forme.size()));
    if (t.size() < forme.size() || t[10] != '-' || t[13] != '-' || t[16] != '-') return std::nullopt;
    t[10] = ' ';
    t[13] = t[16] = ':';
    return depuis_texte(t);
}

DateHeure plus_secondes(const DateHeure& d, std::int64_t secondes) {
    constexpr std::int64_t par_jour = 24 * 3600;
    std::int64_t s = d.heure * 3600 + d.minute * 60 + d.seconde + secondes;
    DateHeure r = d;
    for (; s >= par_jour; s -= par_jour) jour_suivant(r);
    for (; s < 0; s += par_jour) jour_precedent(r);
    r.heure = static_cast<int>(s / 3600);
    r.minute = static_cast<int>(s / 60 % 60);
    r.seconde = static_cast<int>(s % 60);
    return r;
}

std::int64_t secondes_entre(const DateHeure& de, const DateHeure& a) {
    using namespace std::chrono;
    const auto secondes = [](const DateHeure& d) {
        const sys_days jour = year{d.annee} / month{static_cast<unsigned>(d.mois)} / day{static_cast<unsigned>(d.jour)};
        return std::int64_t{jour.time_since_epoch().count()} * 24 * 3600 + d.heure * 3600 + d.minute * 60 + d.seconde;
    };
    return secondes(a) - secondes(de);
}

std::string lisible(const DateHeure& d) {
    return ecrit("%04d-%02d-%02d %02d:%02d:%02d", d.annee, d.mois, d.jour, d.heure, d.minute, d.seconde);
}

std::string pour_fichier(const DateHeure& d) {
    return ecrit("%04d-%02d-%02d-%02d-%02d-%02d", d.annee, d.mois, d.jour, d.heure, d.minute, d.seconde);
}

std::string jour(const DateHeure& d) {
    return ecrit("%02d-%02d-%04d", d.jour, d.mois, d.annee);
}

std::string jour_et_heure(const DateHeure& d) {
    return ecrit("%02d-%02d-%04d-%02d-%02d-%02d", d.jour, d.mois, d.annee, d.heure, d.minute, d.seconde);
}

void rend_virtuelle(const DateHeure& debut) {
    virtuelle = {true, debut, 0, 0};
}
bool est_virtuelle() {
    return virtuelle.active;
}
void avance(std::int64_t ms) {
    if (ms > 0) virtuelle.ms += ms;
}
void regle(const DateHeure& d) {
    virtuelle.base = d;
    virtuelle.base_ms = virtuelle.ms;
}
void rend_reelle() {
    virtuelle = {};
}

}  // namespace horloge
