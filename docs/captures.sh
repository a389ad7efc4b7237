#!/bin/sh
# Pictures of the program on the demo practice, under a display of its own: main
# window, new-exercice form, each page of the options and of the preferences, lists, journals, the register of assets
# and their forms.
#   docs/captures.sh FOLDER [WIDTHxHEIGHT [graphiques]]
# With "graphiques" only those of the guide's chapter on charts: docs/captures.sh docs/images 1000x700 graphiques
# FENLOR_BIN=FOLDER takes the programs built there. SCALE=2 doubles the interface; FENLOR_PALETTE=sombre shows it on a dark palette.
set -eu
cd "$(dirname "$0")/.."
. cmake/paquets.sh
paquets $paquets_programme xvfb openbox xdotool imagemagick fonts-dejavu-core
mkdir -p "${1:?folder}"
sortie="$(cd "$1" && pwd)"
taille="${2:-1280x900}"
bin="${FENLOR_BIN:-$PWD/build/release/bin}"
if [ -z "${FENLOR_BIN:-}" ]; then
  cmake --preset release >/dev/null
  cmake --build --preset release --target fenlor fenlorctl >/dev/null
fi

travail="$(mktemp -d)"
trap 'kill "${serveur:-}" 2>/dev/null || true; rm -rf "$travail"' EXIT
"$bin/fenlorctl" --cabinet "$travail/demo" demo >/dev/null
"$bin/fenlorctl" --cabinet "$travail/demo" --aujourdhui 14/11/2003 automatique ajouter >/dev/null <<FIN
{"Genre":2,"Date":"05/09/2003","Libelle":"Loyer du cabinet","Tresorerie":"BQ","Compte":"6132","MontantEuro":700,"Periodicite":6,"NbPaiements":24}
{"Genre":1,"Date":"12/11/2003","Libelle":"Vacations","Tresorerie":"BQ","Compte":"706","MontantEuro":1250,"Periodicite":2,"NbPaiements":10,"Annoncer":1}
FIN
export XDG_CONFIG_HOME="$travail/config" XDG_RUNTIME_DIR="$travail/run" XDG_DATA_HOME="$travail/data" LC_ALL=C.UTF-8
export QT_SCALE_FACTOR="${SCALE:-1}" FENLOR_AUJOURDHUI=15/11/2003
mkdir -p "$XDG_CONFIG_HOME" "$XDG_RUNTIME_DIR" "$travail/copies"
chmod 700 "$XDG_RUNTIME_DIR"

# A backup's and an update's date, and an update program, as the user's registry has them.
registre() {
  mkdir -p "$XDG_CONFIG_HOME/Orvelia"
  printf '%s\n' '[Système]' "$1" 'Sauvegarde vérifiée=Fenlor_demo_2003_20031105_1815.fnz|05/11/2003|18:15' \
    '[software\Orvelia\QVUpdate\fenlor\Options]' "$2" \
    '[HKEY_LOCAL_MACHINE\software\Orvelia\QVUpdate]' "Path=$bin/fenlorctl" |
    iconv -t WINDOWS-1252 >"$XDG_CONFIG_HOME/Orvelia/registre.ini"
}
registre "" ""

Xvfb -displayfd 3 -screen 0 "${taille}x24" -nolisten tcp 3>"$travail/ecran" 2>/dev/null &
serveur=$!
while [ ! -s "$travail/ecran" ]; do sleep 0.1; done
DISPLAY=":$(cat "$travail/ecran")"
export DISPLAY
openbox >/dev/null 2>&1 &
sleep 1.5
"$bin/fenlor" /D "$travail/demo" --sans-accueil &
programme=$!
pause() { sleep "${1:-0.7}"; }
capture() { pause; import -window root "$sortie/$1.png"; }
touche() { xdotool key --clearmodifiers "$@"; pause 0.4; }

# What the find box finds first, and what it opens.
trouve() {
  touche ctrl+k
  xdotool type "$1"; pause 1
  capture "recherche-$2"
  touche Return
  capture "$2"
}

graphiques() {
  xdotool key alt+t; pause; touche p
  xdotool type 706; pause  # what begins so is looked for in the list
  touche shift+Down shift+Down alt+e
  capture graphique-choix
  touche Return Home Right Right
  capture graphique-barres
  xdotool key alt+g; pause; touche f
  capture graphique-surface
  touche ctrl+F4
  xdotool key alt+t; pause; touche p
  xdotool type 606; pause
  touche shift+Down shift+Down shift+Down shift+Down shift+Down shift+Down shift+Down shift+Down shift+Down
  touche alt+e alt+c Return
  xdotool key alt+g; pause; touche d
  capture graphique-secteurs
  xdotool key alt+g; pause; touche v
  touche ctrl+F4
}

