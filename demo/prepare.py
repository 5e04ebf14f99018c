#!/usr/bin/env python3
"""Makes the files of the demonstration restaurant, then reads them back and checks every field width.

The terminal never needs this script: its files lie ready beside it. Run it after a change of the tables below.
Text is code page 1252 with CR LF; record files are fixed-length, padded with blanks.
"""

import pathlib
import struct

ICI = pathlib.Path(__file__).resolve().parent

SERVEURS = ["Sophie", "Marc", "Nadia", "Julien", "Camille", "Thomas", "Élodie", "Karim"]
COULEURS_SERVEURS = "0" + "66666222"

# Number: name, colour digit of the "#CCOF#" line, own colour written in the name (it wins over the digit).
FAMILLES = {
    1: ("Entrées", 4, None),
    2: ("Viandes", 1, None),
    3: ("Poissons", 6, None),
    4: ("Pizzas", 2, None),
    5: ("Burgers", 0, 2),
    6: ("Desserts", 8, None),
    7: ("Menus", 0, 7),
    8: ("Vins", 1, None),
    9: ("Bières", 3, None),
    10: ("Cocktails", 5, None),
    11: ("Cafés", 0, 9),
    12: ("Divers", 0, None),
    13: ("Boulangerie", 0, 3),
    14: ("Sans alcool", 5, None),
}

# Where the router prints an article: the second family code.
CUISINE, BAR, FOUR, OFFICE = 1, 2, 3, 4
IMPRESSION = {1: CUISINE, 2: CUISINE, 3: CUISINE, 4: FOUR, 5: CUISINE, 6: OFFICE, 9: BAR, 10: BAR, 11: BAR,
              12: CUISINE, 13: OFFICE, 14: BAR}

# Wines are a family of sub-groups: sub-group n has its articles in family 30 + n.
SOUS_GROUPES = {31: ("Vins rouges", 1), 32: ("Vins blancs", 3), 33: ("Vins rosés", 8), 34: ("Champagnes", 5),
                35: ("Vins au verre", 7)}

