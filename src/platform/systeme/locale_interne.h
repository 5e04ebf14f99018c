// What the system itself answers; locale.cpp chooses between it and a simulated setting.
#pragma once

namespace locale_systeme::systeme {

char separateur();
char separateur_en_usage();
void corrige_separateur();

}  // namespace locale_systeme::systeme
