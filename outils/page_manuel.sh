#!/usr/bin/env bash
# Makes one page of the manual for a browser: its pictures within, every heading reached by its link, fit for printing.
# Usage: outils/page_manuel.sh MANUAL.md PAGE.html     the pictures lie beside the manual, by the names that it gives them
set -euo pipefail
manuel=$1 page=$2
images=$(dirname "$manuel")
export LC_ALL=C.UTF-8

# The link of a heading: lower case, blanks as hyphens, no other sign.
lien() {
    sed -E 's/<[^>]*>//g; s/&[a-z]+;//g; s/[^[:alnum:] _-]//g; s/ /-/g; s/.*/\L&/' <<<"$1"
}

# A heading gets its link, a picture its content.
complete() {
    local ligne
    while IFS= read -r ligne; do
        if [[ $ligne =~ ^\<h([1-6])\>(.*)\</h[1-6]\>$ ]]; then
            printf '<h%s id="%s">%s</h%s>\n' "${BASH_REMATCH[1]}" "$(lien "${BASH_REMATCH[2]}")" "${BASH_REMATCH[2]}" \
                "${BASH_REMATCH[1]}"
        elif [[ $ligne =~ ^(.*\<img\ src=\")([^\"]*\.png)(\".*)$ ]]; then
            printf '%sdata:image/png;base64,%s%s\n' "${BASH_REMATCH[1]}" "$(base64 -w 0 "$images/${BASH_REMATCH[2]}")" \
                "${BASH_REMATCH[3]}"
        else
            printf '%s\n' "$ligne"
        fi
    done
}

{
    cat <<'FIN'
<!DOCTYPE html>
<html lang="fr">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Manuel d'Orvalune</title>
<style>
body { max-width: 46rem; margin: 2rem auto; padding: 0 1rem; font: 1.05rem/1.5 "Liberation Sans", Arial, sans-serif;
  color: #1F2A36; background: #F4F1EB; }
h1, h2, h3 { line-height: 1.2; break-after: avoid; }
h2 { margin-top: 3rem; padding-top: .6rem; border-top: 2px solid #D9D2C6; }
a { color: #2F5D8A; }
img { max-width: 100%; max-height: 80vh; border: 1px solid #D9D2C6; }
table { border-collapse: collapse; width: 100%; }
th, td { text-align: left; vertical-align: top; padding: .3rem .6rem; border: 1px solid #D9D2C6; }
code, pre { font: .9em/1.4 "Liberation Mono", Consolas, monospace; background: #FFFFFF; }
code { overflow-wrap: anywhere; }
pre { padding: .6rem; overflow-x: auto; border: 1px solid #D9D2C6; }
p, tr, pre, img { break-inside: avoid; }
@media print {
  body { max-width: none; margin: 0; font-size: 10pt; background: none; }
  img { max-height: 9cm; }
  pre { white-space: pre-wrap; }
}
</style>
</head>
<body>
FIN
    cmark-gfm -e table "$manuel" | complete
    printf '</body>\n</html>\n'
} >"$page.nouveau"
mv "$page.nouveau" "$page"