# Family: (label, price, colour digit or 0 for the plain key).
ARTICLES = {
    1: [("Salade de tomates", 6.50, 0), ("Oeuf Mimosa", 5.90, 0), ("Assiette Charcuterie", 11.50, 1),
        ("Salade de Saison", 6.90, 0), ("Soupe à l'oignon", 8.50, 2), ("Terrine maison", 8.90, 0),
        ("Poireaux vinaigrette", 6.50, 0), ("Carottes râpées", 5.20, 0), ("Buffet d'entrées", 12.90, 3),
        ("Velouté de potiron", 7.20, 2), ("Rillettes de saumon", 9.20, 6), ("Harengs, pommes à l'huile", 8.70, 6),
        ("Foie gras mi-cuit", 17.50, 0), ("Escargots (les 6)", 10.80, 0), ("Os à moelle", 9.50, 0),
        ("Chèvre chaud", 9.80, 0)],
    2: [("Entrecôte 300 g", 24.50, 1), ("Bavette à l'échalote", 18.90, 1), ("Filet de bœuf", 29.00, 1),
        ("Magret de canard", 22.00, 2), ("Confit de canard", 19.50, 2), ("Côte de veau", 26.00, 1),
        ("Souris d'agneau", 23.50, 7), ("Poulet rôti", 16.00, 3), ("Tartare", 17.90, 1), ("Andouillette", 15.50, 9),
        ("Steak Poivre", 19.90, 1), ("Bœuf bourguignon", 18.50, 1), ("Blanquette de veau", 18.90, 0),
        ("Côte de bœuf (2 pers.)", 62.00, 1), ("Lasagnes", 14.50, 2), ("Rognons à la moutarde", 17.20, 9)],
    3: [("Raie aux Capres", 19.80, 6), ("Dos de cabillaud", 20.50, 6), ("Pavé de saumon", 18.90, 2),
        ("Sole meunière", 29.50, 0), ("Bar grillé", 24.00, 6), ("Moules marinières", 14.90, 9),
        ("Moules à la crème", 15.90, 9), ("Truite aux amandes", 17.50, 0), ("Noix de Saint-Jacques", 26.50, 0),
        ("Bouillabaisse", 28.00, 2), ("Sardines grillées", 13.90, 6), ("Plateau de fruits de mer", 48.00, 6)],
    4: [("Margherita", 10.50, 0), ("Reine", 12.50, 0), ("Quatre Fromages", 13.90, 3), ("Calzone", 13.50, 0),
        ("Napolitaine", 12.90, 0), ("Orientale", 13.90, 2), ("Végétarienne", 12.90, 4), ("Chorizo", 13.50, 1),
        ("Saumon", 14.90, 2), ("Chèvre miel", 13.90, 3), ("Savoyarde", 14.50, 3), ("Paysanne", 13.90, 0),
        ("Fruits de mer", 15.50, 6), ("Pizza enfant", 8.50, 0)],
    5: [("Burger classique", 14.90, 0), ("Cheeseburger", 15.50, 3), ("Burger bacon", 16.20, 1),
        ("Burger au bleu", 16.50, 6), ("Burger savoyard", 16.90, 3), ("Burger poulet", 15.20, 0),
        ("Burger végétarien", 14.90, 4), ("Double burger", 19.50, 1), ("Burger enfant", 9.50, 0)],
    6: [("Crème brûlée", 7.50, 3), ("Mousse au chocolat", 6.90, 9), ("Tarte Tatin", 7.90, 2), ("Île flottante", 6.90, 0),
        ("Profiteroles", 8.90, 9), ("Fondant au chocolat", 8.50, 9), ("Tarte au citron", 7.50, 3),
        ("Salade de fruits", 6.50, 4), ("Fromage", 8.20, 3), ("Café gourmand", 8.90, 9), ("Baba au rhum", 8.50, 2),
        ("Buffet Dessert", 9.90, 8), ("Glace 2 boules", 5.50, 0), ("Glace 3 boules", 7.20, 0),
        ("Coupe Dame blanche", 8.20, 0), ("Sorbet arrosé", 8.90, 5)],
    9: [("Demi", 3.80, 0), ("Pinte", 7.20, 0), ("Galopin", 2.60, 0), ("Panaché", 3.90, 0), ("Monaco", 4.00, 0),
        ("Picon bière", 5.20, 2), ("Blanche 33 cl", 5.20, 0), ("Brune 33 cl", 5.50, 9), ("Ambrée 33 cl", 5.40, 2),
        ("IPA 33 cl", 5.90, 4), ("Sans alcool 33 cl", 4.80, 6)],
    10: [("Kir", 5.50, 7), ("Kir royal", 9.50, 7), ("Mojito", 9.50, 4), ("Caïpirinha", 9.50, 4), ("Spritz", 9.00, 2),
         ("Piña colada", 9.90, 3), ("Gin tonic", 9.00, 6), ("Punch maison", 8.00, 2), ("Margarita", 9.50, 0),
         ("Pastis", 3.50, 3), ("Porto", 5.00, 1), ("Whisky 4 cl", 7.50, 9), ("Virgin mojito", 7.00, 4)],
    11: [("Expresso", 2.20, 0), ("Décaféiné", 2.30, 0), ("Noisette", 2.40, 0), ("Café allongé", 2.40, 0),
         ("Double expresso", 3.90, 0), ("Café crème", 3.90, 0), ("Cappuccino", 4.50, 0), ("Chocolat chaud", 4.20, 9),
         ("Thé", 3.60, 4), ("Infusion", 3.60, 4), ("Irish coffee", 9.50, 9)],
    12: [("Plat du jour", 13.90, 3), ("Assiette de frites", 4.50, 0), ("Haricots verts", 4.50, 0), ("Riz", 3.90, 0),
         ("Purée maison", 4.50, 0), ("Sauce en supplément", 1.50, 0), ("Corbeille de pain", 0.00, 0),
         ("Carafe d'eau", 0.00, 6), ("Couvert enfant", 0.00, 0)],
    13: [("Croissant", 1.60, 0), ("Pain au chocolat", 1.80, 0), ("Brioche", 2.20, 0), ("Tartine beurrée", 2.00, 0),
         ("Chausson aux pommes", 2.60, 0), ("Pain aux raisins", 2.20, 0), ("Baguette", 1.20, 0),
         ("Petit déjeuner complet", 11.90, 3), ("Œufs au plat", 6.50, 0), ("Jambon-beurre", 6.90, 0),
         ("Croque-monsieur", 8.90, 2), ("Croque-madame", 9.90, 2)],
    14: [("Eau plate 50 cl", 3.50, 6), ("Eau plate 1 l", 5.20, 6), ("Eau gazeuse 50 cl", 3.80, 5),
         ("Eau gazeuse 1 l", 5.50, 5), ("Limonade", 3.20, 0), ("Diabolo", 3.40, 8), ("Cola 33 cl", 3.90, 9),
         ("Cola sans sucre 33 cl", 3.90, 0), ("Jus d'orange", 4.20, 2), ("Jus de pomme", 4.20, 4),
         ("Jus de tomate", 4.20, 1), ("Orange pressée", 5.50, 2), ("Thé glacé", 3.90, 4), ("Tonic", 3.90, 3),
         ("Sirop à l'eau", 2.20, 8)],
    31: [("Bordeaux 75 cl", 24.00, 1), ("Saint-Émilion 75 cl", 38.00, 1), ("Médoc 75 cl", 32.00, 1),
         ("Bourgogne 75 cl", 34.00, 1), ("Beaujolais 75 cl", 22.00, 1), ("Côtes-du-Rhône 75 cl", 23.00, 1),
         ("Chinon 75 cl", 24.50, 1), ("Cahors 75 cl", 23.50, 1)],
    32: [("Chablis 75 cl", 33.00, 3), ("Sancerre 75 cl", 31.00, 3), ("Muscadet 75 cl", 21.00, 3),
         ("Riesling 75 cl", 26.00, 3), ("Mâcon 75 cl", 25.00, 3), ("Jurançon 75 cl", 27.00, 3)],
    33: [("Côtes de Provence 75 cl", 24.00, 8), ("Tavel 75 cl", 26.00, 8), ("Rosé d'Anjou 75 cl", 20.00, 8),
         ("Bandol 75 cl", 34.00, 8)],
    34: [("Champagne brut 75 cl", 58.00, 5), ("Champagne rosé 75 cl", 66.00, 5), ("Crémant 75 cl", 29.00, 5),
         ("Coupe de champagne", 9.90, 5)],
    35: [("Verre de rouge", 4.50, 1), ("Verre de blanc", 4.50, 3), ("Verre de rosé", 4.50, 8),
         ("Pichet 25 cl rouge", 7.00, 1), ("Pichet 50 cl rouge", 12.00, 1), ("Pichet 25 cl blanc", 7.00, 3),
         ("Pichet 50 cl blanc", 12.00, 3)],
}

