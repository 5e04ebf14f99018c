// The readers of the single sheets, which lecture.cpp calls in an order in which each finds what it refers to.
#pragma once

#include <map>
#include <set>
#include <string>

#include "carte/carte.h"
#include "carte/cases.h"

namespace lecture {

/// What rows refer to, also those that have faults: one fault makes no others.
struct Repertoire {
    std::map<int, std::size_t> serveurs, familles;  ///< row of the sheet by number
    std::map<std::string, std::size_t> references;  ///< row of the articles by reference
    std::map<std::string, std::string> libelles;    ///< of the articles, by reference
    std::map<std::string, carte::Menu> menus;       ///< the articles that are menus
    std::set<std::string> composes;                 ///< the menus that have rows of dishes
    std::set<int> sous_groupes, familles_d_articles;
};

void lis_menus(cases::Lecteur& l, carte::Carte& carte, Repertoire& repertoire);
void lis_details(cases::Lecteur& l, carte::Carte& carte);
void lis_touches(cases::Lecteur& l, carte::Carte& carte, const Repertoire& repertoire);

}  // namespace lecture
