#!/usr/bin/env python3
"""The table that ./bench.sh prints. Usage: tableau.py DIRECTORY

There lie "fenetres_WxH" and "catalogues", which `sonde` printed, and "bancs.json" and "commandes.json" of Google
Benchmark. Each figure stands beside one of the same file."""
import json
import sys

MESURE, COLONNES = 36, (10, 10, 10)
UNITES = {"ns": 1e-3, "us": 1, "ms": 1e3, "s": 1e6}

FENETRES = ["1280x800", "1920x1200", "2560x1600"]
ECRANS = ["1280x770", "1920x1200", "2560x1600"]
ARTICLES = ["4000", "40000", "400000"]
LIGNES = ["10", "100", "1000"]
COMMANDES = ["10", "100", "1000"]

# Heading, sizes, then the rows: caption, unit, benchmark, what lies beside it, its benchmark. "{}" is the size.
PARTIES = [
    ("Painter", ECRANS, [
        ("page of 48 keys painted", "us", "page_entiere/{}", "copy of the image", "copie_de_l_image/{}"),
        ("one key pressed", "us", "une_touche/{}", "copy of the image", "copie_de_l_image/{}"),
        ("message box over a new page", "us", "une_boite/{}/manual_time", "copy of the image", "copie_de_l_image/{}"),
    ]),
    ("Touch on a screen, painted", ECRANS, [
        ("page turned back", "us", "page_tournee/{}/manual_time", "copy of the image", "copie_de_l_image/{}"),
        ("three pages in turn", "us", "pages_en_ronde/{}/manual_time", "copy of the image", "copie_de_l_image/{}"),
        ("page painted anew", "us", "page_neuve/{}/manual_time", "copy of the image", "copie_de_l_image/{}"),
        ("summary opened and closed again", "us", "dialogue/{}/manual_time", "page painted twice", "2*page_entiere/{}"),
        ("  anew", "us", "dialogue_neuf/{}/manual_time", "page painted twice", "2*page_entiere/{}"),
        ("toolbox opened and closed again", "us", "outils/{}/manual_time", "page painted twice", "2*page_entiere/{}"),
        ("  anew", "us", "outils_neufs/{}/manual_time", "page painted twice", "2*page_entiere/{}"),
        ("article opened and closed anew", "us", "article_neuf/{}/manual_time", "page painted twice",
         "2*page_entiere/{}"),
        ("keyboard opened and closed anew", "us", "clavier_neuf/{}/manual_time", "page painted twice",
         "2*page_entiere/{}"),
        ("question asked and answered anew", "us", "boite_neuve/{}/manual_time", "page painted twice",
         "2*page_entiere/{}"),
        ("one letter on the keyboard", "us", "une_lettre/{}/manual_time", "one key pressed", "une_touche/{}"),
    ]),
    ("Lines of the note", LIGNES, [
        ("summary scrolled by one row", "us", "recapitulatif/{}/manual_time", "page painted", "page_entiere/1280/770"),
        ("order written", "us", "commande_ecrite/{}/iterations:100/real_time", "bare write",
         "ecriture_nue/{}/iterations:100/real_time"),
    ]),
    ("Orders that wait", COMMANDES, [
        ("each delivered", "us", "par_commande;commandes/livrees/{}/iterations:2/real_time", "bare write",
         "ecriture_nue/10/iterations:100/real_time"),
        ("each found collected", "us", "par_commande;commandes/collectees/{}/iterations:2/real_time", "bare write",
         "ecriture_nue/10/iterations:100/real_time"),
    ]),
    ("Articles", ARTICLES, [
        ("catalogue read", "ms", "lecture_du_catalogue/{}", "its bytes read", "fichier_lu/{}"),
        ("start and end, no window", "ms", "depart/{}/real_time", "a program that ends", "programme_vide/real_time"),
    ]),
]


class Bancs:
    """Times in microseconds, by name: the median where a benchmark ran several times."""

    def __init__(self, chemin):
        self.lus = {}
        with open(chemin, encoding="utf-8") as f:
            for b in json.load(f)["benchmarks"]:
                if b.get("error_occurred"):
                    sys.exit(b["name"] + ": " + b["error_message"])
                if b["run_type"] == "iteration" and b["repetitions"] <= 1 or b.get("aggregate_name") == "median":
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


def titre(texte, tailles, pairs=None):
    print("\n" + texte.ljust(MESURE) + cases(tailles) + "   " + "beside".ljust(22) +
          cases(tailles if pairs is None else pairs) + "  times")


def rangee(texte, valeurs, pair, pairs):
    rapports = [v / p for v, p in zip(valeurs, pairs) if p]
    fois = " ".join(nombre(r) for r in rapports)
    print(texte.ljust(MESURE) + cases(map(nombre, valeurs)) + "   " + pair.ljust(22) + cases(map(nombre, pairs)) +
          "  " + fois)


def lis_sonde(chemin):
    with open(chemin, encoding="utf-8") as f:
        return {mots[0]: [float(m) for m in mots[1:]] for mots in map(str.split, f)}


def fenetres(lues):
    """By size, what `sonde` found: start, resident and proportional memory, press and its 95th, by program."""
    mesures = [("start to first painted page, ms", "terminal", 0, 1), ("resident memory, MiB", "terminal", 1, 1024),
               ("proportional memory, MiB", "terminal", 2, 1024),
               ("press to changed pixel, us, median", "terminal", 3, 1), ("  95th of 100", "terminal", 4, 1),
               ("  a key of the peers' size, median", "petites_touches", 3, 1),
               ("  95th of 100", "petites_touches", 4, 1)]
    noms = {"fenetre_nue": "bare window", "pair_fltk": "FLTK, 48 keys", "pair_qt": "Qt, 48 keys"}
    titre("Window", FENETRES)
    for texte, programme, i, diviseur in mesures:
        for nom, pair in noms.items():
            if nom in lues[0]:
                rangee(texte, [l[programme][i] / diviseur for l in lues], pair, [l[nom][i] / diviseur for l in lues])
                texte = ""


def catalogues(lus):
    demonstration = lus.pop("demonstration")
    octets = [int(nom.split("-")[1]) / 2**20 for nom in lus]
    valeurs = list(lus.values())
    rangee("start to first painted page, ms", [v[0] for v in valeurs], "the demonstration",
           [demonstration[0]] * len(valeurs))
    rangee("memory for it, MiB", [(v[1] - demonstration[1]) / 1024 for v in valeurs], "the file", octets)


def main():
    terrain = sys.argv[1] + "/"
    fenetres([lis_sonde(terrain + "fenetres_" + taille) for taille in FENETRES])
    bancs, attente = Bancs(terrain + "bancs.json"), Bancs(terrain + "commandes.json")
    titre("Replay, no window", [""])
    rangee("start and end, ms", [bancs.temps("depart/0/real_time") / 1e3], "a program that ends",
           [bancs.temps("programme_vide/real_time") / 1e3])
    for texte, tailles, rangees in PARTIES:
        titre(texte, tailles)
        lus = attente if texte == "Orders that wait" else bancs
        for mesure, unite, nom, pair, nom_du_pair in rangees:
            parties = [t.replace("x", "/") for t in tailles]
            valeurs = [lus.temps(nom.format(t)) / UNITES[unite] for t in parties]
            pairs = [lus.temps(nom_du_pair.format(t)) / UNITES[unite] for t in parties]
            rangee("%s, %s" % (mesure, unite) if mesure[0] != " " else mesure, valeurs, pair, pairs)
    catalogues(lis_sonde(terrain + "catalogues"))


main()