# References that the manual shows; every other one is family x 100 + place.
NUMEROS_FIXES = {"Entrecôte 300 g": 2, "Plat du jour": 12, "Salade de tomates": 28, "Menu 15 Euros": 57}

# Label, price, then up to six courses of at most 16 choices, each the label of an article (None: an empty place).
MENUS = [
    ("Menu 15 Euros", 15.00, [
        ("Entrée", ["Salade de tomates", "Oeuf Mimosa", "Assiette Charcuterie", "Salade de Saison", "Soupe à l'oignon",
                    "Terrine maison", "Poireaux vinaigrette", "Carottes râpées", "Buffet d'entrées",
                    "Velouté de potiron", "Rillettes de saumon", "Harengs, pommes à l'huile"]),
        ("Plat", ["Steak Poivre", "Lasagnes", "Raie aux Capres", "Poulet rôti", "Andouillette", "Bavette à l'échalote",
                  "Moules marinières", "Plat du jour"]),
        ("Dessert", ["Fromage", "Buffet Dessert", "Mousse au chocolat", "Île flottante", "Crème brûlée",
                     "Glace 2 boules"]),
        ("Boisson", ["Verre de rouge", "Verre de blanc", "Verre de rosé", "Demi", None, None, None, None,
                     "Eau plate 50 cl", "Eau gazeuse 50 cl", "Expresso"])]),
    ("Menu 22 Euros", 22.00, [
        ("Entrée", ["Foie gras mi-cuit", "Escargots (les 6)", "Os à moelle", "Chèvre chaud", "Rillettes de saumon",
                    "Velouté de potiron"]),
        ("Plat", ["Entrecôte 300 g", "Magret de canard", "Souris d'agneau", "Dos de cabillaud", "Pavé de saumon",
                  "Bœuf bourguignon"]),
        ("Dessert", ["Fromage", "Tarte Tatin", "Profiteroles", "Fondant au chocolat", "Café gourmand"])]),
    ("Menu enfant", 9.90, [
        ("Plat", ["Burger enfant", "Pizza enfant", "Poulet rôti"]),
        ("Dessert", ["Glace 2 boules", "Mousse au chocolat", "Salade de fruits"]),
        ("Boisson", ["Jus d'orange", "Jus de pomme", "Sirop à l'eau", "Limonade"])]),
]

