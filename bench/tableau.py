#!/usr/bin/env python3
"""The table that ./bench.sh prints. Usage: tableau.py WINDOWS CATALOGUES BENCHMARKS.json, or tableau.py --filtre

The first two are what `sonde` printed, the windows with the size of the screen before each line; the third is what
Google Benchmark wrote. --filtre prints the benchmarks that the table wants, as Google Benchmark's filter."""
import json
import re
import sys

MESURE, COLONNES = 36, (10, 10, 10)
UNITES = {"ns": 1e-3, "us": 1, "ms": 1e3, "s": 1e6}

ECRANS = ["1280x770", "1920x1200", "2560x1600"]
ARTICLES = ["4000", "40000", "400000"]
LIGNES = ["10", "100", "1000"]
COMMANDES = ["10", "100", "1000"]

COPIE = "copy of the image", "copie_de_l_image/{}"
DEUX_PAGES = "page painted twice", "2*page_entiere/{}"
ECRITURE = "ecriture_nue/%s/iterations:100/real_time"
PROGRAMME_VIDE = "a program that ends", "programme_vide/real_time"

# Heading, sizes, then the rows: caption, unit, benchmark, what lies beside it, its benchmark. "{}" is the size.
PARTIES = [
    ("Replay, no window", [""], [
        ("start and end", "ms", "depart/0/real_time", *PROGRAMME_VIDE),
    ]),
    ("Painter", ECRANS, [
        ("page of 48 keys painted", "us", "page_entiere/{}", *COPIE),
        ("one key pressed", "us", "une_touche/{}", *COPIE),
    ]),
    ("Touch on a screen, painted", ECRANS, [
        ("page turned to anew", "us", "page_neuve/{}/manual_time", *COPIE),
        ("page turned back", "us", "page_tournee/{}/manual_time", *COPIE),
        ("three pages in turn", "us", "pages_en_ronde/{}/manual_time", *COPIE),
        ("one letter on the keyboard", "us", "une_lettre/{}/manual_time", "one key pressed", "une_touche/{}"),
    ]),
    ("Opened and closed, painted", ECRANS, [
        ("dialog, the first time", "us", "dialogue_neuf/{}/manual_time", *DEUX_PAGES),
        ("dialog, again", "us", "dialogue/{}/manual_time", *DEUX_PAGES),
        ("toolbox, the first time", "us", "outils_neufs/{}/manual_time", *DEUX_PAGES),
        ("toolbox, again", "us", "outils/{}/manual_time", *DEUX_PAGES),
        ("an article, the first time", "us", "article_neuf/{}/manual_time", *DEUX_PAGES),
        ("keyboard, the first time", "us", "clavier_neuf/{}/manual_time", *DEUX_PAGES),
        ("message box, the first time", "us", "boite_neuve/{}/manual_time", *DEUX_PAGES),
    ]),
    ("Lines of the note", LIGNES, [
        ("summary scrolled by one row", "us", "recapitulatif/{}/manual_time", "page painted", "page_entiere/1280/770"),
        ("order written", "us", "commande_ecrite/{}/iterations:100/real_time", "bare write", ECRITURE % "{}"),
    ]),
    ("Orders that wait", COMMANDES, [
        ("each delivered", "us", "par_commande;commandes/livrees/{}/iterations:2/real_time", "bare write",
         ECRITURE % 10),
        ("each found collected", "us", "par_commande;commandes/collectees/{}/iterations:2/real_time", "bare write",
         ECRITURE % 10),
    ]),
    ("Articles", ARTICLES, [
        ("catalogue read", "ms", "lecture_du_catalogue/{}", "its bytes read", "fichier_lu/{}"),
        ("replayed start and end", "ms", "depart/{}/real_time", *PROGRAMME_VIDE),
    ]),
]


def filtre():
    """Names without counter, factor and sizes."""
    noms = {re.split("[;*]", n)[-1].split("/")[0] for _, _, rangees in PARTIES for r in rangees for n in (r[2], r[4])}
    return "^(%s)/" % "|".join(sorted(noms))


