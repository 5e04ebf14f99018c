#include "platform/systeme/locale_interne.h"

// The program never calls setlocale(): numbers are written with "." whatever the user's language.
namespace locale_systeme::systeme {

char separateur() {
    return '.';
}
char separateur_en_usage() {
    return '.';
}
void corrige_separateur() {}

}  // namespace locale_systeme::systeme