TABLES = [*range(1, 25), *range(31, 43), *range(51, 55)]

ENTETE = ["Orvalune", "Brasserie de la Gare, démonstration", "Catalogue du 19/05/2021", "#DIR#reseau"]

# --- key program ------------------------------------------------------------------------------------------------------

IMAGES = {"soupe": 19, "grill": 20, "poisson": 21, "pizza": 25, "burger": 26, "glace": 27, "menu": 28, "vin": 29,
          "bière": 31, "cocktail": 32, "café": 33, "croissant": 34, "couverts": 16, "accueil": 24}

BLANC, ROUGE, ORANGE, JAUNE, VERT, SARCELLE, BLEU, VIOLET, ROSE, TAUPE = (
    None, "C24B45", "D9782D", "F0C64F", "4F8F5F", "2F7F7C", "3F72A8", "6E569C", "B95A86", "7C756B")

# Page: title, second text, and keys (line, width and height in cells, font size, picture, colour, caption, action).
# An action "=LABEL" orders the article of that label.
PAGES = {
    0: ("Accueil", "Brasserie de la Gare", [
        (1, "22", 19, "soupe", VERT, "Entrées", "#FAMI#01"),
        (3, "22", 19, "grill", ROUGE, "Viandes", "#FAMI#02"),
        (5, "22", 19, "poisson", BLEU, "Poissons", "#FAMI#03"),
        (7, "22", 19, "pizza", ORANGE, "Pizzas", "#FAMI#04"),
        (9, "22", 19, "burger", ORANGE, "Burgers", "#FAMI#05"),
        (11, "22", 19, "glace", ROSE, "Desserts", "#FAMI#06"),
        (25, "22", 19, "menu", VIOLET, "Menus", "#FAMI#07"),
        (27, "22", 19, "vin", ROUGE, "Vins", "#FAMI#08"),
        (29, "22", 19, "bière", JAUNE, "Bières", "#FAMI#09"),
        (31, "22", 19, "cocktail", SARCELLE, "Cocktails", "#FAMI#10"),
        (33, "22", 19, "café", TAUPE, "Cafés", "#FAMI#11"),
        (35, "22", 19, "croissant", JAUNE, "Boulangerie", "#PAGE#02"),
        (49, "22", 19, "grill", BLANC, "Entrecôte", "=Entrecôte 300 g"),
        (51, "22", 19, "grill", BLANC, "Magret", "=Magret de canard"),
        (53, "22", 19, "couverts", BLANC, "Plat du jour", "=Plat du jour"),
        (55, "22", 19, "vin", BLANC, "Verre de rouge", "=Verre de rouge"),
        (57, "22", 19, "bière", BLANC, "Demi", "=Demi"),
        (59, "22", 19, "café", BLANC, "Expresso", "=Expresso")]),
    1: ("Service du midi", "Salle et terrasse", [
        (1, "22", 19, "couverts", JAUNE, "Plat du jour", "=Plat du jour"),
        (3, "22", 19, "grill", ROUGE, "Entrecôte", "=Entrecôte 300 g"),
        (5, "22", 19, "poisson", BLEU, "Poissons", "#FAMI#03"),
        (7, "22", 19, "pizza", ORANGE, "Pizzas", "#FAMI#04"),
        (9, "22", 19, "burger", ORANGE, "Burgers", "#FAMI#05"),
        (11, "22", 19, "glace", ROSE, "Desserts", "#FAMI#06"),
        (25, "42", 24, "menu", VIOLET, "Menu 15 Euros", "=Menu 15 Euros"),
        (29, "42", 24, "menu", VIOLET, "Menu 22 Euros", "=Menu 22 Euros"),
        (33, "42", 24, "menu", VIOLET, "Menu enfant", "=Menu enfant"),
        (49, "22", 19, "vin", BLANC, "Verre de rouge", "=Verre de rouge"),
        (51, "22", 19, "vin", BLANC, "Verre de blanc", "=Verre de blanc"),
        (53, "22", 19, "bière", BLANC, "Demi", "=Demi"),
        (55, "22", 19, None, SARCELLE, "Sans alcool", "#FAMI#14"),
        (57, "22", 19, "café", TAUPE, "Cafés", "#FAMI#11"),
        (59, "22", 19, "accueil", BLANC, "Accueil", "#PAGE#00")]),
    2: ("Boulangerie", "Petit déjeuner et goûter", [
        (1, "42", 24, "croissant", JAUNE, "Petit déjeuner complet", "=Petit déjeuner complet"),
        (5, "22", 19, "croissant", BLANC, "Croissant", "=Croissant"),
        (7, "22", 19, "croissant", BLANC, "Pain au chocolat", "=Pain au chocolat"),
        (9, "22", 19, None, BLANC, "Brioche", "=Brioche"),
        (11, "22", 19, None, BLANC, "Tartine beurrée", "=Tartine beurrée"),
        (25, "22", 19, "café", TAUPE, "Expresso", "=Expresso"),
        (27, "22", 19, "café", TAUPE, "Café crème", "=Café crème"),
        (29, "22", 19, "café", TAUPE, "Cappuccino", "=Cappuccino"),
        (31, "22", 19, "café", TAUPE, "Chocolat chaud", "=Chocolat chaud"),
        (33, "22", 19, None, ORANGE, "Jus d'orange", "=Jus d'orange"),
        (35, "22", 19, "croissant", JAUNE, "Tout voir", "#FAMI#13"),
        (49, "62", 24, "couverts", BLEU, "Service du midi", "#PAGE#01"),
        (55, "62", 24, "accueil", BLANC, "Accueil", "#PAGE#00")]),
}

