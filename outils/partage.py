#!/usr/bin/env python3
"""Measures the real window while the share is in trouble: partage.sh prepares the ground for it.

Usage: partage.py GROUND PROGRAM [TROUBLE...]

A finger of XTest touches keys of the window on a display of its own, and the colour of a point tells when the picture of the
pressed key, then that of what the touch brings, is there. An order has arrived when its file had its last name.
"""

import contextlib
import ctypes
import os
import pathlib
import random
import shutil
import signal
import subprocess
import sys
import time

VERT, ROUGE, VERT_ENTREES, BLEU, BLANC = 0x23704F, 0xC24B45, 0x4F8F5F, 0x3F72A8, 0xFFFFFF
DUREE_S = 15  # of a trouble
COMMANDES, BEAUCOUP = 20, 10000
PATIENCE_S = 1200


class Ecran:
    """A display, a finger upon it, and the colours of its points."""

    def __init__(self):
        self.serveur = subprocess.Popen(["Xvfb", "-displayfd", "1", "-screen", "0", "1280x800x24", "-noreset",
                                         "-nolisten", "tcp"], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.nom = ":" + self.serveur.stdout.readline().decode().strip()
        self.x11, self.xtst = ctypes.CDLL("libX11.so.6"), ctypes.CDLL("libXtst.so.6")
        for nom in ("XOpenDisplay", "XGetImage"):
            getattr(self.x11, nom).restype = ctypes.c_void_p
        self.x11.XDefaultRootWindow.restype = self.x11.XGetPixel.restype = ctypes.c_ulong
        self.affichage = ctypes.c_void_p(self.x11.XOpenDisplay(self.nom.encode()))
        self.racine = ctypes.c_ulong(self.x11.XDefaultRootWindow(self.affichage))

    def couleur(self, x, y):
        plans, format_z = ctypes.c_ulong(0xFFFFFF), 2
        image = ctypes.c_void_p(self.x11.XGetImage(self.affichage, self.racine, x, y, 1, 1, plans, format_z))
        couleur = self.x11.XGetPixel(image, 0, 0) & 0xFFFFFF
        self.x11.XDestroyImage(image)
        return couleur

    def attend(self, condition, quoi, secondes=20):
        fin = time.monotonic() + secondes
        while not condition():
            if time.monotonic() > fin:
                raise TimeoutError(quoi)
            time.sleep(0.0002)  # the terminal needs the processor more

    def bouton(self, appuie):
        self.xtst.XTestFakeButtonEvent(self.affichage, 1, int(appuie), 0)
        self.x11.XFlush(self.affichage)

    def touche(self, x, y, quoi, arrive):
        """Milliseconds from the press to the picture of the pressed key, and from the release to what it brings.
        `arrive` tells whether that is there."""
        self.xtst.XTestFakeMotionEvent(self.affichage, -1, x, y, 0)
        self.x11.XFlush(self.affichage)
        avant = self.couleur(x, y)
        debut = time.perf_counter()
        self.bouton(True)
        self.attend(lambda: self.couleur(x, y) != avant, f"pressed {quoi}")
        presse = time.perf_counter() - debut
        time.sleep(random.uniform(0.02, 0.08))  # as long as a finger stays
        debut = time.perf_counter()
        self.bouton(False)
        self.attend(arrive, quoi)
        return presse * 1000, (time.perf_counter() - debut) * 1000

    def ferme(self):
        self.serveur.terminate()
        self.serveur.wait()


class Tablette:
    """The program in a window, and the times of all that is touched."""

    def __init__(self, ecran, dossier, programme, environnement):
        self.ecran, self.dossier = ecran, dossier
        # Milliseconds, and what was touched; of a sending apart: it awaits the disk.
        self.presses, self.images, self.envois = [], [], []
        self.accueil = self.montre(240, 60, ROUGE)
        self.processus = subprocess.Popen([programme, "--dossier", str(dossier), "--fenetre"], env=environnement)
        ecran.attend(self.montre(40, 60, BLEU), "the page of the servers")
        time.sleep(0.5)

    def montre(self, x, y, couleur):
        return lambda: self.ecran.couleur(x, y) == couleur

    def touche(self, x, y, quoi, arrive, temps=None):
        presse, image = self.ecran.touche(x, y, quoi, arrive)
        self.presses.append((presse, quoi))
        (self.images if temps is None else temps).append((image, quoi))
        time.sleep(random.uniform(0.03, 0.15))

    def choisit_table(self):
        """The table's digits and the covers are typed once; afterwards they stand there."""
        self.touche(111, 730, "Table", self.montre(1168, 730, VERT))
        self.touche(60, 190, "1", lambda: True)
        self.touche(700, 190, "1 cover", lambda: True)
        self.touche(1168, 730, "Valider", self.accueil)

    def regarde(self):
        """A family and back by all families, then the table, behind which the network is looked for."""
        self.touche(240, 60, "Viandes", self.montre(40, 60, ROUGE))
        self.touche(1168, 730, "back", self.montre(40, 60, VERT_ENTREES))
        self.touche(1168, 730, "Accueil", self.accueil)
        self.touche(111, 730, "Table", self.montre(1168, 730, VERT))
        self.touche(1168, 730, "Valider", self.accueil)

    def commande(self):
        self.choisit_table()
        self.touche(240, 60, "Viandes", self.montre(40, 60, ROUGE))
        self.touche(40, 60, "Entrecôte", self.montre(1168, 730, VERT))
        self.touche(1168, 730, "Valider", self.montre(40, 60, ROUGE))
        self.touche(957, 730, "Note", self.montre(746, 730, VERT))
        self.touche(746, 730, "Envoyer", self.montre(330, 440, VERT))
        self.touche(330, 440, "Oui", self.montre(330, 440, BLANC), self.envois)
        self.ecran.attend(self.accueil, "the home page after the order")

    def ferme(self):
        self.processus.kill()
        self.processus.wait()


# --- the troubles: each a share that is well, then is in trouble while the block lasts ---------------------------------------


class Sain:
    """What all troubles have in common: the directory, and where its files are seen whatever befalls it."""

    environnement = {}
    commandes, retours = COMMANDES, 3

    def __init__(self, terrain, dossier):
        self.terrain, self.reseau, self.derriere = terrain, dossier / "reseau", dossier / "reseau"

    def ferme(self):
        pass


class Fige(Sain):
    """A file system whose server is stopped: every operation hangs."""

    def __init__(self, terrain, dossier):
        super().__init__(terrain, dossier)
        self.derriere = self.reseau.rename(dossier / "derriere")
        self.reseau.mkdir()
        self.serveur = subprocess.Popen(["bindfs", "--no-allow-other", "-f", self.derriere, self.reseau], stderr=subprocess.DEVNULL)
        fin = time.monotonic() + 5
        while not self.reseau.is_mount() and time.monotonic() < fin:
            time.sleep(0.02)

    @contextlib.contextmanager
    def trouble(self):
        self.serveur.send_signal(signal.SIGSTOP)
        yield
        self.serveur.send_signal(signal.SIGCONT)

    def ferme(self):
        self.serveur.send_signal(signal.SIGCONT)
        subprocess.run(["umount", "-l", self.reseau], check=True)
        self.serveur.wait()


class Disparu(Sain):
    """The directory is gone, then there again."""

    @contextlib.contextmanager
    def trouble(self):
        parti = self.reseau.rename(self.terrain / "parti")
        yield
        parti.rename(self.reseau)


class Lent(Disparu):
    """Likewise, and each operation takes 300 ms all the time."""

    def __init__(self, terrain, dossier):
        super().__init__(terrain, dossier)
        self.environnement = {"LD_PRELOAD": str(terrain / "lenteur.so"), "LENTEUR": str(self.reseau), "LENTEUR_MS": "300"}


class DixMille(Disparu):
    commandes, retours = BEAUCOUP, 1


class Plein(Sain):
    """A disk without a free byte, then with some."""

    def __init__(self, terrain, dossier):
        super().__init__(terrain, dossier)
        modele = self.reseau.rename(dossier / "modele")
        self.reseau.mkdir()
        subprocess.run(["mount", "-t", "tmpfs", "-o", "size=1m", "orvalune", self.reseau], check=True)
        shutil.copytree(modele, self.reseau, dirs_exist_ok=True)

    @contextlib.contextmanager
    def trouble(self):
        subprocess.run(["dd", "if=/dev/zero", f"of={self.reseau}/plein", "bs=4k"], stderr=subprocess.DEVNULL)
        yield
        (self.reseau / "plein").unlink()

    def ferme(self):
        subprocess.run(["umount", self.reseau], check=True)


TROUBLES = {"fige": Fige, "lent": Lent, "plein": Plein, "disparu": Disparu, "dix_mille": DixMille}


# --- measuring -----------------------------------------------------------------------------------------------------------


def ecrit_commandes(dossier, nombre, heure):
    """Orders as they wait; each hour has names of its own."""
    for n in range(nombre):
        nom = f"2021-05-19-{heure + n // 3600:02}-{n // 60 % 60:02}-{n % 60:02}_01_{n % 999 + 1:03}_004_.-A-"
        (dossier / nom).write_bytes(b"#ID#AAAAAAAAAA\r\n" * 30)


def finissent_par(dossier, fin):
    return [dossier / n for n in os.listdir(dossier) if n.endswith(fin)]


def tient_le_trouble(tablette, partage, heure):
    """A waiter takes an order and looks around; the others wait already."""
    fin = time.monotonic() + DUREE_S
    ecrit_commandes(tablette.dossier, partage.commandes, heure)
    tablette.commande()
    tablette.choisit_table()
    while time.monotonic() < fin:
        tablette.regarde()
    time.sleep(random.uniform(0, 4))  # at no particular moment of the tablet's own looks


def attend_les_arrivees(tablette, partage):
    """Seconds from now until the first order has arrived, and the last one. Nobody touches the tablet before it has found
    the share by itself."""
    retour, fin = time.time(), time.monotonic() + PATIENCE_S
    arrivees = lambda: finissent_par(partage.derriere, "_.txt")
    while not arrivees() and time.monotonic() < fin:
        time.sleep(0.05)
    while len(arrivees()) < partage.commandes + 1 and time.monotonic() < fin:
        tablette.regarde()
    quand = [chemin.stat().st_ctime - retour for chemin in arrivees()]
    if len(quand) != partage.commandes + 1:
        raise TimeoutError(f"{len(quand)} orders of {partage.commandes + 1} have arrived")
    return min(quand), max(quand)


def collecte(tablette, partage):
    """The router takes all at once, and the tablet sees it."""
    for chemin in finissent_par(partage.derriere, "_.txt"):
        chemin.unlink()
    fin = time.monotonic() + PATIENCE_S
    while finissent_par(tablette.dossier, "-T-") and time.monotonic() < fin:
        tablette.regarde()


def mesure(ecran, terrain, programme, nom):
    dossier = pathlib.Path(shutil.copytree(terrain / "modele", terrain / nom))
    (dossier / "wfichdir.wdo").write_text(f"{dossier / 'reseau'}\r\n")
    partage = TROUBLES[nom](terrain, dossier)
    environnement = {**os.environ, "DISPLAY": ecran.nom, **partage.environnement}
    tablette = Tablette(ecran, dossier, programme, environnement)
    premieres, dernieres = [], []
    try:
        tablette.touche(40, 60, "Sophie", tablette.accueil)
        for retour in range(partage.retours):
            with partage.trouble():
                tient_le_trouble(tablette, partage, 8 + retour)
            premiere, derniere = attend_les_arrivees(tablette, partage)
            premieres.append(premiere)
            dernieres.append(derniere)
            collecte(tablette, partage)
    finally:
        tablette.ferme()
        partage.ferme()
    return tablette, max(premieres), max(dernieres)


def main():
    terrain, programme, *noms = sys.argv[1:]
    ecran = Ecran()
    print("trouble      touches   pressed   picture   sending  returns  orders   first    last    (the longest times)")
    for nom in noms or TROUBLES:
        t, premiere, derniere = mesure(ecran, pathlib.Path(terrain), programme, nom)
        (presse, _), (image, touche), (envoi, _) = max(t.presses), max(t.images), max(t.envois)
        print(f"{nom:<12}{len(t.presses):>8}{presse:>7.1f} ms{image:>7.1f} ms{envoi:>7.1f} ms{TROUBLES[nom].retours:>9}"
              f"{TROUBLES[nom].commandes + 1:>8}{premiere:>6.1f} s{derniere:>6.1f} s    picture: {touche}", flush=True)
    ecran.ferme()


main()
