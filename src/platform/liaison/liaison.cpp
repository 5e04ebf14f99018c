#include "platform/liaison/liaison.h"

#include "platform/systeme/texte.h"

namespace liaison {

std::string_view raison(Issue issue) {
    switch (issue) {
        case Issue::faite:
            return "fait";
        case Issue::introuvable:
            return "introuvable";
        case Issue::refusee:
            return "éteinte, ou elle refuse la connexion"_t;
        case Issue::muette:
            return "ne répond pas"_t;
        case Issue::rompue:
            return "la connexion a été coupée"_t;
        case Issue::pleine:
            break;
    }
    return "plus de place";
}

}  // namespace liaison
