// A page of 48 keys as FLTK makes it, over the whole screen.
#include <FL/Fl.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Window.H>

#include <string>

int main() {
    const int largeur = Fl::w() / 8, hauteur = Fl::h() / 6;
    Fl_Window fenetre(0, 0, Fl::w(), Fl::h(), "FLTK");
    fenetre.border(0);
    for (int i = 0; i < 48; ++i) {
        auto* touche = new Fl_Button(i % 8 * largeur + 4, i / 8 * hauteur + 4, largeur - 8, hauteur - 8);
        touche->copy_label(("Article " + std::to_string(i)).c_str());
        touche->color(fl_rgb_color(0x3F, 0x72, 0xA8));
        touche->selection_color(fl_rgb_color(0xC8, 0x1E, 0x1E));
        touche->labelsize(20);
        touche->labelcolor(FL_WHITE);
    }
    fenetre.end();
    fenetre.show();
    return Fl::run();
}