# --- detail choices ---------------------------------------------------------------------------------------------------

# The first code of a category: heading, its ground and ink (0xBBGGRR), then the choices under it. A column holds 15
# codes, so two short categories may share one.
DETAILS = {
    20: ("Viandes", 419837, 6685957, ["Saignante", "Bleu", "A point", "Bien cuite"]),
    28: ("Sauces", 16567555, 0, ["Béarnaise", "Mayonnaise", "Sauce Poivre", "Roquefort", "Moutarde"]),
    40: ("Garnitures", 457475, 6685957, ["Frites", "Haricots Verts", "Purée", "Riz", "Salade", "Gratin dauphinois"]),
    60: ("Sans", 14408667, 0, ["Sans sel", "Sans oignon", "Sans ail", "Sans gluten", "Sans lactose", "Sans sauce"]),
    68: ("Service", 16567555, 0, ["En même temps", "A suivre", "A emporter", "A partager"]),
    80: ("Menus", 2418174, 0, ["Assiette Charcuterie", "Oeuf Mimosa", "Salade de Saison", "Buffet", None,
                               "Steak Poivre", "Lasagnes", "Raie aux Capres", None, "Fromage", "Buffet Dessert"]),
    100: ("Boissons", 16567555, 0, ["Sans glaçon", "Avec glaçons", "Tranche de citron", "Très frais", "Chambré",
                                    "2 verres", "3 verres", "4 verres"]),
    120: ("Pizzas", 419837, 6685957, ["Supplément fromage", "Supplément oeuf", "Supplément jambon", "Base crème",
                                      "Sans olives", "Bien cuite", "Coupée"]),
    140: ("Desserts", 13408767, 0, ["Avec chantilly", "Sans chantilly", "Vanille", "Chocolat", "Fraise", "Café",
                                    "Pistache", "Bougie"]),
    160: ("Cafés", 8421504, 16777215, ["Avec le dessert", "Après le dessert", "Serré", "Allongé", "Lait à part",
                                       "Sucre roux"]),
}

# --- settings ---------------------------------------------------------------------------------------------------------

REGLAGES = {
    2: "#I#0:01280:00770",
    3: "#I#20", 5: "#I#21", 6: "#I#3", 7: "#I#2", 8: "#I#10",
    10: "#I#27", 11: "#I#3", 12: "#I#2", 13: "#I#12",
    20: "#I#21", 21: "#I#3", 22: "#I#2", 23: "#I#12",
    25: "#I#12", 26: "#I#6",
    30: "#I#20", 40: "#I#30", 41: "#I#20", 42: "#I#20", 50: "#I#1", 51: "#I#34", 55: "OUI",
    60: "#I#28", 61: "#I#5", 62: "#I#8",
}