class Bancs:
    """Times in microseconds, by name: the median of all runs of a benchmark."""

    def __init__(self, chemin):
        self.lus = {}
        with open(chemin, encoding="utf-8") as f:
            for b in json.load(f)["benchmarks"]:
                if b.get("error_occurred"):
                    sys.exit(b["name"] + ": " + b["error_message"])
                if b.get("aggregate_name") == "median":
                    self.lus[b["run_name"]] = b

    def temps(self, nom):
        compteur, _, nom = nom.rpartition(";")
        facteur, _, nom = nom.rpartition("*")
        b = self.lus[nom]
        if compteur:
            return b[compteur] * 1e6
        return float(facteur or 1) * b["real_time"] * UNITES[b["time_unit"]]


def nombre(v):
    return "%.*f" % (0 if v >= 100 else 1 if v >= 10 else 2, v)


def cases(textes):
    return "".join(t.rjust(n) for t, n in zip(list(textes) + [""] * 3, COLONNES))


def titre(texte, tailles):
    print("\n" + texte.ljust(MESURE) + cases(tailles) + "   " + "beside".ljust(22) + cases(tailles) + "  times")


def rangee(texte, valeurs, pair, pairs):
    rapports = [v / p for v, p in zip(valeurs, pairs) if p]
    fois = " ".join(nombre(r) for r in rapports)
    print(texte.ljust(MESURE) + cases(map(nombre, valeurs)) + "   " + pair.ljust(22) + cases(map(nombre, pairs)) +
          "  " + fois)


def lis_sonde(chemin):
    """By size of the screen, "" where none stands before the name; then by name."""
    lus = {}
    with open(chemin, encoding="utf-8") as f:
        for mots in map(str.split, f):
            taille, nom = ([""] + mots[:-5])[-2:]
            lus.setdefault(taille, {})[nom] = [float(m) for m in mots[-5:]]
    return lus


# Caption, whose windows, which of the numbers that `sonde` printed, and what divides it.
MESURES = [
    ("start to first painted page, ms", "terminal", 0, 1),
    ("resident memory, MiB", "terminal", 1, 1024),
    ("proportional memory, MiB", "terminal", 2, 1024),
    ("press to changed pixel, us, median", "terminal", 3, 1),
    ("  95th of 100", "terminal", 4, 1),
    ("  a key of the peers' size, median", "petites_touches", 3, 1),
    ("  95th of 100", "petites_touches", 4, 1),
]
PAIRS = {"fenetre_nue": "bare window", "pair_fltk": "FLTK, 48 keys", "pair_qt": "Qt, 48 keys"}


def fenetres(lues):
    """`lues`: by size, then by name."""
    titre("Window", list(lues))
    for texte, notre, i, diviseur in MESURES:
        for nom in (n for n in PAIRS if n in next(iter(lues.values()))):
            rangee(texte, [l[notre][i] / diviseur for l in lues.values()], PAIRS[nom],
                   [l[nom][i] / diviseur for l in lues.values()])
            texte = ""


def catalogues(lus):
    """The bare window and the terminal upon the demonstration, then upon catalogues: articles and bytes, "N-BYTES"."""
    nue, demo = lus.pop("fenetre_nue"), lus.pop("terminal")
    octets = [int(nom.split("-")[1]) / 2**20 for nom in lus]
    departs, memoires = [[v[i] for v in lus.values()] for i in (0, 1)]
    rangee("start to first painted page, ms", departs, "bare window", [nue[0]] * len(lus))
    rangee("", departs, "demonstration", [demo[0]] * len(lus))
    rangee("resident memory, MiB", [m / 1024 for m in memoires], "demonstration", [demo[1] / 1024] * len(lus))
    rangee("  what it has grown by", [(m - demo[1]) / 1024 for m in memoires], "the file", octets)


def main():
    if sys.argv[1:] == ["--filtre"]:
        print(filtre())
        return
    chemin_fenetres, chemin_catalogues, chemin_bancs = sys.argv[1:]
    bancs = Bancs(chemin_bancs)
    fenetres(lis_sonde(chemin_fenetres))
    for texte, tailles, rangees in PARTIES:
        titre(texte, tailles)
        for mesure, unite, nom, pair, nom_du_pair in rangees:
            parties = [t.replace("x", "/") for t in tailles]
            valeurs = [bancs.temps(nom.format(t)) / UNITES[unite] for t in parties]
            pairs = [bancs.temps(nom_du_pair.format(t)) / UNITES[unite] for t in parties]
            rangee("%s, %s" % (mesure, unite), valeurs, pair, pairs)
    catalogues(lis_sonde(chemin_catalogues)[""])


main()
