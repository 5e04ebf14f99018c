// The user's decimal separator, in the registry's "Control Panel\International".
#include <windows.h>

#include "platform/systeme/locale_interne.h"

namespace locale_systeme::systeme {

/// First character of the user's decimal separator, as GetLocaleInfoA gives it for locale 0 in a buffer of two.
char separateur() {
    char tampon[2] = {};
    GetLocaleInfoA(0, LOCALE_SDECIMAL, tampon, sizeof tampon);
    return tampon[0];
}

/// The system's own conversions of numbers follow the user's setting.
char separateur_en_usage() {
    char tampon[16] = {};
    GetNumberFormatA(LOCALE_USER_DEFAULT, 0, "1.1", nullptr, tampon, sizeof tampon);
    return tampon[1];
}

/// A user whose language is not the system's has a setting of his own, which is the one that is read.
void corrige_separateur() {
    SetLocaleInfoA(GetSystemDefaultLCID(), LOCALE_SDECIMAL, ".");
    if (separateur() != '.') SetLocaleInfoA(GetUserDefaultLCID(), LOCALE_SDECIMAL, ".");
}

}  // namespace locale_systeme::systeme