def reference(numero):
    """Thirteen digits: 888, nine digits of number, and the check digit of a bar code."""
    chiffres = f"888{numero:09d}"
    somme = sum(int(c) * (3 if i % 2 else 1) for i, c in enumerate(chiffres))
    return chiffres + str(-somme % 10)


def champ_couleur(code):
    return f"|COU:{code}" if code else ""


def texte_composition(cours, references):
    """The composition of a fixed-price menu: six courses of sixteen places each."""
    texte = ""
    for nom, choix in cours + [("", [])] * (6 - len(cours)):
        places = choix + [None] * (16 - len(choix))
        texte += nom + "µ" + "".join((f"{references[c]}|{c}" if c else "|") + "¦" for c in places)
    return "{{" + texte + "}}"


def articles():
    """All article records by label, and the lines of the catalogue in order of families."""
    references = {nom: reference(NUMEROS_FIXES.get(nom, famille * 100 + place))
                  for famille, noms in ARTICLES.items() for place, (nom, _, _) in enumerate(noms, 1)}
    assert len(references) == sum(map(len, ARTICLES.values())), "a label names one article only"
    fiches = {}
    for famille, noms in ARTICLES.items():
        for nom, prix, couleur in noms:
            impression = IMPRESSION.get(famille, BAR)
            fiches[nom] = (f"{references[nom]}  |DES:{nom}|PVE:{prix:.2f}|FA1:{famille}|FA2:{impression}"
                           + champ_couleur(couleur))
    for place, (nom, prix, cours) in enumerate(MENUS, 1):
        numero = reference(NUMEROS_FIXES.get(nom, 700 + place))
        fiches[nom] = f"{numero}  |DES:{nom}|PVE:{prix:.2f}|FA1:7|FA2:98|COU:7|" + texte_composition(cours, references)
    return fiches


def lignes_catalogue(fiches):
    lignes = [f"#SERV#{n:02d} {nom}" for n, nom in enumerate(SERVEURS, 1)]
    lignes += [f"#FAMI#{n:02d} {nom}" + champ_couleur(propre) for n, (nom, _, propre) in FAMILLES.items()]
    groupes = [f"#SG#{famille - 30:04d}".ljust(15) + f"|DES:{nom}|FA1:8|FA2:{BAR}" + champ_couleur(couleur)
               for famille, (nom, couleur) in SOUS_GROUPES.items()]
    lignes += [f"#ARTI#{n:05d}{fiche}" for n, fiche in enumerate([*fiches.values(), *groupes], 1)]
    lignes += [f"#TABL#{t:03d}" for t in TABLES]
    lignes.append("#CCOF#0" + "".join(str(chiffre) for _, chiffre, _ in FAMILLES.values()))
    lignes.append("#CCOU#" + COULEURS_SERVEURS)
    return lignes


def texte(lignes):
    return "".join(ligne + "\r\n" for ligne in lignes).encode("cp1252")


def champ(valeur, longueur):
    octets = str(valeur).encode("cp1252")
    assert len(octets) <= longueur, f"{valeur!r} is longer than {longueur}"
    return octets.ljust(longueur)


def record_touche(ref="", nom="", lh="", image="", visible="", taille="", couleur="", acte=""):
    return (champ(ref, 15) + champ(nom, 40) + champ(lh, 2) + champ("", 2) + champ(image, 4) + champ(visible, 1)
            + champ(taille, 3) + champ(couleur, 10) + champ("", 77) + champ(acte, 100) + b"\r\n")


def couleur_stockee(rrvvbb):
    """Red in the low byte, as a decimal number; nothing for the plain key."""
    if rrvvbb is None:
        return ""
    return str(int(rrvvbb[4:6] + rrvvbb[2:4] + rrvvbb[0:2], 16))


