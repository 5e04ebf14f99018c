#!/usr/bin/env python3
"""Plays services on the real terminal beside a router, and counts what became of each order: campagne.sh prepares the
ground for it.

Usage: campagne.py GROUND PROGRAM EMULATOR coupures KILLS | terminaux TERMINALS ORDERS
"""

import collections
import datetime
import itertools
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import threading
import time

SERVEURS = ["Sophie", "Marc", "Nadia", "Julien", "Camille", "Thomas", "Élodie", "Karim"]
TABLES, COUVERTS = 999, 11
ENVOYEE = 'verifie Label1 "La commande à été envoyée !"'
TEXTE = re.compile(rb"#ID#([A-Z0-9]{10})\r\n#VERSION#2\.1\r\n#SERVEUR#(\d\d)\r\n#TABLE#(\d{3})\r\n#NBCOUVERT#(\d+) *\r\n"
                   rb"#REF#8880000000024  \{1\.00\}\r\n#COMP#\r\n#NOTE#\r\n")

DEBUT, PAS = datetime.datetime(2021, 5, 19, 12, 0, 0), datetime.timedelta(minutes=10)
PAS_DU_ROUTEUR_S = 0.002
COMMANDES_PAR_DEPART = 12
PATIENCE_S = 120


class Commande:
    """An order as the waiter takes it, from the home page to the message that it was sent. No other of its tablet has
    this waiter, table and covers."""

    def __init__(self, numero):
        numero, couverts = divmod(numero, COUVERTS)
        serveur, table = divmod(numero, TABLES)
        self.serveur, self.table, self.couverts = serveur % len(SERVEURS) + 1, table + 1, couverts + 1

    def gestes(self):
        ligne, colonne = divmod(self.couverts - 1, 3)
        return ["touche g2 0 2", f'touche "{SERVEURS[self.serveur - 1]}"', 'touche "Table"', f'tape "{self.table:03}"',
                f"touche g1 {ligne} {colonne}", 'touche "Valider"', 'touche "Entrecôte"', 'touche "Valider"',
                'touche "Note"', 'touche "Envoyer"', 'touche "Oui"', ENVOYEE, "attend 2000"]

    def cle(self):
        return self.serveur, self.table, self.couverts


class Routeur(threading.Thread):
    """Reads every "*.txt" of the network directory and deletes it, again and again."""

    def __init__(self, repertoire):
        super().__init__(daemon=True)
        self.repertoire = repertoire
        self.textes = []  # all that was collected, in that order
        self.start()

    def run(self):
        while True:
            for chemin in self.deposes():
                self.textes.append(chemin.read_bytes())
                chemin.unlink()
            time.sleep(PAS_DU_ROUTEUR_S)

    def deposes(self):
        return [self.repertoire / n for n in os.listdir(self.repertoire) if n.lower().endswith(".txt")]

    def collectees(self):
        """How often each order was collected, by tablet, waiter, table and covers; and the texts that are no whole
        order."""
        lus = [(TEXTE.fullmatch(t), t) for t in self.textes]
        cles = collections.Counter((m[1].decode(), int(m[2]), int(m[3]), int(m[4])) for m, _ in lus if m)
        return cles, [t for m, t in lus if not m]


class Terminal:
    """The program in a working directory, played by commands on its standard input."""

    def __init__(self, lancement, dossier, horloge, emulateur=False):
        self.dossier, self.emulateur = dossier, emulateur
        self.dites, self.fautes = [], []  # the orders told as sent; what was not as expected
        self.attendues = []  # commands that have not been answered, each with its order
        self.processus = subprocess.Popen([*lancement, "--rejoue", "-", "--horloge", f"{horloge:%Y-%m-%d %H:%M:%S}"],
                                          stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)

    def envoie(self, gestes, commande=None):
        """Waits for no answer."""
        self.attendues += [(g, commande) for g in gestes]
        self.processus.stdin.write("".join(g + "\n" for g in gestes).encode())
        self.processus.stdin.flush()

    def sert(self, commandes):
        for commande in commandes:
            self.envoie(commande.gestes(), commande)

    def prend(self, reponse):
        geste, commande = self.attendues.pop(0)
        if not reponse.startswith(b"ok"):
            self.fautes.append(f"{geste}: {reponse.decode()}")
        elif geste == ENVOYEE:
            self.dites.append(commande)

    def lit(self):
        """Takes the answers to all that was sent."""
        while self.attendues and (reponse := self.processus.stdout.readline()):
            self.prend(reponse.strip())
        if self.attendues:
            self.fautes.append(f"the program ended before {self.attendues.pop(0)[0]}")
            self.attendues = []

    def coupe(self):
        if self.processus.poll() is not None:
            self.fautes.append(f"the program ended by itself, status {self.processus.returncode}")
        self.processus.kill()
        for reponse in self.processus.stdout.read().split(b"\n")[:-1]:  # behind the last line end: half an answer
            self.prend(reponse.strip())
        self.processus.wait()
        if self.emulateur:
            time.sleep(0.1)  # its server closes the files of a killed program a moment later

    def restes(self):
        """Files of orders that wait, were cut off, or are not known to be collected."""
        return [n for n in os.listdir(self.dossier) if n.endswith(("-A-", "-D-", "-T-"))]

    def finit(self, routeur):
        """Looks at the network until everything has left and been collected; then the program ends."""
        self.lit()
        fin = time.monotonic() + PATIENCE_S
        while not self.fautes and (self.restes() or routeur.deposes()) and time.monotonic() < fin:
            self.envoie(["touche logo", "attend 5000"])
            self.lit()
        self.envoie(["fin"])
        self.processus.wait()


