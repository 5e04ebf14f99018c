# Draws the rooms that outils/plan.sh hands over, as a picture of black lines on white; measures are pixels.
# A room is a box. Neighbours are joined by a straight arrow. What skips rooms leaves its box to the right and goes down
# the lane of the room that it leads to: where the two meet, a circle counts the includes.

function texte(x, y, taille, reste, t) {
    printf "<text x=\"%d\" y=\"%d\" font-size=\"%d\"%s>%s</text>\n", x, y, taille, reste, t
}
function trait(chemin) { printf "<path d=\"%s\"/>\n", chemin }
# An arrow's line with its head, which ends in (x, y) and has its base at a distance on each axis.
function fleche(chemin, x, y, dx, dy) {
    trait(chemin)
    printf "<path d=\"M%d %d l%d %d l%d %d z\" style=\"fill: black\"/>\n", x, y, dx + dy / 2, dy + dx / 2, -dy, -dx
}
function compte(x, y, n) {
    printf "<circle cx=\"%d\" cy=\"%d\" r=\"%d\"/>\n", x, y, rayon
    texte(x, y + 4, 12, " text-anchor=\"middle\"", n)
}
function rectangle(x, y, l, h, reste) {
    printf "<rect x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\"%s/>\n", x, y, l, h, reste
}

# The names of a room, in lines that its box can hold.
function replie(i, noms,    n, mot, k) {
    n = split(noms, mot, " ")
    for (k = 1; k <= n; ++k) {
        if (k == 1 || length(ligne[i, lignes[i]]) + length(mot[k]) > octets_max) ++lignes[i]
        ligne[i, lignes[i]] = ligne[i, lignes[i]] (ligne[i, lignes[i]] == "" ? "" : " · ") mot[k]
    }
}

function boite(i,    k) {
    rectangle(gauche, haut[i], largeur, bas[i] - haut[i], " rx=\"8\"")
    texte(gauche + 12, haut[i] + 20, 16, " font-weight=\"bold\"", nom[i])
    texte(gauche + 12, haut[i] + 37, 12, "", fichiers[i] (fichiers[i] > 1 ? " files" : " file"))
    for (k = 1; k <= lignes[i]; ++k) texte(gauche + 170, haut[i] + 3 + 17 * k, 13, "", ligne[i, k])
}

# Where the line to the right leaves.
function sortie(a) { return bas[a] - 13 }

function fleches(a,    b, loin) {
    for (b = a + 2; b <= n; ++b) if ((a, b) in vers) loin = couloir[b]
    if (loin) trait("M" droite " " sortie(a) " H" loin)
    if (a in couloir)
        fleche("M" couloir[a] " " sortie(premier[a]) " V" haut[a] + 3 " q0 10 -10 10 H" droite,
            droite, haut[a] + 13, 10, 0)
    if (!((a, a + 1) in vers)) return
    fleche("M" milieu " " bas[a] " V" haut[a + 1], milieu, haut[a + 1], 0, -10)
    texte(milieu + 12, bas[a] + entre / 2 + 4, 12, "", vers[a, a + 1])
}

function entete(l, h) {
    printf "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 %d %d\" width=\"%d\" height=\"%d\"", l, h, l, h
    print " font-family=\"Liberation Sans, Arial, Helvetica, sans-serif\">"
    print "<title>The rooms of src/ and who includes whom</title>"
    print "<style>path, rect, circle { fill: white; stroke: black; stroke-width: 1.5 } path { fill: none }</style>"
    rectangle(0, 0, l, h, " style=\"stroke: none\"")
}

BEGIN {
    gauche = 10; largeur = 700; droite = gauche + largeur; milieu = gauche + largeur / 2
    entre = 22; pas = 38; rayon = 12; octets_max = 92
    bas[0] = 10 - entre
}

$1 == "salle" {
    nom[++n] = $2; rang[$2] = n; fichiers[n] = $3
    sub("^salle [^ ]+ [0-9]+ *", "")
    replie(n, $0)
    haut[n] = bas[n - 1] + entre
    bas[n] = haut[n] + (lignes[n] > 2 ? 12 + 17 * lignes[n] : 46)
}
$1 == "fleche" { vers[rang[$2], rang[$3]] = $4 }

END {
    fin = droite
    for (b = 3; b <= n; ++b) {
        for (a = b - 2; a >= 1; --a) if ((a, b) in vers) premier[b] = a
        if (b in premier) couloir[b] = fin += pas
    }
    entete(fin + 2 * rayon, bas[n] + 32)
    for (a = 1; a <= n; ++a) { boite(a); fleches(a) }
    for (a = 1; a <= n; ++a)
        for (b = a + 2; b <= n; ++b) if ((a, b) in vers) compte(couloir[b], sortie(a), vers[a, b])
    texte(gauche, bas[n] + 22, 13, "",
        "Figures count includes; lines that cross without a figure do not meet. Every arrow leads down.")
    print "</svg>"
}