def programme_touches(fiches):
    records = [record_touche()] * 5000
    for page, (titre, sous_titre, touches) in PAGES.items():
        records[page * 100 + 98 - 1] = record_touche(nom=titre, acte=sous_titre)
        for ligne, lh, taille, image, couleur, libelle, acte in touches:
            ref = ""
            if acte.startswith("="):
                fiche = fiches[acte[1:]]
                ref = fiche[:13]
                # The field holds the beginning of a long record; the terminal completes it from its catalogue.
                acte = "#AJOU#" + fiche[:94]
            numero_image = f"{IMAGES[image]:03d} " if image else ""
            records[page * 100 + ligne - 1] = record_touche(ref, libelle, lh, numero_image, "1", taille,
                                                            couleur_stockee(couleur), acte)
    return b"".join(records)


def record_style(entete="", libelle="", encre=0, fond=16777215):
    return champ(entete, 15) + champ(libelle, 40) + champ("", 61) + struct.pack("<iii", encre, fond, 0)


def styles():
    records = [record_style()] * 501
    records[0] = record_style("#INIT#19-05-202")
    for code, (titre, fond, encre, choix) in DETAILS.items():
        records[code - 1] = record_style(libelle=titre, encre=encre, fond=fond)
        for i, nom in enumerate(choix, code + 1):
            if nom:
                records[i - 1] = record_style(libelle=nom)
    return b"".join(records)


def reglages():
    return b"".join(champ(REGLAGES.get(n, ""), 20) for n in range(1, 2001))


def controle_catalogue(lignes):
    """What a reader relies on: columns, references, prices, compositions."""
    vus = set()
    for ligne in lignes:
        if not ligne.startswith("#ARTI#") or ligne[11:15] == "#SG#":
            continue
        ref, fiche = ligne[11:24], ligne[11:]
        assert ref.isdigit() and reference(int(ref[3:12])) == ref and fiche[13:20] == "  |DES:", fiche
        assert ref not in vus, f"{ref} twice"
        vus.add(ref)
        assert fiche.split("|PVE:")[1].split("|")[0][-3] == ".", fiche
        if "{{" in fiche:
            corps = fiche.split("{{")[1].removesuffix("}}")
            blocs = corps.split("µ")
            assert len(blocs) == 7 and all(b.count("¦") == 16 for b in blocs[1:]), fiche
    assert len(vus) >= 150 and sum("FA2:98" in ligne for ligne in lignes) == 3
    for marque, nombre in (("#SERV#", 8), ("#FAMI#", 14), ("#TABL#", 40)):
        assert sum(ligne.startswith(marque) for ligne in lignes) == nombre, marque


def controle():
    """Reads the written files back and checks their lengths and fields."""
    for dossier in (ICI, ICI / "reseau"):
        brut = (dossier / "worvalune.wdo").read_bytes()
        lignes = brut.decode("cp1252").split("\r\n")
        assert lignes.pop() == "" and not any("\n" in ligne or "\r" in ligne for ligne in lignes)
        controle_catalogue(lignes)
        assert len((dossier / "w_styl72.wdo").read_bytes()) == 501 * 128
    touches = (ICI / "progppb.wdo").read_bytes()
    assert len(touches) == 5000 * 256
    for debut in range(0, len(touches), 256):
        record = touches[debut:debut + 256]
        assert record[254:] == b"\r\n" and b"\r" not in record[:254]
        assert record[67:77].strip().isdigit() or not record[67:77].strip()
    store = (ICI / "wwinqx42.wdo").read_bytes()
    assert len(store) == 2000 * 20 and store[20:40] == b"#I#0:01280:00770".ljust(20)
    assert len((ICI / "wfichdir.wdo").read_bytes().split(b"\r\n")) == 13


def ecrit():
    fiches = articles()
    catalogue = {"orvalune.wdo": texte(ENTETE), "worvalune.wdo": texte(lignes_catalogue(fiches)),
                 "w_styl72.wdo": styles()}
    (ICI / "reseau").mkdir(exist_ok=True)
    for nom, contenu in catalogue.items():
        (ICI / nom).write_bytes(contenu)
        (ICI / "reseau" / nom).write_bytes(contenu)
    (ICI / "progppb.wdo").write_bytes(programme_touches(fiches))
    (ICI / "wwinqx42.wdo").write_bytes(reglages())
    (ICI / "wfichdir.wdo").write_bytes(texte(["reseau"] + [" "] * 11))
    print(f"{len(fiches)} articles, {len(TABLES)} tables, {sum(len(p[2]) for p in PAGES.values())} keys")


if __name__ == "__main__":
    ecrit()
    controle()
