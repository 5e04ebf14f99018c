// A page of 48 keys as Qt makes it, over the whole screen.
#include <QApplication>
#include <QPushButton>
#include <QScreen>
#include <QWidget>

int main(int nombre, char** mots) {
    QApplication application(nombre, mots);
    QWidget fenetre(nullptr, Qt::FramelessWindowHint);
    const QRect ecran = QGuiApplication::primaryScreen()->geometry();
    const int largeur = ecran.width() / 8, hauteur = ecran.height() / 6;
    fenetre.setGeometry(ecran);
    fenetre.setStyleSheet(
        "QPushButton { background: #3F72A8; color: white; font-size: 20px; border: none }"
        "QPushButton:pressed { background: #C81E1E }");
    for (int i = 0; i < 48; ++i) {
        auto* touche = new QPushButton(QString("Article %1").arg(i), &fenetre);
        touche->setGeometry(i % 8 * largeur + 4, i / 8 * hauteur + 4, largeur - 8, hauteur - 8);
    }
    fenetre.show();
    return QApplication::exec();
}