class Monde:
    """The ground that campagne.sh has prepared, and the program upon it."""

    def __init__(self, terrain, programme, emulateur):
        self.terrain, self.reseau = terrain, terrain / "reseau"
        self.programme, self.emulateur = programme, emulateur

    def dossier(self, nom):
        return pathlib.Path(shutil.copytree(self.terrain / "modele", self.terrain / nom))

    def lance(self, dossier, horloge, options=()):
        chemin = f"Z:{dossier}" if self.emulateur else str(dossier)
        emulateur = [self.emulateur] if self.emulateur else []
        return Terminal([*emulateur, self.programme, "--dossier", chemin, *options], dossier, horloge, bool(emulateur))


def bilan(routeur, dossiers, dites):
    """Told as sent against collected. Where tablets tell of the same waiter, table and covers, each has sent its own."""
    compte, abimees = routeur.collectees()
    tablettes = collections.Counter(cle[1:] for cle in compte)
    annoncees = collections.Counter(commande.cle() for commande in dites)
    return {
        "told as sent": len(dites),
        "collected": len(routeur.textes),
        "lost": sum(max(0, n - tablettes[cle]) for cle, n in annoncees.items()),
        "twice": sum(n - 1 for n in compte.values()),
        "cut or changed": len(abimees),
        "left behind": sum(n.endswith(("-A-", "-D-", "-T-", ".tmp_")) for d in dossiers for n in os.listdir(d))
                       + len(routeur.deposes()),
    }


def conclut(lignes, fautes):
    """Prints the figures; the exit status."""
    for nom, n in lignes.items():
        print(f"{nom:<16}{n:>8}")
    for faute in fautes[:10]:
        print("FAULT:", faute)
    mauvaises = [n for n in ("lost", "twice", "cut or changed", "left behind") if lignes[n]]
    return 1 if mauvaises or fautes or not lignes["told as sent"] else 0


# --- cuts ----------------------------------------------------------------------------------------------------------------


class Coupures:
    """One tablet, whose program is killed again and again, and started again at a later hour."""

    def __init__(self, monde):
        self.monde, self.dossier = monde, monde.dossier("tablette")
        self.routeur = Routeur(monde.reseau)
        self.commandes = map(Commande, itertools.count())
        self.horloge = DEBUT
        self.dites, self.fautes = [], []

    def lance(self):
        self.horloge += PAS
        return self.monde.lance(self.dossier, self.horloge)

    def retient(self, terminal):
        self.dites += terminal.dites
        self.fautes += terminal.fautes

    def mesure(self):
        """A service that nothing cuts: the seconds of its start, and of all of it."""
        debut = time.monotonic()
        terminal = self.lance()
        terminal.envoie(['touche "Sophie"'])
        terminal.lit()
        depart = time.monotonic() - debut
        terminal.sert(itertools.islice(self.commandes, COMMANDES_PAR_DEPART))
        terminal.lit()
        duree = time.monotonic() - debut
        terminal.finit(self.routeur)
        self.retient(terminal)
        return depart, duree

    def coupe_un_service(self, depart, duree):
        """Every third service begins away from the network; every fifth kill comes while the program starts."""
        terminal = self.lance()
        terminal.envoie(['touche "Sophie"'])
        if random.random() < 1 / 3:
            terminal.envoie(["reseau absent"])
            terminal.sert(itertools.islice(self.commandes, COMMANDES_PAR_DEPART // 3))
            terminal.envoie(["reseau present"])
        terminal.sert(itertools.islice(self.commandes, COMMANDES_PAR_DEPART))
        time.sleep(random.uniform(0, depart * 1.5 if random.random() < 1 / 5 else duree))
        terminal.coupe()
        self.retient(terminal)

    def joue(self, nombre):
        depart, duree = self.mesure()
        faites = 0
        while faites < nombre and not self.fautes:
            self.coupe_un_service(depart, duree)
            faites += 1
        terminal = self.lance()
        terminal.envoie(['touche "Sophie"'])
        terminal.finit(self.routeur)
        self.retient(terminal)
        a_verifier = sum(n.endswith("-V-") for n in os.listdir(self.dossier))
        lignes = bilan(self.routeur, [self.dossier, self.monde.reseau], self.dites)
        return conclut({"kills": faites, **lignes, "à vérifier": a_verifier}, self.fautes)


# --- many terminals ------------------------------------------------------------------------------------------------------


def terminaux(monde, nombre, commandes):
    """All take the same orders at the same time: only the tablets' codes tell them apart."""
    noms = [f"tablette-{rang}" for rang in range(nombre)]
    dossiers = [monde.dossier(nom) for nom in noms]
    routeur = Routeur(monde.reseau)
    tous = [monde.lance(dossier, DEBUT, ["--machine", nom]) for dossier, nom in zip(dossiers, noms)]
    for terminal in tous:
        terminal.envoie(['touche "Sophie"'])
        terminal.sert(map(Commande, range(commandes)))
    for terminal in tous:
        terminal.finit(routeur)
    fautes = [faute for terminal in tous for faute in terminal.fautes]
    tablettes = len({cle[0] for cle in routeur.collectees()[0]})
    if tablettes != nombre:
        fautes.append(f"{tablettes} tablets have sent orders")
    lignes = bilan(routeur, [monde.reseau, *dossiers], [c for terminal in tous for c in terminal.dites])
    if lignes["collected"] != nombre * commandes:
        fautes.append(f"{nombre * commandes} orders were to be collected")
    return conclut({"terminals": nombre, **lignes}, fautes)


def main():
    terrain, programme, emulateur, campagne, *nombres = sys.argv[1:]
    monde = Monde(pathlib.Path(terrain), programme, emulateur)
    nombres = [int(n) for n in nombres]
    return Coupures(monde).joue(*nombres) if campagne == "coupures" else terminaux(monde, *nombres)


sys.exit(main())
