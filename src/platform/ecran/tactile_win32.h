// What the system must leave alone when a finger or a pen touches the window, and how dense its screen is. Functions
// that the oldest system served lacks are fetched at run time, and done without.
#pragma once

#include <windows.h>

namespace ecran {

/// What the window answers to WM_TABLET_QUERYSYSTEMGESTURESTATUS: no wait for a press and hold, no flick, no ripple.
extern const LRESULT gestes_refuses;

/// Fingers reach the window as they are: no gesture of the system, no swipe from the edge, no feedback of its own.
void reserve_les_doigts(HWND fenetre);

/// Before the first window: pixels are those of the screen, whichever the window lies on.
void declare_densite();
/// Pixels per 1/96 inch where the window lies, at least 1.
double densite(HWND fenetre);

}  // namespace ecran