pause 2.5
capture echeances
touche alt+e
if [ "${3:-}" = graphiques ]; then
  touche Escape
  graphiques
  kill "$programme"
  exit 0
fi
capture astuce
touche Escape
capture principale
touche ctrl+n
capture nouvel-exercice
touche Escape
touche F12
for page in activite banques association comptable comptes mot-de-passe tva mises-a-jour; do
  capture "options-$page"
  touche ctrl+Next
done
touche Escape
xdotool key alt+o; pause; touche p
for page in preferences couleurs polices; do
  capture "preferences-$page"
  touche ctrl+Next
done
touche Escape
for fenetre in tresorerie:ctrl+t comptes-recettes:ctrl+shift+r plan-comptable:ctrl+shift+p rubriques:ctrl+shift+u libelles:ctrl+l; do
  touche "${fenetre#*:}"
  capture "liste-${fenetre%%:*}"
  touche F2
  capture "fiche-${fenetre%%:*}"
  touche Escape
  touche ctrl+F4
done
for journal in recettes:ctrl+r depenses:ctrl+d operations-diverses:ctrl+shift+o; do
  touche "${journal#*:}"
  capture "journal-${journal%%:*}"
  touche ctrl+j
  capture "journal-${journal%%:*}-simple"
  touche F2
  capture "ecriture-${journal%%:*}"
  touche Escape
  touche ctrl+F4
done
touche ctrl+i
capture registre
touche F2
capture acquisition
touche alt+d
capture acquisition-degressif
touche Escape
touche F7
capture cession
touche Escape
touche shift+F7
capture rebut
touche Escape
touche Home Down Down F3
capture amortissements
touche Return
capture amortissement
touche Escape Escape
touche alt+Left alt+Left alt+Left alt+Left
capture registre-ancien
touche ctrl+F4
touche ctrl+r
touche Insert
capture ecriture-ajout
touche alt+m
capture ecriture-multiple
touche Insert
capture ligne-tresorerie
touche Escape Escape n  # no entry is to be kept
touche ctrl+f
capture criteres
touche Escape
touche ctrl+m
capture mois
touche Escape
touche ctrl+F4
touche ctrl+shift+v
capture virement
touche Escape
xdotool key alt+t; pause; touche r
capture remise
touche Escape
touche ctrl+b
capture rapprochement
touche Escape
trouve "validation du brouillard" validation
touche Escape
touche ctrl+r
touche slash
xdotool type "visite 30"; pause
capture filtre
touche Escape Escape
trouve "colonnes" colonnes
touche Escape
touche ctrl+d ctrl+t
trouve "onglets" onglets
trouve "cascade" cascade
trouve "grand livre" grand-livre
touche alt+a
pause 2
capture apercu
touche ctrl+F4 ctrl+F4 ctrl+F4 ctrl+F4
graphiques
xdotool key alt+r; pause; touche e
capture automatiques
touche Return
capture automatique-depense
touche Escape Down Return
capture automatique-recette
touche Escape
touche alt+p
capture previsions
touche Escape Escape
touche alt+Return
capture proprietes
touche Escape
touche ctrl+s
capture sauvegarde-destination
xdotool type "$travail/copies"
touche alt+s
capture sauvegarde-protection
touche alt+s
pause 2
capture sauvegarde-faite
touche Escape
xdotool key alt+f; pause; touche r
capture restauration-liste
touche alt+s
capture restauration-exercices
touche alt+r
pause 3
capture restauration-faite
touche Escape
xdotool key alt+f; pause; touche c Return
capture cloture
touche Escape
touche F9
capture calculatrice
touche F9
touche F1
capture aide
touche Escape
touche F11
capture plein-ecran
touche F11
for jours in 3 10 20; do  # each state of the lamps
  registre "Date sauvegarde=$(date -d "2003-11-15 - $jours days" +%d/%m/%Y)" \
    "Date=$(date -d "2003-11-15 - $((jours * 5)) days" +%d/%m/%Y)"
  touche ctrl+q
  capture "fin-de-session-$jours-jours"
  touche Escape
done
kill "$programme"
